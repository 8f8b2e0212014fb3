#include "ActivityTypes.h"
#include "FakeKdeConnect.h"
#include "FakePortal.h"
#include "KdeConnect.h"
#include "PrivateBus.h"
#include "UIActivityViewController.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString emailPortal = QStringLiteral("org.freedesktop.portal.Email");
const QString filePortal = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString printPortal = QStringLiteral("org.freedesktop.portal.Print");
const QString text
    = QStringLiteral("Based on 4 people dining.\nÜber & 5% \"today\" 33,38 € العشاء\n");

const FakePortal::Answer cancelled { .code = 1 };

QVariantMap chosenFile(const QString& path)
{
    return { { QStringLiteral("uris"),
        QStringList(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)) } };
}

/// What the user chose in the dialog for printing; `Print` does not ask again.
const FakePortal::Answer prepared { .results = { { QStringLiteral("token"), 7U } } };

/// Asks a service on the bus whether it is there, which needs no help of it, and takes all that it
/// has sent before it says so.
void roundTripTo(const QString& name, const QString& path)
{
    const QDBusMessage pong = QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
        name, path, QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")));
    QCOMPARE(pong.type(), QDBusMessage::ReplyMessage);
    QCoreApplication::processEvents();
}

void roundTripToPortal()
{
    roundTripTo(QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"));
}

/// What a program prints when it is given the bytes.
QByteArray outputOf(const QString& program, const QStringList& arguments, const QByteArray& bytes)
{
    QProcess process;
    process.start(program, arguments);
    process.write(bytes);
    process.closeWriteChannel();
    return process.waitForFinished() && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                : QByteArray("it failed");
}

QString textOfPdf(const QByteArray& pdf)
{
    return QString::fromUtf8(
        outputOf(QStringLiteral("pdftotext"), { QStringLiteral("-"), QStringLiteral("-") }, pdf));
}

QString sizeOfPdf(const QByteArray& pdf)
{
    const QByteArray facts = outputOf(QStringLiteral("pdfinfo"), { QStringLiteral("-") }, pdf);
    for (const QByteArray& line : facts.split('\n')) {
        if (line.startsWith("Page size:"))
            return QString::fromLatin1(line.mid(10)).trimmed();
    }
    return {};
}

/// Files that this process writes are no longer than so many bytes while this object lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit { bytes, m_before.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        (void)std::signal(SIGXFSZ, m_signal);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before {};
    void (*m_signal)(int);
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The destinations that need a bus, on a private one with services made up for each test.
class ActivitiesTest : public QObject {
    Q_OBJECT

public:
    explicit ActivitiesTest(QString address)
        : m_address(std::move(address))
    {
    }

public Q_SLOTS:
    void openMessage(const QUrl& url) { m_messages.append(url); }

private:
    using Controller = UIActivityViewController;

    const QString m_address;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<FakePortal> m_portal;
    std::unique_ptr<Controller> m_controller;
    QList<QUrl> m_messages;
    const QByteArray m_path = qgetenv("PATH");

    // What the completion was called with.
    int m_completions = 0;
    QString m_type;
    bool m_completed = false;
    QString m_error;

    void startPortal(const QStringList& interfaces)
    {
        m_portal = std::make_unique<FakePortal>(m_address, interfaces);
    }

    void open(const QString& shared = text)
    {
        m_controller = std::make_unique<Controller>(ActivityItems { { .text = shared } });
        m_controller->setCompletionHandler(
            [this](const std::optional<ActivityType>& type, bool completed, const auto&,
                const std::optional<ActivityError>& error) {
                ++m_completions;
                m_type = type.value_or(QString());
                m_completed = completed;
                m_error = error ? error->description : QString();
            });
        m_controller->open();
    }

    [[nodiscard]] Activity* offered(const QString& titleOrType) const
    {
        for (const ActivityModel* group : m_controller->groups()) {
            for (int row = 0; row < group->rowCount(); ++row) {
                auto* const activity = group->data(group->index(row), ActivityModel::ActivityRole)
                                           .value<Activity*>();
                if (activity->activityType() == titleOrType || activity->title() == titleOrType)
                    return activity;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QStringList types() const
    {
        QStringList types;
        for (const ActivityModel* group : m_controller->groups()) {
            for (int row = 0; row < group->rowCount(); ++row)
                types.append(group->data(group->index(row), ActivityModel::ActivityRole)
                                 .value<Activity*>()
                                 ->activityType());
        }
        return types;
    }

    /// Opens the sheet and chooses, as soon as it is offered.
    void choose(const QString& titleOrType)
    {
        open();
        QTRY_VERIFY2(offered(titleOrType), qPrintable(titleOrType));
        m_controller->choose(offered(titleOrType));
    }

    /// Waits until the portal was asked this, and all that it has said about that has arrived.
    void awaitCall(const QString& method)
    {
        QTRY_VERIFY(!m_portal->calls().isEmpty() && m_portal->calls().last().method == method);
        roundTripToPortal();
    }

    void expectCompletion(const ActivityType& type, bool completed)
    {
        QTRY_COMPARE(m_completions, 1);
        QCOMPARE(m_type, type);
        QCOMPARE(m_completed, completed);
        QCOMPARE(m_error, QString());
    }

    void expectFailure(const ActivityType& type, const QString& part)
    {
        QTRY_COMPARE(m_controller->state(), Controller::Failed);
        QVERIFY2(m_controller->failure().contains(part), qPrintable(m_controller->failure()));
        QCOMPARE(m_completions, 0);
        m_controller->close();
        QCOMPARE(m_completions, 1);
        QCOMPARE(m_type, type);
        QCOMPARE(m_completed, false);
        QVERIFY(m_error.contains(part));
    }

    void associate(const QByteArray& scheme)
    {
        write(QStringLiteral("applications/handler.desktop"),
            "[Desktop Entry]\nType=Application\nName=Handler\nExec=handler %u\n");
        write(QStringLiteral("mimeapps.list"),
            "[Default Applications]\nx-scheme-handler/" + scheme + "=handler.desktop\n");
    }

    void write(const QString& name, const QByteArray& bytes)
    {
        const QString path = m_home->filePath(name);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    void answerSave(const QString& path)
    {
        m_portal->setAnswer(QStringLiteral("SaveFile"), { .results = chosenFile(path) });
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(!m_address.isEmpty()); }

    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        for (const char* folder :
            { "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS" })
            qputenv(folder, m_home->path().toUtf8());
        m_completions = 0;
        m_messages.clear();
    }

    void cleanup()
    {
        m_controller.reset();
        m_portal.reset();
        QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("sms"));
    }

    // What a desktop has

    void whatThePortalHasIsOffered_data()
    {
        QTest::addColumn<QStringList>("interfaces");
        QTest::addColumn<int>("questions"); // one for each of the four, and one if none prints
        QTest::addColumn<QStringList>("offeredTypes");
        using namespace activityType;
        QTest::newRow("everything") << QStringList { emailPortal, filePortal, printPortal } << 4
                                    << QStringList { copy, qrCode, email, saveText, print };
        QTest::newRow("no printing") << QStringList { emailPortal, filePortal } << 5
                                     << QStringList { copy, qrCode, email, saveText, savePdf };
        QTest::newRow("printing alone")
            << QStringList { printPortal } << 4 << QStringList { copy, qrCode, print };
        QTest::newRow("nothing") << QStringList() << 5 << QStringList { copy, qrCode };
    }

    void whatThePortalHasIsOffered()
    {
        QFETCH(const QStringList, interfaces);
        QFETCH(const int, questions);
        QFETCH(const QStringList, offeredTypes);
        startPortal(interfaces);

        open();
        QTRY_COMPARE(m_portal->answered(), questions);
        roundTripToPortal();

        QCOMPARE(types(), offeredTypes);
        QCOMPARE(m_portal->answered(), questions);
    }

    void aDesktopWithoutServicesOffersWhatItHas()
    {
        open();
        // The bus answers in order, and for those that are not there. Some ask a second question.
        for (int question = 0; question < 2; ++question)
            roundTripTo(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"));

        QCOMPARE(types(), QStringList({ activityType::copy, activityType::qrCode }));
    }

    // E-mail

    void thePortalComposesTheText()
    {
        startPortal({ emailPortal });
        m_portal->setAnswer(QStringLiteral("ComposeEmail"), {});

        choose(activityType::email);

        expectCompletion(activityType::email, true);
        QCOMPARE(m_portal->calls().size(), 1);
        QCOMPARE(m_portal->calls().first().options,
            QVariantMap({ { QStringLiteral("subject"), QStringLiteral("Vexilo") },
                { QStringLiteral("body"), text } }));
    }

    void aCancelledEmailIsNotCompleted()
    {
        startPortal({ emailPortal });
        m_portal->setAnswer(QStringLiteral("ComposeEmail"), cancelled);

        choose(activityType::email);

        expectCompletion(activityType::email, false);
    }

    void withoutAPortalTheHandlerOfMailtoGetsTheText()
    {
        associate("mailto");
        qputenv("PATH", m_home->path().toUtf8()); // no xdg-email
        const auto restore = qScopeGuard([path = m_path] { qputenv("PATH", path); });
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), this, "openMessage");

        choose(activityType::email);

        expectCompletion(activityType::email, true);
        QCOMPARE(m_messages.size(), 1);
        QVERIFY(
            m_messages.first().toEncoded().startsWith("mailto:?subject=Vexilo&body=Based%20on"));
    }

    void anEmailThatNothingComposesFails()
    {
        startPortal({ emailPortal });
        m_portal->setAnswer(QStringLiteral("ComposeEmail"), { .code = 2 });
        qputenv("PATH", m_home->path().toUtf8());
        const auto restore = qScopeGuard([path = m_path] { qputenv("PATH", path); });

        choose(activityType::email);

        expectFailure(activityType::email, QStringLiteral("No e-mail program"));
    }

    void closingTheSheetTakesTheRequestBack()
    {
        startPortal({ emailPortal });
        choose(activityType::email);
        QTRY_COMPARE(m_portal->calls().size(), 1);

        m_controller->close();

        QCOMPARE(m_completions, 1);
        QCOMPARE(m_type, activityType::email);
        QCOMPARE(m_completed, false);
        QTRY_COMPARE(m_portal->closed(), 1);
        m_portal->answerNow({});
        roundTripToPortal();
        QCOMPARE(m_completions, 1);
    }

    void whereThePortalGoesAwayTheHandlerOfMailtoGetsTheText_data()
    {
        QTest::addColumn<bool>("silent");
        QTest::newRow("after it took the request") << false;
        QTest::newRow("before that") << true;
    }

    void whereThePortalGoesAwayTheHandlerOfMailtoGetsTheText()
    {
        QFETCH(const bool, silent);
        startPortal({ emailPortal });
        if (silent)
            m_portal->setSilent(QStringLiteral("ComposeEmail"));
        qputenv("PATH", m_home->path().toUtf8());
        const auto restore = qScopeGuard([path = m_path] { qputenv("PATH", path); });
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), this, "openMessage");
        choose(activityType::email);
        awaitCall(QStringLiteral("ComposeEmail"));
        QCOMPARE(m_controller->state(), Controller::Performing);

        m_portal.reset();

        expectCompletion(activityType::email, true);
        QCOMPARE(m_messages.size(), 1);
    }

    void aPortalThatIsThereAndDoesNotAnswerIsNotPassedBy()
    {
        startPortal({ emailPortal });
        m_portal->setError(QStringLiteral("ComposeEmail"), QDBusError::NoReply);
        qputenv("PATH", m_home->path().toUtf8());
        const auto restore = qScopeGuard([path = m_path] { qputenv("PATH", path); });
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), this, "openMessage");

        choose(activityType::email);

        expectFailure(activityType::email, QStringLiteral("No e-mail program"));
        QCOMPARE(m_messages.size(), 0);
    }

    void closingTheSheetWhileTheMailProgramStartsLetsItStart()
    {
        associate("mailto");
        const QString gate = m_home->filePath(QStringLiteral("gate"));
        QCOMPARE(mkfifo(gate.toLocal8Bit().constData(), 0600), 0);
        write(QStringLiteral("xdg-email"),
            "#!/bin/sh\ncd " + m_home->path().toUtf8()
                + "\n: > started\nread line < gate\nprintf '%s' \"$5\" > letter\n");
        QVERIFY(QFile::setPermissions(m_home->filePath(QStringLiteral("xdg-email")),
            QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        // Both ends, so that opening waits for nobody. The program ends with them at the latest.
        const int descriptor = ::open(gate.toLocal8Bit().constData(), O_RDWR | O_CLOEXEC);
        QVERIFY(descriptor >= 0);
        const auto end = qScopeGuard([descriptor] { ::close(descriptor); });
        qputenv("PATH", m_home->path().toUtf8());
        const auto restore = qScopeGuard([path = m_path] { qputenv("PATH", path); });
        choose(activityType::email);
        QTRY_VERIFY(QFile::exists(m_home->filePath(QStringLiteral("started"))));

        m_controller->close();
        m_controller.reset();
        QCOMPARE(m_completions, 1);
        QCOMPARE(m_type, activityType::email);
        QCOMPARE(m_completed, true);
        QCOMPARE(::write(descriptor, "\n", 1), 1);

        QTRY_COMPARE(contentOf(m_home->filePath(QStringLiteral("letter"))), text.toUtf8());
    }

    // Text message

    void aTextMessageIsOfferedWhereAProgramTakesIt()
    {
        associate("sms");
        QDesktopServices::setUrlHandler(QStringLiteral("sms"), this, "openMessage");

        choose(activityType::textMessage);

        expectCompletion(activityType::textMessage, true);
        QCOMPARE(m_messages.size(), 1);
        QCOMPARE(QUrl::fromPercentEncoding(m_messages.first().toEncoded()),
            QLatin1String("sms:?body=") + text);
    }

    void aTextMessageThatNothingOpensFails()
    {
        associate("sms");

        choose(activityType::textMessage);

        expectFailure(activityType::textMessage, QStringLiteral("No program for text messages"));
    }

    // KDE Connect

    void kdeConnectIsNotStarted()
    {
        // The bus could start it, and would tell of another error.
        for (QDBusPendingCall call :
            { kdeConnect::deviceNames(), kdeConnect::takesShares(QStringLiteral("a1")),
                kdeConnect::shareText(QStringLiteral("a1"), text) }) {
            call.waitForFinished();
            QCOMPARE(
                call.error().name(), QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"));
        }
    }

    void aTextThatWasSentIsCompletedWhenTheSheetIsClosed()
    {
        FakeKdeConnect phones(
            m_address, { { QStringLiteral("a1"), QStringLiteral("Lena's phone") } });
        choose(QStringLiteral("Send to Lena's phone"));

        m_controller->close();

        expectCompletion(activityType::sendToDevice, true);
        QTRY_COMPARE(phones.texts().value(QStringLiteral("a1")), text);
    }

    void aTextIsSentToTheDeviceThatIsChosen()
    {
        FakeKdeConnect phones(m_address,
            { { QStringLiteral("a1"), QStringLiteral("Lena's phone") },
                { QStringLiteral("b2"), QStringLiteral("Tablet") },
                { QStringLiteral("c3"), QStringLiteral("Television") } });
        phones.withoutShares(QStringLiteral("c3"));

        choose(QStringLiteral("Send to Tablet"));

        expectCompletion(activityType::sendToDevice, true);
        QCOMPARE(phones.texts(), (QMultiMap<QString, QString> { { QStringLiteral("b2"), text } }));
        QVERIFY(offered(QStringLiteral("Send to Lena's phone")));
        QVERIFY(!offered(QStringLiteral("Send to Television")));
    }

    void aDeviceThatHasGoneFails()
    {
        FakeKdeConnect phones(
            m_address, { { QStringLiteral("a1"), QStringLiteral("Lena's phone") } });
        open();
        QTRY_VERIFY(offered(QStringLiteral("Send to Lena's phone")));
        phones.lose(QStringLiteral("a1"));

        m_controller->choose(offered(QStringLiteral("Send to Lena's phone")));

        expectFailure(activityType::sendToDevice, QStringLiteral("Lena's phone"));
    }

    void devicesAreExcludedByTheirType()
    {
        FakeKdeConnect phones(
            m_address, { { QStringLiteral("a1"), QStringLiteral("Lena's phone") } });
        startPortal({ printPortal });
        m_controller = std::make_unique<Controller>(ActivityItems { { .text = text } });
        m_controller->setExcludedActivityTypes(
            QList<ActivityType> { activityType::sendToDevice, activityType::copy });

        m_controller->open();

        QTRY_COMPARE(types(), QStringList({ activityType::qrCode, activityType::print }));
    }

    // Saving

    void theTextIsSavedAsItIs()
    {
        const QString path = m_home->filePath(QStringLiteral("übers Essen 50%.txt"));
        startPortal({ filePortal });
        answerSave(path);

        choose(activityType::saveText);

        expectCompletion(activityType::saveText, true);
        QCOMPARE(contentOf(path), text.toUtf8());
        const FakePortal::Call call = m_portal->calls().first();
        QCOMPARE(call.method, QStringLiteral("SaveFile"));
        QCOMPARE(call.arguments.at(1).toString(), QStringLiteral("Save as text file"));
        QCOMPARE(call.options,
            QVariantMap({ { QStringLiteral("current_name"), QStringLiteral("Vexilo.txt") } }));
    }

    void aFileThatIsThereIsReplacedAsAWhole()
    {
        write(QStringLiteral("old.txt"), QByteArray(10'000, 'x'));
        const QString path = m_home->filePath(QStringLiteral("old.txt"));
        startPortal({ filePortal });
        answerSave(path);

        choose(activityType::saveText);

        expectCompletion(activityType::saveText, true);
        QCOMPARE(contentOf(path), text.toUtf8());
        QCOMPARE(
            QDir(m_home->path()).entryList(QDir::Files), QStringList(QStringLiteral("old.txt")));
    }

    void aCancelledSaveIsNotCompleted()
    {
        startPortal({ filePortal });
        m_portal->setAnswer(QStringLiteral("SaveFile"), cancelled);

        choose(activityType::saveText);

        expectCompletion(activityType::saveText, false);
        QCOMPARE(QDir(m_home->path()).entryList(QDir::Files), QStringList());
    }

    void whatCannotBeSavedFails_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no such folder") << QStringLiteral("file:///nowhere/at/all.txt")
                                        << QStringLiteral("No such file or directory");
        QTest::newRow("a folder") << QStringLiteral("file:///proc") << QStringLiteral("is no file");
        QTest::newRow("elsewhere")
            << QStringLiteral("sftp://example.org/bill.txt") << QStringLiteral("this computer");
        QTest::newRow("nothing") << QString() << QStringLiteral("this computer");
    }

    void whatCannotBeSavedFails()
    {
        QFETCH(const QString, address);
        QFETCH(const QString, reason);
        startPortal({ filePortal });
        m_portal->setAnswer(QStringLiteral("SaveFile"),
            { .results = { { QStringLiteral("uris"), QStringList(address) } } });

        choose(activityType::saveText);

        expectFailure(activityType::saveText, reason);
    }

    void whatIsNoFileIsNotReplaced()
    {
        const QString path = m_home->filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
        startPortal({ filePortal });
        answerSave(path);

        choose(activityType::saveText);

        expectFailure(activityType::saveText, QStringLiteral("is no file"));
        QVERIFY(QFileInfo::exists(path) && !QFileInfo(path).isFile());
    }

    void aFileThatCannotBeWrittenWholeStaysAsItWas()
    {
        write(QStringLiteral("old.txt"), "old");
        const QString path = m_home->filePath(QStringLiteral("old.txt"));
        startPortal({ filePortal });
        answerSave(path);
        const FileSizeLimit limit(10); // of the text's hundred

        choose(activityType::saveText);

        expectFailure(activityType::saveText, QStringLiteral("File too large"));
        QCOMPARE(contentOf(path), QByteArray("old"));
        QCOMPARE(
            QDir(m_home->path()).entryList(QDir::Files), QStringList(QStringLiteral("old.txt")));
    }

    void aPortalThatFailsToAskIsAFailure()
    {
        startPortal({ filePortal });
        m_portal->setAnswer(QStringLiteral("SaveFile"), { .code = 2 });

        choose(activityType::saveText);

        expectFailure(activityType::saveText, QStringLiteral("did not ask"));
    }

    void aPortalThatGoesAwayWhileItAsksIsAFailure()
    {
        startPortal({ filePortal });
        choose(activityType::saveText);
        awaitCall(QStringLiteral("SaveFile"));
        QCOMPARE(m_controller->state(), Controller::Performing);

        m_portal.reset();

        expectFailure(activityType::saveText, QStringLiteral("did not ask"));
    }

    void closingTheSheetClosesTheFileChooser()
    {
        const QString path = m_home->filePath(QStringLiteral("bill.txt"));
        startPortal({ filePortal });
        choose(activityType::saveText);
        awaitCall(QStringLiteral("SaveFile"));

        m_controller->close();

        expectCompletion(activityType::saveText, false);
        QTRY_COMPARE(m_portal->closed(), 1);
        m_portal->answerNow({ .results = chosenFile(path) });
        roundTripToPortal();
        QVERIFY(!QFile::exists(path));
    }

    void aPdfHoldsTheText()
    {
        const QString path = m_home->filePath(QStringLiteral("bill.pdf"));
        startPortal({ filePortal });
        answerSave(path);

        choose(activityType::savePdf);

        expectCompletion(activityType::savePdf, true);
        QCOMPARE(m_portal->calls().first().options.value(QStringLiteral("current_name")).toString(),
            QStringLiteral("Vexilo.pdf"));
        const QByteArray pdf = contentOf(path);
        QVERIFY(textOfPdf(pdf).contains(QStringLiteral("Based on 4 people dining.")));
        QVERIFY(textOfPdf(pdf).contains(QStringLiteral("Über & 5% \"today\" 33,38 €")));
    }

    // Printing

    void whatIsPrintedIsAPdfOnTheChosenPaper()
    {
        startPortal({ printPortal });
        m_portal->setAnswer(QStringLiteral("PreparePrint"),
            { .results
                = { { QStringLiteral("token"), 7U }, { QStringLiteral("settings"), QVariantMap() },
                    { QStringLiteral("page-setup"),
                        QVariantMap { { QStringLiteral("Width"), 148.0 },
                            { QStringLiteral("Height"), 210.0 },
                            { QStringLiteral("Orientation"), QStringLiteral("portrait") } } } } });
        m_portal->setAnswer(QStringLiteral("Print"), {});

        choose(activityType::print);

        expectCompletion(activityType::print, true);
        QCOMPARE(m_portal->calls().size(), 2);
        const FakePortal::Call printed = m_portal->calls().last();
        QCOMPARE(printed.method, QStringLiteral("Print"));
        QCOMPARE(printed.options, QVariantMap({ { QStringLiteral("token"), 7U } }));
        QVERIFY(textOfPdf(printed.document).contains(QStringLiteral("Based on 4 people dining.")));
        QVERIFY2(sizeOfPdf(printed.document).startsWith(QLatin1String("420 x 595")),
            qPrintable(sizeOfPdf(printed.document)));
    }

    void whatIsPrintedIsBlackWhateverTheDesktopsColours()
    {
        const QPalette before = QGuiApplication::palette();
        QPalette dark;
        dark.setColor(QPalette::Text, Qt::white);
        QGuiApplication::setPalette(dark);
        const auto restore = qScopeGuard([before] { QGuiApplication::setPalette(before); });
        startPortal({ printPortal });
        m_portal->setAnswer(QStringLiteral("PreparePrint"), {});
        m_portal->setAnswer(QStringLiteral("Print"), {});

        choose(activityType::print);

        expectCompletion(activityType::print, true);
        const QImage page = QImage::fromData(outputOf(QStringLiteral("pdftoppm"),
            { QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("50"),
                QStringLiteral("-f"), QStringLiteral("1"), QStringLiteral("-l"),
                QStringLiteral("1"), QStringLiteral("-") },
            m_portal->calls().last().document));
        QVERIFY(!page.isNull());
        int darkest = 255;
        for (int y = 0; y < page.height(); ++y) {
            for (int x = 0; x < page.width(); ++x)
                darkest = std::min(darkest, qGray(page.pixel(x, y)));
        }
        QVERIFY2(darkest < 100, qPrintable(QString::number(darkest)));
    }

    void aLongTextTakesMorePages()
    {
        startPortal({ printPortal });
        m_portal->setAnswer(QStringLiteral("PreparePrint"), {});
        m_portal->setAnswer(QStringLiteral("Print"), {});
        QStringList lines;
        for (int line = 1; line <= 120; ++line)
            lines.append(QStringLiteral("line %1").arg(line));
        open(lines.join(QLatin1Char('\n')));
        QTRY_VERIFY(offered(activityType::print));

        m_controller->choose(offered(activityType::print));

        expectCompletion(activityType::print, true);
        // One form feed for each page.
        const QString printed = textOfPdf(m_portal->calls().last().document);
        QVERIFY2(printed.count(QLatin1Char('\f')) >= 3, qPrintable(printed));
        QStringList found
            = printed.split(QRegularExpression(QStringLiteral("[\n\f]+")), Qt::SkipEmptyParts);
        QCOMPARE(found, lines);
    }

    void printingThatIsCancelledIsNotCompleted_data()
    {
        QTest::addColumn<QString>("request");
        QTest::newRow("in the dialog") << QStringLiteral("PreparePrint");
        QTest::newRow("afterwards") << QStringLiteral("Print");
    }

    void printingThatIsCancelledIsNotCompleted()
    {
        QFETCH(const QString, request);
        startPortal({ printPortal });
        m_portal->setAnswer(QStringLiteral("PreparePrint"), {});
        m_portal->setAnswer(request, cancelled);

        choose(activityType::print);

        expectCompletion(activityType::print, false);
    }

    void printingThatFailsIsAFailure_data() { printingThatIsCancelledIsNotCompleted_data(); }

    void printingThatFailsIsAFailure()
    {
        QFETCH(const QString, request);
        startPortal({ printPortal });
        m_portal->setAnswer(QStringLiteral("PreparePrint"), {});
        m_portal->setAnswer(request, { .code = 2 });

        choose(activityType::print);

        expectFailure(activityType::print, QStringLiteral("did not print"));
    }

    void aPortalThatGoesAwayWhileItPrintsIsAFailure_data()
    {
        printingThatIsCancelledIsNotCompleted_data();
    }

    void aPortalThatGoesAwayWhileItPrintsIsAFailure()
    {
        QFETCH(const QString, request);
        startPortal({ printPortal });
        if (request == QLatin1String("Print"))
            m_portal->setAnswer(QStringLiteral("PreparePrint"), prepared);
        choose(activityType::print);
        awaitCall(request);
        QCOMPARE(m_controller->state(), Controller::Performing);

        m_portal.reset();

        expectFailure(activityType::print, QStringLiteral("did not print"));
    }

    void closingTheSheetClosesThePrintDialog()
    {
        startPortal({ printPortal });
        choose(activityType::print);
        awaitCall(QStringLiteral("PreparePrint"));

        m_controller->close();

        expectCompletion(activityType::print, false);
        QTRY_COMPARE(m_portal->closed(), 1);
        m_portal->answerNow(prepared);
        roundTripToPortal();
        roundTripToPortal(); // where a second request would be, too
        QCOMPARE(m_portal->calls().size(), 1);
    }

    void whatWasHandedToThePrinterIsCompletedWhenTheSheetIsClosed()
    {
        startPortal({ printPortal });
        m_portal->setAnswer(QStringLiteral("PreparePrint"), prepared);
        choose(activityType::print);
        awaitCall(QStringLiteral("Print"));

        m_controller->close();

        expectCompletion(activityType::print, true);
        m_controller.reset();
        roundTripToPortal();
        QCOMPARE(m_portal->closed(), 0);
    }

    void aPortalThatAsksASecondTimeIsTakenBackWhenTheSheetIsClosed()
    {
        startPortal({ printPortal });
        m_portal->setAnswer(QStringLiteral("PreparePrint"), {}); // without a token
        choose(activityType::print);
        awaitCall(QStringLiteral("Print"));

        m_controller->close();

        expectCompletion(activityType::print, false);
        QTRY_COMPARE(m_portal->closed(), 1);
    }
};

int main(int argc, char* argv[])
{
    // KDE Connect is installed, and does not run.
    const PrivateBus bus(
        { { QStringLiteral("org.kde.kdeconnect"), QStringLiteral("/bin/false") } });
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Vexilo"));
    ActivitiesTest test(bus.address());
    return QTest::qExec(&test, argc, argv);
}

#include "ActivitiesTest.moc"
