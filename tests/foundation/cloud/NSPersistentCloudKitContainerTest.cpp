#include "NSPersistentCloudKitContainer.h"
#include "NSFetchedResultsController.h"
#include "StoreFixture.h"

#include <QTest>

class NSPersistentCloudKitContainerTest : public QObject {
    Q_OBJECT

private:
    StoreFolder m_folder;

    template <class Container> std::size_t transactionsAfterOneSave(const QStringList& options)
    {
        Container container(QStringLiteral("Notes"), noteModel());
        NSPersistentStoreDescription& description = container.persistentStoreDescriptions().front();
        description.setURL(QUrl::fromLocalFile(m_folder.file()));
        for (const QString& option : options)
            description.setOption(true, option);
        container.loadPersistentStores([](const auto&, const auto& error) { QVERIFY(!error); });
        addNote(container.viewContext(), QStringLiteral("a"));
        mustSave(container.viewContext());
        return container.persistentStoreCoordinator().persistentHistory(0)->size();
    }

    void load(NSPersistentContainer& container)
    {
        container.persistentStoreDescriptions().front().setURL(
            QUrl::fromLocalFile(m_folder.file()));
        container.loadPersistentStores([](const auto&, const auto& error) { QVERIFY(!error); });
    }

private Q_SLOTS:
    void init() { m_folder = StoreFolder(); }

    void everyChangeIsRecordedWithoutAnOption()
    {
        QCOMPARE(transactionsAfterOneSave<NSPersistentCloudKitContainer>({}), std::size_t(1));
    }

    void aPlainContainerRecordsOnlyWhatItsOptionWishes()
    {
        QCOMPARE(transactionsAfterOneSave<NSPersistentContainer>({}), std::size_t(0));
        QCOMPARE(
            transactionsAfterOneSave<NSPersistentContainer>({ NSPersistentHistoryTrackingKey }),
            std::size_t(1));
    }

    void whatOthersSaveIsMergedByItself()
    {
        NSPersistentCloudKitContainer mirrored(QStringLiteral("Notes"), noteModel());
        mirrored.viewContext().setAutomaticallyMergesChangesFromParent(true);
        load(mirrored);
        NSFetchedResultsController list(
            notesByDate(SortDescriptor::Order::Ascending), mirrored.viewContext());
        QVERIFY(list.performFetch());
        const auto other = openContainer(m_folder.file());

        for (int i = 0; i < 300; ++i) // more than one slice
            addNote(other->viewContext(), QString::number(i), i);
        mustSave(other->viewContext());

        QTRY_COMPARE(list.rowCount(), 300);
    }

    void eachMirroredStoreIsToldOf()
    {
        QStringList files;
        NSPersistentCloudKitContainer::setMirroring(
            [&](const QString& file) { files.append(file); });
        NSPersistentCloudKitContainer mirrored(QStringLiteral("Notes"), noteModel());
        load(mirrored);
        const auto local = openContainer(m_folder.file());
        NSPersistentCloudKitContainer::setMirroring({});

        QCOMPARE(files, QStringList { m_folder.file() });
    }

    void bothLieInTheSameFile()
    {
        NSPersistentContainer local(QStringLiteral("Notes"), noteModel());
        NSPersistentCloudKitContainer mirrored(QStringLiteral("Notes"), noteModel());

        QCOMPARE(mirrored.persistentStoreDescriptions().size(), std::size_t(1));
        QCOMPARE(mirrored.persistentStoreDescriptions().front().url(),
            local.persistentStoreDescriptions().front().url());
    }
};

QTEST_GUILESS_MAIN(NSPersistentCloudKitContainerTest)
#include "NSPersistentCloudKitContainerTest.moc"
