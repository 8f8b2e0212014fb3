#include "SharedValues.h"

namespace mirror {

namespace {

/// A crash may have come between keeping a change and the news of it.
bool isKept(const std::optional<KeyValue>& entry, const UbiquitousChange& change, DeviceId device)
{
    return entry && entry->state.device == device && entry->state.value == SmallValue(change.value)
        && entry->state.time.milliseconds() >= change.madeAt.toMSecsSinceEpoch();
}

void keep(SqliteLocalMirror& local, const UbiquitousChange& change)
{
    MirrorMemory memory = local.memory();
    const Text key = Text::of(change.key);
    const auto known = local.keyValues().find(key);
    if (isKept(known, change, memory.device))
        return;
    HybridClock clock(memory.lastTime);
    const WallTime madeAt(std::chrono::milliseconds(change.madeAt.toMSecsSinceEpoch()));
    KeyValue entry { key, {} };
    if (known)
        entry.state.unknown = known->state.unknown;
    entry.state.time = clock.next(madeAt, memory.clockOffset);
    entry.state.device = memory.device;
    entry.state.value = change.value;
    memory.lastTime = clock.last();
    local.setMemory(memory);
    local.keyValues().store(entry);
}

} // namespace

bool keepChanges(SqliteLocalMirror& local, const QList<UbiquitousChange>& changes)
{
    if (changes.isEmpty())
        return true;
    LocalTransaction writing(local);
    for (const UbiquitousChange& change : changes)
        keep(local, change);
    return writing.commit();
}

QList<SharedValue> sharedValues(SqliteLocalMirror& local)
{
    LocalTransaction reading(local);
    QList<SharedValue> values;
    for (const KeyValue& entry : local.keyValues().all()) {
        if (const bool* value = std::get_if<bool>(&entry.state.value))
            values.append({ entry.key.toString(), *value });
    }
    return reading.commit() ? values : QList<SharedValue>();
}

} // namespace mirror
