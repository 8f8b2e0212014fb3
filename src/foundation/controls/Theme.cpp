#include "Theme.h"

#include <QGuiApplication>

Theme::Theme(QObject* parent)
    : QObject(parent)
{
    connect(&m_appearance, &Appearance::changed, this, &Theme::changed);
}

bool Theme::rightToLeft() const { return QGuiApplication::isRightToLeft(); }
