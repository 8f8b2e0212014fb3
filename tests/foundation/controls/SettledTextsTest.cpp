#include "SettledTexts.h"
#include "AssistiveSoftware.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <chrono>

using namespace std::chrono_literals;

class SettledTextsTest : public QObject {
    Q_OBJECT

private:
    /// What was told by the time that the last of these was.
    static QStringList toldUntil(QSignalSpy& spy, const QString& last)
    {
        QStringList told;
        while (!told.contains(last)) {
            if (spy.isEmpty() && !spy.wait())
                return told << QStringLiteral("nothing more");
            told.append(spy.takeFirst().constFirst().toString());
        }
        return told;
    }

private Q_SLOTS:
    void whatIsThereAtFirstIsNotTold()
    {
        SettledTexts texts;
        texts.setDelay(0ms);
        QSignalSpy spy(&texts, &SettledTexts::settled);
        texts.setTexts({ QStringLiteral("Total 1"), QStringLiteral("Tip 0") });

        texts.setTexts({ QStringLiteral("Total 2"), QStringLiteral("Tip 0") });

        QCOMPARE(
            toldUntil(spy, QStringLiteral("Total 2")), QStringList { QStringLiteral("Total 2") });
    }

    void textsThatAreNotKnownYetAreNone()
    {
        SettledTexts texts;
        texts.setDelay(0ms);
        QSignalSpy spy(&texts, &SettledTexts::settled);
        texts.setTexts({});
        texts.setTexts({ QStringLiteral("Total 1") });

        texts.setTexts({ QStringLiteral("Total 2") });

        QCOMPARE(
            toldUntil(spy, QStringLiteral("Total 2")), QStringList { QStringLiteral("Total 2") });
    }

    void ofManyChangesTheLastOneIsTold()
    {
        SettledTexts texts;
        QSignalSpy spy(&texts, &SettledTexts::settled);
        texts.setTexts({ QStringLiteral("0") });

        for (const char* const text : { "1", "12", "123" })
            texts.setTexts({ QString::fromLatin1(text) });

        QCOMPARE(toldUntil(spy, QStringLiteral("123")), QStringList { QStringLiteral("123") });
        texts.setTexts({ QStringLiteral("4") });
        QCOMPARE(toldUntil(spy, QStringLiteral("4")), QStringList { QStringLiteral("4") });
    }

    void onlyWhatIsDifferentIsTold()
    {
        SettledTexts texts;
        texts.setDelay(0ms);
        QSignalSpy spy(&texts, &SettledTexts::settled);
        texts.setTexts({ QStringLiteral("People 2"), QStringLiteral("Total 9"),
            QStringLiteral("Share 4.50") });

        texts.setTexts(
            { QStringLiteral("People 3"), QStringLiteral("Total 9"), QStringLiteral("Share 3") });

        const QString told = QStringLiteral("People 3; Share 3");
        QCOMPARE(toldUntil(spy, told), QStringList { told });
    }

    void whatHasChangedBackIsNotTold()
    {
        SettledTexts texts;
        texts.setDelay(0ms);
        QSignalSpy spy(&texts, &SettledTexts::settled);
        texts.setTexts({ QStringLiteral("1") });
        texts.setTexts({ QStringLiteral("2") });
        texts.setTexts({ QStringLiteral("1") });
        QTest::qWait(0); // a timer of no delay would have come true

        texts.setTexts({ QStringLiteral("3") });

        QCOMPARE(toldUntil(spy, QStringLiteral("3")), QStringList { QStringLiteral("3") });
    }

    void whatIsHeldIsToldLater()
    {
        SettledTexts texts;
        texts.setDelay(0ms);
        QSignalSpy spy(&texts, &SettledTexts::settled);
        texts.setTexts({ QStringLiteral("1") });
        texts.setHeld(true);
        texts.setTexts({ QStringLiteral("2") });
        texts.setTexts({ QStringLiteral("3") });
        QTest::qWait(0);
        QCOMPARE(spy.count(), 0);

        texts.setHeld(false);

        QCOMPARE(toldUntil(spy, QStringLiteral("3")), QStringList { QStringLiteral("3") });
    }

    void assistiveSoftwareIsSeenToComeAndGo()
    {
        const AssistiveSoftware software;
        QSignalSpy spy(&software, &AssistiveSoftware::connectedChanged);
        QVERIFY(!software.connected());

        QAccessible::setActive(true);
        QVERIFY(software.connected());
        QCOMPARE(spy.count(), 1);

        QAccessible::setActive(false);
        QVERIFY(!software.connected());
        QCOMPARE(spy.count(), 2);
    }
};

QTEST_MAIN(SettledTextsTest)
#include "SettledTextsTest.moc"
