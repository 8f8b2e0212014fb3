#include "FakePortal.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QFile>

#include <utility>

namespace {

const QString connectionName = QStringLiteral("portal");
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

QByteArray readAll(const QDBusUnixFileDescriptor& descriptor)
{
    QFile file;
    return file.open(descriptor.fileDescriptor(), QIODevice::ReadOnly) ? file.readAll()
                                                                       : QByteArray();
}

} // namespace

FakePortal::FakePortal(const QString& address, QStringList interfaces)
    : m_bus(QDBusConnection::connectToBus(address, connectionName))
    , m_interfaces(std::move(interfaces))
{
    m_bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
    m_bus.registerService(service);
}

FakePortal::~FakePortal()
{
    m_bus.unregisterService(service);
    QDBusConnection::disconnectFromBus(connectionName);
}

QString FakePortal::introspect(const QString&) const { return {}; }

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    if (message.interface() == QLatin1String("org.freedesktop.DBus.Properties"))
        return handleProperty(message);
    if (message.interface() == QLatin1String("org.freedesktop.portal.Request")) {
        ++m_closed;
        return m_bus.send(message.createReply());
    }
    if (!m_interfaces.contains(message.interface()))
        return false;
    keep(message);
    if (message.member() == m_silent) {
        message.setDelayedReply(true);
        return true;
    }
    if (m_errors.contains(message.member()))
        return m_bus.send(message.createErrorReply(m_errors.value(message.member()), {}));
    m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(m_lastHandle))));
    if (m_answers.contains(message.member()))
        answerNow(m_answers.value(message.member()));
    return true;
}

bool FakePortal::handleProperty(const QDBusMessage& message)
{
    ++m_answered;
    const bool has = m_interfaces.contains(message.arguments().value(0).toString());
    return m_bus.send(has ? message.createReply(QVariant::fromValue(QDBusVariant(3U)))
                          : message.createErrorReply(QDBusError::UnknownInterface, {}));
}

void FakePortal::keep(const QDBusMessage& message)
{
    Call call { .method = message.member(), .arguments = message.arguments() };
    call.options = qdbus_cast<QVariantMap>(call.arguments.takeLast());
    for (const QVariant& argument : std::as_const(call.arguments)) {
        if (argument.metaType() == QMetaType::fromType<QDBusUnixFileDescriptor>())
            call.document = readAll(argument.value<QDBusUnixFileDescriptor>());
    }
    QString caller = message.service().mid(1);
    caller.replace(QLatin1Char('.'), QLatin1Char('_'));
    m_lastCaller = message.service();
    m_lastHandle = path + QLatin1String("/request/") + caller + QLatin1Char('/')
        + call.options.take(QStringLiteral("handle_token")).toString();
    m_calls.append(call);
}

void FakePortal::answerNow(const Answer& answer)
{
    QDBusMessage signal = QDBusMessage::createTargetedSignal(m_lastCaller, m_lastHandle,
        QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    signal << answer.code << answer.results;
    m_bus.send(signal);
}
