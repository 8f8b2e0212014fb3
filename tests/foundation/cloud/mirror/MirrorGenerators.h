#pragma once

#include "KeyValue.h"
#include "MirrorFixture.h"

#include <rapidcheck.h>

// Arbitrary states from few times, devices, texts and unknown keys, so that they meet.

[[nodiscard]] rc::Gen<mirror::UnknownKeys> arbitraryUnknownKeys();
[[nodiscard]] rc::Gen<mirror::RecordState> arbitraryState();
[[nodiscard]] rc::Gen<mirror::Record> arbitraryRecord();
[[nodiscard]] rc::Gen<mirror::KeyValueState> arbitraryKeyValueState();
