#pragma once

#include "AVAudioPlayer.h"
#include "Bundle.h"

#include <QObject>

#include <memory>

/// Plays short sounds that lie in the bundle's folder Sounds: load one by its file name, then play
/// it as often as is wanted. For the main thread.
class AudioManager : public QObject {
    Q_OBJECT

public:
    explicit AudioManager(const Bundle& bundle = Bundle::main(), QObject* parent = nullptr);

    /// The sound loaded last, absent until one was. Owned by this object, and gone with the next
    /// load that succeeds.
    [[nodiscard]] AVAudioPlayer* audioPlayer() const { return m_audioPlayer.get(); }

    /// Replaces the player, whose sound stops, by one for the file. The name is a whole one, with
    /// its ending. Where the bundle has no such file, or it is no sound, a diagnostic line says so,
    /// and the player stays as it was.
    Q_INVOKABLE void load(const QString& filename);

    /// Plays from the player's current position; without a player, nothing happens.
    Q_INVOKABLE void play();

private:
    Bundle m_bundle;
    std::unique_ptr<AVAudioPlayer> m_audioPlayer;
};
