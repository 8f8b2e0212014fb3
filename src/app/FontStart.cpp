#include "FontStart.h"

#include "Theme.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int lowPriority = 5; // of -20 to 19, the lowest

QFont styled(double size, QFont::Weight weight, QFont::Style style = QFont::StyleNormal)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(static_cast<int>(size));
    font.setWeight(weight);
    font.setStyle(style);
    return font;
}

} // namespace

QList<QFont> firstFonts()
{
    return {
        QGuiApplication::font(), // of controls, until they are told theirs
        styled(smallFontSize, QFont::Normal),
        styled(bodyFontSize + 2.0, QFont::Normal),
        styled(fontSize1, QFont::Normal),
        styled(fontSize1, QFont::Normal, QFont::StyleItalic),
        styled(fontSize3, QFont::Normal),
        styled(fontSize3, QFont::Bold),
        styled(fontSize3 + 2.0, QFont::Normal),
        styled(fontSize3 + 2.0, QFont::Bold),
        styled(fontSize3 + 4.0, QFont::Bold),
    };
}

void loadFont(const QFont& font) { (void)QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')); }

void FontStart::run()
{
    // Where there are but two processors, the types come first: a start waits for them longest. Not
    // much less urgent, because this holds locks that others may want.
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), lowPriority);
    loadFont(m_font);
    QFont italic = m_font;
    italic.setItalic(true);
    loadFont(italic);
}
