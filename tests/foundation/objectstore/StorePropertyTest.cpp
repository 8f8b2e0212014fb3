#include "FaultyVfs.h"
#include "NSFetchedResultsController.h"
#include "StoreFixture.h"

#include <QTest>

#include <rapidcheck.h>

#include <array>
#include <map>

// Two contexts, each in a container of its own, on one store file, against a plain model of what
// the store and each context should hold.

namespace {

struct Record {
    QString title;
    qint64 stamp = 0;
    int version = 0;
    bool operator==(const Record& other) const
    {
        return title == other.title && stamp == other.stamp;
    }
};

using Records = std::map<qint64, Record>; // by identity

/// What one context should hold: what it last knew of records, and its unsaved changes.
struct ModelContext {
    struct Change {
        std::optional<QString> title;
        std::optional<qint64> stamp;
    };

    Records known; // as first read, until something makes the context read afresh
    std::map<qint64, Change> changed;
    std::map<qint64, int> deleted; // with the version that was known
    std::vector<Record> inserted;

    [[nodiscard]] bool hasChanges() const
    {
        return !changed.empty() || !deleted.empty() || !inserted.empty();
    }
};

/// One context under test beside its model.
struct Side {
    std::unique_ptr<NSPersistentContainer> container;
    std::unique_ptr<NSFetchedResultsController> list;
    std::map<qint64, NSManagedObjectContext::Object> objects; // held, so that none is read afresh
    std::vector<NSManagedObjectContext::Object> inserted;
    ModelContext model;

    [[nodiscard]] NSManagedObjectContext& context() const { return container->viewContext(); }
};

NSFetchRequest newestFirst() { return notesByDate(SortDescriptor::Order::Descending); }

class World {
public:
    World()
    {
        for (Side& side : m_sides) {
            side.container = openContainer(m_folder.file());
            side.list = std::make_unique<NSFetchedResultsController>(newestFirst(), side.context());
            RC_ASSERT(bool(side.list->performFetch()));
        }
        m_sides[1].context().setMergePolicy(NSMergePolicy::NSMergeByPropertyObjectTrumpMergePolicy);
    }

    ~World()
    {
        for (Side& side : m_sides) {
            side.list.reset();
            side.container.reset();
        }
        FaultyVfs::install().wipe();
    }

    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void step()
    {
        Side& side = m_sides[*rc::gen::inRange<std::size_t>(0, 2)];
        switch (*rc::gen::inRange(0, 9)) {
        case 0:
        case 1:
            insert(side);
            break;
        case 2:
        case 3:
            change(side);
            break;
        case 4:
            remove(side);
            break;
        case 5:
            save(side);
            break;
        case 6:
            rollback(side);
            break;
        case 7:
            batchDelete(side);
            break;
        default:
            poll(side);
            break;
        }
        check(side);
    }

private:
    /// A side that has not yet taken in what the other saved shows neither state as a whole.
    void check(Side& side)
    {
        RC_ASSERT(side.context().hasChanges() == side.model.hasChanges());
        const QStringList fetched = titles(side.context(), newestFirst()); // also reads all faults
        if (!m_isUpToDate[index(side)])
            return;
        QStringList expected;
        for (const Record& record : view(side))
            expected.append(record.title);
        RC_ASSERT(fetched == expected);
        checkList(side, expected);
    }

    void checkList(const Side& side, const QStringList& expected) const
    {
        QStringList rows;
        for (int row = 0; row < side.list->rowCount(); ++row)
            rows.append(title(*side.list->object(row)));
        RC_ASSERT(rows == expected);
    }

    std::vector<Record> view(const Side& side) const
    {
        std::vector<Record> records;
        for (const auto& [id, stored] : m_stored) {
            if (side.model.deleted.count(id) != 0)
                continue;
            records.push_back(current(side, id));
        }
        records.insert(records.end(), side.model.inserted.begin(), side.model.inserted.end());
        std::stable_sort(records.begin(), records.end(),
            [](const Record& a, const Record& b) { return a.stamp > b.stamp; });
        return records;
    }

    Record current(const Side& side, qint64 id) const
    {
        Record record = side.model.known.at(id);
        const auto change = side.model.changed.find(id);
        if (change == side.model.changed.end())
            return record;
        record.title = change->second.title.value_or(record.title);
        record.stamp = change->second.stamp.value_or(record.stamp);
        return record;
    }

