#include "EmailComposer.h"

#include "PortalRequest.h"
#include "PortalWindow.h"

#include <QDesktopServices>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// xdg-email may run as long as the mail program that it started; one that fails does so sooner.
constexpr auto openingTime = 3s;

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
    m_request = new PortalRequest(this);
    connect(m_request, &PortalRequest::finished, this,
        [this, subject, body](PortalRequest::Outcome outcome) {
            if (outcome == PortalRequest::Failed || outcome == PortalRequest::Refused)
                composeWithoutPortal(subject, body);
            else if (outcome == PortalRequest::Unanswered)
                finish(Failed);
            else
                finish(outcome == PortalRequest::Done ? Composed : Cancelled);
        });
    m_request->call(QStringLiteral("org.freedesktop.portal.Email"), QStringLiteral("ComposeEmail"),
        { parentWindowForPortal() },
        { { QStringLiteral("subject"), subject }, { QStringLiteral("body"), body } });
}

void EmailComposer::withdraw()
{
    m_finished = true;
    if (m_request)
        m_request->withdraw();
}

void EmailComposer::composeWithoutPortal(const QString& subject, const QString& body)
{
    const QString xdgEmail = QStandardPaths::findExecutable(QStringLiteral("xdg-email"));
    if (xdgEmail.isEmpty()) {
        finish(QDesktopServices::openUrl(mailtoUrl(subject, body)) ? Composed : Failed);
        return;
    }
    startXdgEmail(xdgEmail,
        { QStringLiteral("--utf8"), QStringLiteral("--subject"), subject, QStringLiteral("--body"),
            body });
}

void EmailComposer::startXdgEmail(const QString& program, const QStringList& arguments)
{
    auto* const process = new QProcess;
    mailPrograms().insert(process);
    connect(process, &QObject::destroyed, process, [process] { mailPrograms().remove(process); });
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        process->deleteLater();
        finish(Failed);
    });
    connect(process, &QProcess::finished, this,
        [this](int exitCode) { finish(exitCode == 0 ? Composed : Failed); });
    auto* const opening = new QTimer(this);
    opening->setSingleShot(true);
    connect(opening, &QTimer::timeout, this, [this] { finish(Composed); });
    opening->start(openingTime);
    process->start(program, arguments);
}

void EmailComposer::finish(Outcome outcome)
{
    if (!std::exchange(m_finished, true))
        Q_EMIT finished(outcome);
}
