#pragma once

#include "LocalMirror.h"
#include "TransactionScope.h"

namespace mirror {

/// The files that are remembered of one kind, each with a number. All throws SQLite::Exception.
class FileTable {
public:
    FileTable(TransactionScope& scope, FileContent kind)
        : m_scope(scope)
        , m_kind(int(kind))
    {
    }

    /// Nothing for one that is not remembered.
    std::optional<qint64> number(const FileKey& file);
    std::vector<SeenFile> files(const QString& folder);
    void remember(const SeenFile& file);
    void forget(const FileKey& file);
    void forgetAll();
    /// What is known of numbers may be another process's or an undone transaction's business.
    void forgetNumbers() { m_last.reset(); }

private:
    void bindKey(SQLite::Statement& statement, const FileKey& file) const;

    TransactionScope& m_scope;
    int m_kind;
    std::optional<std::pair<FileKey, qint64>> m_last; // asked for row by row
};

} // namespace mirror