    std::size_t index(const Side& side) const { return &side == &m_sides[0] ? 0 : 1; }

    Record anyRecord()
    {
        return { QStringLiteral("t%1").arg(*rc::gen::inRange(0, 1000)),
            *rc::gen::inRange<qint64>(0, 6), 1 };
    }

    void insert(Side& side)
    {
        const Record record = anyRecord();
        side.inserted.push_back(addNote(side.context(), record.title, record.stamp));
        side.model.inserted.push_back(record);
    }

    /// A record that both the side and the store have, and that the side has not deleted.
    std::optional<qint64> anyId(const Side& side) const
    {
        std::vector<qint64> ids;
        for (const auto& [id, record] : side.model.known) {
            if (side.model.deleted.count(id) == 0)
                ids.push_back(id);
        }
        if (ids.empty())
            return std::nullopt;
        return ids[*rc::gen::inRange<std::size_t>(0, ids.size())];
    }

    void change(Side& side)
    {
        const std::optional<qint64> id = anyId(side);
        if (!id)
            return;
        const Record before = current(side, *id);
        const Record record = anyRecord();
        NSManagedObject& object = *side.objects.at(*id);
        if (*rc::gen::arbitrary<bool>()) {
            object.setValue(record.title, QStringLiteral("title"));
            if (record.title != before.title)
                side.model.changed[*id].title = record.title;
        } else {
            object.setValue(at(record.stamp), QStringLiteral("stamp"));
            if (record.stamp != before.stamp)
                side.model.changed[*id].stamp = record.stamp;
        }
    }

    void remove(Side& side)
    {
        if (!side.inserted.empty() && *rc::gen::arbitrary<bool>()) {
            side.context().deleteObject(*side.inserted.back());
            side.inserted.pop_back();
            side.model.inserted.pop_back();
            return;
        }
        const std::optional<qint64> id = anyId(side);
        if (!id)
            return;
        side.context().deleteObject(*side.objects.at(*id));
        side.model.changed.erase(*id);
        side.model.deleted[*id] = side.model.known.at(*id).version;
    }

    static ModelContext::Change effective(const Record& known, ModelContext::Change change)
    {
        if (change.title == known.title)
            change.title.reset();
        if (change.stamp == known.stamp)
            change.stamp.reset();
        return change;
    }

    bool conflicts(const Side& side) const
    {
        const auto isStale = [&](qint64 id, bool isGoneFine) {
            const auto stored = m_stored.find(id);
            if (stored == m_stored.end())
                return !isGoneFine;
            return stored->second.version != side.model.known.at(id).version;
        };
        for (const auto& [id, version] : side.model.deleted) {
            if (isStale(id, true))
                return true;
        }
        return std::any_of(
            side.model.changed.begin(), side.model.changed.end(), [&](const auto& entry) {
                const auto change = effective(side.model.known.at(entry.first), entry.second);
                return (change.title || change.stamp) && isStale(entry.first, false);
            });
    }

    void save(Side& side)
    {
        const bool isError = index(side) == 0 && conflicts(side);
        const auto saved = side.context().save();
        RC_ASSERT(bool(saved) == !isError);
        if (isError) {
            RC_ASSERT(saved.error().code == StoreError::Code::Conflict);
            return;
        }
        ModelContext& model = side.model;
        const bool changesStore = model.hasChanges();
        for (const auto& [id, change] : model.changed)
            saveChange(side, id, change);
        for (const auto& [id, version] : model.deleted) {
            m_stored.erase(id);
            model.known.erase(id);
            side.objects.erase(id);
        }
        for (std::size_t i = 0; i < model.inserted.size(); ++i) {
            const qint64 id = side.inserted[i]->objectID().number();
            RC_ASSERT(id > m_highest);
            m_highest = id;
            m_stored[id] = model.inserted[i];
            model.known[id] = model.inserted[i];
            side.objects[id] = side.inserted[i];
        }
        model.changed.clear();
        model.deleted.clear();
        model.inserted.clear();
        side.inserted.clear();
        if (changesStore)
            m_isUpToDate[1 - index(side)] = false;
    }

    void saveChange(Side& side, qint64 id, const ModelContext::Change& wanted)
    {
        const auto change = effective(side.model.known.at(id), wanted);
        if (!change.title && !change.stamp)
            return;
        const auto stored = m_stored.find(id);
        if (stored == m_stored.end()) {
            side.model.known.erase(id);
            side.objects.erase(id);
            return;
        }
        stored->second.title = change.title.value_or(stored->second.title);
        stored->second.stamp = change.stamp.value_or(stored->second.stamp);
        ++stored->second.version;
        side.model.known[id] = stored->second;
    }

