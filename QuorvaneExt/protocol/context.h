#pragma once
// Private to the library: not part of the API.

#include <string>

#include "QuorvaneExtApi.h"

namespace Quorvane {

// The record behind Context.
class ContextImpl {
public:
    virtual ~ContextImpl() = default;

    Session session;
    std::uint32_t hash = 0;
    std::uint32_t subscription_id = 0;
    RequestType request_type = REQUEST_TYPE_DEFAULT;
    std::string domain;

    // Noexcept on purpose: a failure while comparing two calls ends the process.
    bool operator==(const ContextImpl& other) const noexcept;
};

}  // namespace Quorvane
