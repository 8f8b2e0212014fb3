#include "FontStart.h"

#include <QFontMetricsF>
#include <QGuiApplication>

namespace {

void measureText(const QFont& font)
{
    (void)QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
}

} // namespace

void FontStart::run()
{
    const QFont regular = QGuiApplication::font();
    measureText(regular);
    QFont bold = regular;
    bold.setBold(true);
    measureText(bold);
    QFont italic = regular;
    italic.setItalic(true);
    measureText(italic);
}