    void rollback(Side& side)
    {
        side.context().rollback();
        // What was changed is read afresh; the rest as it was known.
        for (const auto& [id, change] : side.model.changed)
            readAfresh(side, id);
        for (const auto& [id, version] : side.model.deleted)
            readAfresh(side, id);
        side.model.changed.clear();
        side.model.deleted.clear();
        side.model.inserted.clear();
        side.inserted.clear();
    }

    void readAfresh(Side& side, qint64 id)
    {
        const auto stored = m_stored.find(id);
        if (stored == m_stored.end()) {
            side.model.known.erase(id);
            side.objects.erase(id);
        } else {
            side.model.known[id] = stored->second;
        }
    }

    void batchDelete(Side& side)
    {
        const qint64 cutOff = *rc::gen::inRange<qint64>(0, 4);
        NSFetchRequest request { QStringLiteral("Note"), {}, {} };
        request.predicate
            = Predicate { QStringLiteral("stamp"), Predicate::Comparison::LessThan, at(cutOff) };
        NSBatchDeleteRequest deletion(request);
        deletion.resultType = NSBatchDeleteRequestResultType::resultTypeObjectIDs;
        const auto result = side.context().execute(deletion);
        RC_ASSERT(bool(result));
        const auto deleted = std::get<std::vector<NSManagedObjectID>>(result->result);
        NSManagedObjectContext::mergeChanges(
            { { NSDeletedObjectsKey, deleted } }, { &side.context() });

        std::vector<qint64> expected;
        for (const auto& [id, record] : m_stored) {
            if (record.stamp < cutOff)
                expected.push_back(id);
        }
        std::vector<qint64> numbers;
        numbers.reserve(deleted.size());
        for (const NSManagedObjectID& id : deleted)
            numbers.push_back(id.number());
        RC_ASSERT(numbers == expected);
        for (const qint64 id : expected) {
            m_stored.erase(id);
            side.model.known.erase(id);
            side.model.changed.erase(id);
            side.model.deleted.erase(id);
            side.objects.erase(id);
        }
        if (!expected.empty())
            m_isUpToDate[1 - index(side)] = false;
    }

    /// Takes in what the other side saved, as an application that looks for it does.
    void poll(Side& side)
    {
        side.context().setAutomaticallyMergesChangesFromParent(true);
        RC_ASSERT(bool(side.container->persistentStoreCoordinator().pollRemoteChanges()));
        side.context().setAutomaticallyMergesChangesFromParent(false);
        const Records before = side.model.known;
        for (const auto& [id, record] : before) {
            if (m_stored.count(id) == 0) {
                side.model.known.erase(id);
                side.model.changed.erase(id);
                side.model.deleted.erase(id);
                side.objects.erase(id);
            }
        }
        for (const auto& [id, record] : m_stored) {
            const auto change = side.model.changed.find(id);
            if (change != side.model.changed.end())
                change->second = effective(before.at(id), change->second);
            side.model.known[id] = record;
            if (side.model.deleted.count(id) != 0)
                continue;
            if (side.objects.count(id) == 0)
                side.objects[id] = side.context().objectWithID(
                    { noteModel()->entity(QStringLiteral("Note")), id });
        }
        m_isUpToDate[index(side)] = true;
    }

    StoreFolder m_folder;
    Records m_stored;
    qint64 m_highest = 0;
    std::array<Side, 2> m_sides;
    std::array<bool, 2> m_isUpToDate { true, true };
};

} // namespace

class StorePropertyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The seed of a failure is printed; RC_PARAMS="reproduce=..." runs it again.
    void twoContextsOnOneStoreBehaveLikeThePlainModel()
    {
        FaultyVfs::install(); // a store in memory: ten thousand of them would wear out a disk
        if (!qEnvironmentVariableIsSet("RC_PARAMS"))
            qputenv("RC_PARAMS", "max_success=10000");
        QVERIFY(rc::check("two contexts on one store behave like the plain model", [] {
            World world;
            const int steps = *rc::gen::inRange(1, 25);
            for (int i = 0; i < steps; ++i)
                world.step();
        }));
    }
};

QTEST_GUILESS_MAIN(StorePropertyTest)
#include "StorePropertyTest.moc"
