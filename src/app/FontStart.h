#pragma once

#include <QFont>
#include <QGuiApplication>
#include <QThread>

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
