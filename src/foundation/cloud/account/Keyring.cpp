#include "Keyring.h"

#include "LibSecret.h"
#include "SecretService.h"

#include <QRegularExpression>

#include <qt6keychain/keychain.h>

namespace mirror {

namespace {

const QString keyringService = QStringLiteral("Vexilo");

QString sentence(QKeychain::Error error, const QString& key)
{
    switch (error) {
    case QKeychain::EntryNotFound:
        return missingPassword(key);
    case QKeychain::AccessDeniedByUser:
    case QKeychain::AccessDenied:
        return lockedKeyring();
    case QKeychain::NoBackendAvailable:
        return noKeyring();
    default:
        return QStringLiteral("The keyring does not give the password.");
    }
}

FileError failure(const QString& sentence)
{
    return { FileError::Kind::Unauthorised, 0, std::nullopt, sentence };
}

Outcome<QString> outcome(const QKeychain::ReadPasswordJob& job)
{
    if (job.error() == QKeychain::NoError && !job.textData().isEmpty())
        return job.textData();
    const auto error = job.error() == QKeychain::NoError ? QKeychain::EntryNotFound : job.error();
    return failure(sentence(error, job.key()));
}

enum class Attempt { First, Last };

void read(const QString& key, Attempt attempt, const PasswordReply& reply)
{
    surviveLossOfBus();
    auto* const job = new QKeychain::ReadPasswordJob(keyringService); // deletes itself
    job->setKey(key);
    QObject::connect(job, &QKeychain::Job::finished, job, [=] {
        // A keyring that was started anew does not know the session that libsecret kept.
        if (job->error() == QKeychain::OtherError && attempt == Attempt::First) {
            endKeyringSession();
            read(key, Attempt::Last, reply);
        } else {
            reply(outcome(*job));
        }
    });
    job->start();
}

/// As a shell reads it back.
QString quoted(QString word)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9@._:+-]+$"));
    if (plain.match(word).hasMatch())
        return word;
    const QLatin1Char quote('\'');
    return quote + word.replace(quote, QLatin1String("'\\''")) + quote;
}

} // namespace

QString keyringKey(const CloudAccount& account)
{
    return account.user + QLatin1Char('@') + account.root.authority(QUrl::FullyEncoded);
}

QMap<QString, QString> keyringAttributes(const QString& key)
{
    return { { QStringLiteral("xdg:schema"), QStringLiteral("org.qt.keychain") },
        { QStringLiteral("server"), keyringService }, { QStringLiteral("user"), key },
        { QStringLiteral("type"), QStringLiteral("plaintext") } };
}

QString storeCommand(const QString& key)
{
    QString line = QStringLiteral("secret-tool store --label=") + keyringService;
    const QMap<QString, QString> attributes = keyringAttributes(key);
    for (auto it = attributes.cbegin(); it != attributes.cend(); ++it)
        line += QLatin1Char(' ') + it.key() + QLatin1Char(' ') + quoted(it.value());
    return line;
}

QString missingPassword(const QString& key)
{
    return QStringLiteral("The keyring holds no password of %1; it is stored by: %2")
        .arg(key, storeCommand(key));
}

QString refusedPassword(const QString& key)
{
    return QStringLiteral("The server refuses the password of %1; another is stored by: %2")
        .arg(key, storeCommand(key));
}

QString lockedKeyring() { return QStringLiteral("The keyring is locked."); }

QString noKeyring() { return QStringLiteral("There is no keyring that keeps passwords."); }

PasswordSource keyringPassword(const QDBusConnection& bus, const QString& key)
{
    return [bus, key](QObject* context, const PasswordReply& reply) {
        unlockSecret(bus, key, context, [key, reply](bool isLocked) {
            if (isLocked)
                reply(failure(lockedKeyring()));
            else
                read(key, Attempt::First, reply);
        });
    };
}

} // namespace mirror
