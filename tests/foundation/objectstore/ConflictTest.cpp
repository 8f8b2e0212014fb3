#include "StoreFixture.h"

#include <QTest>

/// Two containers on one file stand for two processes: neither hears of the other by itself.
class ConflictTest : public QObject {
    Q_OBJECT

private:
    StoreFolder m_folder;
    std::unique_ptr<NSPersistentContainer> m_ours;
    std::unique_ptr<NSPersistentContainer> m_theirs;
    NSManagedObjectContext::Object m_note; // ours
    NSManagedObjectContext::Object m_theirNote; // the same record

    NSManagedObjectContext& context() { return m_ours->viewContext(); }
    NSManagedObjectContext& theirContext() { return m_theirs->viewContext(); }

    void theyRename()
    {
        m_theirNote->setValue(QStringLiteral("theirs"), QStringLiteral("title"));
        mustSave(theirContext());
    }

    void theyDelete()
    {
        theirContext().deleteObject(*m_theirNote);
        mustSave(theirContext());
    }

private Q_SLOTS:
    void init()
    {
        m_folder = StoreFolder();
        m_ours = openContainer(m_folder.file());
        m_theirs = openContainer(m_folder.file());
        m_note = addNote(context(), QStringLiteral("first"));
        mustSave(context());
        m_theirNote = *theirContext().existingObject(m_note->objectID());
    }

    void cleanup()
    {
        m_note.reset();
        m_theirNote.reset();
        m_ours.reset();
        m_theirs.reset();
    }

    void theErrorPolicyIsTheDefault()
    {
        QCOMPARE(context().mergePolicy(), NSMergePolicy::NSErrorMergePolicy);
    }

    void aSaveOverAChangedRecordIsReportedAndChangesNothing()
    {
        theyRename();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));
        addNote(context(), QStringLiteral("another"));

        const auto saved = context().save();

        QCOMPARE(saved.error().code, StoreError::Code::Conflict);
        QCOMPARE(saved.error().userInfo.value(QStringLiteral("conflicts")).toStringList(),
            (QStringList { m_note->objectID().toString() }));
        QCOMPARE(title(*m_note), QStringLiteral("ours"));
        QCOMPARE(titles(*m_theirs->newContext()), words("theirs"));
    }

    void afterARollbackTheRecordIsReadAfreshAndCanBeSaved()
    {
        theyRename();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));
        QVERIFY(!context().save());

        context().rollback();

        QCOMPARE(title(*m_note), QStringLiteral("theirs"));
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));
        mustSave(context());
    }

    void aRefreshThatKeepsChangesSettlesTheConflict()
    {
        m_theirNote->setValue(3, QStringLiteral("count"));
        theyRename();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));

        context().refresh(*m_note, NSManagedObjectContext::Refresh::MergeChanges);

        QCOMPARE(m_note->value(QStringLiteral("count")).toInt(), 3);
        QCOMPARE(title(*m_note), QStringLiteral("ours"));
        mustSave(context());
        QCOMPARE(titles(*m_theirs->newContext()), words("ours"));
    }

    void aSaveOverADeletedRecordIsReported()
    {
        theyDelete();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));

        QCOMPARE(context().save().error().code, StoreError::Code::Conflict);
    }

    void aRefreshGivesUpTheChangesOfADeletedRecord()
    {
        theyDelete();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));
        QVERIFY(!context().save());

        context().refresh(*m_note, NSManagedObjectContext::Refresh::MergeChanges);

        QVERIFY(m_note->isDeleted());
        QVERIFY(!context().hasChanges());
        mustSave(context());
        QCOMPARE(titles(context()), QStringList());
    }

    void aRefreshOfAllGivesUpOnlyTheChangesOfDeletedRecords()
    {
        const auto kept = addNote(context(), QStringLiteral("second"));
        mustSave(context());
        kept->setValue(QStringLiteral("renamed"), QStringLiteral("title"));
        theyDelete();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));
        const auto added = addNote(context(), QStringLiteral("third"));
        QVERIFY(!context().save());

        context().refreshAllObjects();

        QVERIFY(m_note->isDeleted());
        mustSave(context());
        QCOMPARE(title(*kept), QStringLiteral("renamed"));
        QCOMPARE(title(*added), QStringLiteral("third"));
        QCOMPARE(titles(*m_theirs->newContext()), words("renamed third"));
    }

    void deletingAChangedRecordIsReported()
    {
        theyRename();
        context().deleteObject(*m_note);

        QCOMPARE(context().save().error().code, StoreError::Code::Conflict);
        QCOMPARE(titles(*m_theirs->newContext()), words("theirs"));
    }

    void aRecordThatBothDeletedIsNoConflict()
    {
        theyDelete();
        context().deleteObject(*m_note);

        mustSave(context());
        QVERIFY(!context().hasChanges());
    }

    void withTheTrumpPolicyMemoryWinsAttributeByAttribute()
    {
        context().setMergePolicy(NSMergePolicy::NSMergeByPropertyObjectTrumpMergePolicy);
        m_theirNote->setValue(3, QStringLiteral("count"));
        theyRename();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));

        mustSave(context());

        QCOMPARE(title(*m_note), QStringLiteral("ours"));
        QCOMPARE(m_note->value(QStringLiteral("count")).toInt(), 3);
        const auto others = m_theirs->newContext();
        const auto stored = *others->existingObject(m_note->objectID());
        QCOMPARE(title(*stored), QStringLiteral("ours"));
        QCOMPARE(stored->value(QStringLiteral("count")).toInt(), 3);
    }

    void withTheTrumpPolicyADeletedRecordStaysDeleted()
    {
        context().setMergePolicy(NSMergePolicy::NSMergeByPropertyObjectTrumpMergePolicy);
        theyDelete();
        m_note->setValue(QStringLiteral("ours"), QStringLiteral("title"));

        mustSave(context());

        QVERIFY(m_note->isDeleted());
        QCOMPARE(titles(context()), QStringList());
    }

    void withTheTrumpPolicyADeletionWinsOverTheirChange()
    {
        context().setMergePolicy(NSMergePolicy::NSMergeByPropertyObjectTrumpMergePolicy);
        theyRename();
        context().deleteObject(*m_note);

        mustSave(context());

        QCOMPARE(titles(*m_theirs->newContext()), QStringList());
    }
};

QTEST_GUILESS_MAIN(ConflictTest)
#include "ConflictTest.moc"
