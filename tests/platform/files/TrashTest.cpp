#include "FileManagement.h"

#include "CapturedOutput.h"
#include "Diagnostics.h"
#include "FileTree.h"

#include <QDateTime>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

class TrashTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<FileTree> m_tree;

    /// The line of the description that tells the old place.
    [[nodiscard]] QByteArray oldPlace(const QByteArray& description) const
    {
        const QByteArrayList lines = m_tree->content(description).split('\n');
        return lines.size() > 1 ? lines.at(1) : QByteArray();
    }

    [[nodiscard]] mode_t modeOf(const QByteArray& name) const
    {
        struct stat status { };
        return ::lstat(m_tree->path(name).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    /// What the file of a volume leaves there when it is moved to the trash, in a child process.
    /// prepare: what is there before.
    [[nodiscard]] QByteArrayList linesOfVolume(const std::function<void()>& prepare,
        const std::function<void()>& look, const QByteArray& name = "volume/folder/menu.txt") const
    {
        return linesOfChild([&] {
            if (!mountVolume(m_tree->path("volume"))) {
                printDiagnostic("skip");
                return;
            }
            if (!m_tree->addFolder("volume/folder")
                || !m_tree->addFile("volume/folder/menu.txt", "content"))
                printDiagnostic("no item");
            prepare();
            if (!deleteFile(m_tree->url(name), true))
                printDiagnostic("false");
            look();
        });
    }

    /// In a child process: the folder becomes another user's.
    void giveAway(const QByteArray& folder) const
    {
        if (::chown(m_tree->path(folder).constData(), ::geteuid() + 1, ::getegid()) == 0)
            return;
        printDiagnostic("skip");
        _exit(0);
    }

    void print(const QByteArray& name) const
    {
        printDiagnostic(name.toStdString() + ": " + m_tree->names(name).join(',').toStdString());
    }

private Q_SLOTS:
    void init()
    {
        m_tree = std::make_unique<FileTree>();
        qputenv("HOME", m_tree->path("home"));
        qputenv("XDG_DATA_HOME", m_tree->path("home/data"));
        QVERIFY(m_tree->addFolder("home") && m_tree->addFolder("volume"));
    }

    void aTrashedFileIsInTheHomeTrashWithItsOldPlaceAndTheTime()
    {
        QVERIFY(m_tree->addFile("home/menu.txt", "content"));
        const QDateTime before = QDateTime::currentDateTime();

        QVERIFY(deleteFile(m_tree->url("home/menu.txt"), true));

        const QDateTime after = QDateTime::currentDateTime();
        QVERIFY(!m_tree->has("home/menu.txt"));
        QCOMPARE(m_tree->content("home/data/Trash/files/menu.txt"), QByteArray("content"));
        const QByteArrayList lines
            = m_tree->content("home/data/Trash/info/menu.txt.trashinfo").split('\n');
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines.at(0), QByteArray("[Trash Info]"));
        QCOMPARE(lines.at(1), "Path=" + m_tree->path("home/menu.txt"));
        const QByteArray key = "DeletionDate=";
        QVERIFY(lines.at(2).startsWith(key));
        const QDateTime date
            = QDateTime::fromString(QString::fromLatin1(lines.at(2).mid(key.size())),
                QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
        QVERIFY(date.isValid());
        QVERIFY(date.addSecs(1) > before && date <= after);
        QCOMPARE(lines.at(3), QByteArray());
    }

    void theTrashIsTheUsersAlone()
    {
        QVERIFY(m_tree->addFile("home/menu.txt"));

        (void)deleteFile(m_tree->url("home/menu.txt"), true);

        QCOMPARE(modeOf("home/data"), mode_t(0700));
        QCOMPARE(modeOf("home/data/Trash"), mode_t(0700));
        QCOMPARE(modeOf("home/data/Trash/files"), mode_t(0700));
        QCOMPARE(modeOf("home/data/Trash/info"), mode_t(0700));
    }

    void withoutADataFolderOfItsOwnTheTrashIsInTheUsualOne()
    {
        qunsetenv("XDG_DATA_HOME");
        QVERIFY(m_tree->addFile("home/menu.txt"));

        (void)deleteFile(m_tree->url("home/menu.txt"), true);

        QVERIFY(m_tree->has("home/.local/share/Trash/files/menu.txt"));
    }

    void aDataFolderThatIsNotAbsoluteIsNone()
    {
        qputenv("XDG_DATA_HOME", "data");
        QVERIFY(m_tree->addFile("home/menu.txt"));

        (void)deleteFile(m_tree->url("home/menu.txt"), true);

        QVERIFY(m_tree->has("home/.local/share/Trash/files/menu.txt"));
    }

    void aHomeNeedNotBeUtf8_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("the home itself") << QByteArray("HOME") << QByteArray("/.local/share");
        QTest::newRow("the data folder") << QByteArray("XDG_DATA_HOME") << QByteArray();
    }

    void aHomeNeedNotBeUtf8()
    {
        QFETCH(const QByteArray, variable);
        QFETCH(const QByteArray, data);
        qunsetenv("XDG_DATA_HOME");
        qputenv(variable.constData(), m_tree->path("caf\xe9"));
        QVERIFY(m_tree->addFolder("caf\xe9") && m_tree->addFile("caf\xe9/menu.txt"));

        (void)deleteFile(m_tree->url("caf\xe9/menu.txt"), true);

        QVERIFY(m_tree->has("caf\xe9" + data + "/Trash/files/menu.txt"));
        QCOMPARE(oldPlace("caf\xe9" + data + "/Trash/info/menu.txt.trashinfo"),
            "Path=" + m_tree->path("caf%E9/menu.txt"));
    }

    void anyItemCanBeTrashed_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("encoded");
        QTest::newRow("a blank") << QByteArray("the menu") << QByteArray("the%20menu");
        QTest::newRow("a line end") << QByteArray("the\nmenu") << QByteArray("the%0Amenu");
        QTest::newRow("a per cent sign") << QByteArray("50%25") << QByteArray("50%2525");
        QTest::newRow("UTF-8") << QByteArray("für") << QByteArray("f%C3%BCr");
        QTest::newRow("no UTF-8") << QByteArray("caf\xe9\xff") << QByteArray("caf%E9%FF");
        QTest::newRow("a point first") << QByteArray(".hidden") << QByteArray(".hidden");
    }

    void anyItemCanBeTrashed()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const QByteArray, encoded);
        QVERIFY(m_tree->addFile("home/" + name, "content"));

        (void)deleteFile(m_tree->url("home/" + name), true);

        QCOMPARE(m_tree->content("home/data/Trash/files/" + name), QByteArray("content"));
        QCOMPARE(oldPlace("home/data/Trash/info/" + name + ".trashinfo"),
            "Path=" + m_tree->path("home/") + encoded);
        QCOMPARE(m_tree->names("home"), QByteArrayList { "data" });
    }

    void aNameTooLongForItsDescriptionIsShortenedButNotItsOldPlace_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("trashed");
        QTest::newRow("letters") << QByteArray(255, 'x') << QByteArray(245, 'x');
        // 122 characters of two bytes are 244.
        QTest::newRow("two bytes each")
            << QByteArray("ü").repeated(127) << QByteArray("ü").repeated(122);
        QTest::newRow("no UTF-8") << QByteArray(255, '\x80') << QByteArray(242, '\x80');
        QTest::newRow("just fitting") << QByteArray(245, 'x') << QByteArray(245, 'x');
    }

    void aNameTooLongForItsDescriptionIsShortenedButNotItsOldPlace()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const QByteArray, trashed);
        QVERIFY(m_tree->addFile("home/" + name));

        (void)deleteFile(m_tree->url("home/" + name), true);

        QCOMPARE(m_tree->names("home/data/Trash/files"), QByteArrayList { trashed });
        QCOMPARE(oldPlace("home/data/Trash/info/" + trashed + ".trashinfo"),
            "Path=" + m_tree->path("home/" + name).toPercentEncoding("/"));
    }

    void aFileOnAVeryLongPathIsTrashed()
    {
        const QByteArray name = m_tree->addDeepFolder("home") + "/menu.txt";
        QVERIFY(m_tree->addFile(name, "content"));

        (void)deleteFile(m_tree->url(name), true);

        QVERIFY(!m_tree->has(name));
        QCOMPARE(m_tree->content("home/data/Trash/files/menu.txt"), QByteArray("content"));
        QCOMPARE(oldPlace("home/data/Trash/info/menu.txt.trashinfo"), "Path=" + m_tree->path(name));
    }

    void aSecondItemOfTheSameNameGetsANumber()
    {
        const QByteArray longest(255, 'x');
        for (const char* content : { "one", "two", "three" }) {
            QVERIFY(m_tree->addFile("home/menu.txt", content));
            QVERIFY(m_tree->addFile("home/" + longest, content));
            (void)deleteFile(m_tree->url("home/menu.txt"), true);
            (void)deleteFile(m_tree->url("home/" + longest), true);
        }

        const QByteArray files = "home/data/Trash/files/";
        QCOMPARE(m_tree->content(files + "menu.txt"), QByteArray("one"));
        QCOMPARE(m_tree->content(files + "menu.txt.2"), QByteArray("two"));
        QCOMPARE(m_tree->content(files + "menu.txt.3"), QByteArray("three"));
        QCOMPARE(m_tree->content(files + longest.first(243) + ".3"), QByteArray("three"));
        QCOMPARE(m_tree->names("home/data/Trash/info").size(), 6);
        QCOMPARE(oldPlace("home/data/Trash/info/menu.txt.3.trashinfo"),
            "Path=" + m_tree->path("home/menu.txt"));
    }

    void anItemInTheTrashWithoutADescriptionIsNotReplaced()
    {
        QVERIFY(m_tree->addFile("home/a") && m_tree->addFile("home/menu.txt", "new"));
        (void)deleteFile(m_tree->url("home/a"), true);
        QVERIFY(m_tree->addFile("home/data/Trash/files/menu.txt", "old"));

        (void)deleteFile(m_tree->url("home/menu.txt"), true);

        QCOMPARE(m_tree->content("home/data/Trash/files/menu.txt"), QByteArray("old"));
        QCOMPARE(m_tree->content("home/data/Trash/files/menu.txt.2"), QByteArray("new"));
        QCOMPARE(m_tree->names("home/data/Trash/info"),
            (QByteArrayList { "a.trashinfo", "menu.txt.2.trashinfo" }));
    }

    void aFolderIsTrashedWithAllThatIsInIt()
    {
        QVERIFY(m_tree->addFolder("home/folder"));
        QVERIFY(m_tree->addFile("home/folder/menu.txt", "content"));

        (void)deleteFile(m_tree->url("home/folder/"), true);

        QVERIFY(!m_tree->has("home/folder"));
        QCOMPARE(m_tree->content("home/data/Trash/files/folder/menu.txt"), QByteArray("content"));
    }

    void aLinkIsTrashedItself_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("to a folder") << QByteArray("link");
        QTest::newRow("to a folder, with a slash") << QByteArray("link/");
        QTest::newRow("to nowhere") << QByteArray("dangling");
    }

    void aLinkIsTrashedItself()
    {
        QFETCH(const QByteArray, name);
        QVERIFY(m_tree->addFolder("home/folder") && m_tree->addLink("home/link", "folder"));
        QVERIFY(m_tree->addLink("home/dangling", "nowhere"));

        (void)deleteFile(m_tree->url("home/" + name), true);

        QVERIFY(m_tree->has("home/folder"));
        const QByteArray trashed = name.endsWith('/') ? name.chopped(1) : name;
        QVERIFY(!m_tree->has("home/" + trashed));
        QVERIFY(m_tree->has("home/data/Trash/files/" + trashed));
    }

    void theOldPlaceIsTheOneBehindALinkedFolder()
    {
        QVERIFY(m_tree->addFolder("home/folder") && m_tree->addLink("home/link", "folder"));
        QVERIFY(m_tree->addFile("home/folder/menu.txt"));

        (void)deleteFile(m_tree->url("home/link/menu.txt"), true);

        QCOMPARE(oldPlace("home/data/Trash/info/menu.txt.trashinfo"),
            "Path=" + m_tree->path("home/folder/menu.txt"));
    }

    void trashingAMissingFileIsTrueAndSaysNothing()
    {
        bool result = false;

        const auto lines = linesOf([&] { result = deleteFile(m_tree->url("home/missing"), true); });

        QVERIFY(result);
        QCOMPARE(lines, QByteArrayList());
        QCOMPARE(m_tree->names("home/data/Trash/info"), QByteArrayList());
    }

    void trashingWhatIsNoFileIsTrue_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a web page") << QByteArray("https://example.org/");
        QTest::newRow("in a missing folder") << QByteArray("file:///missing/menu.txt");
        QTest::newRow("too long") << "file:///" + QByteArray(5000, 'x');
        QTest::newRow("the root") << QByteArray("file:///");
    }

    void trashingWhatIsNoFileIsTrue()
    {
        QFETCH(const QByteArray, address);

        QVERIFY(deleteFile(QUrl::fromEncoded(address), true));
    }

    void whatHoldsTheTrashStaysWhereItIs()
    {
        QVERIFY(m_tree->addFile("home/menu.txt"));

        QVERIFY(deleteFile(m_tree->url("home"), true));

        QVERIFY(m_tree->has("home/menu.txt"));
        QCOMPARE(m_tree->names("home/data/Trash/info"), QByteArrayList());
    }

    void theTrashAndWhatIsInItStayWhereTheyAre_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("an item in it") << QByteArray("/files/folder");
        QTest::newRow("what is in that") << QByteArray("/files/folder/menu.txt");
        QTest::newRow("a description") << QByteArray("/info/folder.trashinfo");
        QTest::newRow("its items") << QByteArray("/files");
        QTest::newRow("its descriptions") << QByteArray("/info");
        QTest::newRow("the trash itself") << QByteArray();
    }

    void theTrashAndWhatIsInItStayWhereTheyAre()
    {
        QFETCH(const QByteArray, name);
        const QByteArray trash = "home/data/Trash";
        QVERIFY(m_tree->addFolder("home/folder") && m_tree->addFile("home/folder/menu.txt"));
        (void)deleteFile(m_tree->url("home/folder"), true);
        QVERIFY(m_tree->addLink("home/link", "data/Trash"));

        QVERIFY(deleteFile(m_tree->url(trash + name), true));
        if (!name.isEmpty())
            QVERIFY(deleteFile(m_tree->url("home/link" + name), true));

        QCOMPARE(m_tree->names(trash), (QByteArrayList { "files", "info" }));
        QCOMPARE(m_tree->names(trash + "/files"), QByteArrayList { "folder" });
        QCOMPARE(m_tree->names(trash + "/files/folder"), QByteArrayList { "menu.txt" });
        QCOMPARE(m_tree->names(trash + "/info"), QByteArrayList { "folder.trashinfo" });
    }

    void anItemWhoseDescriptionDoesNotComeToTheDiskStaysWhereItIs()
    {
        QVERIFY(m_tree->addFile("home/menu.txt"));

        const auto lines = linesOfChild([this] {
            refuseSystemCall(SYS_fsync, EIO);
            printDiagnostic(deleteFile(m_tree->url("home/menu.txt"), true) ? "true" : "false");
        });

        QCOMPARE(lines, QByteArrayList { "true" });
        QVERIFY(m_tree->has("home/menu.txt"));
        QCOMPARE(m_tree->names("home/data/Trash"), (QByteArrayList { "files", "info" }));
        QCOMPARE(m_tree->names("home/data/Trash/files"), QByteArrayList());
        QCOMPARE(m_tree->names("home/data/Trash/info"), QByteArrayList());
    }

    void whatMayNotBeMovedStaysWhereItIsAndTheResultIsTrue()
    {
        QVERIFY(m_tree->addFolder("closed") && m_tree->addFile("closed/menu.txt"));
        ::chmod(m_tree->path("closed").constData(), 0555);
        ::chmod(m_tree->path("home").constData(), 0777);

        const auto lines = linesOfChild([this] {
            becomeNobody();
            printDiagnostic(deleteFile(m_tree->url("closed/menu.txt"), true) ? "true" : "false");
            print("home/data/Trash/info");
        });

        ::chmod(m_tree->path("closed").constData(), 0755);
        QCOMPARE(lines, (QByteArrayList { "true", "home/data/Trash/info: " }));
        QVERIFY(m_tree->has("closed/menu.txt"));
    }

    void withoutAnyTrashAFileStaysWhereItIs()
    {
        QVERIFY(m_tree->addFile("home/data") && m_tree->addFile("home/menu.txt", "content"));

        const auto lines = linesOfVolume(
            [this] {
                ::chmod(m_tree->path("volume").constData(), 0555);
                ::chmod(m_tree->path("volume/folder").constData(), 0777);
                becomeNobody();
            },
            [this] {
                print("volume");
                print("volume/folder");
            });

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines, (QByteArrayList { "volume: folder", "volume/folder: menu.txt" }));
    }

    // On another volume

    void onAnotherVolumeTheTrashIsInItsTopFolderAndTheOldPlaceIsRelative()
    {
        const QByteArray trash = "volume/.Trash-" + QByteArray::number(geteuid());

        const auto lines = linesOfVolume([] {},
            [&] {
                printDiagnostic(m_tree->content(trash + "/files/menu.txt").toStdString());
                printDiagnostic(oldPlace(trash + "/info/menu.txt.trashinfo").toStdString());
                printDiagnostic(QByteArray::number(modeOf(trash), 8).toStdString());
                print("volume/folder");
                print("home/data/Trash/info");
            });

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines,
            (QByteArrayList { "content", "Path=folder/menu.txt", "700",
                "volume/folder: ", "home/data/Trash/info: " }));
    }

    void aTrashForAllUsersIsUsedWhereItIsSafe_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("link");
        QTest::addColumn<bool>("used");
        QTest::newRow("sticky") << 01777 << false << true;
        QTest::newRow("not sticky") << 0777 << false << false;
        QTest::newRow("a link") << 01777 << true << false;
    }

    void aTrashForAllUsersIsUsedWhereItIsSafe()
    {
        QFETCH(const int, mode);
        QFETCH(const bool, link);
        QFETCH(const bool, used);
        const QByteArray user = QByteArray::number(geteuid());

        const auto lines = linesOfVolume(
            [&] {
                const QByteArray folder = link ? "volume/elsewhere" : "volume/.Trash";
                (void)m_tree->addFolder(folder);
                ::chmod(m_tree->path(folder).constData(), static_cast<mode_t>(mode));
                if (link)
                    (void)m_tree->addLink("volume/.Trash", "elsewhere");
            },
            [&] {
                print("volume/.Trash/" + user + "/files");
                print("volume/.Trash-" + user + "/files");
            });

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines.at(0), "volume/.Trash/" + user + "/files: " + (used ? "menu.txt" : ""));
        QCOMPARE(lines.at(1), "volume/.Trash-" + user + "/files: " + (used ? "" : "menu.txt"));
    }

    void aTrashThatSomebodyElseMadeIsNotUsed()
    {
        const QByteArray trash = "volume/.Trash-" + QByteArray::number(geteuid());

        const auto lines = linesOfVolume(
            [&] {
                if (!m_tree->addFolder(trash))
                    printDiagnostic("no trash");
                giveAway(trash);
            },
            [&] {
                print(trash);
                print("volume/folder");
            });

        if (lines == QByteArrayList { "skip" })
            QSKIP("Only an administrator can give a folder away, and mount a volume for it.");
        QCOMPARE(lines, (QByteArrayList { trash + ": ", "volume/folder: menu.txt" }));
    }

    void inATrashForAllUsersAFolderThatSomebodyElseMadeIsNotUsed()
    {
        const QByteArray user = QByteArray::number(geteuid());

        const auto lines = linesOfVolume(
            [&] {
                if (!m_tree->addFolder("volume/.Trash")
                    || !m_tree->addFolder("volume/.Trash/" + user))
                    printDiagnostic("no trash");
                ::chmod(m_tree->path("volume/.Trash").constData(), 01777);
                giveAway("volume/.Trash/" + user);
            },
            [&] {
                print("volume/.Trash/" + user);
                print("volume/.Trash-" + user + "/files");
            });

        if (lines == QByteArrayList { "skip" })
            QSKIP("Only an administrator can give a folder away, and mount a volume for it.");
        QCOMPARE(lines,
            (QByteArrayList {
                "volume/.Trash/" + user + ": ", "volume/.Trash-" + user + "/files: menu.txt" }));
    }

    void aTrashThatIsALinkIsNotUsed()
    {
        const QByteArray trash = "volume/.Trash-" + QByteArray::number(geteuid());

        const auto lines = linesOfVolume(
            [&] {
                if (!m_tree->addFolder("volume/elsewhere") || !m_tree->addLink(trash, "elsewhere"))
                    printDiagnostic("no trash");
            },
            [this] {
                print("volume/elsewhere");
                print("volume/folder");
            });

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines, (QByteArrayList { "volume/elsewhere: ", "volume/folder: menu.txt" }));
    }

    void foldersOnTheWayToTheTrashNeedNotBeReadable()
    {
        const auto lines = linesOfVolume(
            [this] {
                if (!m_tree->addFolder("volume/.Trash"))
                    printDiagnostic("no trash");
                ::chmod(m_tree->path("volume/.Trash").constData(), 01733);
                ::chmod(m_tree->path("volume/folder").constData(), 0777);
                ::chmod(m_tree->path("volume").constData(), 0711);
                becomeNobody();
            },
            [this] {
                const QByteArray user = QByteArray::number(geteuid());
                printDiagnostic(
                    m_tree->names("volume/.Trash/" + user + "/files").join(',').toStdString());
                print("volume/folder");
            });

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines, (QByteArrayList { "menu.txt", "volume/folder: " }));
    }

    void whatIsInAVolumesTrashStaysThere()
    {
        const QByteArray files = "volume/.Trash-" + QByteArray::number(geteuid()) + "/files";

        const auto lines
            = linesOfVolume([&] { (void)deleteFile(m_tree->url("volume/folder/menu.txt"), true); },
                [&] { print(files); }, files + "/menu.txt");

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines, QByteArrayList { files + ": menu.txt" });
    }

    void aFolderOfAnotherVolumeIsNotCopied()
    {
        const QByteArray trash = "volume/.Trash-" + QByteArray::number(geteuid());

        const auto lines
            = linesOfVolume([] {}, [&] { print(trash + "/files/folder"); }, "volume/folder");

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines, QByteArrayList { trash + "/files/folder: menu.txt" });
    }

    void aVolumeItselfStaysWhereItIs()
    {
        const auto lines = linesOfVolume([] {}, [this] { print("volume/folder"); }, "volume");

        if (lines == QByteArrayList { "skip" })
            QSKIP("This machine lets its users mount nothing.");
        QCOMPARE(lines, QByteArrayList { "volume/folder: menu.txt" });
    }
};

QTEST_GUILESS_MAIN(TrashTest)
#include "TrashTest.moc"
