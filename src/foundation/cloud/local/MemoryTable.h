#pragma once

#include "LocalMirror.h"
#include "TransactionScope.h"

namespace mirror {

/// A time as a number that sorts as the time does.
[[nodiscard]] qint64 packed(HybridTime time);
[[nodiscard]] HybridTime unpacked(qint64 number);

/// The one row of what is remembered beside the rows. All throws SQLite::Exception.
class MemoryTable {
public:
    explicit MemoryTable(TransactionScope& scope)
        : m_scope(scope)
    {
    }

    /// Read once in a transaction.
    const MirrorMemory& memory();
    void setMemory(const MirrorMemory& memory);
    /// Writes what was set.
    void write();
    void forget();

    /// One text by the name of its column: "home" or "certificate".
    QString text(const char* column);
    void setText(const char* column, const QString& text);

private:
    TransactionScope& m_scope;
    std::optional<MirrorMemory> m_memory;
    bool m_isChanged = false;
};

} // namespace mirror
