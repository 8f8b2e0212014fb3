#include "OnlineAccountChoice.h"

#include "AccountAddress.h"
#include "OnlineAccountInterfaces.h"

#include <algorithm>
#include <tuple>

namespace mirror {

namespace {

struct Candidate {
    QString id;
    OnlineAccount account;
};

/// The name to sign in with. Some accounts are identified by user and server, while the address
/// holds the user alone.
QString userOf(const QString& identity, const AccountAddress& address)
{
    const QString host = address.root.host();
    const bool holdsServer = !address.user.isEmpty()
        && (identity == address.user + QLatin1Char('@') + host
            || identity == address.user + QLatin1Char('@') + address.root.authority());
    return identity.isEmpty() || holdsServer ? address.user : identity;
}

AccountFinding findingOf(const QVariantMap& account, const QVariantMap& files, const QString& name)
{
    const QString subject = QStringLiteral("The online account %1").arg(name);
    const std::optional<AccountAddress> address
        = readAddress(files.value(QStringLiteral("Uri")).toString());
    if (account.value(QStringLiteral("FilesDisabled")).toBool())
        return { std::nullopt, subject + QStringLiteral(" has its files switched off.") };
    if (!address)
        return { std::nullopt, subject + QStringLiteral(" is not on a WebDAV server.") };
    const auto selfSigned = files.value(QStringLiteral("AcceptSslErrors")).toBool()
        ? WebDavAccount::SelfSigned::AcceptPinned
        : WebDavAccount::SelfSigned::Refuse;
    const QString identity = account.value(QStringLiteral("Identity")).toString();
    return accountAt(address->root, userOf(identity, *address), selfSigned, subject);
}

std::optional<Candidate> candidate(
    const QString& path, const QMap<QString, QVariantMap>& interfaces)
{
    const QVariantMap account = interfaces.value(accountInterface);
    const bool isOff = account.value(QStringLiteral("FilesDisabled")).toBool();
    // Where files are switched off, the interface is taken away as well.
    if (!interfaces.contains(accountInterface) || !interfaces.contains(passwordInterface)
        || (!interfaces.contains(filesInterface) && !isOff))
        return std::nullopt;

    const QString identity = account.value(QStringLiteral("Identity")).toString();
    const QString given = account.value(QStringLiteral("PresentationIdentity")).toString();
    const QString name = given.isEmpty() ? identity : given;
    return Candidate { account.value(QStringLiteral("Id")).toString(),
        { path, name, findingOf(account, interfaces.value(filesInterface), name),
            account.value(QStringLiteral("AttentionNeeded")).toBool() } };
}

} // namespace

std::optional<OnlineAccount> chooseOnlineAccount(const BusObjects& objects, const QString& path)
{
    QList<Candidate> candidates;
    for (auto object = objects.cbegin(); object != objects.cend(); ++object) {
        if (std::optional<Candidate> found = candidate(object.key().path(), object.value()))
            candidates.append(*std::move(found));
    }
    // An id begins with the time at which the account was set up.
    const auto rank = [&path](const Candidate& one) {
        return std::make_tuple(!one.account.finding.account.has_value(), one.account.path != path,
            one.id, one.account.path);
    };
    const auto best = std::min_element(candidates.cbegin(), candidates.cend(),
        [&rank](const Candidate& one, const Candidate& other) { return rank(one) < rank(other); });
    return best == candidates.cend() ? std::nullopt : std::optional(best->account);
}

} // namespace mirror
