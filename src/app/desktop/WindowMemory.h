#pragma once

#include "WindowGeometry.h"

#include <QObject>
#include <QString>
#include <QTimer>

class QWindow;

/// Shows the window as large and where it was the last time, and remembers that for the next one:
/// in a file of the user's state, which is not a preference. Without such a file the window is as
/// large as it was made, and a file that cannot be read or written is none.
class WindowMemory : public QObject {
    Q_OBJECT

public:
    /// The window must outlive this object.
    explicit WindowMemory(QWindow& window, QString file = defaultFile());

    /// Shows the window for the first time.
    void show();

    /// "window.ini" in the application's folder for states of the XDG base directories, which
    /// Qt 6.4 does not know.
    [[nodiscard]] static QString defaultFile();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void remember();

    QWindow& m_window;
    QString m_file;
    WindowGeometry m_geometry;
    QTimer m_rest; // since the last change
};
