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
    [[nodiscard]] ColorScheme colorScheme() const { return m_colorScheme; }

    [[nodiscard]] Contrast contrast() const { return m_wishes.contrast(); }

    /// How much larger than by nature texts are to be drawn.
    [[nodiscard]] double textScale() const { return m_textScale; }

    [[nodiscard]] bool reducedMotion() const { return m_wishes.reducedMotion(); }

    /// Whether the desktop has answered: until then all but a forced scheme may yet change.
    [[nodiscard]] bool known() const { return m_wishes.known(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// Something of the above has changed, or has become known.
    void changed();

private:
    void update();

    DesktopWishes m_wishes;
    InterfaceStyle m_overrideStyle = InterfaceStyle::Unspecified;
    ColorScheme m_colorScheme = ColorScheme::Light;
    double m_textScale = 1.0;
};
