#pragma once

#include <QThread>

/// Starts the font library, and has it look for the fonts that have what is missing in the first
/// one, for each style of the calculator: what the first texts would have to wait for, done by
/// another processor while the window's types are loaded. From the application object on.
class FontStart : public QThread {
public:
    FontStart() { start(); }
    ~FontStart() override { wait(); }

protected:
    void run() override;
};
