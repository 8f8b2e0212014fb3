#include "FontStart.h"

#include "Theme.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <fontconfig/fontconfig.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int leastPriority = 19;

QFont styled(double size, QFont::Weight weight = QFont::Normal, bool italic = false)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(static_cast<int>(size));
    font.setWeight(weight);
    font.setItalic(italic);
    return font;
}

} // namespace

QList<QFont> firstFonts()
{
    return {
        QGuiApplication::font(), // of controls, until they are told theirs
        styled(smallFontSize),
        styled(bodyFontSize + 2.0),
        styled(fontSize1),
        styled(fontSize1, QFont::Normal, true),
        styled(fontSize3),
        styled(fontSize3, QFont::Bold),
        styled(fontSize3 + 2.0),
        styled(fontSize3 + 2.0, QFont::Bold),
        styled(fontSize3 + 4.0, QFont::Bold),
    };
}

void loadFont(const QFont& font) { (void)QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')); }

FontStart::~FontStart()
{
    if (!m_isAsked)
        m_font.set_value({});
    wait();
}

void FontStart::findFonts()
{
    m_isAsked = true;
    m_font.set_value(QGuiApplication::font());
}

void FontStart::run()
{
    // Beside what it prepares for: where there are but two processors, the types come first.
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), leastPriority);
    FcInit();
    QFont font = m_font.get_future().get();
    if (!QGuiApplication::instance())
        return;
    loadFont(font);
    font.setItalic(true);
    loadFont(font);
}
