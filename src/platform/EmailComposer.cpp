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
    if (m_isStarting) {
        finish(Composed);
        return;
    }
    m_finished = true;
    if (m_request)
        m_request->withdraw();
}

void EmailComposer::composeWithoutPortal(const QString& subject, const QString& body)
{
    const QString xdgEmail = QStandardPaths::findExecutable(QStringLiteral("xdg-email"));
    if (xdgEmail.isEmpty())
        openAddress(mailtoUrl(subject, body));
    else
        startXdgEmail(xdgEmail, subject, body);
}

void EmailComposer::startXdgEmail(
    const QString& program, const QString& subject, const QString& body)
{
    auto* const process = new QProcess;
    mailPrograms().insert(process);
    connect(process, &QObject::destroyed, process, [process] { mailPrograms().remove(process); });
    // Nobody reads what the mail program prints, which would fill a pipe, and end with this one.
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            process->deleteLater();
    });

    const QUrl mailto = mailtoUrl(subject, body);
    connect(process, &QProcess::errorOccurred, this, [this, mailto](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            openAddress(mailto);
    });
    connect(process, &QProcess::finished, this,
        [this, mailto](int exitCode, QProcess::ExitStatus status) {
            if (exitCode == 0 && status == QProcess::NormalExit)
                finish(Composed);
            else
                openAddress(mailto);
        });
    auto* const opening = new QTimer(this);
    opening->setSingleShot(true);
    connect(opening, &QTimer::timeout, this, [this] { finish(Composed); });
    opening->start(openingTime);
    process->start(program,
        { QStringLiteral("--utf8"), QStringLiteral("--subject"), subject, QStringLiteral("--body"),
            body });
    m_isStarting = process->state() != QProcess::NotRunning;
}

/// The last way, unless the message is on another one.
void EmailComposer::openAddress(const QUrl& mailto)
{
    if (!m_finished)
        finish(QDesktopServices::openUrl(mailto) ? Composed : Failed);
}

void EmailComposer::finish(Outcome outcome)
{
    if (!std::exchange(m_finished, true))
        Q_EMIT finished(outcome);
}
