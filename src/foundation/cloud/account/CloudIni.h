#pragma once

#include "CloudAccount.h"

#include <QByteArray>

namespace mirror {

/// Reads what the user wrote into cloud.ini: lines of "key=value" with the keys url, user and
/// accept_self_signed, of which the last may be missing. Values stand as they are meant, without
/// escapes. Empty lines, comments (# or ;), section headings and unknown keys say nothing. A
/// password is not taken from it, wherever it stands, and the finding says so.
[[nodiscard]] AccountFinding readCloudIni(const QByteArray& bytes);

} // namespace mirror
