#include "FontStart.h"

#include <QFontMetricsF>

namespace {

void measureText(const QFont& font)
{
    (void)QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
}

} // namespace

void FontStart::run()
{
    measureText(m_font);
    QFont bold = m_font;
    bold.setBold(true);
    measureText(bold);
    QFont italic = m_font;
    italic.setItalic(true);
    measureText(italic);
}
