#include "MemoryTable.h"

namespace mirror {

namespace {

constexpr qint64 CountersPerMillisecond = HybridTime::MaxCounter + 1;
constexpr QLatin1Char Separator('\n');
const QString Listed = QStringLiteral("listed");
const QString Unlisted = QStringLiteral("unlisted");

QString textOf(const QList<Epoch>& epochs)
{
    QStringList names;
    for (const Epoch& epoch : epochs)
        names.append(epoch.folderName());
    return names.join(Separator);
}

QList<Epoch> epochsIn(const QString& text)
{
    QList<Epoch> epochs;
    for (const QString& name : text.split(Separator)) {
        if (const auto epoch = Epoch::fromFolderName(name))
            epochs.append(*epoch);
    }
    return epochs;
}

QString textOf(const DeletionJournal& deletion)
{
    return (deletion.isListed ? Listed : Unlisted) + Separator + textOf(deletion.epochs);
}

QString textIn(const SQLite::Column& column) { return QString::fromUtf8(column.getText()); }

MirrorMemory memoryIn(SQLite::Statement& row)
{
    MirrorMemory memory;
    memory.phase = MirrorPhase(row.getColumn(0).getInt());
    memory.account = textIn(row.getColumn(1));
    memory.epoch = Epoch::fromFolderName(textIn(row.getColumn(2)));
    memory.device = DeviceId(row.getColumn(3).getInt64());
    memory.lastTime = unpacked(row.getColumn(4).getInt64());
    memory.clockOffset = std::chrono::milliseconds(row.getColumn(5).getInt64());
    memory.closedEpochs = epochsIn(textIn(row.getColumn(6)));
    if (!row.getColumn(7).isNull()) {
        const QString text = textIn(row.getColumn(7));
        memory.deletion = DeletionJournal { text.startsWith(Listed), epochsIn(text) };
    }
    memory.missingListings = row.getColumn(8).getInt();
    memory.missingSince = WallTime(std::chrono::milliseconds(row.getColumn(9).getInt64()));
    return memory;
}

} // namespace

qint64 packed(HybridTime time)
{
    return time.milliseconds() * CountersPerMillisecond + time.counter();
}

HybridTime unpacked(qint64 number)
{
    return HybridTime::of(number / CountersPerMillisecond, number % CountersPerMillisecond)
        .value_or(HybridTime());
}

const MirrorMemory& MemoryTable::memory()
{
    if (m_memory)
        return *m_memory;
    Query query(m_scope.connection(),
        "SELECT phase, account, epoch, device, time, offset, closed, deletion, missing, since "
        "FROM _mirror_memory");
    m_memory = query->executeStep() ? memoryIn(*query) : MirrorMemory();
    return *m_memory;
}

void MemoryTable::setMemory(const MirrorMemory& memory)
{
    m_memory = memory;
    m_isChanged = true;
}

void MemoryTable::write()
{
    if (!m_isChanged)
        return;
    const MirrorMemory& memory = *m_memory;
    Query query(m_scope.connection(),
        "INSERT INTO _mirror_memory (one, phase, account, epoch, device, time, offset, closed, "
        "deletion, missing, since) VALUES (1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT DO UPDATE "
        "SET phase = excluded.phase, account = excluded.account, epoch = excluded.epoch, "
        "device = excluded.device, time = excluded.time, offset = excluded.offset, "
        "closed = excluded.closed, deletion = excluded.deletion, missing = excluded.missing, "
        "since = excluded.since");
    query->clearBindings();
    query->bind(1, int(memory.phase));
    query->bind(2, memory.account.toStdString());
    if (memory.epoch)
        query->bind(3, memory.epoch->folderName().toStdString());
    query->bind(4, static_cast<int64_t>(memory.device));
    query->bind(5, static_cast<int64_t>(packed(memory.lastTime)));
    query->bind(6, static_cast<int64_t>(memory.clockOffset.count()));
    query->bind(7, textOf(memory.closedEpochs).toStdString());
    if (memory.deletion)
        query->bind(8, textOf(*memory.deletion).toStdString());
    query->bind(9, memory.missingListings);
    query->bind(10, static_cast<int64_t>(memory.missingSince.time_since_epoch().count()));
    query->exec();
    m_isChanged = false;
}

void MemoryTable::forget()
{
    m_memory.reset();
    m_isChanged = false;
}

QString MemoryTable::text(const char* column)
{
    Query query(m_scope.connection(), std::string("SELECT ") + column + " FROM _mirror_memory");
    return query->executeStep() ? textIn(query->getColumn(0)) : QString();
}

void MemoryTable::setText(const char* column, const QString& text)
{
    setMemory(memory()); // so that there is a row
    write();
    Query query(m_scope.connection(), std::string("UPDATE _mirror_memory SET ") + column + " = ?");
    query->bind(1, text.toStdString());
    query->exec();
}

} // namespace mirror
