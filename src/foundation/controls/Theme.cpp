#include "Theme.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>

Theme::Theme(QObject* parent)
    : QObject(parent)
{
    connect(&m_appearance, &Appearance::changed, this, &Theme::changed);
}

bool Theme::rightToLeft() const { return QGuiApplication::isRightToLeft(); }

/// Whole pixels: fonts have no others.
double Theme::scaledText(double size) const { return std::round(size * m_appearance.textScale()); }

/// Room for larger texts; smaller ones leave it as it is.
double Theme::widened(double width) const
{
    return std::round(width * std::max(1.0, m_appearance.textScale()));
}

/// Icons grow half as much as texts, and stay inside the least button.
double Theme::iconSize() const
{
    return std::clamp(std::round(22.0 * (1.0 + m_appearance.textScale()) / 2.0), 22.0, 36.0);
}

double Theme::listRowHeight() const
{
    const double least = 56.0;
    return std::max(least, std::ceil(least * m_appearance.textScale() / 8.0) * 8.0);
}
