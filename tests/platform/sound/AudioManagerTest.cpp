#include "AudioManager.h"
#include "CapturedOutput.h"
#include "SoundFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

/// On a device that plays in real time and makes no sound.
class AudioManagerTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    Bundle m_bundle { m_folder.path() };

    void addSound(const QString& name, const QByteArray& content)
    {
        QVERIFY(writeSoundFile(m_folder.filePath(QStringLiteral("Sounds/") + name), content));
    }

    static QByteArrayList linesOfLoading(AudioManager& manager, const QString& name)
    {
        const CapturedOutput output;
        manager.load(name);
        return output.lines();
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("ALSOFT_DRIVERS", "null");
        addSound(QStringLiteral("coin.wav"), wavOf(10s));
        addSound(QStringLiteral("bell.wav"), wavOf(20s));
        addSound(QStringLiteral("notes.txt"), "no sound");
    }

    void atFirstThereIsNoPlayerAndPlayingDoesNothing()
    {
        AudioManager manager(m_bundle);

        const QByteArrayList lines = [&manager] {
            const CapturedOutput output;
            manager.play();
            return output.lines();
        }();

        QCOMPARE(manager.audioPlayer(), nullptr);
        QCOMPARE(lines, QByteArrayList());
    }

    void aLoadedSoundIsReadyAtItsBeginningAndSaysNothing()
    {
        AudioManager manager(m_bundle);

        const QByteArrayList lines = linesOfLoading(manager, QStringLiteral("coin.wav"));

        QCOMPARE(lines, QByteArrayList());
        QVERIFY(manager.audioPlayer());
        QVERIFY(!manager.audioPlayer()->isPlaying());
        QVERIFY(manager.audioPlayer()->currentTime() == 0us);
        QVERIFY(manager.audioPlayer()->duration() == 10s);
    }

    void playingPlaysTheLoadedSound()
    {
        AudioManager manager(m_bundle);
        manager.load(QStringLiteral("coin.wav"));

        manager.play();

        QVERIFY(manager.audioPlayer()->isPlaying());
        QTRY_VERIFY(manager.audioPlayer()->currentTime() > 0us);
    }

    void playingAgainGoesOnFromTheCurrentPosition()
    {
        AudioManager manager(m_bundle);
        manager.load(QStringLiteral("coin.wav"));
        manager.play();
        QTRY_VERIFY(manager.audioPlayer()->currentTime() > 100ms);

        manager.play();

        QVERIFY(manager.audioPlayer()->currentTime() > 100ms);
        QVERIFY(manager.audioPlayer()->isPlaying());
    }

    void eachLoadReplacesThePlayerAlsoWhileItPlays()
    {
        AudioManager manager(m_bundle);
        manager.load(QStringLiteral("coin.wav"));
        manager.play();

        manager.load(QStringLiteral("bell.wav"));

        QVERIFY(manager.audioPlayer()->duration() == 20s);
        QVERIFY(!manager.audioPlayer()->isPlaying());
        manager.play();
        QVERIFY(manager.audioPlayer()->isPlaying());
    }

    void loadingTheSameSoundAgainStartsAnew()
    {
        AudioManager manager(m_bundle);
        manager.load(QStringLiteral("coin.wav"));
        manager.play();
        QTRY_VERIFY(manager.audioPlayer()->currentTime() > 0us);

        manager.load(QStringLiteral("coin.wav"));

        QVERIFY(manager.audioPlayer()->currentTime() == 0us);
    }

    void aNameWithoutAFileIsLoggedAndKeepsThePlayer_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << QStringLiteral("gong.wav");
        QTest::newRow("the ending left out") << QStringLiteral("coin");
        QTest::newRow("in a folder that is missing") << QStringLiteral("short/coin.wav");
        QTest::newRow("in a file as if it were a folder") << QStringLiteral("coin.wav/coin.wav");
        QTest::newRow("out of the bundle") << QStringLiteral("../../../../../../../etc/passwd");
        QTest::newRow("too long for a file") << QString(300, QLatin1Char('x'));
    }

    void aNameWithoutAFileIsLoggedAndKeepsThePlayer()
    {
        QFETCH(const QString, name);
        AudioManager manager(m_bundle);
        manager.load(QStringLiteral("coin.wav"));
        const AVAudioPlayer* const previous = manager.audioPlayer();

        const QByteArrayList lines = linesOfLoading(manager, name);

        QCOMPARE(
            lines, QByteArrayList { "AudioPlayer:  /Sounds/" + name.toUtf8() + " is not found" });
        QCOMPARE(manager.audioPlayer(), previous);
        manager.play();
        QVERIFY(previous->isPlaying());
    }

    void aFileThatIsNoSoundIsLoggedAndKeepsThePlayer_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("a text") << QStringLiteral("notes.txt");
        QTest::newRow("the folder itself") << QString();
        QTest::newRow("a file of the bundle that is no sound") << QStringLiteral("../Info.json");
    }

    void aFileThatIsNoSoundIsLoggedAndKeepsThePlayer()
    {
        QFETCH(const QString, name);
        QVERIFY(writeSoundFile(m_folder.filePath(QStringLiteral("Info.json")), "{}"));
        AudioManager manager(m_bundle);
        manager.load(QStringLiteral("coin.wav"));
        const AVAudioPlayer* const previous = manager.audioPlayer();

        const QByteArrayList lines = linesOfLoading(manager, name);

        QCOMPARE(lines, QByteArrayList { "AudioPlayer cannot load" });
        QCOMPARE(manager.audioPlayer(), previous);
        manager.play();
        QVERIFY(previous->isPlaying());
    }

    void aSoundInAFolderIsFoundByItsWay()
    {
        addSound(QStringLiteral("short/ünï code.wav"), wavOf(1s));
        AudioManager manager(m_bundle);

        manager.load(QStringLiteral("short/ünï code.wav"));

        QVERIFY(manager.audioPlayer());
    }

    void theSoundsOfTheProgramLieInItsMainBundle()
    {
        const QString path = QCoreApplication::applicationDirPath()
            + QLatin1String("/../share/vexilo/Sounds/coin.wav");
        QVERIFY(writeSoundFile(path, wavOf(10s)));
        AudioManager manager;

        manager.load(QStringLiteral("coin.wav"));

        QVERIFY(manager.audioPlayer());
    }

    void aManagerMayBeDestroyedWhileItPlays()
    {
        auto manager = std::make_unique<AudioManager>(m_bundle);
        manager->load(QStringLiteral("coin.wav"));
        manager->play();
        const AVAudioPlayer* const player = manager->audioPlayer();
        QTRY_VERIFY(player->currentTime() > 0us);

        manager.reset();

        AudioManager next(m_bundle);
        next.load(QStringLiteral("coin.wav"));
        next.play();
        QVERIFY(next.audioPlayer()->isPlaying());
    }
};

QTEST_GUILESS_MAIN(AudioManagerTest)
#include "AudioManagerTest.moc"
