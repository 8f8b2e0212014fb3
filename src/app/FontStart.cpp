#include "FontStart.h"

#include "FirstView.h"

#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int lowPriority = 5; // of -20 to 19, the lowest

} // namespace

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
