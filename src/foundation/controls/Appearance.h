#pragma once

#include "DesktopWishes.h"
#include "Palette.h"

#include <QList>
#include <QObject>

/// The interface style forced on a window, over the desktop's own.
enum class InterfaceStyle { Unspecified, Light, Dark };

/// How a window is to be drawn: as the desktop wishes, unless a style is forced on it. A theme has
/// one, and a window is drawn by one theme; it counts as connected for the life of this object.
class Appearance : public QObject {
    Q_OBJECT

public:
    Appearance();
    ~Appearance() override;

    /// The appearances of all windows, the oldest first.
    [[nodiscard]] static QList<Appearance*> connected();

    [[nodiscard]] InterfaceStyle overrideStyle() const { return m_overrideStyle; }
    void setOverrideStyle(InterfaceStyle style);

    /// The scheme to draw in.
    [[nodiscard]] ColorScheme colorScheme() const { return m_look.colorScheme; }

    [[nodiscard]] Contrast contrast() const { return m_look.contrast; }

    /// How much larger than by nature texts are to be drawn.
    [[nodiscard]] double textScale() const { return m_look.textScale; }

    [[nodiscard]] bool reducedMotion() const { return m_look.reducedMotion; }

    /// Whether the desktop has answered: until then all but a forced scheme may yet change.
    [[nodiscard]] bool known() const { return m_wishes.known(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The scheme, the contrast, the text scale or the wish for less motion has changed.
    void changed();
    /// The desktop has answered, if only by having no portal.
    void becameKnown();

private:
    struct Look {
        ColorScheme colorScheme = ColorScheme::Light;
        Contrast contrast = Contrast::Normal;
        double textScale = 1.0;
        bool reducedMotion = false;

        bool operator==(const Look&) const = default;
    };

    [[nodiscard]] Look look() const;
    void update();

    DesktopWishes m_wishes;
    InterfaceStyle m_overrideStyle = InterfaceStyle::Unspecified;
    Look m_look;
    bool m_wasKnown = false;
};
