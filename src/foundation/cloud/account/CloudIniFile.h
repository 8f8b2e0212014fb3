#pragma once

#include "CloudAccount.h"

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>

namespace mirror {

/// Follows cloud.ini while the program runs, whether or not it and its folder exist.
class CloudIniFile : public QObject {
    Q_OBJECT

public:
    explicit CloudIniFile(QString path, QObject* parent = nullptr);

    /// Reads and watches from now on.
    void start();

    /// What the file holds. Nothing where there is no file.
    [[nodiscard]] const std::optional<AccountFinding>& finding() const { return m_finding; }

Q_SIGNALS:
    /// It was written anew, whether or not it holds something else now; made, or removed.
    void changed();

private:
    void follow();
    void watch();
    void read();

    const QString m_path;
    QFileSystemWatcher m_watcher;
    std::optional<AccountFinding> m_finding;
    QDateTime m_writtenAt;
};

} // namespace mirror
