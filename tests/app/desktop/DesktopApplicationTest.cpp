#include "DesktopApplication.h"

#include "PrivateBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace std::chrono_literals;

namespace {

const QString name = QStringLiteral("com.morrowick.vexilo");
const QString path = QStringLiteral("/com/morrowick/vexilo");
const QString interface = QStringLiteral("org.freedesktop.Application");

// Of those who are silent for ever.
constexpr auto patience = 100ms;
// Where only what is awaited can end the wait: longer than a test may take.
constexpr auto endless = 10min;

const Activation given { .startupId = QStringLiteral("panel_TIME7"),
    .token = QStringLiteral("token") };

QDBusMessage callOf(const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(name, path, interface, method);
    call.setArguments(arguments);
    return call;
}

/// Takes a call and never answers.
class SilentObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public Q_SLOTS:
    void Activate(const QVariantMap& /*platformData*/)
    {
        setDelayedReply(true);
        Q_EMIT asked();
    }

Q_SIGNALS:
    void asked();
};

/// A process on the bus: a connection of its own.
class Place {
public:
    explicit Place(const QString& address)
        : m_id(QStringLiteral("place%1").arg(++s_count))
        , m_bus(QDBusConnection::connectToBus(address, m_id))
    {
    }
    ~Place() { end(); }
    Q_DISABLE_COPY_MOVE(Place)

    [[nodiscard]] QDBusConnection bus() const { return m_bus; }
    /// As by a crash. Nobody else may hold the connection.
    void end()
    {
        QDBusConnection::disconnectFromBus(m_id);
        m_bus = QDBusConnection(QString());
    }

    /// Without an object, the program cannot be asked.
    void takeName() { QVERIFY(m_bus.registerService(name)); }
    void takeName(SilentObject& object)
    {
        QVERIFY(m_bus.registerObject(path, &object, QDBusConnection::ExportAllSlots));
        takeName();
    }

private:
    static inline int s_count = 0;
    QString m_id;
    QDBusConnection m_bus;
};

} // namespace

class DesktopApplicationTest : public QObject {
    Q_OBJECT

public:
    explicit DesktopApplicationTest(QString address)
        : m_address(std::move(address))
    {
    }

private:
    const QString m_address;

    /// The answer of who has the name, as one of its methods was called from elsewhere.
    [[nodiscard]] QDBusMessage answerTo(const QString& method, const QVariantList& arguments) const
    {
        const Place other(m_address);
        QDBusPendingCallWatcher watcher(other.bus().asyncCall(callOf(method, arguments)));
        if (!watcher.isFinished())
            (void)QSignalSpy(&watcher, &QDBusPendingCallWatcher::finished).wait();
        return watcher.reply();
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(!m_address.isEmpty()); }

    void theFirstStartRuns()
    {
        const Place place(m_address);
        DesktopApplication first({}, place.bus());

        QVERIFY(first.isToRun());
        QVERIFY(first.isToRun()); // and stays with it
    }

    void withoutABusEveryStartRuns()
    {
        const QDBusConnection none(QStringLiteral("none"));
        DesktopApplication first({}, none);
        DesktopApplication second({}, none);

        QVERIFY(first.isToRun());
        QVERIFY(second.isToRun());
    }

    void aSecondStartHasTheFirstOneShowItsWindow()
    {
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        QVERIFY(first.isToRun());
        const QSignalSpy activated(&first, &DesktopApplication::activated);

        const Place there(m_address);
        DesktopApplication second(given, there.bus(), endless);

        QVERIFY(!second.isToRun());
        QCOMPARE(activated.size(), 1);
        QCOMPARE(activated.first().first().value<Activation>(), given);
    }

    void whoHasNotDecidedYetAnswersWhenItHas()
    {
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        QTimer::singleShot(50ms, &first, [&first] { QVERIFY(first.isToRun()); });
        const Place there(m_address);
        DesktopApplication second({}, there.bus(), endless);

        QVERIFY(!second.isToRun());
    }

    void anOwnerThatIsSilentIsLeftBehind()
    {
        const Place here(m_address);
        const DesktopApplication silent({}, here.bus());
        const Place there(m_address);
        DesktopApplication second({}, there.bus(), patience);

        QVERIFY(second.isToRun());
    }

    void afterASilentOneTheNextStartFindsTheOneThatAnswers()
    {
        const Place here(m_address);
        const DesktopApplication silent({}, here.bus());
        const Place there(m_address);
        DesktopApplication second({}, there.bus(), patience);
        QVERIFY(second.isToRun());
        const QSignalSpy activated(&second, &DesktopApplication::activated);

        const Place elsewhere(m_address);
        DesktopApplication third({}, elsewhere.bus(), endless);

        QVERIFY(!third.isToRun());
        QCOMPARE(activated.size(), 1);
    }

