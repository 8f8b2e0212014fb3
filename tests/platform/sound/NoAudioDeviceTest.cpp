#include "AVAudioPlayer.h"
#include "SoundFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

class NoAudioDeviceTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;

private Q_SLOTS:
    void initTestCase() { qputenv("ALSOFT_DRIVERS", "none-of-them"); }

    void aSoundIsLoadedAndPlaysUnheard()
    {
        const QString path = m_folder.filePath(QStringLiteral("coin.wav"));
        QVERIFY(writeSoundFile(path, wavOf(10s)));

        const auto player = AVAudioPlayer::open(path);
        QVERIFY(player);
        player->play();
        player->play();
        player->pause();

        QVERIFY(player->duration() == 10s);
        QVERIFY(!player->isPlaying());
        QVERIFY(player->currentTime() == 0us);
    }

    void aFileThatIsNoSoundIsStillTold()
    {
        const QString path = m_folder.filePath(QStringLiteral("notes.txt"));
        QVERIFY(writeSoundFile(path, "no sound"));

        QCOMPARE(AVAudioPlayer::open(path), nullptr);
    }
};

QTEST_GUILESS_MAIN(NoAudioDeviceTest)
#include "NoAudioDeviceTest.moc"
