#include "FileAttributes.h"

#include "CapturedOutput.h"
#include "Diagnostics.h"
#include "FileTree.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

class FileAttributesTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<FileTree> m_tree;

    template <typename Value> static Value valueOf(const QUrl& url, FileAttributeKey key)
    {
        const auto all = attributes(url);
        return all && all->contains(key) ? std::get<Value>(all->at(key)) : Value();
    }

    [[nodiscard]] QByteArray errorLine(const QByteArray& name, const QByteArray& error) const
    {
        return "FileAttribute error: " + m_tree->url(name).toEncoded() + ": " + error;
    }

    template <typename Call> static QByteArrayList linesOf(const Call& call)
    {
        const CapturedOutput output;
        call();
        return output.lines();
    }

private Q_SLOTS:
    void init() { m_tree = std::make_unique<FileTree>(); }

    void aFileHasItsSizeTypePermissionsAndOwner()
    {
        QVERIFY(m_tree->addFile("menu.txt", "fourteen bytes"));
        ::chmod(m_tree->path("menu.txt").constData(), 0640);
        const QUrl url = m_tree->url("menu.txt");

        QCOMPARE(valueOf<quint64>(url, FileAttributeKey::Size), quint64(14));
        QCOMPARE(valueOf<FileType>(url, FileAttributeKey::Type), FileType::Regular);
        QCOMPARE(valueOf<quint64>(url, FileAttributeKey::PosixPermissions), quint64(0640));
        QCOMPARE(valueOf<quint64>(url, FileAttributeKey::OwnerAccountID), quint64(geteuid()));
        QCOMPARE(valueOf<quint64>(url, FileAttributeKey::ReferenceCount), quint64(1));
        QVERIFY(valueOf<quint64>(url, FileAttributeKey::SystemFileNumber) > 0);
    }

    void theTypeIsTold()
    {
        QVERIFY(m_tree->addFolder("folder") && m_tree->addLink("link", "folder"));
        QCOMPARE(::mkfifo(m_tree->path("pipe").constData(), 0600), 0);

        const auto typeOf
            = [](const QUrl& url) { return valueOf<FileType>(url, FileAttributeKey::Type); };
        QCOMPARE(typeOf(m_tree->url("folder")), FileType::Directory);
        QCOMPARE(typeOf(m_tree->url("link")), FileType::SymbolicLink);
        QCOMPARE(typeOf(m_tree->url("pipe")), FileType::Pipe);
        QCOMPARE(typeOf(fileUrl("/dev/null")), FileType::Device);
    }

    void theSizeOfAFileIsItsBytes()
    {
        QVERIFY(m_tree->addFile("menu.txt", QByteArray(1500, 'x')) && m_tree->addFile("empty"));

        QCOMPARE(fileSize(m_tree->url("menu.txt")), quint64(1500));
        QCOMPARE(fileSize(m_tree->url("empty")), quint64(0));
    }

    void aSizeOfMoreThan32BitsIsWhole()
    {
        QVERIFY(m_tree->addFile("large"));
        QCOMPARE(::truncate(m_tree->path("large").constData(), 5'000'000'000), 0);

        QCOMPARE(fileSize(m_tree->url("large")), quint64(5'000'000'000));
        QCOMPARE(fileSizeString(m_tree->url("large")).simplified(), QStringLiteral("5.0 GB"));
    }

    void theSizeOfAFolderIsZeroAndNoError()
    {
        QVERIFY(m_tree->addFolder("folder") && m_tree->addFile("folder/menu.txt", "content"));
        quint64 size = 1;

        const auto lines = linesOf([&] { size = fileSize(m_tree->url("folder")); });

        QCOMPARE(size, quint64(0));
        QCOMPARE(lines, QByteArrayList());
        QVERIFY(!attributes(m_tree->url("folder"))->contains(FileAttributeKey::Size));
    }

    void theSizeOfAMissingFileIsZeroAndLogged()
    {
        quint64 size = 1;

        const auto lines = linesOf([&] { size = fileSize(m_tree->url("missing")); });

        QCOMPARE(size, quint64(0));
        QCOMPARE(lines, QByteArrayList { errorLine("missing", "No such file or directory") });
    }

    void aMissingFileHasNoAttributesAndNoDatesAndEachIsLogged()
    {
        const QUrl url = m_tree->url("missing");
        bool isThere = true;
        bool hasDates = true;

        const auto lines = linesOf([&] {
            isThere = attributes(url).has_value();
            const bool isCreated = creationDate(url).has_value();
            const bool isModified = modifiedDate(url).has_value();
            hasDates = isCreated || isModified;
        });

        QVERIFY(!isThere && !hasDates);
        const QByteArray line = errorLine("missing", "No such file or directory");
        QCOMPARE(lines, (QByteArrayList { line, line, line }));
    }

    void theSizeAsATextIsInTheLocaleOfTheUser_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("English") << QByteArray("en_US.UTF-8") << QStringLiteral("1.5 kB");
        QTest::newRow("German") << QByteArray("de_DE.UTF-8") << QStringLiteral("1,5 kB");
        QTest::newRow("French") << QByteArray("fr_FR.UTF-8") << QStringLiteral("1,5 ko");
    }

    void theSizeAsATextIsInTheLocaleOfTheUser()
    {
        QFETCH(const QByteArray, locale);
        QFETCH(const QString, text);
        QVERIFY(m_tree->addFile("menu.txt", QByteArray(1500, 'x')));
        const QByteArray previous = qgetenv("LC_ALL");
        qputenv("LC_ALL", locale);

        const QString string = fileSizeString(m_tree->url("menu.txt"));

        qputenv("LC_ALL", previous);
        QCOMPARE(string.simplified(), text);
    }

    void aMissingFileHasTheTextOfNoBytes()
    {
        QString text;

        const auto lines = linesOf([&] { text = fileSizeString(m_tree->url("missing")); });

        QCOMPARE(text.simplified(), QStringLiteral("0 bytes"));
        QCOMPARE(lines.size(), 1);
    }

    void theModificationDateIsTheFilesOwn()
    {
        QVERIFY(m_tree->addFile("menu.txt"));
        const timespec times[] { { 0, UTIME_NOW }, { 1'700'000'000, 250'000'000 } };
        QCOMPARE(::utimensat(AT_FDCWD, m_tree->path("menu.txt").constData(), times, 0), 0);

        QCOMPARE(modifiedDate(m_tree->url("menu.txt")),
            QDateTime(QDate(2023, 11, 14), QTime(22, 13, 20, 250), Qt::UTC));
    }

    void aDateBefore1970IsOne()
    {
        QVERIFY(m_tree->addFile("menu.txt"));
        const timespec times[] { { 0, UTIME_NOW }, { -86'400, 0 } };
        QCOMPARE(::utimensat(AT_FDCWD, m_tree->path("menu.txt").constData(), times, 0), 0);

        QCOMPARE(modifiedDate(m_tree->url("menu.txt")),
            QDateTime(QDate(1969, 12, 31), QTime(0, 0), Qt::UTC));
    }

    void theCreationDateStaysWhenTheFileIsModified()
    {
        QVERIFY(m_tree->addFile("menu.txt"));
        const auto created = creationDate(m_tree->url("menu.txt"));
        if (!created)
            QSKIP("The file system of temporary files records no creation dates.");
        const timespec times[] { { 0, UTIME_NOW }, { 1'700'000'000, 0 } };
        QCOMPARE(::utimensat(AT_FDCWD, m_tree->path("menu.txt").constData(), times, 0), 0);

        QCOMPARE(creationDate(m_tree->url("menu.txt")), created);
        QVERIFY(*created <= QDateTime::currentDateTimeUtc());
        QVERIFY(*created > QDateTime(QDate(2023, 11, 15), QTime(0, 0), Qt::UTC));
    }

    void aLinkHasAttributesOfItsOwnAlsoWhereItLeadsNowhere()
    {
        QVERIFY(m_tree->addLink("link", "nowhere"));

        QCOMPARE(fileSize(m_tree->url("link")), quint64(7)); // the length of "nowhere"
        QVERIFY(modifiedDate(m_tree->url("link")));
    }

    void anyNameIsRead_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("a blank") << QByteArray("the menu.txt");
        QTest::newRow("a line end") << QByteArray("the\nmenu");
        QTest::newRow("what addresses use themselves") << QByteArray("50%25 off? #1 & more");
        QTest::newRow("UTF-8") << QByteArray("Speisekarte für العشاء");
        QTest::newRow("no UTF-8") << QByteArray("caf\xe9\xff");
        QTest::newRow("as long as a name can be") << QByteArray(255, 'x');
    }

    void anyNameIsRead()
    {
        QFETCH(const QByteArray, name);
        QVERIFY(m_tree->addFile(name, "content"));

        QCOMPARE(fileSize(m_tree->url(name)), quint64(7));
    }

    void anAddressMadeOfAPathIsRead()
    {
        QVERIFY(m_tree->addFile("50% für #1?", "content"));

        const QString path = QString::fromUtf8(m_tree->path("50% für #1?"));
        QCOMPARE(fileSize(QUrl::fromLocalFile(path)), quint64(7));
    }

    void aLineEndInANameDoesNotEndTheLogLine()
    {
        const auto lines = linesOf([&] { (void)fileSize(m_tree->url("the\nmenu\xff")); });

        QCOMPARE(lines, QByteArrayList { errorLine("the\nmenu\xff", "No such file or directory") });
        QVERIFY(lines.first().contains("/the%0Amenu%FF:"));
    }

    void whatIsNoPathOfThisMachineIsLogged_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a web page") << QByteArray("https://example.org/etc/passwd");
        QTest::newRow("another machine's") << QByteArray("file://example.org/etc/passwd");
        QTest::newRow("relative") << QByteArray("file:passwd");
        QTest::newRow("with a null byte") << QByteArray("file:///etc/passwd%00.txt");
        QTest::newRow("with a query") << QByteArray("file:///etc/passwd?line=1");
        QTest::newRow("with an empty query") << QByteArray("file:///etc/passwd?");
        QTest::newRow("with a fragment") << QByteArray("file:///etc/passwd#line");
    }

    void whatIsNoPathOfThisMachineIsLogged()
    {
        QFETCH(const QByteArray, address);

        const auto lines = linesOf([&] { (void)attributes(QUrl::fromEncoded(address)); });

        QCOMPARE(
            lines, QByteArrayList { "FileAttribute error: " + address + ": Invalid argument" });
    }

    void aPathThatIsTooLongIsLogged()
    {
        const QByteArray name = QByteArray(5000, '/').replace("//", "x/") + "end";
        quint64 size = 1;

        const auto lines = linesOf([&] { size = fileSize(m_tree->url(name)); });

        QCOMPARE(size, quint64(0));
        QCOMPARE(lines, QByteArrayList { errorLine(name, "File name too long") });
    }

    void whereTheFolderMayNotBeSearchedTheErrorIsLogged()
    {
        QVERIFY(m_tree->addFolder("closed") && m_tree->addFile("closed/menu.txt"));
        ::chmod(m_tree->path("closed").constData(), 0);

        const auto lines = linesOfChild([this] {
            becomeNobody();
            if (!attributes(m_tree->url("closed/menu.txt")))
                printDiagnostic("absent");
        });

        ::chmod(m_tree->path("closed").constData(), 0700);
        QCOMPARE(lines,
            (QByteArrayList { errorLine("closed/menu.txt", "Permission denied"), "absent" }));
    }
};

QTEST_GUILESS_MAIN(FileAttributesTest)
#include "FileAttributesTest.moc"
