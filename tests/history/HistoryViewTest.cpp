#include "HistoryView.h"

#include "DeathTest.h"
#include "HistoryFixture.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

namespace {

QStringList refs(const char* names) { return QString::fromLatin1(names).split(QLatin1Char(' ')); }

} // namespace

class HistoryViewTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HistoryFixture> m_world;
    std::unique_ptr<HistoryView> m_view;

    /// The screen over bills of these descriptions, the first one the newest.
    void openWithBills(const char* names)
    {
        m_world->addBills(refs(names));
        open();
    }

    void open() { m_view = std::make_unique<HistoryView>(m_world->settings(), m_world->context()); }

    [[nodiscard]] QStringList rows() { return shownRefs(*m_view->items()); }
    [[nodiscard]] std::size_t saves()
    {
        return m_world->context().persistentStoreCoordinator().persistentHistory(0)->size();
    }
    void renameTo(const QString& description)
    {
        m_view->askForDescription();
        m_view->setBillDescription(description);
        m_view->rename();
    }

private Q_SLOTS:
    void init()
    {
        m_view.reset();
        m_world = std::make_unique<HistoryFixture>();
    }

    void cleanup() { m_view.reset(); }

    // The list

    void withoutBillsTheListIsEmptyAndEveryButtonStillWorks()
    {
        open();

        QCOMPARE(m_view->items()->count(), 0);
        m_view->toggleColumn();
        QCOMPARE(m_view->otherColumn(), QStringLiteral("Total"));
        m_view->setIsEditing(true);
        m_view->deleteMarked();
        m_view->deleteByKey(0);
        m_view->setIsEditing(false);
        m_view->deleteRow(0);
        m_view->renameRow(0);
        QVERIFY(m_view->detail() == nullptr);
        QCOMPARE(saves(), std::size_t(0));
    }

    void everythingStartsHidden()
    {
        openWithBills("lunch");

        QVERIFY(!m_view->isEditing());
        QVERIFY(!m_view->property("promptToDelete").toBool());
        QVERIFY(!m_view->property("promptToDeleteOld").toBool());
        QVERIFY(!m_view->property("showUseThisBill").toBool());
        QVERIFY(!m_view->property("showRename").toBool());
        QCOMPARE(m_view->billDescription(), QString());
        QVERIFY(m_view->detail() == nullptr);
        QCOMPARE(m_view->detailTitle(), QString());
        QCOMPARE(m_view->chosenRow(), -1);
    }

    void theColumnButtonNamesTheOtherColumn()
    {
        open();
        QCOMPARE(m_view->otherColumn(), QStringLiteral("Share"));
        QCOMPARE(m_view->currencySymbolText(), QStringLiteral("$"));

        m_view->toggleColumn();
        QCOMPARE(m_view->otherColumn(), QStringLiteral("Total"));

        m_view->toggleColumn();
        QCOMPARE(m_view->otherColumn(), QStringLiteral("Share"));
    }

    void theColumnButtonSwitchesEveryRowAndTheChoiceOutlivesTheScreen()
    {
        openWithBills("a b");
        const QSignalSpy words(m_view.get(), &HistoryView::otherColumnChanged);
        m_view->toggleColumn();
        QCOMPARE(words.count(), 1);
        QCOMPARE(shown(*m_view->items(), 0, "amount").toString(), QStringLiteral("$55.00"));
        QCOMPARE(shown(*m_view->items(), 1, "amount").toString(), QStringLiteral("$55.00"));

        open();

        QVERIFY(m_world->settings().showShareInSavedBillsList());
        QCOMPARE(m_view->otherColumn(), QStringLiteral("Total"));
        QCOMPARE(shown(*m_view->items(), 0, "amount").toString(), QStringLiteral("$55.00"));
    }

    // Deleting rows

    void exactlyTheBillsAtThosePositionsAreDeleted()
    {
        openWithBills("a b c d e");

        m_view->deleteItems({ 3, 0, 1 });

        QCOMPARE(rows(), refs("c e"));
        QCOMPARE(m_world->storedRefs(), refs("c e"));
        QVERIFY(!m_world->context().hasChanges());
    }

    void severalRowsAreDeletedInOneSave()
    {
        openWithBills("a b c d");
        const std::size_t before = saves();

        m_view->deleteItems({ 0, 2, 3 });

        QCOMPARE(saves(), before + 1);
        const auto history = m_world->context().persistentStoreCoordinator().persistentHistory(0);
        QCOMPARE(history->back().changes.size(), std::size_t(3));
    }

    void oneRowIsDeletedAtOnce()
    {
        openWithBills("a b c");

        m_view->deleteRow(1);

        QCOMPARE(rows(), refs("a c"));
        QCOMPARE(m_world->storedRefs(), refs("a c"));
    }

    void aRowThatIsGoneIsNotDeleted()
    {
        openWithBills("a b");

        m_view->deleteRow(2);
        m_view->deleteRow(-1);

        QCOMPARE(rows(), refs("a b"));
    }

    void aFailedSaveAfterARowDeletionStopsTheProcess()
    {
        openWithBills("a b");
        m_world->removeStoreFile();

        const Death death = deathOf([&] { m_view->deleteRow(0); });

        QVERIFY(death.aborted);
        QVERIFY2(death.message.startsWith("Unresolved error StoreError (cannot open): "),
            death.message.constData());
        QVERIFY2(death.message.contains(", [path: "), death.message.constData());
        QVERIFY2(death.message.endsWith("]\n"), death.message.constData());
    }

    void aBillRenamedByAnotherProgramCanStillBeDeletedFromTheList()
    {
        openWithBills("a b");
        m_world->renameElsewhere(QStringLiteral("a"), QStringLiteral("theirs"));

        m_view->deleteRow(0);

        QCOMPARE(rows(), refs("b"));
        QCOMPARE(m_world->storedRefs(), refs("b"));
    }

    void aBillDeletedByAnotherProgramCanStillBeDeletedFromTheList()
    {
        openWithBills("a b");
        m_world->deleteElsewhere(QStringLiteral("a"));

        m_view->deleteRow(0);

        QCOMPARE(rows(), refs("b"));
    }

    void aBillDeletedByAnotherProgramDoesNotStopTheProcess()
    {
        openWithBills("a b");
        m_world->deleteElsewhere(QStringLiteral("a"));
        QCOMPARE(rows(), QStringList({ QString(), QStringLiteral("b") }));
        m_view->choose(0);

        QCOMPARE(m_view->detail()->savedOn(), QString());
        QCOMPARE(m_view->detail()->bill(), QStringLiteral("$0.00"));
        QCOMPARE(m_view->detailTitle(), QStringLiteral("Bill"));
        renameTo(QStringLiteral("nobody"));
        QCOMPARE(m_world->storedRefs(), refs("b"));
        m_view->deleteRow(0);
        QCOMPARE(rows(), refs("b"));
        QVERIFY(m_view->detail() == nullptr);
    }

    void thePageOfABillClosesWhenAnotherProgramsDeletionIsSeen()
    {
        openWithBills("a b");
        m_view->choose(0);
        const std::shared_ptr<Item> item = m_view->items()->item(0);
        m_world->deleteElsewhere(QStringLiteral("a"));

        m_world->context().refresh(*item, NSManagedObjectContext::Refresh::DiscardChanges);

        QCOMPARE(rows(), refs("b"));
        QVERIFY(m_view->detail() == nullptr);
    }

    void aBillSavedByAnotherProgramAppearsWhenTheScreenIsOpenedAgain()
    {
        openWithBills("a");
        const auto other = m_world->otherProgram();
        const std::shared_ptr<Item> theirs = Item::make(other->viewContext());
        theirs->setRef(QStringLiteral("theirs"));
        theirs->setTimestamp(pieDay(23));
        QVERIFY(other->viewContext().save());

        open();

        QCOMPARE(rows(), refs("theirs a"));
    }

    // Edit mode

    void pressingARowOpensItButMarksItInTheEditMode()
    {
        openWithBills("a b");
        m_view->pressRow(1);
        QCOMPARE(m_view->chosenRow(), 1);
        QCOMPARE(m_view->items()->markedCount(), 0);

        m_view->setIsEditing(true);
        m_view->pressRow(0);

        QCOMPARE(m_view->chosenRow(), 1);
        QCOMPARE(m_view->items()->markedRows(), QList<int> { 0 });
        m_view->pressRow(0);
        QCOMPARE(m_view->items()->markedCount(), 0);
    }

    void aPressOnARowThatIsGoneDoesNothing_data()
    {
        QTest::addColumn<bool>("isEditing");
        QTest::addColumn<int>("row");
        QTest::newRow("fading away") << false << -1;
        QTest::newRow("behind the last") << false << 1;
        QTest::newRow("fading away, edit mode") << true << -1;
        QTest::newRow("behind the last, edit mode") << true << 1;
    }

    void aPressOnARowThatIsGoneDoesNothing()
    {
        QFETCH(const bool, isEditing);
        QFETCH(const int, row);
        openWithBills("a");
        m_view->setIsEditing(isEditing);

        const Death noDeath = deathOf([&] { m_view->pressRow(row); });
        QVERIFY2(!noDeath.aborted, noDeath.message.constData());
        m_view->pressRow(row);

        QVERIFY(m_view->detail() == nullptr);
        QCOMPARE(m_view->items()->markedCount(), 0);
    }

    void theMarkedRowsAreDeletedTogetherAndEditingGoesOn()
    {
        openWithBills("a b c d");
        m_view->setIsEditing(true);
        m_view->pressRow(2);
        m_view->pressRow(0);
        const std::size_t before = saves();

        m_view->deleteMarked();

        QCOMPARE(rows(), refs("b d"));
        QCOMPARE(saves(), before + 1);
        QVERIFY(m_view->isEditing());
        QCOMPARE(m_view->items()->markedCount(), 0);
    }

    void theDeleteKeyDeletesTheMarkedRowsAndElseTheCurrentOne()
    {
        openWithBills("a b c d");
        m_view->setIsEditing(true);
        m_view->pressRow(0);
        m_view->pressRow(1);

        m_view->deleteByKey(3);
        QCOMPARE(rows(), refs("c d"));

        m_view->deleteByKey(1);
        QCOMPARE(rows(), refs("c"));
    }

    void aPageThatWasOpenedToRenameClosesAgain()
    {
        openWithBills("a b");

        m_view->renameRow(1);
        QVERIFY(m_view->detail() != nullptr);
        m_view->setShowRename(false);
        QVERIFY(m_view->detail() == nullptr);

        m_view->choose(0);
        m_view->renameRow(1);
        m_view->setShowRename(false);
        QCOMPARE(m_view->chosenRow(), 1);
    }

    void nothingIsRenamedInTheEditMode()
    {
        openWithBills("a");
        m_view->setIsEditing(true);

        m_view->renameRow(0);

        QVERIFY(!m_view->showRename());
        QVERIFY(m_view->detail() == nullptr);
    }

    void lineBreaksOfOtherProgramsAreShownAsBlanks()
    {
        open();
        m_world->addBill(QStringLiteral("one\ntwo\u2028three"), pieDay());
        m_world->save();

        QCOMPARE(rows(), QStringList { QStringLiteral("one two three") });
        m_view->choose(0);
        QCOMPARE(m_view->detailTitle(), QStringLiteral("one two three"));
    }

    void marksDoNotOutliveTheEditMode()
    {
        openWithBills("a b");
        m_view->setIsEditing(true);
        m_view->pressRow(0);

        m_view->setIsEditing(false);
        QCOMPARE(m_view->items()->markedCount(), 0);

        m_view->setIsEditing(true);
        QCOMPARE(m_view->items()->markedCount(), 0);
        QCOMPARE(rows(), refs("a b"));
    }

    void marksFollowTheirRowsWhenOthersAreDeleted()
    {
        openWithBills("a b c");
        m_view->setIsEditing(true);
        m_view->pressRow(2);

        m_view->deleteRow(0);
        m_view->deleteMarked();

        QCOMPARE(rows(), refs("b"));
    }

    void leavingTheEditModeDoesNotUndoDeletions()
    {
        openWithBills("a b");
        m_view->setIsEditing(true);
        m_view->deleteRow(0);

        m_view->setIsEditing(false);

        QCOMPARE(m_world->storedRefs(), refs("b"));
    }

    void theEditModeIsAnnouncedOnlyWhenItChanges()
    {
        openWithBills("a");
        const QSignalSpy changes(m_view.get(), &HistoryView::isEditingChanged);

        m_view->setIsEditing(false);
        QCOMPARE(changes.count(), 0);
        m_view->setIsEditing(true);

        QCOMPARE(changes.count(), 1);
    }

    // The page of a bill

    void choosingARowShowsItsBill()
    {
        openWithBills("a b");
        const QSignalSpy details(m_view.get(), &HistoryView::detailChanged);

        m_view->choose(1);

        QCOMPARE(details.count(), 1);
        QCOMPARE(m_view->detail()->item(), m_view->items()->item(1));
        QCOMPARE(m_view->detailTitle(), QStringLiteral("b"));
        QCOMPARE(m_view->billDescription(), QStringLiteral("b"));
        m_view->unchoose();
        QVERIFY(m_view->detail() == nullptr);
        QCOMPARE(m_view->chosenRow(), -1);
        QCOMPARE(details.count(), 2);
    }

    void theOldPageLivesUntilTheNewOneIsAnnounced()
    {
        openWithBills("a b");
        m_view->choose(0);
        const QPointer<DetailView> old = m_view->detail();
        bool livedUntilAnnounced = false;
        connect(m_view.get(), &HistoryView::detailChanged, this,
            [&] { livedUntilAnnounced = !old.isNull(); });

        m_view->choose(1);

        QVERIFY(livedUntilAnnounced);
        QVERIFY(old.isNull());
    }

    void theChosenRowFollowsInsertions()
    {
        openWithBills("a b");
        m_view->choose(1);
        const QSignalSpy chosen(m_view.get(), &HistoryView::chosenRowChanged);

        (void)m_world->addBill(QStringLiteral("new"), pieDay(20));

        QCOMPARE(m_view->chosenRow(), 2);
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(m_view->detailTitle(), QStringLiteral("b"));
    }

    void theChosenRowFollowsDeletions()
    {
        openWithBills("a b c");
        m_view->choose(2);

        m_view->deleteRow(0);

        QCOMPARE(m_view->chosenRow(), 1);
        QCOMPARE(m_view->detailTitle(), QStringLiteral("c"));
    }

    void theChosenRowIsUnchosenWhenItsBillIsDeleted()
    {
        openWithBills("a b");
        m_view->choose(0);
        const QSignalSpy details(m_view.get(), &HistoryView::detailChanged);

        m_view->deleteRow(0);

        QVERIFY(m_view->detail() == nullptr);
        QCOMPARE(m_view->chosenRow(), -1);
        QCOMPARE(details.count(), 1);
    }

    void theChosenRowSurvivesAReset()
    {
        openWithBills("a b");
        m_view->choose(1);
        const QSignalSpy details(m_view.get(), &HistoryView::detailChanged);

        m_world->context().refreshAllObjects();

        QCOMPARE(m_view->chosenRow(), 1);
        QCOMPARE(m_view->detailTitle(), QStringLiteral("b"));
        QCOMPARE(details.count(), 0);
    }

    void aResetWithoutTheChosenBillClosesItsPage()
    {
        openWithBills("a b");
        m_view->choose(1);
        m_world->deleteElsewhere(QStringLiteral("b"));

        m_world->context().refreshAllObjects();

        QCOMPARE(rows(), refs("a"));
        QVERIFY(m_view->detail() == nullptr);
        QCOMPARE(m_view->chosenRow(), -1);
    }

    // Rename

    void theRenameFieldStartsWithTheCurrentDescription()
    {
        openWithBills("lunch");
        m_view->choose(0);
        m_view->setBillDescription(QStringLiteral("typed and cancelled"));

        m_view->askForDescription();

        QVERIFY(m_view->property("showRename").toBool());
        QCOMPARE(m_view->billDescription(), QStringLiteral("lunch"));
        QCOMPARE(m_world->storedRefs(), refs("lunch"));
    }

    void aRecordWithoutADescriptionIsCalledBillOnItsPage()
    {
        Item::make(m_world->context())->setTimestamp(pieDay());
        m_world->save();
        open();
        QCOMPARE(rows(), QStringList { QString() });

        m_view->renameRow(0);

        QCOMPARE(m_view->detailTitle(), QStringLiteral("Bill"));
        QCOMPARE(m_view->billDescription(), QStringLiteral("Bill"));
        QVERIFY(m_view->property("showRename").toBool());
    }

    void aDescriptionOfSeveralLinesThatIsNotTouchedStaysAsItIs()
    {
        m_world->addBill(QStringLiteral("lunch\nand coffee"), pieDay());
        open();
        m_view->choose(0);
        m_view->askForDescription();
        QCOMPARE(m_view->billDescription(), QStringLiteral("lunch and coffee"));

        m_view->rename();

        QCOMPARE(m_world->storedRefs(), QStringList { QStringLiteral("lunch\nand coffee") });
    }

    void renamingStoresTheDescription()
    {
        openWithBills("a b");
        m_view->choose(1);
        const QSignalSpy titles(m_view.get(), &HistoryView::detailTitleChanged);

        renameTo(QStringLiteral("dinner"));

        QCOMPARE(m_world->storedRefs(), refs("a dinner"));
        QCOMPARE(rows(), refs("a dinner"));
        QCOMPARE(m_view->detailTitle(), QStringLiteral("dinner"));
        QCOMPARE(titles.count(), 1);
        QCOMPARE(m_view->chosenRow(), 1);
    }

    void renamingToNothingStoresBill()
    {
        openWithBills("lunch");
        m_view->choose(0);

        renameTo(QString());

        QCOMPARE(m_world->storedRefs(), refs("Bill"));
        QCOMPARE(m_view->billDescription(), QStringLiteral("Bill"));
    }

    void renamingToBlanksStoresTheBlanks()
    {
        openWithBills("lunch");
        m_view->choose(0);

        renameTo(QStringLiteral("  "));

        QCOMPARE(m_world->storedRefs(), QStringList { QStringLiteral("  ") });
    }

    void renamingChangesNothingButTheDescription()
    {
        openWithBills("lunch");
        m_view->choose(0);

        renameTo(QStringLiteral("dinner"));

        const auto history = m_world->context().persistentStoreCoordinator().persistentHistory(0);
        const PersistentHistoryChange& change = history->back().changes.front();
        QCOMPARE(change.kind, PersistentHistoryChangeKind::Update);
        QCOMPARE(change.attributes, quint64(1) << 3); // the fourth in the alphabet
    }

    void aFailedRenameIsIgnoredAndStaysInTheContext()
    {
        openWithBills("a b");
        m_view->choose(0);
        m_world->renameElsewhere(QStringLiteral("a"), QStringLiteral("theirs"));

        const Death noDeath = deathOf([&] { renameTo(QStringLiteral("ours")); });
        renameTo(QStringLiteral("ours"));

        QVERIFY(!noDeath.aborted);
        QCOMPARE(noDeath.message, QByteArray());
        QVERIFY(m_world->context().hasChanges());
        QCOMPARE(m_view->detailTitle(), QStringLiteral("ours"));
        QCOMPARE(rows(), refs("ours b"));
        QCOMPARE(m_world->storedRefs(), refs("theirs b"));
    }

    void renamingAfterTheBillIsGoneDoesNothing()
    {
        openWithBills("a b");
        m_view->choose(0);
        m_view->askForDescription();
        m_view->setBillDescription(QStringLiteral("late"));
        m_view->deleteRow(0);

        m_view->rename();
        m_view->useThisBill();

        QCOMPARE(m_world->storedRefs(), refs("b"));
        QVERIFY(!m_world->context().hasChanges());
    }

    void nothingIsAskedForWhileNoBillIsChosen()
    {
        openWithBills("a");

        m_view->askForDescription();

        QVERIFY(!m_view->property("showRename").toBool());
    }

    void renamingARowThatIsGoneAsksForNothing()
    {
        openWithBills("a");

        m_view->renameRow(1);
        m_view->renameRow(-1);

        QVERIFY(!m_view->property("showRename").toBool());
        QVERIFY(m_view->detail() == nullptr);
    }

    void aDescriptionTooLongIsRefusedAndSaid()
    {
        openWithBills("lunch");
        m_view->choose(0);
        m_view->askForDescription();
        m_view->setBillDescription(QStringLiteral("dinner"));

        m_view->setBillDescription(QString(Item::longestRef + 1, QLatin1Char('x')));

        QCOMPARE(m_view->billDescription(), QStringLiteral("dinner"));
        QCOMPARE(m_view->descriptionNotice(), QStringLiteral("Description too long"));
        m_view->rename();
        QCOMPARE(m_world->storedRefs(), refs("dinner"));
        m_view->askForDescription();
        QCOMPARE(m_view->descriptionNotice(), QString());
    }

    // Reuse

    void usingABillWritesItsSixInputsInOrderAndDismisses()
    {
        openWithBills("lunch");
        const std::shared_ptr<Item> item = m_view->items()->item(0);
        item->setBill(10.019);
        item->setPeople(7);
        item->setService(2);
        item->setEveryone(true);
        item->setRoundtip(true);
        item->setRoundshare(false);
        m_world->save();
        UserSettings& settings = m_world->settings();
        settings.setRoundShare(true);
        settings.setServiceGood(15);
        QStringList written;
        const auto note = [&written](const char* name) {
            return [&written, name] { written.append(QString::fromLatin1(name)); };
        };
        using S = UserSettings;
        connect(&settings, &S::firstRunChanged, this, note("firstRun"));
        connect(&settings, &S::themeChanged, this, note("theme"));
        connect(&settings, &S::roundShareChanged, this, note("roundShare"));
        connect(&settings, &S::roundTipChanged, this, note("roundTip"));
        connect(&settings, &S::tipFromEveryoneChanged, this, note("tipFromEveryone"));
        connect(&settings, &S::billChanged, this, note("bill"));
        connect(&settings, &S::peopleChanged, this, note("people"));
        connect(&settings, &S::serviceChanged, this, note("service"));
        connect(&settings, &S::serviceGoodChanged, this, note("serviceGood"));
        connect(&settings, &S::serviceExcellentChanged, this, note("serviceExcellent"));
        connect(&settings, &S::showCurrencyChanged, this, note("showCurrency"));
        connect(&settings, &S::showShareInSavedBillsListChanged, this, note("showShare"));
        connect(&settings, &S::highlightSumsChanged, this, note("highlightSums"));
        connect(m_view.get(), &HistoryView::dismissed, this, note("dismissed"));
        m_view->choose(0);

        m_view->useThisBill();

        QCOMPARE(
            written, refs("bill people service tipFromEveryone roundTip roundShare dismissed"));
        QCOMPARE(settings.bill(), 10.019);
        QCOMPARE(settings.people(), 7);
        QCOMPARE(settings.service(), 2);
        QCOMPARE(settings.tipFromEveryone(), true);
        QCOMPARE(settings.roundTip(), true);
        QCOMPARE(settings.roundShare(), false);
        QCOMPARE(settings.serviceGood(), 15);
        QVERIFY(!m_world->context().hasChanges());
    }

    void usingNoBillDoesNothing()
    {
        openWithBills("lunch");
        m_world->settings().setBill(42.0);
        const QSignalSpy dismissals(m_view.get(), &HistoryView::dismissed);

        m_view->useThisBill();

        QCOMPARE(dismissals.count(), 0);
        QCOMPARE(m_world->settings().bill(), 42.0);
    }
};

QTEST_GUILESS_MAIN(HistoryViewTest)
#include "HistoryViewTest.moc"
