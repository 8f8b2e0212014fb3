#include "CurrentLocale.h"

#include <QTest>

class CurrentLocaleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char* variable : { "LC_ALL", "LC_MONETARY", "LC_NUMERIC", "LC_TIME", "LANG" })
            qunsetenv(variable);
    }

    void posixNamesBecomeIcuIdentifiers_data()
    {
        QTest::addColumn<QByteArray>("posix");
        QTest::addColumn<QByteArray>("icu");
        QTest::newRow("language and region") << QByteArray("de_CH") << QByteArray("de_CH");
        QTest::newRow("with encoding") << QByteArray("de_CH.UTF-8") << QByteArray("de_CH");
        QTest::newRow("with modifier")
            << QByteArray("sr_RS.UTF-8@latin") << QByteArray("sr_Latn_RS");
        QTest::newRow("C") << QByteArray("C") << QByteArray("en_US");
        QTest::newRow("C with encoding") << QByteArray("C.UTF-8") << QByteArray("en_US");
        QTest::newRow("POSIX") << QByteArray("POSIX") << QByteArray("en_US");
        QTest::newRow("empty") << QByteArray("") << QByteArray("en_US");
    }

    void posixNamesBecomeIcuIdentifiers()
    {
        QFETCH(const QByteArray, posix);
        QFETCH(const QByteArray, icu);

        QCOMPARE(icuLocaleFromPosix(posix.toStdString()), icu.toStdString());
    }

    void eachSubjectFollowsItsOwnVariable()
    {
        qputenv("LANG", "sv_SE.UTF-8");
        qputenv("LC_MONETARY", "de_CH.UTF-8");
        qputenv("LC_NUMERIC", "fr_FR.UTF-8");
        qputenv("LC_TIME", "fa_IR.UTF-8");

        QCOMPARE(moneyLocale(), "de_CH");
        QCOMPARE(numberLocale(), "fr_FR");
        QCOMPARE(dateLocale(), "fa_IR");
    }

    void anUnsetSubjectFollowsLang()
    {
        qputenv("LANG", "sv_SE.UTF-8");

        QCOMPARE(moneyLocale(), "sv_SE");
        QCOMPARE(numberLocale(), "sv_SE");
        QCOMPARE(dateLocale(), "sv_SE");
    }

    void anEmptyVariableCountsAsUnset()
    {
        qputenv("LC_ALL", "");
        qputenv("LANG", "ja_JP.UTF-8");

        QCOMPARE(moneyLocale(), "ja_JP");
    }

    void lcAllOverridesTheOthers()
    {
        qputenv("LC_ALL", "en_IN.UTF-8");
        qputenv("LC_MONETARY", "de_CH.UTF-8");

        QCOMPARE(moneyLocale(), "en_IN");
    }

    void nothingSetMeansEnglishOfTheUnitedStates() { QCOMPARE(moneyLocale(), "en_US"); }
};

QTEST_GUILESS_MAIN(CurrentLocaleTest)
#include "CurrentLocaleTest.moc"
