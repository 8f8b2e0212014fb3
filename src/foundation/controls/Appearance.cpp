#include "Appearance.h"

#include "TextScale.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

namespace {

QList<Appearance*>& registry()
{
    static QList<Appearance*> appearances;
    return appearances;
}

/// A desktop without a portal may say "dark" by giving programs light text on a dark ground.
ColorScheme schemeOfPalette()
{
    const QPalette palette = QGuiApplication::palette();
    const bool dark = palette.color(QPalette::WindowText).lightness()
        > palette.color(QPalette::Window).lightness();
    return dark ? ColorScheme::Dark : ColorScheme::Light;
}

} // namespace

Appearance::Appearance()
{
    registry().append(this);
    qGuiApp->installEventFilter(this);
    connect(&m_wishes, &DesktopWishes::changed, this, &Appearance::update);
    if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
        // Another device pixel ratio gives the screen another size in points.
        connect(screen, &QScreen::geometryChanged, this, &Appearance::update);
        connect(screen, &QScreen::logicalDotsPerInchChanged, this, &Appearance::update);
    }
    update();
}

Appearance::~Appearance() { registry().removeOne(this); }

QList<Appearance*> Appearance::connected() { return registry(); }

void Appearance::setOverrideStyle(InterfaceStyle style)
{
    m_overrideStyle = style;
    update();
}

bool Appearance::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        update();
    return QObject::eventFilter(watched, event);
}

void Appearance::update()
{
    switch (m_overrideStyle) {
    case InterfaceStyle::Light:
        m_colorScheme = ColorScheme::Light;
        break;
    case InterfaceStyle::Dark:
        m_colorScheme = ColorScheme::Dark;
        break;
    case InterfaceStyle::Unspecified:
        m_colorScheme = m_wishes.colorScheme().value_or(schemeOfPalette());
        break;
    }
    const QScreen* const screen = QGuiApplication::primaryScreen();
    m_textScale = remainingTextScale(m_wishes.textScale(), QGuiApplication::platformName(),
        screen ? screen->devicePixelRatio() : 1.0);
    Q_EMIT changed();
}
