#include "AmountStyle.h"
#include "Bundle.h"
#include "DescriptionBuffer.h"
#include "Formatting.h"
#include "Language.h"
#include "Split.h"
#include "SplitSummary.h"
#include "StoreError.h"

#include <QTest>
#include <QTranslator>

/// The texts that are put together below the screens, by the catalogue that is installed.
class GermanTest : public QObject {
    Q_OBJECT

private:
    QTranslator m_german;

    static QString summary()
    {
        const SplitInputs inputs { .bill = 1234.5,
            .people = 4,
            .service = 1,
            .serviceGood = 5,
            .tipFromEveryone = true,
            .roundTip = true,
            .roundShare = true };
        return splitSummary(inputs, split(inputs).value(), AmountStyle::WithSeparator);
    }

private Q_SLOTS:
    void init()
    {
        const auto file = catalogueFor({ QStringLiteral("de") }, Bundle::main());
        QVERIFY(file);
        QVERIFY(m_german.load(*file));
        QVERIFY(QCoreApplication::installTranslator(&m_german));
    }

    void cleanup() { QCoreApplication::removeTranslator(&m_german); }

    void theSummaryIsGermanAndItsAmountsAreNot()
    {
        QCOMPARE(summary(),
            QStringLiteral("Personen am Tisch: 4.\n"
                           "Die Rechnung betrug 1,234.5\n"
                           "Service: Gut, Trinkgeld: 247\n"
                           "\n"
                           "Insgesamt zu zahlen: 1,484\n"
                           "Alle zahlen je 371\n"
                           "(Alle zahlen ein Trinkgeld)\n"
                           "\n"
                           "Der Anteil wurde aufgerundet.\n"
                           "Das Trinkgeld wurde aufgerundet.\n"
                           "\n"
                           "Berechnung des Trinkgelds: 5\u00a0% von 1,234.5"));
    }

    void withoutTheTranslationTheSummaryIsEnglishAgain()
    {
        QCoreApplication::removeTranslator(&m_german);

        QVERIFY(
            summary().startsWith(QLatin1String("Based on 4 people dining.\nThe bill came to ")));
    }

    void wordsAreTranslatedWhenTheyAreAskedFor()
    {
        QCOMPARE(strService(2), QStringLiteral("Hervorragend"));
        QCOMPARE(yesOrNo(true), QStringLiteral("Ja"));
        QCOMPARE(dateStr({}), QStringLiteral("Unbekannt"));
        QCOMPARE(strAreYouSure(), QStringLiteral("Sind Sie sicher?"));
    }

    void aBillWithoutADescriptionGetsTheWordThatTheDialogPromises()
    {
        const QString promise
            = QCoreApplication::translate("SaveDialog", "Leave blank to use 'Bill'");

        QCOMPARE(DescriptionBuffer().textOrDefault(), QStringLiteral("Rechnung"));
        QVERIFY(promise.contains(DescriptionBuffer().textOrDefault()));
    }

    void anErrorIsTranslatedForScreensAndEnglishForLogs()
    {
        const StoreError error { StoreError::Code::DiskFull,
            { "The store could not be used: %1.", { QStringLiteral("database or disk is full") } },
            {} };

        QCOMPARE(error.translated(),
            QStringLiteral("StoreError (disk full): Der Datenspeicher konnte nicht benutzt werden: "
                           "Die Datenbank oder der Datenträger ist voll."));
        QCOMPARE(error.toString(),
            QStringLiteral("StoreError (disk full): The store could not be used: database or disk "
                           "is full."));
    }

    void whatSomebodyNamedStaysAsItIs()
    {
        const StoreError error { StoreError::Code::IncompatibleModel,
            { "The store was written with another model: it has the entity %1.",
                { QStringLiteral("%2 Bill") } },
            {} };

        QCOMPARE(error.description.translated(),
            QStringLiteral(
                "Der Datenspeicher wurde mit einem anderen Modell geschrieben: Er hat die "
                "Entität %2 Bill."));
    }
};

QTEST_GUILESS_MAIN(GermanTest)
#include "GermanTest.moc"
