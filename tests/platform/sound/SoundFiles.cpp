#include "SoundFiles.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

QByteArray wavOf(std::chrono::milliseconds length, int channels)
{
    constexpr quint32 samplesPerSecond = 8000;
    const auto frame = static_cast<quint16>(2 * channels);
    const auto size = static_cast<quint32>(samplesPerSecond * length.count() / 1000 * frame);

    QByteArray wav;
    QDataStream stream(&wav, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + size);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1) << quint16(channels) << samplesPerSecond
           << quint32(samplesPerSecond * frame) << frame << quint16(16);
    stream.writeRawData("data", 4);
    stream << size;
    return wav + QByteArray(size, '\0');
}

bool writeSoundFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
        && file.write(content) == content.size();
}
