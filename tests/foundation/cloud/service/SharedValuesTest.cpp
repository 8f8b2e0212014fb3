#include "SharedValues.h"
#include "StoreFixture.h"

#include <QTest>

using namespace mirror;

/// The choices of this device among those that the devices share.
class SharedValuesTest : public QObject {
    Q_OBJECT

private:
    const QString m_key = QStringLiteral("choice");
    std::unique_ptr<StoreFolder> m_folder;
    std::unique_ptr<NSPersistentContainer> m_container;
    std::unique_ptr<RecordMapping> m_mapping;
    std::unique_ptr<SqliteLocalMirror> m_local;

    UbiquitousChange change(bool value, qint64 milliseconds) const
    {
        return { m_key, value, at(milliseconds) };
    }
    std::optional<KeyValue> entry()
    {
        const LocalTransaction reading(*m_local);
        return m_local->keyValues().find(Text::of(m_key));
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<StoreFolder>();
        const auto model = noteModel();
        m_container = openContainer(m_folder->file(), model);
        m_mapping = std::make_unique<RecordMapping>(
            *model->entity(QStringLiteral("Note")), "notes", QStringLiteral("title"));
        m_local = std::move(*SqliteLocalMirror::open(m_folder->file(), *model, *m_mapping));
        LocalTransaction writing(*m_local);
        MirrorMemory memory;
        memory.device = DeviceId(7);
        m_local->setMemory(memory);
        QVERIFY(writing.commit());
    }

    void cleanup()
    {
        m_local.reset();
        m_container.reset();
    }

    void aChoiceIsKeptWithItsTime()
    {
        QVERIFY(keepChanges(*m_local, { change(true, 1'763'690'400'000) }));

        QCOMPARE(entry()->state.time.milliseconds(), 1'763'690'400'000);
        QCOMPARE(int(entry()->state.device), 7);
        const QList<SharedValue> values = sharedValues(*m_local);
        QCOMPARE(values.size(), 1);
        QCOMPARE(values.first().key, m_key);
        QCOMPARE(values.first().value, true);
    }

    void theSameChoiceIsKeptOnce()
    {
        QVERIFY(keepChanges(*m_local, { change(true, 1'763'690'400'000) }));
        const auto first = entry();

        QVERIFY(keepChanges(*m_local, { change(true, 1'763'690'400'000) }));

        QVERIFY(entry() == first);
    }

    void aLaterChoiceIsStampedAfterAllThatWasSeen()
    {
        LocalTransaction writing(*m_local);
        MirrorMemory memory = m_local->memory();
        memory.lastTime = *HybridTime::of(1'763'690'500'000, 3);
        m_local->setMemory(memory);
        QVERIFY(writing.commit());

        QVERIFY(keepChanges(*m_local, { change(false, 1'763'690'400'000) }));

        QVERIFY(entry()->state.time > memory.lastTime);
        QCOMPARE(sharedValues(*m_local).first().value, false);
    }

    void whatIsNoBooleanIsNoChoice()
    {
        LocalTransaction writing(*m_local);
        m_local->keyValues().store({ Text::of(u"other"), { {}, {}, SmallValue(qint64(5)), {} } });
        QVERIFY(writing.commit());

        QVERIFY(sharedValues(*m_local).isEmpty());
    }
};

QTEST_GUILESS_MAIN(SharedValuesTest)
#include "SharedValuesTest.moc"
