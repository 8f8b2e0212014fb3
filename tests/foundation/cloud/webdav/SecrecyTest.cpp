#include "ApacheServer.h"
#include "FaultyServer.h"
#include "WebDavStore.h"

#include <QBuffer>
#include <QLoggingCategory>
#include <QTemporaryFile>
#include <QTest>

#include <unistd.h>

using namespace mirror;
using namespace std::chrono_literals;

namespace {

const QString user = QStringLiteral("ann");
const QString password = QStringLiteral("Ziegenkäse-0815 %41");

/// Takes what the process writes to its output and its error output, for as long as it lives.
class AllOutput {
public:
    AllOutput()
    {
        (void)std::fflush(nullptr);
        if (m_file.open()) {
            ::dup2(m_file.handle(), STDOUT_FILENO);
            ::dup2(m_file.handle(), STDERR_FILENO);
        }
    }
    ~AllOutput()
    {
        (void)std::fflush(nullptr);
        ::dup2(m_output, STDOUT_FILENO);
        ::dup2(m_errors, STDERR_FILENO);
        ::close(m_output);
        ::close(m_errors);
    }
    AllOutput(const AllOutput&) = delete;
    AllOutput& operator=(const AllOutput&) = delete;

    [[nodiscard]] QByteArray bytes()
    {
        (void)std::fflush(nullptr);
        QFile file(m_file.fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

private:
    QTemporaryFile m_file;
    int m_output = ::dup(STDOUT_FILENO);
    int m_errors = ::dup(STDERR_FILENO);
};

template <class T> QString sentence(const Outcome<T>& outcome)
{
    return outcome ? QString() : outcome.error().sentence;
}

/// The sentences of all operations at the place.
QString sentencesAt(const QUrl& root, WebDavAccount::SelfSigned selfSigned)
{
    WebDavStore store({ root, user, password, selfSigned, {} }, { "Test/1", 200ms });
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const QString name = QStringLiteral("name");
    return QStringList { sentence(store.list(QString())), sentence(store.get(name, buffer, 100)),
        sentence(store.put(name, "bytes")), sentence(store.makeCollection(name)),
        sentence(store.remove(name, Trash::Skip)) }
        .join(QLatin1Char('\n'));
}

/// A server that sends all it was sent back, wherever it can.
FaultyServer::Rule echo(const QByteArray& status)
{
    return [status](const FaultyServer::Request& request) {
        const QByteArray secret = request.header("Authorization");
        return FaultyServer::answer(status + ' ' + secret, secret,
            { "Location: http://" + user.toUtf8() + ':' + password.toUtf8() + "@cloud.invalid/",
                "WWW-Authenticate: Basic realm=\"" + secret + '"', "Retry-After: " + secret });
    };
}

/// The forms in which the password could show.
QByteArrayList forms()
{
    const QByteArray plain = password.toUtf8();
    const QByteArray credentials = user.toUtf8() + ':' + plain;
    return { plain, "Ziegenk", plain.toBase64(), plain.toPercentEncoding(), plain.toHex(),
        credentials.toBase64() };
}

} // namespace

class SecrecyTest : public QObject {
    Q_OBJECT

private:
    ApacheServer m_apache;

    /// Everything that is printed, with all logging on, and returned by failing requests.
    [[nodiscard]] QByteArray everythingSaid() const
    {
        QStringList sentences;
        AllOutput output;
        qInstallMessageHandler(nullptr);
        QLoggingCategory::setFilterRules(QStringLiteral("*=true"));
        for (const char* status : { "200", "207", "301", "401", "403", "407", "500", "503" }) {
            const FaultyServer server(echo(status));
            QUrl url = server.url();
            url.setUserName(user);
            url.setPassword(password);
            sentences += sentencesAt(url, WebDavAccount::SelfSigned::Refuse);
        }
        sentences += sentencesAt(m_apache.plainUrl(), WebDavAccount::SelfSigned::Refuse);
        sentences += sentencesAt(m_apache.secureUrl(), WebDavAccount::SelfSigned::Refuse);
        sentences += sentencesAt(m_apache.secureUrl(), WebDavAccount::SelfSigned::AcceptPinned);
        sentences += sentencesAt(
            QUrl(QStringLiteral("http://cloud.invalid/")), WebDavAccount::SelfSigned::Refuse);
        qWarning("The log is read.");
        QLoggingCategory::setFilterRules(QString());
        return output.bytes() + sentences.join(QLatin1Char('\n')).toUtf8();
    }

private Q_SLOTS:
    void thePasswordIsNeitherPrintedNorReturned()
    {
        const QByteArray said = everythingSaid();

        QVERIFY(said.contains("The log is read."));
        QVERIFY(said.contains("PUT \"name\": the server answered 401"));
        QVERIFY(said.contains("certificate is not trusted"));
        for (const QByteArray& form : forms())
            QVERIFY2(!said.contains(form), said.constData());
    }
};

QTEST_GUILESS_MAIN(SecrecyTest)
#include "SecrecyTest.moc"