    void whoWasLeftBehindIsFoundAgainWhenTheOtherEnds()
    {
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        {
            const Place there(m_address);
            DesktopApplication second({}, there.bus(), patience);
            QVERIFY(second.isToRun());
        }
        QVERIFY(first.isToRun()); // it was only busy
        const Place elsewhere(m_address);
        DesktopApplication third({}, elsewhere.bus(), endless);

        QVERIFY(!third.isToRun());
    }

    void whereTheOwnerLeavesWhileItIsAskedTheSecondStartRuns()
    {
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        QTimer::singleShot(0, &first, [&first] { first.leave(); });
        const Place there(m_address);
        DesktopApplication second({}, there.bus(), endless);

        QVERIFY(second.isToRun());
    }

    void whereTheOwnerCrashesWhileItIsAskedTheSecondStartRuns()
    {
        Place here(m_address);
        SilentObject owner;
        here.takeName(owner);
        connect(
            &owner, &SilentObject::asked, &owner, [&here] { here.end(); }, Qt::QueuedConnection);
        const Place there(m_address);
        DesktopApplication second({}, there.bus(), endless);

        QVERIFY(second.isToRun());
    }

    void aForeignOwnerThatCannotBeAskedIsNotWaitedFor()
    {
        Place stranger(m_address);
        stranger.takeName();
        const Place here(m_address);
        DesktopApplication first({}, here.bus(), endless);

        QVERIFY(first.isToRun());
    }

    void onceAForeignOwnerEndsTheProgramIsFound()
    {
        Place stranger(m_address);
        stranger.takeName();
        const Place here(m_address);
        DesktopApplication first({}, here.bus(), endless);
        QVERIFY(first.isToRun());
        stranger.end();

        const Place there(m_address);
        DesktopApplication second({}, there.bus(), endless);

        QVERIFY(!second.isToRun());
    }

    void whoseWindowIsClosedGivesNoAnswerAndIsOutlived()
    {
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        QVERIFY(first.isToRun());
        const QSignalSpy activated(&first, &DesktopApplication::activated);
        first.stopAnswering();
        QTimer::singleShot(0, &first, [&first] { first.leave(); });

        const Place there(m_address);
        DesktopApplication second({}, there.bus(), endless);

        QVERIFY(second.isToRun());
        QVERIFY(activated.isEmpty());
    }

    void whoHasLeftIsNotFound()
    {
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        QVERIFY(first.isToRun());
        first.leave();

        const Place there(m_address);
        DesktopApplication second({}, there.bus(), endless);

        QVERIFY(second.isToRun());
    }

    void everyMethodOfTheInterfaceShowsTheWindow_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        const QVariant data = given.platformData();
        QTest::newRow("Activate") << "Activate" << QVariantList { data };
        QTest::newRow("Open") << "Open"
                              << QVariantList { QStringList { QStringLiteral("file:///a") }, data };
        QTest::newRow("ActivateAction")
            << "ActivateAction" << QVariantList { QStringLiteral("new"), QVariantList { 1 }, data };
    }

    void everyMethodOfTheInterfaceShowsTheWindow()
    {
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        QVERIFY(first.isToRun());
        const QSignalSpy activated(&first, &DesktopApplication::activated);

        QCOMPARE(answerTo(method, arguments).type(), QDBusMessage::ReplyMessage);

        QCOMPARE(activated.size(), 1);
        QCOMPARE(activated.first().first().value<Activation>(), given);
    }

    void whatIsNotTheInterfaceIsRefused_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        QTest::newRow("nothing") << "Activate" << QVariantList {};
        QTest::newRow("a number") << "Activate" << QVariantList { 5 };
        QTest::newRow("a list") << "Activate" << QVariantList { QVariantList { 1 } };
        QTest::newRow("too few") << "Open" << QVariantList { QStringList {} };
        QTest::newRow("a signal") << "activated" << QVariantList {};
        QTest::newRow("of the program") << "leave" << QVariantList {};
        QTest::newRow("of every object") << "deleteLater" << QVariantList {};
    }

    void whatIsNotTheInterfaceIsRefused()
    {
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        const Place here(m_address);
        DesktopApplication first({}, here.bus());
        QVERIFY(first.isToRun());
        const QSignalSpy activated(&first, &DesktopApplication::activated);

        QCOMPARE(answerTo(method, arguments).type(), QDBusMessage::ErrorMessage);

        QVERIFY(activated.isEmpty());
    }
};

int main(int argc, char* argv[])
{
    const PrivateBus bus;
    const QCoreApplication application(argc, argv);
    DesktopApplicationTest test(bus.address());
    return QTest::qExec(&test, argc, argv);
}

#include "DesktopApplicationTest.moc"
