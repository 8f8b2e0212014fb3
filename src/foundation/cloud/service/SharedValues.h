#pragma once

#include "NSUbiquitousKeyValueStore.h"
#include "SqliteLocalMirror.h"

namespace mirror {

/// A value that the devices agree on.
struct SharedValue {
    QString key;
    bool value = false;
};

/// Stamps the choices that were made here and keeps them for the other devices. False where they
/// could not be written: then none was.
[[nodiscard]] bool keepChanges(SqliteLocalMirror& local, const QList<UbiquitousChange>& changes);

/// Those values that are booleans.
[[nodiscard]] QList<SharedValue> sharedValues(SqliteLocalMirror& local);

} // namespace mirror
