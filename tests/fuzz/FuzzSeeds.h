#pragma once

#include <QByteArrayList>

// Bytes to start from: valid, at the limits, and damaged.

[[nodiscard]] QByteArrayList recordFileSeeds();
[[nodiscard]] QByteArrayList keyValueFileSeeds();
[[nodiscard]] QByteArrayList listingSeeds();
