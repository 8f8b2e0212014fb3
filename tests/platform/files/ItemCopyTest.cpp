#include "ItemCopy.h"

#include "FileTree.h"

#include <QTest>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

class ItemCopyTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<FileTree> m_tree;
    std::unique_ptr<ItemCopy> m_copy;

    [[nodiscard]] std::filesystem::path pathOf(const QByteArray& name) const
    {
        return m_tree->path(name).toStdString();
    }

    [[nodiscard]] bool setDate(const QByteArray& name) const
    {
        const timespec times[] { { 1'600'000'000, 5 }, { 1'700'000'000, 7 } };
        return ::utimensat(AT_FDCWD, m_tree->path(name).constData(), times, AT_SYMLINK_NOFOLLOW)
            == 0;
    }

    [[nodiscard]] mode_t modeOf(const QByteArray& name) const
    {
        struct stat status { };
        return ::lstat(m_tree->path(name).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

private Q_SLOTS:
    /// A folder with a file and a link in it, copied.
    void init()
    {
        m_tree = std::make_unique<FileTree>();
        m_copy = std::make_unique<ItemCopy>();
        QVERIFY(m_tree->addFolder("item") && m_tree->addFolder("item/inner"));
        QVERIFY(
            m_tree->addFile("item/inner/menu.txt", "content") && setDate("item/inner/menu.txt"));
        QVERIFY(m_tree->addLink("item/inner/link", "nowhere"));
        ::chmod(m_tree->path("item").constData(), 0555);
        QVERIFY(setDate("item"));
        QVERIFY(!m_copy->make(pathOf("item"), pathOf("copy")));
    }

    /// Else it could not be removed.
    void cleanup()
    {
        for (const char* name : { "item", "moved" })
            ::chmod(m_tree->path(name).constData(), 0755);
    }

    void theCopyIsReadOnlyOnceItIsComplete()
    {
        QCOMPARE(modeOf("copy"), mode_t(0700));
        QCOMPARE(::rename(pathOf("copy").c_str(), pathOf("moved").c_str()), 0);

        QVERIFY(!m_copy->complete());

        QCOMPARE(modeOf("moved"), mode_t(0555));
        struct stat status { };
        QCOMPARE(::lstat(pathOf("moved").c_str(), &status), 0);
        QCOMPARE(status.st_mtim.tv_sec, 1'700'000'000);
        QCOMPARE(m_tree->content("moved/inner/menu.txt"), QByteArray("content"));
    }

    void anUnchangedOriginalIsRemovedWithAllThatIsInIt()
    {
        QVERIFY(!m_copy->removeOriginal());

        QCOMPARE(m_tree->names(), QByteArrayList { "copy" });
        QCOMPARE(m_tree->names("copy/inner"), (QByteArrayList { "link", "menu.txt" }));
    }

    void whatWasRemovedMeanwhileIsNoError()
    {
        QCOMPARE(::unlink(pathOf("item/inner/menu.txt").c_str()), 0);

        QVERIFY(!m_copy->removeOriginal());

        QVERIFY(!m_tree->has("item"));
    }

    void aFileThatWasChangedMeanwhileStays_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("dated");
        QTest::newRow("to another size, with the old date") << QByteArray("more content") << true;
        QTest::newRow("to the same size") << QByteArray("CONTENT") << false;
    }

    void aFileThatWasChangedMeanwhileStays()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const bool, dated);
        QVERIFY(m_tree->addFile("item/inner/menu.txt", content));
        QVERIFY(!dated || setDate("item/inner/menu.txt"));

        QVERIFY(m_copy->removeOriginal() == std::errc::device_or_resource_busy);

        QCOMPARE(m_tree->content("item/inner/menu.txt"), content);
        QCOMPARE(m_tree->content("copy/inner/menu.txt"), QByteArray("content"));
    }

    void aFileThatWasReplacedMeanwhileStays()
    {
        QVERIFY(m_tree->addFile("new", "CONTENT") && setDate("new"));
        QCOMPARE(::rename(pathOf("new").c_str(), pathOf("item/inner/menu.txt").c_str()), 0);

        QVERIFY(m_copy->removeOriginal() == std::errc::device_or_resource_busy);

        QCOMPARE(m_tree->content("item/inner/menu.txt"), QByteArray("CONTENT"));
    }

    void aFolderThatWasReplacedMeanwhileStays()
    {
        ::chmod(m_tree->path("item").constData(), 0755);
        QCOMPARE(::rename(pathOf("item/inner").c_str(), pathOf("away").c_str()), 0);
        QVERIFY(m_tree->addLink("item/inner", "../away"));

        QVERIFY(m_copy->removeOriginal() == std::errc::device_or_resource_busy);

        QCOMPARE(m_tree->names("away"), (QByteArrayList { "link", "menu.txt" }));
        QVERIFY(m_tree->has("item/inner"));
    }

    void whatWasPutIntoAFolderMeanwhileStaysAndSoDoTheFoldersAsTheyWere()
    {
        QVERIFY(m_tree->addFile("item/inner/new", "added"));

        QVERIFY(m_copy->removeOriginal() == std::errc::directory_not_empty);

        QCOMPARE(m_tree->names("item/inner"), QByteArrayList { "new" });
        QCOMPARE(m_tree->content("item/inner/new"), QByteArray("added"));
        QCOMPARE(m_tree->names("copy/inner"), (QByteArrayList { "link", "menu.txt" }));
        QCOMPARE(modeOf("item"), mode_t(0555));
    }

    void aFileIsReplacedByItsCopyToo()
    {
        QVERIFY(m_tree->addFile("menu.txt", "content"));
        ::chmod(m_tree->path("menu.txt").constData(), 0440);
        ItemCopy copy;

        QVERIFY(!copy.make(pathOf("menu.txt"), pathOf("new.txt")));
        QVERIFY(!copy.complete());
        QVERIFY(!copy.removeOriginal());

        QVERIFY(!m_tree->has("menu.txt"));
        QCOMPARE(m_tree->content("new.txt"), QByteArray("content"));
        QCOMPARE(modeOf("new.txt"), mode_t(0440));
    }
};

QTEST_GUILESS_MAIN(ItemCopyTest)
#include "ItemCopyTest.moc"
