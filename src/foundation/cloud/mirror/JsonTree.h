#pragma once

#include "JsonLine.h"

namespace mirror {

/// The value that the text is, within the limits of nesting, texts and values. For readJsonLine(),
/// which refuses beforehand what the parser behind this takes too lightly.
[[nodiscard]] std::optional<JsonValue> readJsonTree(QByteArrayView json);

} // namespace mirror
