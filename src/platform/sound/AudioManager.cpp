#include "AudioManager.h"

#include "Diagnostics.h"

AudioManager::AudioManager(const Bundle& bundle, QObject* parent)
    : QObject(parent)
    , m_bundle(bundle)
{
}

void AudioManager::load(const QString& filename)
{
    const QString resource = QLatin1String("/Sounds/") + filename;
    const std::optional<QString> path = m_bundle.pathForResource(resource, QString());
    if (!path) {
        // Two items of a line, which a blank parts: the first one ends with a blank of its own.
        printDiagnostic("AudioPlayer:  " + resource.toStdString() + " is not found");
        return;
    }
    std::unique_ptr<AVAudioPlayer> player = AVAudioPlayer::open(*path);
    if (!player) {
        printDiagnostic("AudioPlayer cannot load");
        return;
    }
    m_audioPlayer = std::move(player);
}

void AudioManager::play()
{
    if (m_audioPlayer)
        m_audioPlayer->play();
}
