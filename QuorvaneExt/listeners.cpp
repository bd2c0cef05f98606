// The listener interfaces' fixed families and the names of the families.

#include <iterator>

#include "QuorvaneExtApi.h"

namespace Quorvane {
namespace {

// Indexed by the number of the family.
constexpr const char* kListenerTypeNames[] = {
    "Config",
    "EventLocalization",
    "Alarm",
    "Request",
    "Subscription",
    "Session",
    "Shutdown",
    "Historize",
    "Auth",
    "File",
    "Command",
    "Script",
    "CommitConfig",
    "ExportConfig",
    "Event",
    "AsyncRequest",
    "AsyncEventLocalization",
    "Http",
    "AsyncHttp",
};

}  // namespace

std::string listener_type_to_string(ListenerType type) {
    const auto number = static_cast<std::int32_t>(type);
    if (number < 0 || number >= static_cast<std::int32_t>(std::size(kListenerTypeNames))) {
        return std::string();
    }
    return kListenerTypeNames[number];
}

IQuorvaneListener::~IQuorvaneListener() {}

ListenerType IQuorvaneConfigListener::type() const {
    return ListenerType::Config;
}

ListenerType IQuorvaneEventLocalizationListener::type() const {
    return ListenerType::EventLocalization;
}

ListenerType IQuorvaneAlarmProviderListener::type() const {
    return ListenerType::Alarm;
}

ListenerType IQuorvaneRequestListener::type() const {
    return ListenerType::Request;
}

ListenerType IQuorvaneSubscriptionListener::type() const {
    return ListenerType::Subscription;
}

ListenerType IQuorvaneSessionListener::type() const {
    return ListenerType::Session;
}

ListenerType IQuorvaneShutdownListener::type() const {
    return ListenerType::Shutdown;
}

ListenerType IQuorvaneAuthListener::type() const {
    return ListenerType::Auth;
}

ListenerType IQuorvaneExportListener::type() const {
    return ListenerType::ExportConfig;
}

ListenerType IQuorvaneEventListener::type() const {
    return ListenerType::Event;
}

ListenerType IQuorvaneAsyncRequestListener::type() const {
    return ListenerType::AsyncRequest;
}

ListenerType IQuorvaneAsyncEventLocalizationListener::type() const {
    return ListenerType::AsyncEventLocalization;
}

ListenerType IQuorvaneHttpListener::type() const {
    return ListenerType::Http;
}

ListenerType IQuorvaneAsyncHttpListener::type() const {
    return ListenerType::AsyncHttp;
}

}  // namespace Quorvane
