#include "AVAudioPlayer.h"

#include <QFile>
#include <QFileInfo>

#include <SFML/Audio/InputSoundFile.hpp>
#include <SFML/Audio/Sound.hpp>
#include <SFML/Audio/SoundBuffer.hpp>
#include <SFML/System/Err.hpp>

#include <array>
#include <vector>

struct AVAudioPlayer::Sound {
    sf::SoundBuffer buffer;
    sf::Sound source; // refers to the buffer, and so is destroyed before it
};

namespace {

/// Empty where it is no file that can be read. SFML itself would crash where reading fails, as it
/// does in a folder.
QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray content = file.readAll();
    return file.error() == QFile::NoError ? content : QByteArray();
}

/// All samples of the file, or none where it has fewer than it claims; who writes into a pipe
/// cannot come back to claim any. They are read piece by piece, because a broken file may claim
/// more than there is memory for.
std::vector<sf::Int16> samplesOf(sf::InputSoundFile& file)
{
    std::vector<sf::Int16> samples;
    std::array<sf::Int16, 16384> piece {};
    while (const auto count = file.read(piece.data(), piece.size()))
        samples.insert(samples.end(), piece.begin(), piece.begin() + static_cast<qsizetype>(count));
    if (samples.size() < file.getSampleCount())
        samples.clear();
    return samples;
}

/// SFML writes on standard error what is told to the caller here by a missing player.
void silenceSfml()
{
    static const bool silent = [] {
        sf::err().rdbuf(nullptr);
        return true;
    }();
    (void)silent;
}

} // namespace

AVAudioPlayer::AVAudioPlayer()
    : m_sound(std::make_unique<Sound>())
{
}

AVAudioPlayer::~AVAudioPlayer() = default;

std::unique_ptr<AVAudioPlayer> AVAudioPlayer::open(const QString& path)
{
    silenceSfml();
    const QByteArray content = contentOf(path);
    sf::InputSoundFile file;
    if (content.isEmpty()
        || !file.openFromMemory(content.constData(), static_cast<std::size_t>(content.size())))
        return nullptr;
    const std::vector<sf::Int16> samples = samplesOf(file);
    std::unique_ptr<AVAudioPlayer> player(new AVAudioPlayer);
    Sound& sound = *player->m_sound;
    if (samples.empty()
        || !sound.buffer.loadFromSamples(
            samples.data(), samples.size(), file.getChannelCount(), file.getSampleRate()))
        return nullptr;
    sound.source.setBuffer(sound.buffer);
    return player;
}

void AVAudioPlayer::play()
{
    // SFML would begin anew.
    if (!isPlaying())
        m_sound->source.play();
}

void AVAudioPlayer::pause() { m_sound->source.pause(); }

bool AVAudioPlayer::isPlaying() const { return m_sound->source.getStatus() == sf::Sound::Playing; }

std::chrono::microseconds AVAudioPlayer::currentTime() const
{
    return std::chrono::microseconds(m_sound->source.getPlayingOffset().asMicroseconds());
}

std::chrono::microseconds AVAudioPlayer::duration() const
{
    return std::chrono::microseconds(m_sound->buffer.getDuration().asMicroseconds());
}
