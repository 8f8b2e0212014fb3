#include "CloudIni.h"

#include "AccountAddress.h"

#include <QHash>

namespace mirror {

namespace {

using Values = QHash<QString, QString>;

Values readValues(const QByteArray& bytes)
{
    Values values;
    for (const QString& text : QString::fromUtf8(bytes).split(QLatin1Char('\n'))) {
        const QString line = text.trimmed();
        const qsizetype sign = line.indexOf(QLatin1Char('='));
        if (sign <= 0 || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
            continue;
        values.insert(line.left(sign).trimmed().toLower(), line.mid(sign + 1).trimmed());
    }
    return values;
}

std::optional<WebDavAccount::SelfSigned> selfSignedFrom(const QString& text)
{
    const QString word = text.toLower();
    if (word == QLatin1String("true"))
        return WebDavAccount::SelfSigned::AcceptPinned;
    if (word.isEmpty() || word == QLatin1String("false"))
        return WebDavAccount::SelfSigned::Refuse;
    return std::nullopt;
}

AccountFinding nothing(const QString& problem) { return { std::nullopt, problem }; }

} // namespace

AccountFinding readCloudIni(const QByteArray& bytes)
{
    const Values values = readValues(bytes);
    const QString url = values.value(QStringLiteral("url"));
    if (url.isEmpty())
        return nothing(QStringLiteral("cloud.ini names no url."));
    const std::optional<AccountAddress> address = readAddress(url);
    if (!address)
        return nothing(QStringLiteral("The url in cloud.ini is not the address of a folder."));
    const auto selfSigned = selfSignedFrom(values.value(QStringLiteral("accept_self_signed")));
    if (!selfSigned)
        return nothing(
            QStringLiteral("accept_self_signed in cloud.ini is neither true nor false."));

    AccountFinding finding = accountAt(address->root, values.value(QStringLiteral("user")),
        *selfSigned, QStringLiteral("The account in cloud.ini"));
    if (finding.account && (address->hasPassword || values.contains(QStringLiteral("password"))))
        finding.problem = QStringLiteral("The password in cloud.ini is ignored: delete it there, "
                                         "and keep it in the keyring.");
    return finding;
}

} // namespace mirror
