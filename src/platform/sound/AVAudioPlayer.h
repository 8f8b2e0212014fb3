#pragma once

#include <QString>

#include <chrono>
#include <memory>

/// Plays one sound, which it holds decoded in memory: for sounds of seconds. WAV, Ogg Vorbis and
/// FLAC, with one or two channels.
///
/// It plays on the machine's default device, which is opened for the first player and closed after
/// the last. A machine without one still has players: whether a file is a sound does not depend on
/// the machine. Their sound is not heard and never begins to play, and no call fails or waits for
/// it. A device that is plugged in later serves players made after all earlier ones are gone.
class AVAudioPlayer {
public:
    /// A player at the beginning of the file's sound, or nothing where the file cannot be read
    /// whole as one: missing, not readable, empty, cut off, or of another format. The file is not
    /// needed afterwards.
    [[nodiscard]] static std::unique_ptr<AVAudioPlayer> open(const QString& path);

    /// Ends the sound at once.
    ~AVAudioPlayer();
    AVAudioPlayer(const AVAudioPlayer&) = delete;
    AVAudioPlayer& operator=(const AVAudioPlayer&) = delete;

    /// Goes on from the current position; a sound that plays already just goes on, and one that has
    /// ended begins anew. Returns at once.
    void play();
    /// Keeps the position.
    void pause();

    [[nodiscard]] bool isPlaying() const;
    /// The position in the sound: at the beginning before it is played and after it has ended.
    [[nodiscard]] std::chrono::microseconds currentTime() const;
    [[nodiscard]] std::chrono::microseconds duration() const;

private:
    AVAudioPlayer();

    struct Sound; // keeps SFML out of this header
    std::unique_ptr<Sound> m_sound;
};
