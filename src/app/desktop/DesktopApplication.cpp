#include "DesktopApplication.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <QTimer>

#include <limits>
#include <utility>

using namespace std::chrono_literals;

namespace {

const QString applicationName = QStringLiteral("com.morrowick.vexilo");
const QString applicationPath = QStringLiteral("/com/morrowick/vexilo");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

// Of the bus, which is there or is not: longer than it ever takes.
constexpr auto busPatience = 1000ms;
// The flags of RequestName. Whoever claims by force gets the name, and its owner until then is the
// next.
constexpr uint inTurn = 1;
constexpr uint byForce = 1 | 2;

// The answers of RequestName by which the name is this process's own, now or before.
constexpr uint becameOwner = 1;
constexpr uint wasOwner = 4;

QDBusMessage callOfBus(const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(busName, busPath, busName, method);
    call.setArguments(arguments);
    return call;
}

/// Waits for the bus. One that gives no names is as good as none.
bool isNobodyElses(const QDBusPendingCall& request)
{
    QDBusPendingReply<uint> reply = request;
    reply.waitForFinished();
    return reply.isError() || reply.value() == becameOwner || reply.value() == wasOwner;
}

} // namespace

DesktopApplication::DesktopApplication(
    Activation activation, const QDBusConnection& bus, std::chrono::milliseconds patience)
    : m_activation(std::move(activation))
    , m_bus(bus)
    , m_patience(patience)
{
    // The object first: whoever learns of the name may call at once.
    if (m_bus.isConnected()
        && m_bus.registerObject(applicationPath, this, QDBusConnection::ExportAllSlots))
        m_request = requestName(inTurn);
}

DesktopApplication::~DesktopApplication() { leave(); }

bool DesktopApplication::isToRun()
{
    if (m_role == Role::Undecided)
        m_role = !m_request || isNobodyElses(*m_request) ? Role::Runs : askTheOther();
    if (m_role == Role::Runs)
        answerThoseWhoWait();
    return m_role == Role::Runs;
}

void DesktopApplication::stopAnswering() { m_role = Role::Leaves; }

void DesktopApplication::leave()
{
    stopAnswering();
    if (std::exchange(m_request, std::nullopt))
        m_bus.send(callOfBus(QStringLiteral("ReleaseName"), { applicationName }));
}

QDBusPendingCall DesktopApplication::requestName(uint flags) const
{
    return m_bus.asyncCall(callOfBus(QStringLiteral("RequestName"), { applicationName, flags }),
        static_cast<int>(busPatience.count()));
}

DesktopApplication::Role DesktopApplication::askTheOther()
{
    m_bus.connect(busName, busPath, busName, QStringLiteral("NameOwnerChanged"),
        { applicationName }, QString(), this, SIGNAL(ownerChanged()));
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(m_patience);
    Answer answer = Answer::None;
    while (answer == Answer::None && deadline.isActive()) {
        // By now the other one may have ended, and the turn be this process's.
        if (isNobodyElses(requestName(inTurn)))
            return Role::Runs;
        answer = askUntil(deadline);
    }
    if (answer == Answer::Shown)
        return Role::Leaves;
    // Both run then, and the next start finds the one that answers.
    m_request = requestName(byForce);
    return Role::Runs;
}

DesktopApplication::Answer DesktopApplication::askUntil(const QTimer& deadline)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        applicationName, applicationPath, applicationInterface, QStringLiteral("Activate"));
    call << m_activation.platformData();
    call.setAutoStartService(false);
    QDBusPendingCallWatcher watcher(
        m_bus.asyncCall(call, std::numeric_limits<int>::max())); // the deadline is the timer
    QEventLoop waiting;
    connect(&watcher, &QDBusPendingCallWatcher::finished, &waiting, &QEventLoop::quit);
    connect(this, &DesktopApplication::ownerChanged, &waiting, &QEventLoop::quit);
    connect(&deadline, &QTimer::timeout, &waiting, &QEventLoop::quit);
    waiting.exec();
    // The bus says that there is no reply where the other one has ended.
    if (!watcher.isFinished() || watcher.error().type() == QDBusError::NoReply)
        return Answer::None;
    return watcher.isError() ? Answer::Refused : Answer::Shown;
}

void DesktopApplication::Activate(const QVariantMap& platformData)
{
    if (m_role == Role::Runs) {
        Q_EMIT activated(Activation::fromPlatformData(platformData));
        return;
    }
    // No answer from one who may not run in the end, or ends: the caller would rely on it.
    if (calledFromDBus()) {
        setDelayedReply(true);
        m_waiting.append(message());
    }
}

void DesktopApplication::Open(const QStringList& /*uris*/, const QVariantMap& platformData)
{
    Activate(platformData); // there is nothing to open
}

void DesktopApplication::ActivateAction(
    const QString& /*name*/, const QVariantList& /*parameter*/, const QVariantMap& platformData)
{
    Activate(platformData); // there are no actions
}

void DesktopApplication::answerThoseWhoWait()
{
    const QList<QDBusMessage> waiting = std::exchange(m_waiting, {});
    for (const QDBusMessage& call : waiting)
        m_bus.send(call.createReply());
}
