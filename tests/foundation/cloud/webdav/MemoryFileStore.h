#pragma once

#include "FileStore.h"

#include <QMap>

#include <functional>
#include <memory>
#include <set>

namespace mirror {

/// What stands on a server that several devices share: the path of a collection ends in a slash,
/// and the root is always there.
struct MemoryFiles {
    QMap<QString, QByteArray> files;
    std::set<QString> collections;

    [[nodiscard]] bool hasCollection(const QString& path) const
    {
        return path.isEmpty() || collections.contains(path);
    }
};

/// A FileStore as one device has it, on files in memory, for tests of what stands above. It keeps
/// the contract as a WebDAV server does, and breaks it where a test wants it to.
class MemoryFileStore final : public FileStore {
public:
    enum class Operation { List, Get, Put, MakeCollection, Remove };

    struct Request {
        Operation operation;
        QString path;
    };

    /// What goes wrong with one request.
    struct Fault {
        enum class When {
            Instead, ///< nothing is done
            Midway, ///< `part` bytes of a file, or members of a collection to be removed, are done
            Afterwards, ///< all is done; only the answer is lost
        };

        When when = When::Instead;
        qsizetype part = 0;
        /// What is answered; without an error, the fault is kept secret.
        std::optional<FileError> error = FileError { FileError::Kind::Network, 0, std::nullopt,
            QStringLiteral("A fault of the test.") };
    };

    /// Asked before each request; may act on the files, as another device would.
    using Faults = std::function<std::optional<Fault>(const Request&)>;

    explicit MemoryFileStore(std::shared_ptr<MemoryFiles> files);

    void setFaults(Faults faults) { m_faults = std::move(faults); }
    void setServerDate(std::optional<QDateTime> date) { m_serverDate = std::move(date); }
    [[nodiscard]] const QList<Request>& requests() const { return m_requests; }

    Outcome<QList<FileEntry>> list(const QString& collection) override;
    Outcome<Download> get(const QString& file, QIODevice& device, qint64 limit) override;
    Outcome<> put(const QString& file, const QByteArray& bytes) override;
    Outcome<Making> makeCollection(const QString& collection) override;
    Outcome<> remove(const QString& path, Trash trash) override;
    [[nodiscard]] std::optional<QDateTime> serverDate() const override { return m_serverDate; }

private:
    template <class T>
    Outcome<T> faulty(const Request& request, const std::function<Outcome<T>(qsizetype)>& action);
    Outcome<QList<FileEntry>> listed(const QString& collection) const;
    Outcome<Download> fetched(
        const QString& file, QIODevice& device, qint64 limit, qsizetype part) const;
    Outcome<> stored(const QString& file, const QByteArray& bytes);
    Outcome<Making> made(const QString& collection);
    Outcome<> removed(const QString& path, qsizetype part);

    std::shared_ptr<MemoryFiles> m_files;
    Faults m_faults;
    QList<Request> m_requests;
    std::optional<QDateTime> m_serverDate;
};

} // namespace mirror
