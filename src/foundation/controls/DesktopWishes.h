#pragma once

#include "Palette.h"

#include <QDBusVariant>
#include <QObject>

#include <optional>

/// What the user's desktop wishes of how programs look, read from the desktop portal and followed
/// while it changes. Asking does not wait: until the desktop has answered there are no wishes.
class DesktopWishes : public QObject {
    Q_OBJECT

public:
    DesktopWishes();

    /// Nothing where the desktop prefers neither, says nothing, or has no portal.
    [[nodiscard]] std::optional<ColorScheme> colorScheme() const { return m_colorScheme; }

    /// High where one of the two keys that say so asks for it.
    [[nodiscard]] Contrast contrast() const;

    /// How much larger than by nature texts should be; 1 where the desktop says nothing.
    [[nodiscard]] double textScale() const { return m_textScale; }

    /// Whether things should not move about.
    [[nodiscard]] bool reducedMotion() const { return m_reducedMotion; }

    /// Whether the desktop has answered, if only by having no portal.
    [[nodiscard]] bool known() const { return m_known; }

Q_SIGNALS:
    /// A wish has changed, or the desktop has answered for the first time.
    void changed();

private Q_SLOTS:
    void onSettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void readAll();
    bool take(const QString& space, const QString& key, const QVariant& value);

    std::optional<ColorScheme> m_colorScheme;
    // Apart: a desktop may keep only one of the keys up to date.
    Contrast m_appearanceContrast = Contrast::Normal;
    Contrast m_gnomeContrast = Contrast::Normal;
    double m_textScale = 1.0;
    bool m_reducedMotion = false;
    bool m_known = false;
};
