#include "Activation.h"

#include <QTest>

namespace {

const QString startupIdKey = QStringLiteral("desktop-startup-id");
const QString tokenKey = QStringLiteral("activation-token");

} // namespace

class ActivationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        qunsetenv("DESKTOP_STARTUP_ID");
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    void itIsWhatTheDesktopPutIntoTheEnvironment()
    {
        qputenv("DESKTOP_STARTUP_ID", "panel/vexilo/1_TIME77");
        qputenv("XDG_ACTIVATION_TOKEN", "token");

        const Activation activation = Activation::fromEnvironment();

        QCOMPARE(activation.startupId, QStringLiteral("panel/vexilo/1_TIME77"));
        QCOMPARE(activation.token, QStringLiteral("token"));
    }

    void withoutAnythingInTheEnvironmentItIsEmpty()
    {
        QCOMPARE(Activation::fromEnvironment(), Activation());
        QVERIFY(Activation().platformData().isEmpty());
    }

    void whatIsHandedOnArrives()
    {
        const Activation given { .startupId = QStringLiteral("a_TIME1"),
            .token = QStringLiteral("b") };

        QCOMPARE(given.platformData(),
            (QVariantMap {
                { startupIdKey, QStringLiteral("a_TIME1") }, { tokenKey, QStringLiteral("b") } }));
        QCOMPARE(Activation::fromPlatformData(given.platformData()), given);
    }

    void whatIsNoPlausibleTextIsLeftOut_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("a number of words") << QVariant(QStringLiteral("one two"));
        QTest::newRow("a line end") << QVariant(QStringLiteral("one\n"));
        QTest::newRow("a zero") << QVariant(QString(1, QChar(0)));
        QTest::newRow("beyond ASCII") << QVariant(QStringLiteral("\u00e9"));
        QTest::newRow("too long") << QVariant(QString(1025, QLatin1Char('a')));
        QTest::newRow("a list") << QVariant(QVariantList { 1, 2 });
        QTest::newRow("bytes that are no text") << QVariant(QByteArray("\xff\xfe"));
        QTest::newRow("nothing") << QVariant();
    }

    void whatIsNoPlausibleTextIsLeftOut()
    {
        QFETCH(const QVariant, value);

        const Activation activation
            = Activation::fromPlatformData({ { startupIdKey, value }, { tokenKey, value } });

        QCOMPARE(activation, Activation());
    }

    void theTimeIsTheLastOneInTheText_data()
    {
        QTest::addColumn<QString>("startupId");
        QTest::addColumn<QString>("token");
        QTest::addColumn<std::optional<std::uint32_t>>("time");
        const auto at = [](std::uint32_t time) { return std::optional(time); };
        const std::optional<std::uint32_t> none;
        QTest::newRow("at the end") << "panel_TIME123"
                                    << "" << at(123);
        QTest::newRow("the greatest") << "panel_TIME4294967295"
                                      << "" << at(4294967295);
        QTest::newRow("of two") << "a_TIME1_TIME2"
                                << "" << at(2);
        QTest::newRow("in the token") << ""
                                      << "gnome-shell_TIME5" << at(5);
        QTest::newRow("in both") << "a_TIME6"
                                 << "b_TIME7" << at(6);
        QTest::newRow("in the token alone") << "a"
                                            << "b_TIME7" << at(7);
        QTest::newRow("none") << "panel"
                              << "" << none;
        QTest::newRow("now") << "panel_TIME0"
                             << "" << none;
        QTest::newRow("too great") << "panel_TIME4294967296"
                                   << "" << none;
        QTest::newRow("negative") << "panel_TIME-1"
                                  << "" << none;
        QTest::newRow("with more behind it") << "panel_TIME12-a"
                                             << "" << none;
        QTest::newRow("without digits") << "panel_TIME"
                                        << "" << none;
    }

    void theTimeIsTheLastOneInTheText()
    {
        QFETCH(const QString, startupId);
        QFETCH(const QString, token);
        QFETCH(const std::optional<std::uint32_t>, time);

        QCOMPARE((Activation { .startupId = startupId, .token = token }.time()), time);
    }
};

QTEST_GUILESS_MAIN(ActivationTest)
#include "ActivationTest.moc"
