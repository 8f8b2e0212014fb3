#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sqlite3.h>
#include <sys/resource.h>

namespace {

constexpr int longEnough = 60000; // milliseconds; only a failure takes that long

const QByteArray hyphens(42, '-');

/// What a process left behind.
struct Run {
    bool hasEnded = false; ///< by itself, with success
    bool isAborted = false;
    QByteArrayList output; ///< lines of standard output, the answers to account questions apart
    QByteArrayList accounts; ///< those; they come at any moment
    QByteArray error;
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return file.readAll();
}

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

QByteArrayList banner(const char* withSync)
{
    return { hyphens, QByteArray("--> Cloud? ") + withSync, hyphens };
}

} // namespace

/// Runs a program with a store, installed in a folder of its own, for a user of its own.
class StoreProcessTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_home;

    QString program() const { return m_folder->filePath(QStringLiteral("bin/program")); }
    QString model() const { return m_folder->filePath(QStringLiteral("share/vexilo/Vexilo.momd")); }
    QString storeFile() const { return m_home + QStringLiteral("/Vexilo/Vexilo.sqlite"); }

    Run run(const QStringList& steps,
        QProcess::ProcessChannelMode mode = QProcess::SeparateChannels) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : { "HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME" })
            environment.insert(QString::fromLatin1(name), m_home);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(mode);
        process.setChildProcessModifier([] {
            const rlimit none = { 0, 0 }; // an expected end leaves no core file
            (void)::setrlimit(RLIMIT_CORE, &none);
        });
        process.start(program(), steps);
        if (!process.waitForFinished(longEnough))
            qFatal("%s", qPrintable(process.errorString()));

        Run run;
        run.hasEnded = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        run.isAborted
            = process.exitStatus() == QProcess::CrashExit && process.exitCode() == SIGABRT;
        QByteArrayList lines = process.readAllStandardOutput().split('\n');
        lines.removeLast(); // what follows the last line end
        for (const QByteArray& line : lines) {
            const bool isAnswer = line.startsWith("--> iCloud not available ")
                || line == "--> user has icloud account";
            (isAnswer ? run.accounts : run.output).append(line);
        }
        if (mode == QProcess::SeparateChannels)
            run.error = process.readAllStandardError();
        return run;
    }

    void saveOneBill() const
    {
        const Run saved = run({ QStringLiteral("save-bill") });
        if (!saved.hasEnded)
            qFatal("%s", saved.error.constData());
    }

    void execute(const char* sql) const
    {
        sqlite3* database = nullptr;
        const bool isDone = sqlite3_open(storeFile().toUtf8().constData(), &database) == SQLITE_OK
            && sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(database);
        if (!isDone)
            qFatal("the statement failed");
    }

    void expectUnresolved(const QByteArray& error, const QString& path) const
    {
        const Run ended = run({ QStringLiteral("open") });

        QVERIFY(ended.isAborted);
        QCOMPARE(ended.output, QByteArrayList());
        const QByteArray start = "Unresolved error StoreError (" + error + "): ";
        QCOMPARE(ended.error.left(start.size()), start);
        const QByteArray details = ", [path: " + path.toUtf8();
        QVERIFY2(ended.error.contains(details), ended.error.constData());
        QVERIFY2(ended.error.endsWith("]\n"), ended.error.constData());
        QCOMPARE(ended.error.count('\n'), 1);
    }

    void expectUntouched(const QByteArray& error) const
    {
        const QByteArray before = contentOf(storeFile());

        expectUnresolved(error, storeFile());

        QCOMPARE(contentOf(storeFile()), before);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_home = m_folder->filePath(QStringLiteral("home"));
        const QDir folder(m_folder->path());
        QVERIFY(folder.mkpath(QStringLiteral("bin")));
        QVERIFY(folder.mkpath(QStringLiteral("share/vexilo")));
        QVERIFY(folder.mkpath(QStringLiteral("home/Vexilo")));
        QVERIFY(QFile::copy(QStringLiteral(STORE_PROGRAM), program()));
        QVERIFY(QFile::copy(QStringLiteral(PROGRAM_MODEL), model()));
    }

    // The model

    void withoutTheModelTheErrorIsPrintedAndTheProcessStops()
    {
        QVERIFY(QFile::remove(model()));

        const Run ended = run({ QStringLiteral("open") });

        QVERIFY(ended.isAborted);
        QCOMPARE(ended.output, QByteArrayList { R"(modelURLNotFound("Vexilo"))" });
        QCOMPARE(ended.error, QByteArray("Could not setup Container\n"));
        QVERIFY(!QFile::exists(storeFile()));
    }

    void anUnreadableModelStopsTheProcessWithItsAddress_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("no model") << QByteArray("model");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no bills") << QByteArray(R"({"version": "1", "entities": [
            {"name": "Note", "attributes": [{"name": "title", "type": "string"}]}]})");
        QTest::newRow("bills without amounts") << QByteArray(R"({"version": "1", "entities": [
            {"name": "Item", "attributes": [{"name": "ref", "type": "string"}]}]})");
    }

    void anUnreadableModelStopsTheProcessWithItsAddress()
    {
        QFETCH(const QByteArray, content);
        write(model(), content);

        const Run ended = run({ QStringLiteral("open") });

        QVERIFY(ended.isAborted);
        QCOMPARE(ended.output.size(), 1);
        QVERIFY2(ended.output.front().startsWith("modelLoadingFailed(\"file:///"),
            ended.output.front().constData());
        QVERIFY(ended.output.front().contains("/share/vexilo/Vexilo.momd\"): "));
        QCOMPARE(ended.error, QByteArray("Could not setup Container\n"));
        QVERIFY(!QFile::exists(storeFile()));
    }

    void openingTwiceLoadsTheModelOnlyOnce()
    {
        const Run ended = run({ QStringLiteral("open"), QStringLiteral("remove-model"),
            QStringLiteral("switch-on"), QStringLiteral("switch-off") });

        QVERIFY2(ended.hasEnded, ended.error.constData());
        QVERIFY(!QFile::exists(model()));
    }

    // The store

    void aFileThatIsNoStoreStopsTheProcessAndIsLeftAsItWas()
    {
        write(storeFile(), QByteArray(5000, 'x'));

        expectUntouched("corrupt");
    }

    void aTruncatedStoreStopsTheProcessAndIsLeftAsItWas()
    {
        saveOneBill();
        execute("PRAGMA wal_checkpoint(TRUNCATE)"); // or the log would mend the file
        const QByteArray content = contentOf(storeFile());
        write(storeFile(), content.left(content.size() / 3));

        expectUntouched("corrupt");
    }

    void aStoreOfALaterFormatStopsTheProcessAndIsLeftAsItWas()
    {
        saveOneBill();
        execute("PRAGMA user_version = 2");

        expectUntouched("newer format");
    }

    void aStoreOfAnotherModelStopsTheProcessAndIsLeftAsItWas()
    {
        saveOneBill();
        execute("UPDATE _store_attribute SET name = 'stake' WHERE name = 'share'");

        expectUntouched("incompatible model");
    }

    void aFolderInPlaceOfTheFileStopsTheProcess()
    {
        QVERIFY(QDir().mkpath(storeFile()));

        const Run ended = run({ QStringLiteral("open") });

        QVERIFY(ended.isAborted);
        QVERIFY(ended.error.startsWith("Unresolved error StoreError ("));
        QVERIFY(QFileInfo(storeFile()).isDir());
    }

    void aDataFolderThatCannotBeMadeStopsTheProcess()
    {
        m_home = m_folder->filePath(QStringLiteral("a file"));
        write(m_home, "not a folder");

        expectUnresolved("cannot open", storeFile());

        QCOMPARE(contentOf(m_home), QByteArray("not a folder"));
    }

    // The alert

    void theAlertIsShownBeforeTheProcessStopsOverTheModel()
    {
        QVERIFY(QFile::remove(model()));

        const Run ended = run(
            { QStringLiteral("show-failures"), QStringLiteral("open") }, QProcess::MergedChannels);

        QVERIFY(ended.isAborted);
        QCOMPARE(ended.output,
            (QByteArrayList { R"(modelURLNotFound("Vexilo"))", "alert: Could not setup Container",
                "Could not setup Container" }));
    }

    void theAlertIsShownBeforeTheProcessStopsOverTheStore()
    {
        write(storeFile(), QByteArray(5000, 'x'));

        const Run ended = run(
            { QStringLiteral("show-failures"), QStringLiteral("open") }, QProcess::MergedChannels);

        QVERIFY(ended.isAborted);
        QCOMPARE(ended.output.size(), 2);
        QVERIFY(ended.output.at(1).startsWith("Unresolved error "));
        QCOMPARE(ended.output.at(0), "alert: " + ended.output.at(1));
    }

    void aFailedSwitchStopsTheProcessToo()
    {
        saveOneBill();
        execute("PRAGMA user_version = 2");

        const Run ended = run({ QStringLiteral("switch-on") });

        QVERIFY(ended.isAborted);
        QVERIFY(ended.error.startsWith("Unresolved error StoreError (newer format): "));
    }

    // The choice

    void withoutAChoiceTheStoreIsLocal()
    {
        const Run ended = run({ QStringLiteral("open") });

        QVERIFY(ended.hasEnded);
        QCOMPARE(ended.output, banner("false"));
        QCOMPARE(ended.accounts, QByteArrayList { "--> iCloud not available nil" });
    }

    void theChoiceIsKeptOverARestart()
    {
        QVERIFY(run({ QStringLiteral("choose-on") }).hasEnded);
        const Run chosen = run({ QStringLiteral("open") });
        QVERIFY(run({ QStringLiteral("choose-off") }).hasEnded);
        const Run unchosen = run({ QStringLiteral("open") });

        QVERIFY(chosen.hasEnded);
        QCOMPARE(chosen.output, banner("true"));
        QVERIFY(unchosen.hasEnded);
        QCOMPARE(unchosen.output, banner("false"));
    }

    void anAccountIsToldInAProcessThatOpensALocalStore()
    {
        QVERIFY(run({ QStringLiteral("choose-off") }).hasEnded);

        const Run ended = run({ QStringLiteral("sign-in"), QStringLiteral("open") });

        QVERIFY(ended.hasEnded);
        QCOMPARE(ended.accounts, QByteArrayList { "--> user has icloud account" });
    }

    void aChoiceReachesTheProcessWideContainerButNotTheOpenScreens()
    {
        const Run ended = run({ QStringLiteral("open"), QStringLiteral("choose-on"),
            QStringLiteral("open"), QStringLiteral("open-current") });

        QVERIFY(ended.hasEnded);
        QCOMPARE(ended.output, banner("false") + banner("true"));
    }

    void eachOpeningPrintsItsOwnBanner()
    {
        const Run ended = run({ QStringLiteral("open"), QStringLiteral("open-current"),
            QStringLiteral("open-current"), QStringLiteral("switch-on"),
            QStringLiteral("switch-off") });

        QVERIFY(ended.hasEnded);
        QCOMPARE(
            ended.output, banner("false") + banner("false") + banner("true") + banner("false"));
    }

    void aSwitchOpensTheProcessWideContainerFirst()
    {
        const Run ended = run({ QStringLiteral("switch-on") });

        QVERIFY(ended.hasEnded);
        QCOMPARE(ended.output, banner("false") + banner("true"));
    }
};

QTEST_GUILESS_MAIN(StoreProcessTest)
#include "StoreProcessTest.moc"
