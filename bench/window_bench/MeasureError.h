#pragma once

#include <stdexcept>

/// Something could not be measured; the message says what. It ends the whole benchmark, since a
/// table with figures left out would be read as a complete one.
class MeasureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
