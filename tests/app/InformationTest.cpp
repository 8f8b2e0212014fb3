#include "Bundle.h"
#include "GlobalModel.h"
#include "Version.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

class InformationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theVersionIsReleaseAndBuild_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("expected");
        QTest::newRow("both") << QByteArray(R"({"CFBundleShortVersionString": "1.4",
                                                "CFBundleVersion": "27"})")
                              << QStringLiteral("1.4.27");
        QTest::newRow("neither") << QByteArray("{}") << QStringLiteral("x.x.x");
        QTest::newRow("a build that is no text")
            << QByteArray(R"({"CFBundleShortVersionString": "1.4", "CFBundleVersion": 27})")
            << QStringLiteral("1.4.x");
    }

    void theVersionIsReleaseAndBuild()
    {
        QFETCH(const QByteArray, json);
        QFETCH(const QString, expected);
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("Info.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(json);
        file.close();

        QCOMPARE(version(Bundle(folder.path())), expected);
    }

    void theVersionIsReadAfreshOnEveryCall()
    {
        const QTemporaryDir folder;
        const Bundle bundle(folder.path());
        QCOMPARE(version(bundle), QStringLiteral("x.x.x"));
        QFile file(folder.filePath(QStringLiteral("Info.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"({"CFBundleShortVersionString": "2.0", "CFBundleVersion": "3"})");
        file.close();

        QCOMPARE(release(bundle), QStringLiteral("2.0"));
        QCOMPARE(build(bundle), QStringLiteral("3"));
    }

    void theProgramsOwnBundleHasAVersion()
    {
        // The tests stand beside the program in the build tree, and share its resources.
        QVERIFY(version(Bundle::main()) != QStringLiteral("x.x.x"));
    }

    void theTextsThatIdentifyTheProgram()
    {
        const GlobalModel& global = GlobalModel::shared();

        QCOMPARE(global.appName, QStringLiteral("Vexilo"));
        QCOMPARE(QString(CompanyName), QStringLiteral("Morrowick"));
        QVERIFY(global.copyrightStr.contains(CompanyName));
        QVERIFY(!global.copyrightStr.contains(QLatin1Char('\n')));
        QCOMPARE(&GlobalModel::shared(), &global);
    }

    void theHelpPageIsAnAbsoluteAddress()
    {
        const QUrl help(GlobalModel::shared().websiteHelp, QUrl::StrictMode);

        QVERIFY(help.isValid());
        QVERIFY(!help.isRelative());
        QVERIFY(QUrl(GlobalModel::shared().website, QUrl::StrictMode).isValid());
    }
};

QTEST_GUILESS_MAIN(InformationTest)
#include "InformationTest.moc"
