#include "Appearance.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

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
    update();
}

Appearance::~Appearance() { registry().removeOne(this); }

QList<Appearance*> Appearance::connected() { return registry(); }

void Appearance::setOverrideStyle(InterfaceStyle style)
{
    m_overrideStyle = style;
    update();
}

bool Appearance::known() const
{
    return m_wishes.known() || m_overrideStyle != InterfaceStyle::Unspecified;
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
    Q_EMIT changed();
}
