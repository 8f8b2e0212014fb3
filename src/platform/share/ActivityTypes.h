#pragma once

#include "Activity.h"

/// The destinations that a desktop may have for a plain text.
namespace activityType {

inline const ActivityType copy = QStringLiteral("copy");
inline const ActivityType copyExcerpt = QStringLiteral("copyExcerpt");
inline const ActivityType qrCode = QStringLiteral("qrCode");
inline const ActivityType email = QStringLiteral("email");
inline const ActivityType textMessage = QStringLiteral("textMessage");
inline const ActivityType sendToDevice = QStringLiteral("sendToDevice");
inline const ActivityType saveText = QStringLiteral("saveText");
inline const ActivityType savePdf = QStringLiteral("savePdf");
inline const ActivityType print = QStringLiteral("print");

} // namespace activityType
