#include "SchemeHandler.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Homes with associations as desktops write them.
class SchemeHandlerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_home;

    void write(const QString& name, const QByteArray& text)
    {
        const QString path = m_home->filePath(name);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    void install(const QString& program)
    {
        write(QStringLiteral("system/applications/") + program,
            "[Desktop Entry]\nType=Application\nName=Messages\nExec=messages %u\n");
    }

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", m_home->filePath(QStringLiteral("config")).toUtf8());
        qputenv("XDG_CONFIG_DIRS", m_home->filePath(QStringLiteral("systemconfig")).toUtf8());
        qputenv("XDG_DATA_HOME", m_home->filePath(QStringLiteral("data")).toUtf8());
        qputenv("XDG_DATA_DIRS", m_home->filePath(QStringLiteral("system")).toUtf8());
        qputenv("XDG_CURRENT_DESKTOP", "Cosy:Homely");
    }

    void aDesktopWithoutAssociationsHasNone() { QVERIFY(!hasHandlerFor(QStringLiteral("sms"))); }

    void whatIsAssociatedAndInstalledIsFound_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("group");
        const QByteArray defaults = "[Default Applications]";
        QTest::newRow("the user's default") << "config/mimeapps.list" << defaults;
        QTest::newRow("the desktop's default") << "config/homely-mimeapps.list" << defaults;
        QTest::newRow("the system's default") << "systemconfig/mimeapps.list" << defaults;
        QTest::newRow("the user's, beside programs")
            << "data/applications/mimeapps.list" << defaults;
        QTest::newRow("added") << "config/mimeapps.list" << QByteArray("[Added Associations]");
        QTest::newRow("the program's own word")
            << "system/applications/mimeinfo.cache" << QByteArray("[MIME Cache]");
    }

    void whatIsAssociatedAndInstalledIsFound()
    {
        QFETCH(const QString, file);
        QFETCH(const QByteArray, group);
        install(QStringLiteral("messages.desktop"));
        write(file,
            "# written by the desktop\n" + group
                + "\ntext/plain=editor.desktop;\nx-scheme-handler/sms=messages.desktop;\n");

        QVERIFY(hasHandlerFor(QStringLiteral("sms")));
        QVERIFY(!hasHandlerFor(QStringLiteral("mailto")));
    }

    void aProgramThatIsGoneIsNone()
    {
        write(QStringLiteral("config/mimeapps.list"),
            "[Default Applications]\nx-scheme-handler/sms=gone.desktop;\n");

        QVERIFY(!hasHandlerFor(QStringLiteral("sms")));
    }

    void theNextProgramIsTakenWhereTheFirstIsGone()
    {
        install(QStringLiteral("messages.desktop"));
        write(QStringLiteral("config/mimeapps.list"),
            "[Default Applications]\nx-scheme-handler/sms=gone.desktop;messages.desktop\n");

        QVERIFY(hasHandlerFor(QStringLiteral("sms")));
    }

    void whatTheUserTookAwayIsNone()
    {
        install(QStringLiteral("messages.desktop"));
        write(QStringLiteral("config/mimeapps.list"),
            "[Removed Associations]\nx-scheme-handler/sms=messages.desktop;\n");
        write(QStringLiteral("system/applications/mimeinfo.cache"),
            "[MIME Cache]\nx-scheme-handler/sms=messages.desktop;\n");

        QVERIFY(!hasHandlerFor(QStringLiteral("sms")));
    }

    void groupsThatAreNoAssociationsSayNothing()
    {
        install(QStringLiteral("messages.desktop"));
        write(QStringLiteral("config/mimeapps.list"),
            "[Something Else]\nx-scheme-handler/sms=messages.desktop;\n");

        QVERIFY(!hasHandlerFor(QStringLiteral("sms")));
    }

    void aProgramInAFolderIsFoundByItsDashes()
    {
        install(QStringLiteral("vendor/messages.desktop"));
        write(QStringLiteral("config/mimeapps.list"),
            "[Default Applications]\nx-scheme-handler/sms=vendor-messages.desktop\n");

        QVERIFY(hasHandlerFor(QStringLiteral("sms")));
    }
};

QTEST_GUILESS_MAIN(SchemeHandlerTest)
#include "SchemeHandlerTest.moc"
