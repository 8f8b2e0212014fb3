#include "EmailComposer.h"

#include "PortalRequest.h"

#include <QDesktopServices>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>

namespace {

QUrl mailtoUrl(const QString& subject, const QString& body)
{
    const QString address = QLatin1String("mailto:?subject=")
        + QString::fromLatin1(QUrl::toPercentEncoding(subject)) + QLatin1String("&body=")
        + QString::fromLatin1(QUrl::toPercentEncoding(
            QString(body).replace(QLatin1Char('\n'), QLatin1String("\r\n"))));
    return QUrl(address, QUrl::StrictMode);
}

/// The mail programs that are being started. They have no parent, since that would end them with
/// this program; never torn down, for the same reason.
QSet<QProcess*>& mailPrograms()
{
    static auto* const programs = new QSet<QProcess*>;
    return *programs;
}

} // namespace

void EmailComposer::compose(const QString& subject, const QString& body)
{
    auto* const request = new PortalRequest(this);
    connect(request, &PortalRequest::finished, this,
        [this, subject, body](PortalRequest::Outcome outcome) {
            if (outcome == PortalRequest::Failed || outcome == PortalRequest::Refused)
                composeWithoutPortal(subject, body);
            else if (outcome == PortalRequest::Unanswered)
                Q_EMIT failed();
        });
    request->call(QStringLiteral("org.freedesktop.portal.Email"), QStringLiteral("ComposeEmail"),
        { QString() },
        { { QStringLiteral("subject"), subject }, { QStringLiteral("body"), body } });
}

void EmailComposer::composeWithoutPortal(const QString& subject, const QString& body)
{
    const QString xdgEmail = QStandardPaths::findExecutable(QStringLiteral("xdg-email"));
    const QStringList arguments { QStringLiteral("--utf8"), QStringLiteral("--subject"), subject,
        QStringLiteral("--body"), body };
    if (xdgEmail.isEmpty()) {
        if (!QDesktopServices::openUrl(mailtoUrl(subject, body)))
            Q_EMIT failed();
        return;
    }

    auto* const process = new QProcess;
    mailPrograms().insert(process);
    connect(process, &QObject::destroyed, process, [process] { mailPrograms().remove(process); });
    connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        process->deleteLater();
        Q_EMIT failed();
    });
    connect(process, &QProcess::finished, this, [this, process](int exitCode) {
        process->deleteLater();
        if (exitCode != 0)
            Q_EMIT failed();
    });
    process->start(xdgEmail, arguments);
}
