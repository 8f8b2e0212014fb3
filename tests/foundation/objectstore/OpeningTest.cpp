#include "StoreFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTest>

#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// Opening a store: where it lies, who may read it, what is refused, and older models.
class OpeningTest : public QObject {
    Q_OBJECT

private:
    StoreFolder m_folder;

    QStringList m_migrating { NSInferMappingModelAutomaticallyOption,
        NSMigratePersistentStoresAutomaticallyOption, NSPersistentHistoryTrackingKey };

    static int modeOf(const QString& path)
    {
        struct stat status = {};
        return ::stat(QFile::encodeName(path).constData(), &status) == 0
            ? static_cast<int>(status.st_mode & 0777)
            : -1;
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    static void write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    static void execute(const QString& path, const char* sql)
    {
        sqlite3* database = nullptr;
        QCOMPARE(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
        QCOMPARE(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }

    void saveOneNote() const
    {
        const auto container = openContainer(m_folder.file());
        addNote(container->viewContext(), QStringLiteral("old"), 5);
        mustSave(container->viewContext());
    }

    void expectUntouched(StoreError::Code code,
        const std::shared_ptr<NSManagedObjectModel>& model = noteModel(),
        const QStringList& options = {}) const
    {
        const QByteArray before = contentOf(m_folder.file());

        const auto error = openError(m_folder.file(), model, options);

        QVERIFY(error);
        QCOMPARE(error->code, code);
        QCOMPARE(error->userInfo.value(QStringLiteral("path")).toString(), m_folder.file());
        QCOMPARE(contentOf(m_folder.file()), before);
    }

private Q_SLOTS:
    void init() { m_folder = StoreFolder(); }

    void aContainerHasOneDescriptionInTheDefaultFolder()
    {
        NSPersistentContainer container(QStringLiteral("Notes"), noteModel());

        QCOMPARE(container.persistentStoreDescriptions().size(), std::size_t(1));
        QCOMPARE(container.persistentStoreDescriptions().front().url().toLocalFile(),
            NSPersistentContainer::defaultDirectoryURL().toLocalFile()
                + QStringLiteral("/Notes.sqlite"));
        QVERIFY(container.persistentStoreDescriptions().front().options().isEmpty());
    }

    void optionsKeepTheOrderInWhichTheyWereSet()
    {
        NSPersistentStoreDescription description;
        description.setOption(true, QStringLiteral("z"));
        description.setOption(true, QStringLiteral("a"));
        description.setOption(false, QStringLiteral("z"));

        QCOMPARE(description.options(),
            (QList<QPair<QString, QVariant>> {
                { QStringLiteral("z"), false }, { QStringLiteral("a"), true } }));
        QVERIFY(!description.option(QStringLiteral("b")).isValid());
    }

    void theStoreInTheDefaultFolderIsForTheUserAlone()
    {
        QStandardPaths::setTestModeEnabled(true);
        const QString folder = NSPersistentContainer::defaultDirectoryURL().toLocalFile();
        QDir(folder).removeRecursively();
        QVERIFY(QDir().mkpath(folder)); // with the usual mode
        NSPersistentContainer container(QStringLiteral("Notes"), noteModel());

        container.loadPersistentStores([](const auto&, const auto& error) { QVERIFY(!error); });

        QCOMPARE(modeOf(folder), 0700);
        QDir(folder).removeRecursively();
    }

    void everyFileOfAStoreIsForTheUserAlone()
    {
        const mode_t usual = ::umask(0);
        const QString file = m_folder.path() + QStringLiteral("/new/Notes.sqlite");
        const auto container = openContainer(file);
        addNote(container->viewContext(), QStringLiteral("a"));
        mustSave(container->viewContext());
        ::umask(usual);

        QCOMPARE(modeOf(QFileInfo(file).path()), 0700);
        for (const char* suffix : { "", "-wal", "-shm" })
            QCOMPARE(modeOf(file + QLatin1String(suffix)), 0600);
    }

    void anExistingFileIsClosedToOthers()
    {
        saveOneNote();
        ::chmod(QFile::encodeName(m_folder.file()).constData(), 0644);

        const auto container = openContainer(m_folder.file());

        QCOMPARE(modeOf(m_folder.file()), 0600);
    }

    void aFileThatIsNoDatabaseIsRefused()
    {
        write(m_folder.file(), QByteArray(5000, 'x'));

        expectUntouched(StoreError::Code::Corrupt);
    }

    void aDatabaseThatIsNoStoreIsRefused()
    {
        execute(m_folder.file(), "CREATE TABLE other (a)");

        expectUntouched(StoreError::Code::Corrupt);
    }

    void aTruncatedStoreIsRefused()
    {
        saveOneNote();
        const QByteArray content = contentOf(m_folder.file());
        write(m_folder.file(), content.left(content.size() / 3));

        expectUntouched(StoreError::Code::Corrupt);
    }

    void aStoreOfALaterFormatIsRefused()
    {
        saveOneNote();
        execute(m_folder.file(), "PRAGMA user_version = 2");

        expectUntouched(StoreError::Code::NewerFormat);
    }

    /// The first step of making a store is a transaction with a journal of its own.
    void aStoreWhoseMakingWasCutOffIsMadeAnew()
    {
        const QString source = m_folder.path() + QStringLiteral("/half");
        sqlite3* database = nullptr;
        QCOMPARE(sqlite3_open(source.toUtf8().constData(), &database), SQLITE_OK);
        QCOMPARE(sqlite3_exec(database,
                     "PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN; CREATE TABLE t (a); "
                     "INSERT INTO t WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                     "LIMIT 200) SELECT randomblob(2000) FROM n",
                     nullptr, nullptr, nullptr),
            SQLITE_OK);
        QVERIFY(QFile::copy(source, m_folder.file()));
        QVERIFY(QFile::copy(
            source + QStringLiteral("-journal"), m_folder.file() + QStringLiteral("-journal")));
        sqlite3_close(database);

        const auto error = openError(m_folder.file());

        QVERIFY2(!error, error ? qPrintable(error->toString()) : "");
        saveOneNote();
    }

    void aFolderMayHaveAnyName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("space") << QStringLiteral("my bills");
        QTest::newRow("question mark") << QStringLiteral("what?mode=ro");
        QTest::newRow("percent") << QStringLiteral("100%25");
        QTest::newRow("number sign") << QStringLiteral("#1");
        QTest::newRow("quotes") << QStringLiteral("it's \"mine\"");
        QTest::newRow("other scripts")
            << QStringLiteral("d\u00e9p\u00f4t \u0441\u0447\u0451\u0442 \u52d8\u5b9a");
        QTest::newRow("backslash") << QStringLiteral("a\\b");
    }

    void aFolderMayHaveAnyName()
    {
        QFETCH(const QString, name);
        const QString file
            = m_folder.path() + QLatin1Char('/') + name + QStringLiteral("/n.sqlite");
        {
            const auto container = openContainer(file);
            addNote(container->viewContext(), QStringLiteral("a"));
            mustSave(container->viewContext());
        }

        QVERIFY(QFileInfo::exists(file));
        QCOMPARE(titles(openContainer(file)->viewContext()), words("a"));
    }

    void everyFileBehindALinkIsForTheUserAlone()
    {
        saveOneNote();
        const QString real = m_folder.path() + QStringLiteral("/real/Notes.sqlite");
        QVERIFY(QDir().mkpath(QFileInfo(real).path()));
        QVERIFY(QFile::rename(m_folder.file(), real));
        QVERIFY(QFile::link(real, m_folder.file()));
        QCOMPARE(::chmod(QFile::encodeName(real).constData(), 0644), 0);

        const auto container = openContainer(m_folder.file());
        addNote(container->viewContext(), QStringLiteral("a"));
        mustSave(container->viewContext());

        for (const char* suffix : { "", "-wal", "-shm" })
            QCOMPARE(modeOf(real + QLatin1String(suffix)), 0600);
    }

    void aFileWithoutPermissionIsRefused()
    {
        saveOneNote();
        ::chmod(QFile::encodeName(m_folder.file()).constData(), 0400);
        ::chmod(QFile::encodeName(m_folder.path()).constData(), 0755);
        const QByteArray before = contentOf(m_folder.file());
        const pid_t child = ::fork();
        if (child == 0) {
            // The administrator may do everything, so nobody tries.
            if (::geteuid() == 0 && ::setuid(65534) != 0)
                ::_exit(2);
            const auto error = openError(m_folder.file());
            ::_exit(error && error->code == StoreError::Code::PermissionDenied ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);

        QCOMPARE(status, 0);
        QCOMPARE(contentOf(m_folder.file()), before);
    }

    void aFolderInPlaceOfTheFileIsRefused()
    {
        QVERIFY(QDir().mkpath(m_folder.file()));

        QVERIFY(openError(m_folder.file()));
    }

    void aSecondStoreInOneContainerIsRefused()
    {
        const auto container = openContainer(m_folder.file());
        std::optional<StoreError> problem;

        container->loadPersistentStores([&](const auto&, const auto& error) { problem = error; });

        QVERIFY(problem);
    }

    void anOlderStoreIsTakenOverWithDefaults()
    {
        saveOneNote();

        const auto container = openContainer(m_folder.file(), newerNoteModel(), m_migrating);

        const auto notes = container->viewContext().fetch({ QStringLiteral("Note"), {}, {} });
        QCOMPARE(notes->size(), std::size_t(1));
        QCOMPARE(title(*notes->front()), QStringLiteral("old"));
        QCOMPARE(notes->front()->value(QStringLiteral("rating")).toInt(), 3);
        QCOMPARE(
            notes->front()->value(QStringLiteral("colour")).toString(), QStringLiteral("it's red"));
        container->viewContext()
            .insertNewObject(QStringLiteral("Tag"))
            ->setValue(QStringLiteral("t"), QStringLiteral("name"));
        notes->front()->setValue(4, QStringLiteral("rating"));
        mustSave(container->viewContext());
    }

    void theHistoryOfAnOlderModelKeepsItsMeaning()
    {
        {
            const auto container = openContainer(m_folder.file());
            const auto note = addNote(container->viewContext(), QStringLiteral("a"));
            mustSave(container->viewContext());
            note->setValue(QStringLiteral("b"), QStringLiteral("title"));
            mustSave(container->viewContext());
        }
        const auto model = newerNoteModel();

        const auto container = openContainer(m_folder.file(), model, m_migrating);

        const auto history = container->persistentStoreCoordinator().persistentHistory(0);
        const auto* entity = model->entity(QStringLiteral("Note"));
        QCOMPARE(history->at(1).changes.front().attributes,
            quint64(1) << *entity->indexOfAttribute(QStringLiteral("title")));
    }

    void withoutBothOptionsAnOlderStoreIsRefused_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("neither") << QStringList();
        QTest::newRow("no mapping") << QStringList { NSMigratePersistentStoresAutomaticallyOption };
        QTest::newRow("no migration") << QStringList { NSInferMappingModelAutomaticallyOption };
    }

    void withoutBothOptionsAnOlderStoreIsRefused()
    {
        QFETCH(const QStringList, options);
        saveOneNote();

        expectUntouched(StoreError::Code::IncompatibleModel, newerNoteModel(), options);
    }

    void aStoreOfANewerModelIsRefused()
    {
        (void)openContainer(m_folder.file(), newerNoteModel(), m_migrating);

        expectUntouched(StoreError::Code::IncompatibleModel, noteModel(), m_migrating);
    }

    void anAttributeOfAnotherTypeIsRefused()
    {
        saveOneNote();
        QByteArray json = noteModelJson();
        json.replace("double", "string");

        expectUntouched(StoreError::Code::IncompatibleModel, modelFrom(json), m_migrating);
    }
};

QTEST_GUILESS_MAIN(OpeningTest)
#include "OpeningTest.moc"
