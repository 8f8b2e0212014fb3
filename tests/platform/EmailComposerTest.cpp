#include "EmailComposer.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <memory>

namespace {

const QString subject = QStringLiteral("Vexilo");
const QString body = QStringLiteral("Based on 4 people dining.\nÜber & 5% \"today\" العشاء");

EmailComposer::Outcome outcomeOf(const QSignalSpy& finished)
{
    return finished.first().first().value<EmailComposer::Outcome>();
}

} // namespace

/// Stands for whatever handles mailto addresses.
class MailtoHandler : public QObject {
    Q_OBJECT

public:
    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl& url) { urls.append(url); }
};

/// Without a portal: with one it is tested as an activity of the share sheet.
class EmailComposerTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QByteArray m_path;

    void installXdgEmail(const QByteArray& lines)
    {
        installXdgEmailAs("#!/bin/sh\n" + lines + '\n');
    }

    void installXdgEmailAs(const QByteArray& bytes)
    {
        QFile script(m_folder.filePath(QStringLiteral("xdg-email")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        QCOMPARE(script.write(bytes), bytes.size());
        script.close();
        QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        m_path = qgetenv("PATH");
    }

    void init()
    {
        QFile::remove(m_folder.filePath(QStringLiteral("xdg-email")));
        qputenv("PATH", m_folder.path().toLocal8Bit());
    }

    void cleanup()
    {
        qputenv("PATH", m_path);
        QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
    }

    void withoutAPortalXdgEmailGetsTheMessage()
    {
        const QString record = m_folder.filePath(QStringLiteral("arguments"));
        installXdgEmail("printf '%s\\0' \"$@\" > '" + record.toUtf8() + "'");
        EmailComposer composer;

        QSignalSpy outcomes(&composer, &EmailComposer::finished);
        composer.compose(subject, body);

        const QByteArrayList expected { "--utf8", "--subject", subject.toUtf8(), "--body",
            body.toUtf8(), "" };
        const auto arguments = [&record] {
            QFile file(record);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QTRY_COMPARE(arguments(), expected.join('\0'));
        QTRY_COMPARE(outcomes.count(), 1);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Composed);
    }

    void anXdgEmailThatRunsAsLongAsTheMailProgramHasOpenedIt()
    {
        installXdgEmail(
            "read nothing"); // until its input is closed, which the test does at its end
        auto composer = std::make_unique<EmailComposer>();
        QSignalSpy outcomes(composer.get(), &EmailComposer::finished);

        composer->compose(subject, body);

        QTRY_COMPARE_WITH_TIMEOUT(outcomes.count(), 1, 20'000);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Composed);
    }

    void aFailingXdgEmailIsReported()
    {
        installXdgEmail("exit 3");
        EmailComposer composer;
        QSignalSpy outcomes(&composer, &EmailComposer::finished);

        composer.compose(subject, body);

        QTRY_COMPARE(outcomes.count(), 1);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Failed);
    }

    void whereXdgEmailFailsTheHandlerOfMailtoGetsTheMessage_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("to open a program") << QByteArray("#!/bin/sh\nexit 3\n");
        QTest::newRow("to start") << QByteArray("#!/nowhere/at/all\n");
    }

    void whereXdgEmailFailsTheHandlerOfMailtoGetsTheMessage()
    {
        QFETCH(const QByteArray, script);
        installXdgEmailAs(script);
        MailtoHandler handler;
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &handler, "open");
        EmailComposer composer;
        QSignalSpy outcomes(&composer, &EmailComposer::finished);

        composer.compose(subject, body);

        QTRY_COMPARE(outcomes.count(), 1);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Composed);
        QCOMPARE(handler.urls.size(), 1);
        QVERIFY(handler.urls.first().toEncoded().startsWith("mailto:?subject=Vexilo&body=Based"));
    }

    void whatXdgEmailPrintsGoesNowhere()
    {
        installXdgEmail("[ /proc/self/fd/1 -ef /dev/null ] && [ /proc/self/fd/2 -ef /dev/null ]");
        EmailComposer composer;
        QSignalSpy outcomes(&composer, &EmailComposer::finished);

        composer.compose(subject, body);

        QTRY_COMPARE(outcomes.count(), 1);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Composed);
    }

    void anXdgEmailThatWasStartedIsNotWithdrawn()
    {
        installXdgEmail("read nothing");
        EmailComposer composer;
        QSignalSpy outcomes(&composer, &EmailComposer::finished);
        composer.compose(subject, body);
        QCOMPARE(outcomes.count(), 0);

        composer.withdraw();

        QCOMPARE(outcomes.count(), 1);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Composed);
    }

    void withoutXdgEmailTheHandlerOfMailtoGetsTheMessage()
    {
        MailtoHandler handler;
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &handler, "open");
        EmailComposer composer;
        QSignalSpy outcomes(&composer, &EmailComposer::finished);

        composer.compose(subject, body);

        QTRY_COMPARE(outcomes.count(), 1);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Composed);
        QCOMPARE(handler.urls.size(), 1);
        const QByteArray encoded = handler.urls.first().toEncoded();
        QVERIFY(encoded.startsWith("mailto:?subject=Vexilo&body=Based%20on%204%20people"));
        QVERIFY(encoded.contains("dining.%0D%0A%C3%9Cber%20%26%205%25"));
    }

    void withNothingThatTakesMailTheFailureIsReported()
    {
        EmailComposer composer;
        QSignalSpy outcomes(&composer, &EmailComposer::finished);

        composer.compose(subject, body);

        QTRY_COMPARE(outcomes.count(), 1);
        QCOMPARE(outcomeOf(outcomes), EmailComposer::Failed);
    }
};

QTEST_MAIN(EmailComposerTest)
#include "EmailComposerTest.moc"
