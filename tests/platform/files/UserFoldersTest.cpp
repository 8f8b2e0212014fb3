#include "UserFolders.h"

#include "DeathTest.h"
#include "FileTree.h"

#include <QTest>

class UserFoldersTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<FileTree> m_home;

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<FileTree>();
        qputenv("HOME", m_home->path());
        qputenv("XDG_CONFIG_HOME", m_home->path("config"));
    }

    void theDocumentsLieInTheHomeFolderWhetherOrNotTheyExist()
    {
        QCOMPARE(userDocumentsFolder(), m_home->url("Documents"));
    }

    void theDesktopMayHaveThemElsewhere()
    {
        QVERIFY(m_home->addFolder("config"));
        QVERIFY(
            m_home->addFile("config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Meine Texte\"\n"));

        QCOMPARE(userDocumentsFolder(), m_home->url("Meine Texte"));
    }

    void ofSeveralFoldersItIsTheFirst()
    {
        QCOMPARE(firstFolderOf({ QStringLiteral("/a 100%"), QStringLiteral("/b") }),
            QUrl(QStringLiteral("file:///a 100%25")));
    }

    void noFolderAtAllStopsTheProcess()
    {
        const Death death = deathOf([] { (void)firstFolderOf({}); });

        QVERIFY(death.aborted);
        QCOMPARE(death.message,
            QByteArray("Unexpectedly found nil while unwrapping an Optional value\n"));
    }
};

QTEST_GUILESS_MAIN(UserFoldersTest)
#include "UserFoldersTest.moc"
