#include "CloudAccounts.h"

#include "BusCalls.h"
#include "CloudIniFile.h"
#include "Keyring.h"
#include "KeyringWatch.h"
#include "OnlineAccounts.h"
#include "UserDefaults.h"

#include <QCryptographicHash>
#include <QDBusMessage>
#include <QFileInfo>
#include <QRandomGenerator>

#include <array>
#include <utility>

namespace mirror {

namespace {

using Kind = FileError::Kind;

QByteArray randomBytes()
{
    std::array<quint32, 8> numbers {};
    QRandomGenerator::system()->fillRange(numbers.data(), numbers.size());
    return QByteArray(reinterpret_cast<const char*>(numbers.data()), sizeof numbers);
}

FileError failure(Kind kind, const QString& sentence)
{
    return { kind, 0, std::nullopt, sentence };
}

PasswordSource onlinePassword(const QDBusConnection& bus, const QString& path)
{
    return [bus, path](QObject* context, const PasswordReply& reply) {
        callBus(bus, onlinePasswordCall(path), promptPatience, context,
            [reply](const QDBusMessage& answer) {
                const QString password = answer.type() == QDBusMessage::ReplyMessage
                    ? answer.arguments().value(0).toString()
                    : QString();
                if (password.isEmpty())
                    reply(failure(Kind::Unauthorised,
                        QStringLiteral("The desktop's online accounts give no password.")));
                else
                    reply(password);
            });
    };
}

} // namespace

QString CloudAccounts::standardIniFile()
{
    return QFileInfo(UserDefaults::standardFile()).absolutePath() + QLatin1String("/cloud.ini");
}

CloudAccounts::CloudAccounts(AccountManners manners, QObject* parent)
    : QObject(parent)
    , m_manners(std::move(manners))
    , m_salt(randomBytes())
{
}

CloudAccounts::~CloudAccounts() = default;

void CloudAccounts::start()
{
    const QDBusConnection bus = m_manners.bus.value_or(QDBusConnection::sessionBus());
    m_online = new OnlineAccounts(bus, m_manners.answerLimit, this);
    m_ini = new CloudIniFile(m_manners.iniFile, this);
    m_keyring = new KeyringWatch(bus, m_manners.answerLimit, this);
    connect(m_online, &OnlineAccounts::changed, this, &CloudAccounts::update);
    connect(m_online, &OnlineAccounts::credentialsRenewed, this, &CloudAccounts::renew);
    connect(m_online, &OnlineAccounts::credentialsTouched, this, &CloudAccounts::probe);
    connect(m_ini, &CloudIniFile::changed, this, &CloudAccounts::onIniChanged);
    connect(m_keyring, &KeyringWatch::looked, this, &CloudAccounts::onKeyringLooked);
    m_ini->start();
    m_online->start();
}

Outcome<QString> CloudAccounts::password()
{
    if (m_manners.cancellation->isCancelled())
        return failure(Kind::Cancelled, QStringLiteral("cancelled"));
    if (m_shown.state == AccountState::NeedsAttention)
        return failure(Kind::Unauthorised, m_shown.problem);
    if (m_shown.state != AccountState::Available)
        return failure(Kind::NotFound, QStringLiteral("There is no account."));

    Outcome<QString> outcome = PasswordRequest::wait(passwordSource(), m_manners.passwordLimit,
        *m_manners.cancellation, this, [this] { probe(); });
    if (outcome)
        m_given = mark(*outcome);
    if (outcome || outcome.error().kind == Kind::Cancelled)
        return outcome;
    setBlock(Block::Failed, outcome.error().sentence);
    return outcome;
}

void CloudAccounts::refused()
{
    if (m_shown.state != AccountState::Available)
        return;
    if (m_source == Source::Online) {
        setBlock(Block::Refused,
            QStringLiteral("The server refuses the password of the online account %1: sign in "
                           "again in the desktop's settings.")
                .arg(m_online->chosen()->name));
        m_online->ensureCredentials();
    } else {
        setBlock(Block::Refused, refusedPassword(keyringKey(*m_account)));
    }
}

PasswordSource CloudAccounts::passwordSource() const
{
    const QDBusConnection bus = m_manners.bus.value_or(QDBusConnection::sessionBus());
    if (m_source == Source::Online)
        return onlinePassword(bus, m_onlinePath);
    return keyringPassword(bus, keyringKey(*m_account));
}

QByteArray CloudAccounts::mark(const QString& password) const
{
    const QByteArray salted = m_salt + password.toUtf8();
    return QCryptographicHash::hash(salted, QCryptographicHash::Sha256);
}

void CloudAccounts::onIniChanged()
{
    update();
    if (m_source != Source::Ini || !m_account)
        return;
    // The user is at work on it: whatever was wrong may be right by now.
    m_keyring->follow(keyringKey(*m_account));
    renew();
}

void CloudAccounts::onKeyringLooked()
{
    if (m_source != Source::Ini || !m_account)
        return;
    const KeyringEntry entry = m_keyring->entry();
    if (entry == KeyringEntry::Missing)
        setBlock(Block::Absent, missingPassword(keyringKey(*m_account)));
    else if (entry == KeyringEntry::NoKeyring)
        setBlock(Block::Absent, noKeyring());
    else if (m_block == Block::Absent)
        setBlock(Block::None);
    if (entry == KeyringEntry::Readable)
        probe();
    show();
}

void CloudAccounts::setBlock(Block block, const QString& sentence)
{
    m_block = block;
    m_blockSentence = sentence;
    show();
}

void CloudAccounts::renew()
{
    setBlock(Block::None);
    announce();
}

/// Looks whether the password is another one, or can be had again, before anybody is told to ask.
void CloudAccounts::probe()
{
    if (!m_account || (m_block == Block::None && m_given.isEmpty()))
        return;
    PasswordRequest::ask(
        passwordSource(), this, [this, asked = m_choices](const Outcome<QString>& outcome) {
            if (outcome && asked == m_choices)
                compare(mark(*outcome));
        });
}

void CloudAccounts::compare(const QByteArray& found)
{
    const bool isAnother = found != m_given;
    if (isAnother || m_block == Block::Failed)
        renew();
    if (isAnother)
        m_given = found;
}

void CloudAccounts::update()
{
    if (m_online->isKnown())
        chooseSource();
    show();
}

void CloudAccounts::chooseSource()
{
    const std::optional<OnlineAccount>& online = m_online->chosen();
    const std::optional<AccountFinding>& ini = m_ini->finding();
    Source source = online ? Source::Online : Source::None;
    if (ini && !(online && online->finding.account))
        source = Source::Ini;
    const QString path = source == Source::Online ? online->path : QString();
    const AccountFinding finding = source == Source::Online ? online->finding
        : source == Source::Ini                             ? *ini
                                                            : AccountFinding();
    m_remark = finding.problem;
    if (source == m_source && path == m_onlinePath && finding.account == m_account)
        return;

    m_source = source;
    m_onlinePath = path;
    m_account = finding.account;
    m_given.clear();
    ++m_choices;
    setBlock(Block::None);
    if (source == Source::Ini && m_account)
        m_keyring->follow(keyringKey(*m_account));
}

CloudAccounts::Shown CloudAccounts::shown() const
{
    const bool waitsForKeyring
        = m_source == Source::Ini && m_account && m_keyring->entry() == KeyringEntry::Unknown;
    if (!m_online->isKnown() || waitsForKeyring)
        return {};
    if (!m_account)
        return { m_remark.isEmpty() ? AccountState::NoAccount : AccountState::NeedsAttention,
            std::nullopt, m_remark };
    if (m_source == Source::Online && m_online->chosen()->needsAttention)
        return { AccountState::NeedsAttention, m_account,
            QStringLiteral("The online account %1 needs you: sign in again in the desktop's "
                           "settings.")
                .arg(m_online->chosen()->name) };
    if (m_block != Block::None)
        return { AccountState::NeedsAttention, m_account, m_blockSentence };
    return { AccountState::Available, m_account, m_remark };
}

void CloudAccounts::show()
{
    Shown now = shown();
    if (now == m_shown)
        return;
    m_shown = std::move(now);
    announce();
}

void CloudAccounts::announce()
{
    if (std::exchange(m_isAnnounced, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isAnnounced = false;
            Q_EMIT changed();
        },
        Qt::QueuedConnection);
}

} // namespace mirror
