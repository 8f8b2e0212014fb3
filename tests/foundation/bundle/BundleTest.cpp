#include "Bundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class BundleTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    Bundle m_bundle { m_folder.path() };

    void writeFile(const QString& name, const QByteArray& content)
    {
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

private Q_SLOTS:
    void aResourceIsFoundByNameAndExtension()
    {
        writeFile(QStringLiteral("Vexilo.momd"), "model");

        QCOMPARE(m_bundle.pathForResource(QStringLiteral("Vexilo"), QStringLiteral("momd")),
            m_folder.filePath(QStringLiteral("Vexilo.momd")));
    }

    void aMissingResourceGivesNothing()
    {
        QCOMPARE(m_bundle.pathForResource(QStringLiteral("Other"), QStringLiteral("momd")),
            std::nullopt);
    }

    void aResourceInAFolderIsFoundByItsWholeName()
    {
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("Sounds")));
        writeFile(QStringLiteral("Sounds/coin.wav"), "sound");

        QCOMPARE(m_bundle.pathForResource(QStringLiteral("/Sounds/coin.wav"), QString()),
            m_folder.filePath(QStringLiteral("Sounds/coin.wav")));
    }

    void aNameThatLeadsOutOfTheBundleIsNoResource_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("beside the bundle") << QStringLiteral("../outside");
        QTest::newRow("after a slash") << QStringLiteral("/../outside");
        QTest::newRow("through a folder") << QStringLiteral("/Sounds/../../outside");
        QTest::newRow("the folder above") << QStringLiteral("/Sounds/../..");
    }

    void aNameThatLeadsOutOfTheBundleIsNoResource()
    {
        QFETCH(const QString, name);
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("bundle/Sounds")));
        writeFile(QStringLiteral("outside"), "no resource");
        const Bundle bundle(m_folder.filePath(QStringLiteral("bundle")));

        QCOMPARE(bundle.pathForResource(name, QString()), std::nullopt);
    }

    void aTextOfTheInformationDictionaryIsRead()
    {
        writeFile(QStringLiteral("Info.json"), R"({"CFBundleVersion": "27"})");

        QCOMPARE(
            m_bundle.stringForInfoKey(QStringLiteral("CFBundleVersion")), QStringLiteral("27"));
    }

    void whatIsNoTextInTheInformationDictionaryCountsAsMissing_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("a number") << QByteArray(R"({"key": 27})");
        QTest::newRow("a boolean") << QByteArray(R"({"key": true})");
        QTest::newRow("null") << QByteArray(R"({"key": null})");
        QTest::newRow("another key") << QByteArray(R"({"other": "27"})");
        QTest::newRow("a list as the whole") << QByteArray(R"(["key"])");
        QTest::newRow("broken JSON") << QByteArray(R"({"key": "27")");
        QTest::newRow("an empty file") << QByteArray();
    }

    void whatIsNoTextInTheInformationDictionaryCountsAsMissing()
    {
        QFETCH(const QByteArray, json);
        writeFile(QStringLiteral("Info.json"), json);

        QCOMPARE(m_bundle.stringForInfoKey(QStringLiteral("key")), std::nullopt);
    }

    void aMissingInformationDictionaryHasNoTexts()
    {
        const Bundle nowhere(m_folder.filePath(QStringLiteral("nowhere")));

        QCOMPARE(nowhere.stringForInfoKey(QStringLiteral("key")), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(BundleTest)
#include "BundleTest.moc"
