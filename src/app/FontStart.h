#pragma once

#include <QFont>
#include <QList>
#include <QThread>

#include <future>

/// The fonts of the window as it is first seen, at the natural size of texts.
[[nodiscard]] QList<QFont> firstFonts();

/// Makes a font usable by the calling thread. The font library searches all fonts for it, once for
/// each style and size.
void loadFont(const QFont& font);

/// Starts the font library on another processor, so that the first text has not to wait for it.
/// Its settings are read while the application object is made; after findFonts it looks for the
/// fonts that have what is missing in the first one, for each style of the calculator. It has
/// finished when that is done.
class FontStart : public QThread {
public:
    FontStart() { start(); }
    ~FontStart() override;

    /// Once, when the application object is there. The desktop's theme is asked for its font by the
    /// caller: it may be used by its own thread only.
    void findFonts();

protected:
    void run() override;

private:
    std::promise<QFont> m_font;
    bool m_isAsked = false;
};
