#include "SqliteLocalMirror.h"

#include "MirrorTables.h"
#include "sqlite/SqliteStore.h"

namespace mirror {

namespace {

constexpr std::size_t ChangesPerTransaction = 2'000; // some milliseconds
constexpr auto Home = "home";
constexpr auto Certificate = "certificate"; // hash and account
constexpr QLatin1Char PinSeparator(' ');

} // namespace

Result<std::unique_ptr<SqliteLocalMirror>> SqliteLocalMirror::open(
    const QString& file, const NSManagedObjectModel& model, const RecordMapping& mapping)
{
    StoreSettings settings;
    settings.path = file;
    settings.keepsHistory = true;
    auto store = SqliteStore::open(settings, model);
    if (!store)
        return store.error();
    SqliteConnection& connection = (*store)->connection();
    if (auto prepared = guarded(file, [&] { MirrorTables::prepare(connection); }); !prepared)
        return prepared.error();
    return std::unique_ptr<SqliteLocalMirror>(new SqliteLocalMirror(std::move(*store), mapping));
}

SqliteLocalMirror::SqliteLocalMirror(
    std::unique_ptr<SqliteStore> store, const RecordMapping& mapping)
    : m_store(std::move(store))
    , m_scope(m_store->connection())
    , m_memory(m_scope)
    , m_records(m_scope, mapping)
    , m_values(m_scope)
    , m_changes(*m_store, m_scope, mapping, m_memory)
{
}

SqliteLocalMirror::~SqliteLocalMirror() = default;

void SqliteLocalMirror::begin()
{
    bool isUpToDate = false;
    while (!isUpToDate && !m_scope.isFailed()) {
        m_scope.attempt([&] {
            beginOnce();
            isUpToDate = m_changes.follow(ChangesPerTransaction);
        });
        if (!isUpToDate && !m_scope.isFailed() && !commit())
            return;
    }
}

void SqliteLocalMirror::beginOnce()
{
    m_transaction = std::make_unique<SQLite::Transaction>(
        m_scope.connection().database(), SQLite::TransactionBehavior::IMMEDIATE);
    m_scope.connection().requireInPlace();
    m_scope.open(m_store->rowWriter());
}

bool SqliteLocalMirror::commit()
{
    m_scope.attempt([&] {
        m_records.flush();
        m_memory.write();
        m_scope.rows().writeHistory(MirrorAuthor);
        m_transaction->commit();
    });
    if (m_scope.isFailed())
        return false;
    end();
    return true;
}

void SqliteLocalMirror::rollBack() noexcept { end(); }

void SqliteLocalMirror::end()
{
    m_transaction.reset(); // undoes what was not committed
    m_scope.close();
    m_scope.forgetFailure();
    m_memory.forget();
    m_records.reset();
    m_values.reset();
}

MirrorMemory SqliteLocalMirror::memory()
{
    return m_scope.attempt([&] { return m_memory.memory(); });
}

void SqliteLocalMirror::setMemory(const MirrorMemory& memory)
{
    m_scope.attempt([&] {
        m_memory.setMemory(memory);
        if (memory.phase != MirrorPhase::Off)
            m_changes.startFollowing();
    });
}

// One counts what other connections committed, the other what this one wrote.
qint64 SqliteLocalMirror::revision()
{
    return m_scope.attempt([&] {
        SqliteConnection& connection = m_scope.connection();
        const qint64 others = connection.integer("PRAGMA data_version");
        return others << 32 | quint32(connection.database().getTotalChanges());
    });
}

bool SqliteLocalMirror::hasLocalChanges()
{
    const auto news = guarded(m_scope.connection().path(), [&] { return m_changes.hasNews(); });
    return news && *news;
}

MirrorStanding SqliteLocalMirror::standing()
{
    const auto read = guarded(m_scope.connection().path(), [&] {
        Query query(m_scope.connection(),
            "SELECT phase, deletion IS NOT NULL, EXISTS (SELECT * FROM _mirror_value WHERE carrier "
            "IS NULL) FROM _mirror_memory");
        if (!query->executeStep())
            return MirrorStanding();
        return MirrorStanding { MirrorPhase(query->getColumn(0).getInt()),
            query->getColumn(1).getInt() != 0, query->getColumn(2).getInt() != 0 };
    });
    return read ? *read : MirrorStanding();
}

void SqliteLocalMirror::forgetHistory(const QDateTime& before)
{
    (void)guarded(m_scope.connection().path(), [&] {
        Query query(m_scope.connection(),
            "SELECT max(number) FROM _store_history WHERE stamp < ? AND number <= (SELECT history "
            "FROM _mirror_progress)");
        query->bind(1, static_cast<int64_t>(before.toMSecsSinceEpoch()));
        const qint64 last = query->executeStep() ? query->getColumn(0).getInt64() : 0;
        if (last > 0)
            pruneHistory(m_scope.connection(), last);
    });
}

QString SqliteLocalMirror::home()
{
    return m_scope.attempt([&] { return m_memory.text(Home); });
}

void SqliteLocalMirror::setHome(const QString& home)
{
    m_scope.attempt([&] { m_memory.setText(Home, home); });
}

CertificatePin SqliteLocalMirror::certificatePin()
{
    return m_scope.attempt([&] {
        const QString text = m_memory.text(Certificate);
        const qsizetype end = text.indexOf(PinSeparator);
        return CertificatePin { text.mid(end + 1),
            text.left(std::max<qsizetype>(end, 0)).toLatin1() };
    });
}

void SqliteLocalMirror::setCertificatePin(const CertificatePin& pin)
{
    m_scope.attempt([&] {
        m_memory.setText(Certificate, QString::fromLatin1(pin.sha256) + PinSeparator + pin.account);
    });
}

} // namespace mirror
