#pragma once

#include "NSManagedObjectID.h"

#include <QDateTime>

#include <vector>

enum class PersistentHistoryChangeKind { Insert = 0, Update = 1, Delete = 2 };

/// One change of one record, as the history keeps it. A deletion stays as a tombstone: its
/// identity is known for ever, its values are not.
struct PersistentHistoryChange {
    PersistentHistoryChangeKind kind = PersistentHistoryChangeKind::Insert;
    NSManagedObjectID id;
    quint64 attributes = 0; ///< of an update: positions of the changed attributes, a set of bits
};

/// What one save or batch deletion changed.
struct PersistentHistoryTransaction {
    qint64 number = 0; ///< grows from one transaction to the next, with gaps
    QDateTime stamp;
    QString author; ///< as the context named it
    std::vector<PersistentHistoryChange> changes;
};
