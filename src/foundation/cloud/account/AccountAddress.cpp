#include "AccountAddress.h"

#include "WebDavAddress.h"

namespace mirror {

namespace {

struct Scheme {
    QString name;
    int port; // where the address names none
};

std::optional<Scheme> webScheme(const QString& scheme)
{
    if (scheme == QLatin1String("davs") || scheme == QLatin1String("https"))
        return Scheme { QStringLiteral("https"), 443 };
    if (scheme == QLatin1String("dav") || scheme == QLatin1String("http"))
        return Scheme { QStringLiteral("http"), 80 };
    return std::nullopt;
}

} // namespace

std::optional<AccountAddress> readAddress(const QString& text)
{
    QUrl url(text.trimmed());
    const std::optional<Scheme> scheme = webScheme(url.scheme());
    if (!url.isValid() || !scheme || url.host().isEmpty() || !pathSegments(url))
        return std::nullopt;

    url.setScheme(scheme->name);
    if (url.port() == scheme->port)
        url.setPort(-1);
    return AccountAddress { WebDavAddress(url).url(QString()), url.userName(QUrl::FullyDecoded),
        !url.password().isEmpty() };
}

AccountFinding accountAt(const QUrl& root, const QString& user,
    WebDavAccount::SelfSigned selfSigned, const QString& subject)
{
    if (!WebDavAddress(root).isSecure())
        return { std::nullopt, subject + QStringLiteral(" is not reached by https.") };
    if (user.isEmpty())
        return { std::nullopt, subject + QStringLiteral(" names no user.") };
    if (user.contains(QLatin1Char(':')))
        return { std::nullopt, subject + QStringLiteral(" has a user's name with a colon.") };
    const QString identity = user + QLatin1Char(' ') + root.toString(QUrl::FullyEncoded);
    return { CloudAccount { identity, root, user, selfSigned }, QString() };
}

} // namespace mirror
