#include "CloudIniFile.h"

#include "CloudIni.h"
#include "CoreDumps.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace mirror {

namespace {

constexpr qint64 largestFile = 64LL * 1024; // bytes; what a user writes is a hundred

/// Where the folder does not exist, the nearest one above it in which it may come to be.
QString nearestFolder(const QString& path)
{
    QDir folder = QFileInfo(path).absoluteDir();
    while (!folder.exists() && !folder.isRoot())
        folder.setPath(QFileInfo(folder.path()).path());
    return folder.path();
}

AccountFinding readFile(const QString& path)
{
    // It is not meant to hold a password, but some will write one there.
    keepMemoryOutOfCoreDumps();
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return { std::nullopt, QStringLiteral("cloud.ini cannot be read.") };
    if (file.size() > largestFile)
        return { std::nullopt, QStringLiteral("cloud.ini is too long.") };
    return readCloudIni(file.read(largestFile));
}

} // namespace

CloudIniFile::CloudIniFile(QString path, QObject* parent)
    : QObject(parent)
    , m_path(std::move(path))
    , m_watcher(this)
{
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &CloudIniFile::follow);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &CloudIniFile::follow);
}

void CloudIniFile::start()
{
    watch();
    read();
}

void CloudIniFile::follow()
{
    const auto before = std::make_pair(m_finding, m_writtenAt);
    watch();
    read();
    if (std::make_pair(m_finding, m_writtenAt) != before)
        Q_EMIT changed();
}

void CloudIniFile::watch()
{
    // What was replaced by another of its name is no longer watched, though the watcher lists it.
    const QStringList watched = m_watcher.directories() + m_watcher.files();
    for (const QString& path : watched)
        m_watcher.removePath(path);

    QString folder;
    // A folder may have come to be before the one around it was watched.
    while (folder != nearestFolder(m_path)) {
        folder = nearestFolder(m_path);
        m_watcher.addPath(folder);
    }
    if (QFile::exists(m_path))
        m_watcher.addPath(m_path);
}

void CloudIniFile::read()
{
    const QFileInfo info(m_path);
    m_finding = info.exists() ? std::optional(readFile(m_path)) : std::nullopt;
    m_writtenAt = info.lastModified();
}

} // namespace mirror
