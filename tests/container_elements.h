#pragma once
// The two element types the container tests run on, each with a way to make a numbered element
// and to read the number back.

#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include <string>

namespace container_elements {

inline Quorvane::String element_of(Quorvane::String*, int number) {
    return Quorvane::String(std::to_string(number).c_str());
}

inline Quorvane::Value element_of(Quorvane::Value*, int number) {
    return Quorvane::Value(number);
}

inline std::string label(const Quorvane::String& item) {
    return item.name();
}

inline std::string label(const Quorvane::Value& item) {
    return item.isset() ? std::to_string(item.get_int32()) : std::string("<default>");
}

template <class T>
T make(int number) {
    return element_of(static_cast<T*>(nullptr), number);
}

using ElementTypes = ::testing::Types<Quorvane::String, Quorvane::Value>;

}  // namespace container_elements
