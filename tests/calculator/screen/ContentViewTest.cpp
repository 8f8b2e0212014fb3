#include "ContentView.h"

#include "DeathTest.h"
#include "NoDesktop.h"
#include "Palette.h"
#include "RootViewController.h"
#include "TestStore.h"
#include "UIActivityViewController.h"
#include "UserDefaults.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <limits>

class ContentViewTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    TestStore m_bills;
    int m_stores = 0;
    std::unique_ptr<UserDefaults> m_store;
    std::unique_ptr<UserSettings> m_settings;
    std::unique_ptr<ContentView> m_view;

    /// A screen over preferences that an earlier run has stored.
    void openWithStored(const QVariantMap& values)
    {
        m_store->setValue(QStringLiteral("havePrefs"), 100);
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            m_store->setValue(it.key(), it.value());
        m_settings = std::make_unique<UserSettings>(*m_store);
        m_view = std::make_unique<ContentView>(*m_settings, m_bills.context());
        m_view->appear();
    }

private Q_SLOTS:
    void initTestCase() { useNoDesktop(m_folder.path()); }

    void init()
    {
        m_view.reset();
        m_settings.reset();
        m_store = std::make_unique<UserDefaults>(
            m_folder.filePath(QStringLiteral("preferences%1.ini").arg(++m_stores)));
        m_settings = std::make_unique<UserSettings>(*m_store);
        m_view = std::make_unique<ContentView>(*m_settings, m_bills.context());
        m_view->appear();
    }

    void everyKeyStrokeUpdatesTheFigures()
    {
        m_view->billEdited(QStringLiteral("1"));
        QCOMPARE(m_view->totalText(), QStringLiteral("$1.05"));
        m_view->billEdited(QStringLiteral("10"));
        QCOMPARE(m_view->totalText(), QStringLiteral("$10.50"));
        m_view->billEdited(QStringLiteral("100"));

        QCOMPARE(m_view->totalText(), QStringLiteral("$105.00"));
        QCOMPARE(m_view->tipText(), QStringLiteral("$5.00"));
        QCOMPARE(m_view->shareText(), QStringLiteral("$52.50"));
        QCOMPARE(m_view->sumTotal(), 100.0);
        QCOMPARE(m_view->sumTip(), 5.0);
        QCOMPARE(m_view->grandTotal(), 105.0);
        QCOMPARE(m_view->sumShare(), 52.5);
    }

    void everyInputRecalculates()
    {
        m_view->billEdited(QStringLiteral("100"));
        const QSignalSpy results(m_view.get(), &ContentView::resultsChanged);

        m_view->setServiceSegment(2);
        QCOMPARE(m_view->totalText(), QStringLiteral("$110.00"));
        m_settings->setTipFromEveryone(true);
        QCOMPARE(m_view->strTip(), QStringLiteral("(10.00 x 2)"));
        m_settings->setRoundTip(true);
        m_settings->setRoundShare(true);
        m_view->setProperty("refreshInfo", true);

        QCOMPARE(results.count(), 5);
    }

    void aTextBeingTypedIsNeverRewritten()
    {
        const QSignalSpy texts(m_view.get(), &ContentView::billTextChanged);

        for (const char* text : { "1", "12", "12.", "12.5", "12.50", "12.505", "x" })
            m_view->billEdited(QString::fromLatin1(text));

        QCOMPARE(texts.count(), 0);
    }

    void leavingTheFieldShowsTheStoredAmount()
    {
        m_view->billEdited(QStringLiteral("1234.50"));
        const QSignalSpy texts(m_view.get(), &ContentView::billTextChanged);

        m_view->billEditingFinished();

        QCOMPARE(texts.count(), 1);
        QCOMPARE(m_view->billText(), QStringLiteral("1,234.5"));
    }

    void theShownTextDoesNotCutTheStoredAmount()
    {
        m_view->billEdited(QStringLiteral("10.019"));
        m_view->billEditingFinished();
        QCOMPARE(m_view->billText(), QStringLiteral("10.02"));

        m_view->billEdited(m_view->billText());

        QCOMPARE(m_settings->bill(), 10.019);
        QCOMPARE(m_view->sumTotal(), 10.01);
    }

    void theShownTextTypedByHandIsTaken()
    {
        m_view->billEdited(QStringLiteral("10.019"));
        m_view->billEditingFinished();

        m_view->billEdited(QString());
        m_view->billEdited(QStringLiteral("10.02"));

        QCOMPARE(m_settings->bill(), 10.02);
    }

    void anEmptyFieldIsZero()
    {
        m_view->billEdited(QStringLiteral("100"));
        m_view->billEdited(QString());

        QCOMPARE(m_settings->bill(), 0.0);
        QCOMPARE(m_view->totalText(), QStringLiteral("$0.00"));
        QCOMPARE(m_view->billNotice(), QString());
    }

    void whatIsNoAmountLeavesTheBillAndIsSaid()
    {
        m_view->billEdited(QStringLiteral("100"));
        m_view->billEdited(QStringLiteral("100x"));

        QCOMPARE(m_settings->bill(), 100.0);
        QCOMPARE(m_view->totalText(), QStringLiteral("$105.00"));
        QCOMPARE(m_view->billNotice(), QStringLiteral("Not an amount"));

        m_view->billEdited(QStringLiteral("100"));
        QCOMPARE(m_view->billNotice(), QString());
    }

    void leavingTheFieldEndsTheRemark()
    {
        m_view->billEdited(QStringLiteral("100"));
        m_view->billEdited(QStringLiteral("abc"));

        m_view->billEditingFinished();

        QCOMPARE(m_view->billNotice(), QString());
        QCOMPARE(m_view->billText(), QStringLiteral("100"));
    }

    void aBillTooLargeIsRefusedByTheField()
    {
        m_view->billEdited(QStringLiteral("100"));
        m_view->billEdited(QStringLiteral("90000000000000000"));

        QCOMPARE(m_settings->bill(), 100.0);
        QCOMPARE(m_view->billNotice(), QStringLiteral("Amount too large"));
        QCOMPARE(m_view->resultsNotice(), QString());
    }

    void aStoredBillTooLargeShowsZerosAndTheNotice_data()
    {
        QTest::addColumn<double>("bill");
        QTest::newRow("1e17") << 1e17;
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity();
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
    }

    void aStoredBillTooLargeShowsZerosAndTheNotice()
    {
        QFETCH(const double, bill);
        openWithStored({ { QStringLiteral("bill"), bill }, { QStringLiteral("people"), 2 },
            { QStringLiteral("showCurrency"), true } });

        QCOMPARE(m_view->resultsNotice(), QStringLiteral("Amount too large"));
        QCOMPARE(m_view->totalText(), QStringLiteral("$0.00"));
        QCOMPARE(m_view->shareText(), QStringLiteral("$0.00"));
        m_view->copy();
        QVERIFY(!m_view->showCopied());

        m_view->billEdited(QStringLiteral("50"));
        QCOMPARE(m_view->resultsNotice(), QString());
        QCOMPARE(m_view->totalText(), QStringLiteral("$50.00"));
    }

    void anOptionThatMakesTheFiguresTooLargeShowsZerosAndTheNotice()
    {
        m_view->billEdited(QStringLiteral("40000000000000000"));
        m_settings->setPeople(100);
        QCOMPARE(m_view->resultsNotice(), QString());

        m_settings->setTipFromEveryone(true);

        QCOMPARE(m_view->resultsNotice(), QStringLiteral("Amount too large"));
        QCOMPARE(m_view->strTip(), QString());
    }

    void fewerPeopleStopsAtOneAndStillRecalculates()
    {
        m_view->fewerPeople();
        QCOMPARE(m_settings->people(), 1);
        const QSignalSpy results(m_view.get(), &ContentView::resultsChanged);

        m_view->fewerPeople();

        QCOMPARE(m_settings->people(), 1);
        QCOMPARE(results.count(), 1);
        QCOMPARE(m_view->peopleText(), QStringLiteral("1"));
    }

    void morePeopleHasNoUpperBound()
    {
        m_settings->setPeople(1'000'000);
        m_view->morePeople();

        QCOMPARE(m_settings->people(), 1'000'001);
        QCOMPARE(m_view->peopleText(), QStringLiteral("1000001"));
    }

    void aCountWhoseFiguresDoNotFitShowsZerosAndTheNotice()
    {
        // Each person adds a tip of half the range: one fits beside the bill, two do not.
        m_settings->setPeople(1);
        m_settings->setServiceGood(100);
        m_settings->setTipFromEveryone(true);
        m_view->billEdited(QStringLiteral("40000000000000000"));
        QCOMPARE(m_view->resultsNotice(), QString());

        m_view->morePeople();

        QCOMPARE(m_settings->people(), 2);
        QVERIFY(!m_view->hasResults());
        QCOMPARE(m_view->resultsNotice(), QStringLiteral("Amount too large"));

        m_view->fewerPeople();
        QVERIFY(m_view->hasResults());
        QCOMPARE(m_view->resultsNotice(), QString());
    }

    void theGreatestCountDoesNotOverflow()
    {
        m_settings->setPeople(std::numeric_limits<qint64>::max());
        m_view->morePeople();

        QCOMPARE(m_settings->people(), std::numeric_limits<qint64>::max());
        QCOMPARE(m_view->peopleNotice(), QStringLiteral("Amount too large"));

        m_view->fewerPeople();
        QCOMPARE(m_view->peopleNotice(), QString());
    }

    void aStoredCountBelowOneIsRaisedToOneBeforeTheFirstCalculation_data()
    {
        QTest::addColumn<qint64>("people");
        QTest::newRow("0") << qint64(0);
        QTest::newRow("-3") << qint64(-3);
    }

    void aStoredCountBelowOneIsRaisedToOneBeforeTheFirstCalculation()
    {
        QFETCH(const qint64, people);
        openWithStored({ { QStringLiteral("people"), people }, { QStringLiteral("bill"), 30.0 } });

        QCOMPARE(m_settings->people(), 1);
        QCOMPARE(m_view->sumShare(), 30.0);
        QCOMPARE(m_view->resultsNotice(), QString());
    }

    void clearingEmptiesTheBillAndSetsTwoPeople()
    {
        m_view->billEdited(QStringLiteral("100"));
        m_settings->setPeople(5);
        m_view->setServiceSegment(2);
        m_settings->setTipFromEveryone(true);
        m_settings->setRoundTip(true);
        m_settings->setRoundShare(true);

        m_view->clear();

        QCOMPARE(m_settings->bill(), 0.0);
        QCOMPARE(m_settings->people(), 2);
        QCOMPARE(m_settings->service(), 0);
        QCOMPARE(m_settings->tipFromEveryone(), false);
        QCOMPARE(m_settings->roundTip(), false);
        QCOMPARE(m_settings->roundShare(), false);
        QCOMPARE(m_view->billText(), QStringLiteral("0"));
        QCOMPARE(m_view->totalText(), QStringLiteral("$0.00"));
        QCOMPARE(m_view->serviceText(), QStringLiteral("Poor"));
    }

    void aServiceThatThePickerDoesNotHaveChoosesNoSegment()
    {
        m_settings->setService(7);

        QCOMPARE(m_view->serviceSegment(), -1);
        QCOMPARE(m_view->serviceText(), QStringLiteral("Poor"));
    }

    void copyingPutsTheSummaryOnTheClipboardAndSaysSoEveryTime()
    {
        m_view->billEdited(QStringLiteral("100"));
        m_view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), m_view->shareString());
        QVERIFY(m_view->showCopied());

        m_view->setShowCopied(false);
        m_view->copy();

        QVERIFY(m_view->showCopied());
        QVERIFY(m_view->shareString().startsWith(
            QStringLiteral("Based on 2 people dining.\nThe bill came to $100.00\n")));
    }

    void withoutAWindowSharingDoesNothing()
    {
        QVERIFY(QGuiApplication::topLevelWindows().isEmpty());
        m_view->billEdited(QStringLiteral("100"));

        m_view->shareButton();
    }

    void aWindowWithoutARootViewControllerStopsTheProcess()
    {
        const QWindow window;
        m_view->billEdited(QStringLiteral("100"));

        const Death death = deathOf([this] { m_view->shareButton(); });

        QVERIFY(death.aborted);
        QCOMPARE(death.message,
            QByteArray("Unexpectedly found nil while unwrapping an Optional value\n"));
    }

    void sharingPresentsTheSummaryOverTheFirstWindow()
    {
        QWindow window;
        QWindow second;
        RootViewController root(&window);
        m_view->billEdited(QStringLiteral("100"));

        m_view->shareButton();

        const UIActivityViewController* const controller = root.presented();
        QVERIFY(controller);
        QCOMPARE(controller->activityItems().size(), 1);
        QCOMPARE(controller->activityItems().first().text, m_view->shareString());
        QCOMPARE(controller->activityItems().first().excerpt->text, QStringLiteral("$52.50"));
        QVERIFY(!controller->applicationActivities());
        QVERIFY(!controller->excludedActivityTypes());
    }

    void withoutResultsNothingIsShared()
    {
        QWindow window;
        const RootViewController root(&window);
        openWithStored({ { QStringLiteral("bill"), 1e300 } });
        QVERIFY(!m_view->hasResults());

        m_view->shareButton();

        QCOMPARE(root.presented(), nullptr);
    }

    void withoutTheCurrencySymbolEveryAmountIsPlain()
    {
        m_view->billEdited(QStringLiteral("1234.5"));
        const QSignalSpy results(m_view.get(), &ContentView::resultsChanged);

        m_settings->setShowCurrency(false);

        QCOMPARE(results.count(), 1);
        QCOMPARE(m_view->totalText(), QStringLiteral("1,296.22"));
        QVERIFY(!m_view->shareString().contains(QLatin1Char('$')));
    }

    void thePanelsColours_data()
    {
        QTest::addColumn<bool>("highlight");
        QTest::addColumn<bool>("dark");
        QTest::addColumn<bool>("highContrast");
        QTest::addColumn<QColor>("top");
        QTest::addColumn<QColor>("bottom");
        QTest::addColumn<QColor>("text");
        const QColor white(Qt::white);
        const QColor black(Qt::black);
        QTest::newRow("highlighted, light")
            << true << false << false << panelPink() << panelRed() << white;
        QTest::newRow("highlighted, dark")
            << true << true << false << panelPink() << panelRed() << white;
        QTest::newRow("highlighted, high contrast")
            << true << false << true << panelPink(Contrast::High) << panelRed(Contrast::High)
            << white;
        QTest::newRow("plain, light") << false << false << false << white << white << black;
        QTest::newRow("plain, dark") << false << true << false << black << black << white;
        QTest::newRow("plain, high contrast") << false << true << true << black << black << white;
    }

    void thePanelsColours()
    {
        QFETCH(const bool, highlight);
        QFETCH(const bool, dark);
        QFETCH(const bool, highContrast);
        QFETCH(const QColor, top);
        QFETCH(const QColor, bottom);
        QFETCH(const QColor, text);
        m_settings->setHighlightSums(highlight);
        m_view->setProperty("dark", dark);
        m_view->setProperty("highContrast", highContrast);

        QCOMPARE(m_view->getLinearColor1(), top);
        QCOMPARE(m_view->getLinearColor2(), bottom);
        QCOMPARE(m_view->getForegroundColor(), text);
    }

    void appearingSetsTheLeastSizeOfEveryWindow()
    {
        QWindow first;
        QWindow second;

        m_view->appear();

        QCOMPARE(first.minimumSize(), QSize(500, 800));
        QCOMPARE(second.minimumSize(), QSize(500, 800));
    }
};

QTEST_MAIN(ContentViewTest)
#include "ContentViewTest.moc"
