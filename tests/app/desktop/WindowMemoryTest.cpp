#include "WindowMemory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <functional>
#include <memory>
#include <sys/stat.h>

namespace {

const QSize least(200, 300);

std::unique_ptr<QWindow> makeWindow()
{
    auto window = std::make_unique<QWindow>();
    window->setMinimumSize(least);
    window->resize(240, 320);
    return window;
}

} // namespace

/// On a platform with one screen of 800 by 800 points, whose windows have no frames.
class WindowMemoryTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;

    void write(const QByteArray& text) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_file).path()));
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    [[nodiscard]] QByteArray text() const
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Where the next window is after this change of a shown one, that is closed then.
    [[nodiscard]] QRect nextAfter(const std::function<void(QWindow&)>& change) const
    {
        const auto window = makeWindow();
        WindowMemory memory(*window, m_file);
        memory.show();
        change(*window);
        window->close();
        return next();
    }

    [[nodiscard]] QRect next() const
    {
        const auto window = makeWindow();
        WindowMemory memory(*window, m_file);
        memory.show();
        return window->geometry();
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_file = m_folder->filePath(QStringLiteral("state/Company/Program/window.ini"));
    }

    void theFirstWindowIsAsLargeAsItWasMade() { QCOMPARE(next().size(), QSize(240, 320)); }

    void theNextWindowIsWhereTheLastOneWasClosed()
    {
        const QRect next = nextAfter([](QWindow& window) { window.setGeometry(30, 40, 400, 500); });

        QCOMPARE(next, QRect(30, 40, 400, 500));
    }

    void aCrashKeepsWhatHasRested()
    {
        const auto window = makeWindow();
        WindowMemory memory(*window, m_file);
        memory.show();
        window->setGeometry(30, 40, 400, 500);

        QTRY_VERIFY(text().contains("width=400"));

        QCOMPARE(next(), QRect(30, 40, 400, 500));
    }

    void aMaximisedWindowIsMaximisedAgainAndGoesBackToWhereItWas()
    {
        (void)nextAfter([](QWindow& window) { window.setGeometry(30, 40, 400, 500); });
        (void)nextAfter([](QWindow& window) {
            QCOMPARE(window.geometry(), QRect(30, 40, 400, 500));
            window.showMaximized();
            window.setGeometry(0, 0, 800, 800); // as a window manager does
        });

        QVERIFY(text().contains("width=400\n"));
        const auto window = makeWindow();
        WindowMemory memory(*window, m_file);
        memory.show();
        QCOMPARE(window->windowStates(), Qt::WindowMaximized);
    }

    void aMinimisedWindowIsRememberedAsItWasBefore()
    {
        const QRect next = nextAfter([](QWindow& window) {
            window.setGeometry(30, 40, 400, 500);
            window.setWindowStates(Qt::WindowMinimized);
        });

        QCOMPARE(next, QRect(30, 40, 400, 500));
    }

    void theWindowIsBroughtBackOntoTheScreen()
    {
        write("x=5000\ny=790\nwidth=400\nheight=500\n");
        QCOMPARE(next(), QRect(200, 150, 400, 500));

        write("x=500\ny=790\nwidth=400\nheight=500\n");
        QCOMPARE(next(), QRect(400, 300, 400, 500));
    }

    void theWindowIsNeverSmallerThanItMayBe()
    {
        write("x=50\ny=60\nwidth=10\nheight=10\n");

        QCOMPARE(next(), QRect(QPoint(50, 60), least));
    }

    void aFileOfSomethingElseIsIgnoredAndReplaced()
    {
        write(QByteArray(100000, '\xff'));
        QCOMPARE(next().size(), QSize(240, 320));

        const QRect next = nextAfter([](QWindow& window) { window.setGeometry(30, 40, 400, 500); });

        QCOMPARE(next, QRect(30, 40, 400, 500));
    }

    void aPipeInThePlaceOfTheFileIsNotWaitedFor()
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_file).path()));
        QCOMPARE(::mkfifo(QFile::encodeName(m_file).constData(), S_IRWXU), 0);

        QCOMPARE(next().size(), QSize(240, 320));
    }

    void aFolderThatCannotBeMadeIsHarmless()
    {
        QFile obstacle(m_folder->filePath(QStringLiteral("state")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));

        const QRect next = nextAfter([](QWindow& window) { window.setGeometry(30, 40, 400, 500); });

        QCOMPARE(next.size(), QSize(240, 320));
    }

    void theFoldersAreForNobodyElse()
    {
        (void)nextAfter([](QWindow& window) { window.setGeometry(30, 40, 400, 500); });

        const auto mine = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QCOMPARE(QFileInfo(m_file).permissions(), QFile::Permissions(mine));
        QCOMPARE(QFileInfo(QFileInfo(m_file).path()).permissions(),
            QFile::Permissions(mine | QFile::ExeOwner | QFile::ExeUser));
        QCOMPARE(QDir(QFileInfo(m_file).path()).entryList(QDir::Files),
            QStringList { QStringLiteral("window.ini") });
    }

    void theFileIsInTheFolderForStates()
    {
        QGuiApplication::setOrganizationName(QStringLiteral("Company"));
        QGuiApplication::setApplicationName(QStringLiteral("Program"));
        qputenv("HOME", "/home/someone");

        qputenv("XDG_STATE_HOME", "/states");
        QCOMPARE(WindowMemory::defaultFile(), QStringLiteral("/states/Company/Program/window.ini"));
        const QString usual
            = QStringLiteral("/home/someone/.local/state/Company/Program/window.ini");
        qputenv("XDG_STATE_HOME", "relative/states");
        QCOMPARE(WindowMemory::defaultFile(), usual);
        qputenv("XDG_STATE_HOME", "");
        QCOMPARE(WindowMemory::defaultFile(), usual);
        qunsetenv("XDG_STATE_HOME");
        QCOMPARE(WindowMemory::defaultFile(), usual);
    }
};

QTEST_MAIN(WindowMemoryTest)
#include "WindowMemoryTest.moc"
