#pragma once

#include <functional>

/// A value that belongs to somebody else, who must outlive this.
template <class Value> struct Binding {
    std::function<Value()> get;
    std::function<void(const Value&)> set;
};
