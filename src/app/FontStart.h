#pragma once

#include <QFont>
#include <QGuiApplication>
#include <QList>
#include <QThread>

/// The fonts of the window as it is first seen, at the natural size of texts: the desktop's wish
/// for another one is not known as early as they are needed.
[[nodiscard]] QList<QFont> firstFonts();

/// Makes a font usable by the calling thread. The font library searches all fonts for it, once for
/// each style and size.
void loadFont(const QFont& font);

/// Starts the font library, and has it look for the fonts that have what is missing in the first
/// one, for each style of the calculator: what the first texts would have to wait for, done by
/// another processor while the window's types are loaded. Lives no longer than the application.
class FontStart : public QThread {
public:
    /// The desktop's theme is asked for its font here: it may be used by its own thread only.
    FontStart()
        : m_font(QGuiApplication::font())
    {
    }
    ~FontStart() override { wait(); }

protected:
    void run() override;

private:
    const QFont m_font;
};
