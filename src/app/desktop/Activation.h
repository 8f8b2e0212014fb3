#pragma once

#include <QMetaType>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <optional>

/// By what a window may take the keyboard from the one that has it: what the desktop gave to the
/// program that the user started. Either may be empty.
struct Activation {
    QString startupId {}; ///< of the startup notification protocol, on X11
    QString token {}; ///< of the protocol xdg-activation, under Wayland

    /// What the desktop gave to this process. To be read before the application is made, which
    /// removes it from the environment.
    [[nodiscard]] static Activation fromEnvironment();

    /// As it comes over the session bus from anybody. What is no plausible text is left out.
    [[nodiscard]] static Activation fromPlatformData(const QVariantMap& data);

    /// As the interface org.freedesktop.Application hands it on.
    [[nodiscard]] QVariantMap platformData() const;

    /// When the user acted, in the X server's milliseconds. Nothing where no text says so.
    [[nodiscard]] std::optional<std::uint32_t> time() const;

    friend bool operator==(const Activation&, const Activation&) = default;
};
Q_DECLARE_METATYPE(Activation)
