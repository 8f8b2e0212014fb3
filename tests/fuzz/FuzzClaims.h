#pragma once

#include <QByteArray>

// What must hold of whatever bytes a server answers with. Each function returns the claim that does
// not hold of them; null where all do.

[[nodiscard]] const char* brokenRecordFileClaim(const QByteArray& bytes);
[[nodiscard]] const char* brokenKeyValueFileClaim(const QByteArray& bytes);

/// The first byte tells the size of the pieces in which the rest comes.
[[nodiscard]] const char* brokenListingClaim(const QByteArray& bytes);
