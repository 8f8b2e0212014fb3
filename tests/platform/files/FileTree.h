#pragma once

#include <QByteArrayList>
#include <QTemporaryDir>
#include <QUrl>

#include <functional>

/// A temporary folder for files whose names are any bytes. Every user may look into it.
class FileTree {
public:
    FileTree();

    [[nodiscard]] QByteArray path(const QByteArray& name = {}) const;
    [[nodiscard]] QUrl url(const QByteArray& name) const;

    /// Each is false where it fails.
    [[nodiscard]] bool addFile(const QByteArray& name, const QByteArray& content = {}) const;
    [[nodiscard]] bool addFolder(const QByteArray& name) const;
    [[nodiscard]] bool addLink(const QByteArray& name, const QByteArray& target) const;

    /// Folders in folders, on a path of nearly as many bytes as the system takes. The name of the
    /// innermost one; empty where that fails.
    [[nodiscard]] QByteArray addDeepFolder(const QByteArray& within = {}) const;

    /// Whether there is an item, be it a link that leads nowhere.
    [[nodiscard]] bool has(const QByteArray& name) const;
    [[nodiscard]] QByteArray content(const QByteArray& name) const;
    /// The names in a folder, sorted.
    [[nodiscard]] QByteArrayList names(const QByteArray& folder = {}) const;

private:
    QTemporaryDir m_folder;
};

/// The address of a path whose bytes need not be UTF-8.
[[nodiscard]] QUrl fileUrl(const QByteArray& path);

/// Runs the call in a child process, and gives the diagnostic lines that it prints. A child that
/// did not end by itself, with exit code 0, has a last line that begins with "failed".
[[nodiscard]] QByteArrayList linesOfChild(const std::function<void()>& call);

// For such a child only.

/// From now on the process has no more rights than others on this machine have.
void becomeNobody();

/// Mounts a file system in memory on the folder, which only this process sees; false where the
/// machine does not allow that.
[[nodiscard]] bool mountVolume(const QByteArray& folder);

/// Mounts a folder at a second place, as mountVolume() does.
[[nodiscard]] bool mountAgain(const QByteArray& folder, const QByteArray& place);

/// From now on the system refuses each such call (SYS_...) with the error, as a broken disk or an
/// old file system would.
void refuseSystemCall(long number, int error);
