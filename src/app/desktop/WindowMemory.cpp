#include "WindowMemory.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QWindow>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// Dragging a window does not write all the time; and by then the window is known to be maximised
/// that was told its new size first.
constexpr auto rest = 250ms;
/// Many times what is ever written.
constexpr std::size_t greatestLength = 4096;

/// Nothing where there is no such file. Never waits, whatever the file is.
QByteArray contentsOf(const QString& file)
{
    const int descriptor
        = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return {};
    std::array<char, greatestLength> buffer {};
    const ssize_t length = ::read(descriptor, buffer.data(), buffer.size());
    ::close(descriptor);
    return { buffer.data(), std::max<qsizetype>(length, 0) };
}

/// Makes the folders as the XDG base directories ask for them: for nobody else.
void makeFolder(const QString& folder)
{
    const QString parent = QFileInfo(folder).path();
    if (QFileInfo::exists(folder) || parent == folder)
        return;
    makeFolder(parent);
    ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
}

/// Replaces the file at once. It is not waited for until it is on the disk: no more than the place
/// of a window can be lost.
void replace(const QString& file, const QByteArray& text)
{
    makeFolder(QFileInfo(file).path());
    const QByteArray name = QFile::encodeName(file);
    // Two programs that write at once must not share it.
    const QByteArray fresh = name + '.' + QByteArray::number(QCoreApplication::applicationPid());
    const int descriptor = ::open(fresh.constData(),
        O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        return;
    const bool isWhole
        = ::write(descriptor, text.constData(), static_cast<std::size_t>(text.size()))
        == text.size();
    ::close(descriptor);
    if (!isWhole || std::rename(fresh.constData(), name.constData()) != 0)
        ::unlink(fresh.constData());
}

/// Under Wayland programs neither learn nor choose where their windows are.
bool knowsPlaces() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

QList<QRect> screens()
{
    QList<QRect> areas;
    for (const QScreen* const screen : QGuiApplication::screens()) // the main one is the first
        areas.append(screen->availableGeometry());
    return areas;
}

} // namespace

WindowMemory::WindowMemory(QWindow& window, QString file)
    : m_window(window)
    , m_file(std::move(file))
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(rest);
    connect(&m_rest, &QTimer::timeout, this, &WindowMemory::remember);
    // Where the window is not closed before.
    connect(qGuiApp, &QCoreApplication::aboutToQuit, this, &WindowMemory::remember);
}

QString WindowMemory::defaultFile()
{
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    // Others are to be ignored.
    const QString states
        = QDir::isAbsolutePath(given) ? given : QDir::homePath() + QLatin1String("/.local/state");
    return QStringList { states, QCoreApplication::organizationName(),
        QCoreApplication::applicationName(), QStringLiteral("window.ini") }
        .join(QLatin1Char('/'));
}

void WindowMemory::show()
{
    m_geometry = { .size = m_window.size() };
    if (const auto remembered = windowGeometryFrom(contentsOf(m_file))) {
        m_geometry = restored(*remembered, screens(), m_window.minimumSize());
        if (m_geometry.place && knowsPlaces())
            m_window.setPosition(*m_geometry.place);
        m_window.resize(m_geometry.size);
    }
    m_window.installEventFilter(this);
    if (m_geometry.isMaximised)
        m_window.showMaximized();
    else
        m_window.show();
}

bool WindowMemory::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
        m_rest.start();
        break;
    case QEvent::Close:
        remember();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void WindowMemory::remember()
{
    m_rest.stop();
    const Qt::WindowStates states = m_window.windowStates();
    if (!m_window.isVisible() || states.testFlag(Qt::WindowFullScreen))
        return;
    const WindowGeometry before = m_geometry;
    m_geometry.isMaximised = states.testFlag(Qt::WindowMaximized);
    // What a maximised window has is the screen's; it goes back to what it had before.
    if (!m_geometry.isMaximised) {
        m_geometry.size = m_window.size();
        m_geometry.frame = m_window.frameMargins();
        m_geometry.place = knowsPlaces() ? std::optional(m_window.position()) : m_geometry.place;
    }
    if (m_geometry != before)
        replace(m_file, textOf(m_geometry));
}
