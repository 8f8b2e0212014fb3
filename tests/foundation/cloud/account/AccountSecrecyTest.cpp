#include "FakeOnlineAccounts.h"
#include "GnomeKeyring.h"
#include "PrivateBus.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace {

constexpr int limit = 60000; // milliseconds; only a failure takes that long

const QString password = QStringLiteral("Ziegenkäse-0815 im Kühlschrank, dritte Lade links %41");

/// Whether the kernel writes a core dump into the folder in which a process ended.
bool isWrittenWhereItEnded()
{
    QFile pattern(QStringLiteral("/proc/sys/kernel/core_pattern"));
    if (!pattern.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = pattern.readAll().trimmed();
    return !text.isEmpty() && !text.startsWith('|') && !text.contains('/');
}

bool contains(const QByteArray& bytes, const QString& secret)
{
    const auto wide = QByteArray::fromRawData(
        reinterpret_cast<const char*>(secret.utf16()), secret.size() * qsizetype(sizeof(char16_t)));
    return bytes.contains(secret.toUtf8()) || bytes.contains(wide)
        || bytes.contains(secret.toUtf8().toBase64());
}

/// A process that holds the password, in an empty folder of its own.
class Holder {
public:
    explicit Holder(const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*=true"));
        environment.insert(QStringLiteral("G_MESSAGES_DEBUG"), QStringLiteral("all"));
        // Where sanitizers are at work: the kernel is to write what it would without them.
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("disable_coredump=0"));
        m_process.setProcessEnvironment(environment);
        m_process.setWorkingDirectory(m_folder.path());
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.setChildProcessModifier([] {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            rlimit size {};
            ::getrlimit(RLIMIT_CORE, &size);
            size.rlim_cur = size.rlim_max;
            ::setrlimit(RLIMIT_CORE, &size);
        });
        m_process.start(QStringLiteral(PASSWORD_HOLDER), arguments);
    }
    ~Holder()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Holder)

    /// Whether it holds the password.
    [[nodiscard]] bool holds()
    {
        while (!m_output.contains("held ") && m_process.waitForReadyRead(limit))
            m_output += m_process.readAll();
        const QByteArray end = "held " + QByteArray::number(password.size()) + '\n';
        return m_output.endsWith(end);
    }

    /// Waits for its end; whether it ended by itself and well.
    [[nodiscard]] bool endsWell()
    {
        return m_process.waitForFinished(limit) && m_process.exitStatus() == QProcess::NormalExit
            && m_process.exitCode() == 0;
    }

    /// All that it said.
    [[nodiscard]] const QByteArray& output() const { return m_output; }

    /// Its core dump, empty where none can be made.
    [[nodiscard]] QByteArray coreDump()
    {
        if (isWrittenWhereItEnded()) {
            ::kill(static_cast<pid_t>(m_process.processId()), SIGABRT);
            m_process.waitForFinished(limit);
        } else {
            QProcess debugger;
            debugger.start(QStringLiteral("gcore"),
                { QStringLiteral("-o"), m_folder.filePath(QStringLiteral("core")),
                    QString::number(m_process.processId()) });
            debugger.waitForFinished(limit);
        }
        const QStringList files = QDir(m_folder.path()).entryList(QDir::Files);
        QFile file(m_folder.filePath(files.value(0)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QByteArray m_output;
};

} // namespace

class AccountSecrecyTest : public QObject {
    Q_OBJECT

private:
    const QDBusConnection m_bus = QDBusConnection::sessionBus();
    QTemporaryDir m_folder;
    std::unique_ptr<GnomeKeyring> m_keyring;
    std::unique_ptr<FakeOnlineAccounts> m_desktop;

    [[nodiscard]] QString iniFile() const { return m_folder.filePath(QStringLiteral("cloud.ini")); }

    /// One with the password in it.
    static std::unique_ptr<GnomeKeyring> keyringOn(const QDBusConnection& bus)
    {
        auto keyring = std::make_unique<GnomeKeyring>(bus);
        keyring->start(GnomeKeyring::Lock::Unlocked);
        keyring->run(QStringLiteral("secret-tool store --label=Vexilo server Vexilo type plaintext "
                                    "user ann@cloud.example xdg:schema org.qt.keychain"),
            password);
        return keyring;
    }

    void addOnlineAccount()
    {
        m_desktop = std::make_unique<FakeOnlineAccounts>(m_bus);
        m_desktop->start();
        FakeOnlineAccounts::Account account;
        account.password = password;
        m_desktop->add(account);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_bus.isConnected());
        QFile file(iniFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("url=https://cloud.example/\nuser=ann\npassword=");
        file.write(password.toUtf8());
        file.close();
        m_keyring = keyringOn(m_bus);
    }

    void cleanup() { m_desktop.reset(); }

    void cleanupTestCase() { m_keyring.reset(); }

    /// Or else the search would find nothing in any.
    void thePasswordIsInAWholeCoreDump()
    {
        Holder holder({ iniFile(), QStringLiteral("whole") });
        QVERIFY2(holder.holds(), holder.output().constData());

        const QByteArray dump = holder.coreDump();

        if (dump.isEmpty())
            QSKIP("This machine makes no core dumps: neither the kernel in a folder, nor gcore.");
        QVERIFY(dump.startsWith("\x7f"
                                "ELF"));
        QVERIFY(contains(dump, password));
    }

    void thePasswordIsNeitherPrintedNorInACoreDump_data()
    {
        QTest::addColumn<bool>("isOnline");
        QTest::newRow("the keyring's") << false;
        QTest::newRow("the desktop's") << true;
    }

    void thePasswordIsNeitherPrintedNorInACoreDump()
    {
        QFETCH(const bool, isOnline);
        if (isOnline)
            addOnlineAccount();

        Holder holder({ iniFile() });
        QVERIFY2(holder.holds(), holder.output().constData());
        QVERIFY2(!contains(holder.output(), password), holder.output().constData());
        QCOMPARE(holder.output().contains("shown"), isOnline);

        const QByteArray dump = holder.coreDump();
        if (dump.isEmpty())
            QSKIP("This machine makes no core dumps: neither the kernel in a folder, nor gcore.");
        QVERIFY(dump.startsWith("\x7f"
                                "ELF"));
        QVERIFY(!contains(dump, password));
    }

    void aProcessThatHasReadAPasswordOutlivesTheBus()
    {
        const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        const QString name = QStringLiteral("lost");
        auto bus = std::make_unique<PrivateBus>();
        const auto keyring = keyringOn(QDBusConnection::connectToBus(bus->address(), name));
        Holder holder({ iniFile(), QStringLiteral("outlive") });
        QVERIFY2(holder.holds(), holder.output().constData());

        bus.reset();

        QVERIFY2(holder.endsWell(), holder.output().constData());
        QDBusConnection::disconnectFromBus(name);
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    }
};

int main(int argc, char* argv[])
{
    const PrivateBus bus;
    const QCoreApplication application(argc, argv);
    AccountSecrecyTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "AccountSecrecyTest.moc"
