#include "ZoneDeletion.h"

#include "LineFields.h"

#include <algorithm>

namespace mirror {

namespace {

bool areIn(const std::set<Epoch>& set, const QList<Epoch>& epochs)
{
    return std::ranges::all_of(epochs, [&](const Epoch& epoch) { return set.contains(epoch); });
}

} // namespace

Outcome<> ZoneDeletion::finish()
{
    const auto zone = m_listings.zone();
    if (!zone)
        return zone.error();
    const auto epochs = journalEpochs(*zone);
    if (!epochs)
        return epochs.error();
    if (auto closed = closeEpochs(*zone, *epochs); !closed)
        return closed;
    if (auto removed = removeFolders(*zone, *epochs); !removed)
        return removed;
    const auto left = m_listings.zone();
    if (!left)
        return left.error();
    const bool isAnyLeft = std::ranges::any_of(
        *epochs, [&](const Epoch& epoch) { return left->folders.contains(epoch); });
    if (isAnyLeft || !areIn(left->closed, *epochs))
        return notUnderstood(QStringLiteral("The deletion is not complete."));
    return remember(m_world.local, [](MirrorMemory& memory) {
        if (memory.deletion && memory.deletion->isListed) // otherwise decided anew since
            memory.deletion.reset();
    });
}

/// What is created later is not what the user wanted deleted.
Outcome<QList<Epoch>> ZoneDeletion::journalEpochs(const Zone& zone)
{
    QList<Epoch> journalled;
    const auto remembered = remember(m_world.local, [&](MirrorMemory& memory) {
        if (memory.deletion && !memory.deletion->isListed) {
            QList<Epoch> epochs(zone.folders.begin(), zone.folders.end());
            if (memory.epoch && !epochs.contains(*memory.epoch))
                epochs.append(*memory.epoch);
            memory.deletion = DeletionJournal { true, epochs };
        }
        if (memory.deletion)
            journalled = memory.deletion->epochs;
    });
    return remembered ? Outcome<QList<Epoch>>(journalled) : remembered.error();
}

/// All markers before the first folder: no device may ever see only that one is missing.
Outcome<> ZoneDeletion::closeEpochs(const Zone& zone, const QList<Epoch>& epochs)
{
    if (auto stored = putMarkers(zone, epochs); !stored)
        return stored;
    const auto marked = m_listings.zone(); // what is not seen there is not there
    if (!marked)
        return marked.error();
    if (!areIn(marked->closed, epochs))
        return notUnderstood(QStringLiteral("A marker that was stored is not there."));
    return remember(m_world.local, [&](MirrorMemory& memory) {
        if (memory.epoch && epochs.contains(*memory.epoch))
            m_world.local.records().forgetAll();
    });
}

Outcome<> ZoneDeletion::putMarkers(const Zone& zone, const QList<Epoch>& epochs)
{
    const auto known = memoryOf(m_world.local);
    if (!known)
        return known.error();
    if (!zone.exists && !epochs.isEmpty()) {
        for (const QString& folder : { m_folders.container, m_folders.zone() }) {
            if (auto made = m_world.files.makeCollection(folder); !made)
                return made.error();
        }
    }
    const QByteArray marker = "{\"by\":\"" + deviceText(known->device) + "\",\"at\":"
        + QByteArray::number(qint64(m_world.now().time_since_epoch().count())) + "}\n";
    for (const Epoch& epoch : epochs) {
        if (zone.closed.contains(epoch))
            continue;
        const QString path = m_folders.zone() + epoch.closedMarkerName();
        if (auto stored = m_world.files.put(path, marker); !stored)
            return stored;
    }
    return {};
}

Outcome<> ZoneDeletion::removeFolders(const Zone& zone, const QList<Epoch>& epochs)
{
    for (const Epoch& epoch : epochs) {
        if (!zone.folders.contains(epoch))
            continue;
        auto removed = m_world.files.remove(m_folders.epoch(epoch), Trash::Use);
        if (!removed && removed.error().kind != FileError::Kind::NotFound)
            return removed;
    }
    return {};
}

} // namespace mirror
