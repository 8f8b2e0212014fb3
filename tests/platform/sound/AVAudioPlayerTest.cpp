#include "AVAudioPlayer.h"
#include "DeathTest.h"
#include "SoundFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <SFML/Audio/OutputSoundFile.hpp>

#include <vector>

using namespace std::chrono_literals;

/// On a device that plays in real time and makes no sound.
class AVAudioPlayerTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString fileOf(const QByteArray& content)
    {
        const QString path = m_folder.filePath(QStringLiteral("sound"));
        return writeSoundFile(path, content) ? path : QString();
    }

    /// In the format that the name ends in.
    static bool writeSecondOfSilence(const QString& path)
    {
        const std::vector<sf::Int16> silence(8000);
        sf::OutputSoundFile file;
        if (!file.openFromFile(path.toStdString(), 8000, 1))
            return false;
        file.write(silence.data(), silence.size());
        return true;
    }

    static QByteArray withBytes(QByteArray wav, qsizetype at, const QByteArray& bytes)
    {
        return wav.replace(at, bytes.size(), bytes);
    }

private Q_SLOTS:
    void initTestCase() { qputenv("ALSOFT_DRIVERS", "null"); }

    void theClockGoesOnlyWhileTheSoundPlays()
    {
        const auto player = AVAudioPlayer::open(fileOf(wavOf(10s)));

        QVERIFY(player->currentTime() == 0us);
        player->play();
        QTRY_VERIFY(player->currentTime() > 50ms);
        player->pause();

        const auto paused = player->currentTime();
        QVERIFY(!player->isPlaying());
        QVERIFY(paused > 50ms && paused < 10s);
        const auto other = AVAudioPlayer::open(fileOf(wavOf(10s)));
        other->play();
        QTRY_VERIFY(other->currentTime() > 50ms);
        QVERIFY(player->currentTime() == paused);
    }

    void aPausedSoundGoesOnWhereItWas()
    {
        const auto player = AVAudioPlayer::open(fileOf(wavOf(10s)));
        player->play();
        QTRY_VERIFY(player->currentTime() > 50ms);
        player->pause();
        const auto paused = player->currentTime();

        player->play();

        QVERIFY(player->currentTime() >= paused);
        QTRY_VERIFY(player->currentTime() > paused);
    }

    void aSoundThatPlaysIsNotBegunAnew()
    {
        const auto player = AVAudioPlayer::open(fileOf(wavOf(10s)));
        player->play();
        QTRY_VERIFY(player->currentTime() > 100ms);

        player->play();

        QVERIFY(player->isPlaying());
        QVERIFY(player->currentTime() > 100ms);
    }

    void anEndedSoundIsAtItsBeginningAndPlaysAgain()
    {
        const auto player = AVAudioPlayer::open(fileOf(wavOf(1s)));
        player->play();
        QTRY_VERIFY(!player->isPlaying());
        QVERIFY(player->currentTime() == 0us);

        player->play();

        QVERIFY(player->isPlaying());
        QTRY_VERIFY(player->currentTime() > 0us);
        QVERIFY(player->currentTime() < 1s);
    }

    void twoSoundsPlayBesideEachOther()
    {
        const auto one = AVAudioPlayer::open(fileOf(wavOf(10s)));
        const auto other = AVAudioPlayer::open(fileOf(wavOf(10s, 2)));

        one->play();
        other->play();

        QTRY_VERIFY(one->currentTime() > 0us && other->currentTime() > 0us);
    }

    void theFileIsNotNeededOnceItIsOpen()
    {
        const QString path = fileOf(wavOf(10s));
        const auto player = AVAudioPlayer::open(path);
        QVERIFY(QFile::remove(path));

        player->play();

        QTRY_VERIFY(player->currentTime() > 0us);
    }

    void otherFormatsAreSounds_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("Ogg Vorbis") << QStringLiteral("sound.ogg");
        QTest::newRow("FLAC") << QStringLiteral("sound.flac");
    }

    void otherFormatsAreSounds()
    {
        QFETCH(const QString, name);
        const QString path = m_folder.filePath(name);
        QVERIFY(writeSecondOfSilence(path));

        const auto player = AVAudioPlayer::open(path);

        QVERIFY(player);
        QVERIFY(player->duration() == 1s);
    }

    void aFileWhoseWriterCouldNotCountTheSamplesIsASound()
    {
        const QString path = m_folder.filePath(QStringLiteral("piped.flac"));
        QVERIFY(writeSecondOfSilence(path));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray content = file.readAll();
        // The 36 bits before the checksum, which is unknown then, too.
        content[21] = static_cast<char>(content.at(21) & 0xF0);
        content.replace(22, 20, QByteArray(20, '\0'));
        QVERIFY(file.seek(0) && file.write(content) == content.size());
        file.close();

        const auto player = AVAudioPlayer::open(path);

        QVERIFY(player);
        QVERIFY(player->duration() == 1s);
    }

    void whatIsNoWholeSoundIsNotOpened_data()
    {
        const QByteArray wav = wavOf(100ms);
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a text") << QByteArray("no sound");
        QTest::newRow("the first bytes") << wav.first(4);
        QTest::newRow("half a header") << wav.first(30);
        QTest::newRow("no samples") << wavOf(0ms);
        QTest::newRow("half the samples") << wav.first(wav.size() / 2);
        QTest::newRow("four gigabytes of samples, it says")
            << withBytes(wav, 40, QByteArray("\xfe\xff\xff\xff", 4));
        QTest::newRow("without channels") << withBytes(wav, 22, QByteArray("\0\0", 2));
        QTest::newRow("with seventeen channels") << withBytes(wav, 22, QByteArray("\x11\0", 2));
        QTest::newRow("no samples a second") << withBytes(wav, 24, QByteArray("\0\0\0\0", 4));
        QTest::newRow("seven bits") << withBytes(wav, 34, QByteArray("\7\0", 2));
    }

    void whatIsNoWholeSoundIsNotOpened()
    {
        QFETCH(const QByteArray, content);

        QCOMPARE(AVAudioPlayer::open(fileOf(content)), nullptr);
    }

    void whatIsNoFileIsNotOpened()
    {
        QCOMPARE(AVAudioPlayer::open(m_folder.path()), nullptr);
        QCOMPARE(AVAudioPlayer::open(m_folder.filePath(QStringLiteral("missing"))), nullptr);
        QCOMPARE(AVAudioPlayer::open(QString()), nullptr);
    }

    void nothingIsWrittenOnStandardErrorAboutAFileThatIsNoSound()
    {
        const QString path = fileOf("no sound");

        const Death noDeath = deathOf([&path] { (void)AVAudioPlayer::open(path); });

        QVERIFY(!noDeath.aborted);
        QCOMPARE(noDeath.message, QByteArray());
    }
};

QTEST_GUILESS_MAIN(AVAudioPlayerTest)
#include "AVAudioPlayerTest.moc"
