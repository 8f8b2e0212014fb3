#include "Appearance.h"

#include "TextScale.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

#include <optional>
#include <utility>

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

std::optional<ColorScheme> forcedScheme(InterfaceStyle style)
{
    switch (style) {
    case InterfaceStyle::Light:
        return ColorScheme::Light;
    case InterfaceStyle::Dark:
        return ColorScheme::Dark;
    case InterfaceStyle::Unspecified:
        break;
    }
    return std::nullopt;
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
    // Every colour and size on the screen follows this signal.
    const Look previous = std::exchange(m_look, look());
    if (m_look != previous)
        Q_EMIT changed();
    if (!std::exchange(m_wasKnown, known()) && known())
        Q_EMIT becameKnown();
}

Appearance::Look Appearance::look() const
{
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return {
        .colorScheme = forcedScheme(m_overrideStyle)
                           .value_or(m_wishes.colorScheme().value_or(schemeOfPalette())),
        .contrast = m_wishes.contrast(),
        .textScale = remainingTextScale(m_wishes.textScale(), QGuiApplication::platformName(),
            screen ? screen->devicePixelRatio() : 1.0),
        .reducedMotion = m_wishes.reducedMotion(),
    };
}
