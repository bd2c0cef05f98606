#pragma once
// Private to the library: not part of the API.

#include <string>

#include "QuorvaneExtApi.h"

namespace Quorvane {

// The record behind Session. Plain data: no virtual operations.
class SessionImpl {
public:
    std::string id_;
    std::string user_;
    // The stored language; empty until set, or until the host's default has been read into it.
    std::string locale_;
    std::uint32_t socket_id_ = 0;
    EndpointInfo endpoint_info_ = ENDPOINT_INFO_DEFAULT;

    // The effective language (see Session::locale). This is the library's only call to the host.
    const char* locale();

    // Identity of the client; the language is a preference, not part of who the client is.
    bool operator==(const SessionImpl& other) const noexcept;
};

}  // namespace Quorvane
