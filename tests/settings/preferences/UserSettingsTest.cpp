#include "UserSettings.h"
#include "UserDefaults.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QStringList fieldKeys { QStringLiteral("firstRun"), QStringLiteral("theme"),
    QStringLiteral("roundTip"), QStringLiteral("tipFromEveryone"), QStringLiteral("roundShare"),
    QStringLiteral("bill"), QStringLiteral("people"), QStringLiteral("service"),
    QStringLiteral("serviceGood"), QStringLiteral("serviceExcellent"),
    QStringLiteral("showCurrency"), QStringLiteral("showShareInSavedBillsList"),
    QStringLiteral("highlightSums") };

const QString marker = QStringLiteral("havePrefs");

} // namespace

class UserSettingsTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<UserDefaults> m_store;
    int m_stores = 0;

private Q_SLOTS:
    void init()
    {
        m_store = std::make_unique<UserDefaults>(
            m_folder.filePath(QStringLiteral("preferences%1.ini").arg(++m_stores)));
    }

    void aFreshStoreYieldsTheFirstRunValues()
    {
        const UserSettings settings(*m_store);

        QCOMPARE(settings.firstRun(), true);
        QCOMPARE(settings.theme(), 0);
        QCOMPARE(settings.bill(), 0.0);
        QCOMPARE(settings.people(), 2);
        QCOMPARE(settings.service(), 1);
        QCOMPARE(settings.roundShare(), false);
        QCOMPARE(settings.roundTip(), false);
        QCOMPARE(settings.tipFromEveryone(), false);
        QCOMPARE(settings.serviceGood(), 5);
        QCOMPARE(settings.serviceExcellent(), 10);
        QCOMPARE(settings.showCurrency(), true);
        QCOMPARE(settings.showShareInSavedBillsList(), true);
        QCOMPARE(settings.highlightSums(), true);
    }

    void aFirstLaunchWritesTheMarkerAndNothingElseUntilTheFirstSave()
    {
        UserSettings settings(*m_store);

        QCOMPARE(m_store->integerForKey(marker), 100);
        for (const QString& key : fieldKeys)
            QVERIFY2(!m_store->contains(key), qPrintable(key));

        settings.save();

        for (const QString& key : fieldKeys)
            QVERIFY2(m_store->contains(key), qPrintable(key));
    }

    void aMissingKeyLoadsAsZeroAndNotAsTheFirstRunValue()
    {
        UserSettings(*m_store).save();
        m_store->removeValue(QStringLiteral("serviceGood"));
        m_store->removeValue(QStringLiteral("showCurrency"));

        const UserSettings settings(*m_store);

        QCOMPARE(settings.serviceGood(), 0);
        QCOMPARE(settings.showCurrency(), false);
        QCOMPARE(settings.serviceExcellent(), 10);
    }

    void valuesOutOfRangeAreLoadedUnchanged_data()
    {
        QTest::addColumn<qint64>("people");
        QTest::addColumn<qint64>("service");
        QTest::newRow("nobody, unknown service") << qint64(0) << qint64(7);
        QTest::newRow("one person") << qint64(1) << qint64(2);
        QTest::newRow("negative") << qint64(-3) << qint64(-1);
    }

    void valuesOutOfRangeAreLoadedUnchanged()
    {
        QFETCH(const qint64, people);
        QFETCH(const qint64, service);
        m_store->setValue(marker, 100);
        m_store->setValue(QStringLiteral("people"), people);
        m_store->setValue(QStringLiteral("service"), service);

        const UserSettings settings(*m_store);

        QCOMPARE(settings.people(), people);
        QCOMPARE(settings.service(), service);
    }

    void anyNonZeroMarkerMeansThatPreferencesArePresent_data()
    {
        QTest::addColumn<qint64>("mark");
        QTest::newRow("1") << qint64(1);
        QTest::newRow("-5") << qint64(-5);
    }

    void anyNonZeroMarkerMeansThatPreferencesArePresent()
    {
        QFETCH(const qint64, mark);
        m_store->setValue(marker, mark);

        const UserSettings settings(*m_store);

        QCOMPARE(settings.people(), 0);
        QCOMPARE(m_store->integerForKey(marker), mark);
    }

    void aMarkerOfZeroIsAFirstLaunchAgain()
    {
        UserSettings first(*m_store);
        first.setPeople(9);
        m_store->setValue(marker, 0);

        UserSettings second(*m_store);
        QCOMPARE(second.people(), 2);
        second.save();

        QCOMPARE(m_store->integerForKey(QStringLiteral("people")), 2);
    }

    void settingOneFieldRewritesAllThirteenKeys()
    {
        UserSettings settings(*m_store);
        settings.save();
        for (const QString& key : fieldKeys)
            m_store->removeValue(key);

        settings.setTheme(2);

        for (const QString& key : fieldKeys)
            QVERIFY2(m_store->contains(key), qPrintable(key));
        QCOMPARE(m_store->integerForKey(QStringLiteral("theme")), 2);
        QCOMPARE(m_store->integerForKey(QStringLiteral("people")), 2);
    }

    void settingTheSameValueAgainStillNotifiesAndSaves()
    {
        UserSettings settings(*m_store);
        const QSignalSpy changes(&settings, &UserSettings::themeChanged);

        settings.setTheme(settings.theme());

        QCOMPARE(changes.count(), 1);
        QVERIFY(m_store->contains(QStringLiteral("theme")));
    }

    void aSetterStoresThenNotifiesThenSaves()
    {
        UserSettings settings(*m_store);
        settings.save();
        QList<double> seen;
        connect(&settings, &UserSettings::billChanged, this,
            [&] { seen << settings.bill() << m_store->doubleForKey(QStringLiteral("bill")); });

        settings.setBill(12.5);

        QCOMPARE(seen, QList<double>({ 12.5, 0.0 }));
        QCOMPARE(m_store->doubleForKey(QStringLiteral("bill")), 12.5);
    }

    void loadingSavesNothing()
    {
        m_store->setValue(marker, 100);

        const UserSettings settings(*m_store);

        for (const QString& key : fieldKeys)
            QVERIFY2(!m_store->contains(key), qPrintable(key));
    }

    void aSecondReaderSeesWhatTheFirstSaved()
    {
        UserSettings settings(*m_store);
        settings.setTheme(1);
        settings.setTipFromEveryone(true);

        const UserSettings reader(*m_store);

        QCOMPARE(reader.theme(), 1);
        QCOMPARE(reader.tipFromEveryone(), true);
        QCOMPARE(reader.people(), 2);
    }

    void aSecondReaderBeforeTheFirstSaveGetsZeros()
    {
        const UserSettings settings(*m_store);

        const UserSettings reader(*m_store);

        QCOMPARE(settings.people(), 2);
        QCOMPARE(reader.theme(), 0);
        QCOMPARE(reader.people(), 0);
        QCOMPARE(reader.serviceGood(), 0);
        QCOMPARE(reader.firstRun(), false);
    }

    void everySetterStoresItsOwnField()
    {
        UserSettings settings(*m_store);
        settings.setFirstRun(false);
        settings.setTheme(2);
        settings.setRoundShare(true);
        settings.setRoundTip(true);
        settings.setTipFromEveryone(true);
        settings.setBill(10.019);
        settings.setPeople(7);
        settings.setService(2);
        settings.setServiceGood(15);
        settings.setServiceExcellent(20);
        settings.setShowCurrency(false);
        settings.setShowShareInSavedBillsList(false);
        settings.setHighlightSums(false);

        const UserSettings reader(*m_store);

        QCOMPARE(reader.firstRun(), false);
        QCOMPARE(reader.theme(), 2);
        QCOMPARE(reader.roundShare(), true);
        QCOMPARE(reader.roundTip(), true);
        QCOMPARE(reader.tipFromEveryone(), true);
        QCOMPARE(reader.bill(), 10.019);
        QCOMPARE(reader.people(), 7);
        QCOMPARE(reader.service(), 2);
        QCOMPARE(reader.serviceGood(), 15);
        QCOMPARE(reader.serviceExcellent(), 20);
        QCOMPARE(reader.showCurrency(), false);
        QCOMPARE(reader.showShareInSavedBillsList(), false);
        QCOMPARE(reader.highlightSums(), false);
    }
};

QTEST_GUILESS_MAIN(UserSettingsTest)
#include "UserSettingsTest.moc"
