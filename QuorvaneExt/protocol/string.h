#pragma once
// Private to the library: not part of the API.

#include <string>

namespace Quorvane {

// The record behind String: its text and nothing else.
class StringImpl {
public:
    std::string text;
};

}  // namespace Quorvane
