#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>

// Sounds that tests make for themselves.

/// A WAV file: 16 bits, 8000 samples a second, silence of the given length.
[[nodiscard]] QByteArray wavOf(std::chrono::milliseconds length, int channels = 1);

/// Writes a file and the folders on its way; false where that fails.
[[nodiscard]] bool writeSoundFile(const QString& path, const QByteArray& content);
