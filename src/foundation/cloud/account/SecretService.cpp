#include "SecretService.h"

#include "BusCalls.h"
#include "Keyring.h"
#include "SecretPrompt.h"

#include <QDBusMessage>
#include <QDBusMetaType>

namespace mirror {

namespace {

using Paths = QList<QDBusObjectPath>;
using Attributes = QMap<QString, QString>;

QDBusMessage callTo(const QString& method)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        secretService, secretServicePath, secretServiceInterface, method);
    call.setAutoStartService(false);
    return call;
}

} // namespace

const QString secretService = QStringLiteral("org.freedesktop.secrets");
const QString secretServicePath = QStringLiteral("/org/freedesktop/secrets");
const QString secretServiceInterface = QStringLiteral("org.freedesktop.Secret.Service");

void findSecretItems(const QDBusConnection& bus, const QString& key, Start start,
    std::chrono::milliseconds limit, QObject* context,
    const std::function<void(const std::optional<SecretItems>&)>& take)
{
    qDBusRegisterMetaType<Attributes>();
    QDBusMessage call = callTo(QStringLiteral("SearchItems"));
    call.setAutoStartService(start == Start::Allowed);
    // By the schema, nothing is found in a keyring that is locked from the start.
    Attributes attributes = keyringAttributes(key);
    attributes.remove(QStringLiteral("xdg:schema"));
    call << QVariant::fromValue(attributes);
    callBus(bus, call, limit, context, [take](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage
            || answer.signature() != QLatin1String("aoao"))
            take(std::nullopt);
        else
            take(SecretItems { qdbus_cast<Paths>(answer.arguments().at(0)),
                qdbus_cast<Paths>(answer.arguments().at(1)) });
    });
}

void unlockSecret(const QDBusConnection& bus, const QString& key, QObject* context,
    const std::function<void(bool isLocked)>& done)
{
    const auto ask = [=](const QDBusMessage& answer) {
        const bool isAnswer = answer.type() == QDBusMessage::ReplyMessage
            && answer.signature() == QLatin1String("aoo");
        const auto prompt = answer.arguments().value(1).value<QDBusObjectPath>().path();
        if (!isAnswer || prompt == QLatin1String("/"))
            done(!isAnswer || qdbus_cast<Paths>(answer.arguments().at(0)).isEmpty());
        else
            SecretPrompt::show(bus, prompt, context, done);
    };
    const auto unlock = [=](const std::optional<SecretItems>& items) {
        if (!items || !items->readable.isEmpty() || items->locked.isEmpty()) {
            done(false);
            return;
        }
        QDBusMessage call = callTo(QStringLiteral("Unlock"));
        call << QVariant::fromValue(items->locked);
        callBus(bus, call, promptPatience, context, ask);
    };
    findSecretItems(bus, key, Start::Allowed, promptPatience, context, unlock);
}

} // namespace mirror
