#include "SecretPrompt.h"

#include "BusCalls.h"
#include "SecretService.h"

#include <QDBusMessage>

#include <utility>

namespace mirror {

namespace {

const QString promptInterface = QStringLiteral("org.freedesktop.Secret.Prompt");

} // namespace

SecretPrompt::SecretPrompt(QObject* parent, std::function<void(bool)> done)
    : QObject(parent)
    , m_done(std::move(done))
{
    // Qt 6.4 connects no slot whose parameter types it has not met.
    qRegisterMetaType<QDBusVariant>();
}

void SecretPrompt::show(const QDBusConnection& bus, const QString& path, QObject* context,
    const std::function<void(bool isDismissed)>& done)
{
    auto* const prompt = new SecretPrompt(context, done);
    QDBusConnection(bus).connect(secretService, path, promptInterface, QStringLiteral("Completed"),
        prompt, SLOT(onCompleted(bool, QDBusVariant)));
    QDBusMessage call = QDBusMessage::createMethodCall(
        secretService, path, promptInterface, QStringLiteral("Prompt"));
    call << QString(); // of no window: the question is not the program's
    callBus(bus, call, promptPatience, prompt, [prompt](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ErrorMessage)
            prompt->onCompleted(true, QDBusVariant());
    });
}

void SecretPrompt::onCompleted(bool isDismissed, const QDBusVariant& /*result*/)
{
    if (const auto done = std::exchange(m_done, nullptr))
        done(isDismissed);
    deleteLater();
}

} // namespace mirror
