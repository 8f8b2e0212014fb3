#pragma once

#include "AmountStyle.h"

struct Split;
struct SplitInputs;

/// The split in plain words, ready to be pasted into a message. Lines are parted by line feeds;
/// where the text ends with the share, it ends in one.
[[nodiscard]] QString splitSummary(
    const SplitInputs& inputs, const Split& split, AmountStyle style);
