#pragma once
// Private to the library: not part of the API.

#include <string>

#include "QuorvaneExtData.h"

namespace Quorvane {

// The record behind ResultPair: the code, then the text.
class ResultPairImpl {
public:
    ErrorValue result = HMI_E_SUCCESS;
    std::string text;
};

}  // namespace Quorvane
