// Session: the handle, its record, and the fallback of the client's language.

#include "protocol/session.h"

#include <algorithm>
#include <utility>

#include "protocol/data_provider.h"

namespace Quorvane {
namespace {

// The language of a session that has none of its own and gets none from the host.
constexpr const char* kDefaultLocale = "en";
// Stored by a session that leaves the language to its client; the library cannot know it.
constexpr const char* kClientLocale = "client";
// Where the host keeps the default language of its sessions.
constexpr const char* kDefaultLocaleParameter = "DEFAULTLOCALE";
constexpr const char* kDefaultLocaleDomain = "Quorvane";

// The text of the host's answer. A String carries its terminator; any other kind reads as the
// empty text unless a retagging left raw bytes in it, and raw bytes need not end in a NUL, so
// they are read as bytes and no further than they go.
std::string text_of(const Value& answer) {
    if (answer.type() == ValueType::String) {
        return static_cast<const char*>(answer);
    }
    Value bytes(answer);
    bytes.set_type(ValueType::Any);
    bytes.set_type(ValueType::Binary);
    const Binary view = bytes;
    if (view.size == 0) {
        return std::string();
    }
    const char* first = reinterpret_cast<const char*>(view.bytes);
    return std::string(first, std::find(first, first + view.size, '\0'));
}

}  // namespace

const char* SessionImpl::locale() {
    if (locale_.empty() && g_pHost != nullptr) {
        // An answer without text leaves the language empty, so the host is asked again next time.
        locale_ = text_of(g_pHost->get_value(kDefaultLocaleParameter, kDefaultLocaleDomain, true));
    }
    if (locale_.empty() || locale_ == kClientLocale) {
        return kDefaultLocale;
    }
    return locale_.c_str();
}

bool SessionImpl::operator==(const SessionImpl& other) const noexcept {
    return id_ == other.id_ && user_ == other.user_ && socket_id_ == other.socket_id_ &&
           endpoint_info_ == other.endpoint_info_;
}

Session::Session() : impl_(new SessionImpl) {}

Session::Session(const Session& other) : impl_(new SessionImpl(*other.impl_)) {}

Session& Session::operator=(Session other) {
    std::swap(impl_, other.impl_);
    return *this;
}

Session::~Session() {
    delete impl_;
    impl_ = nullptr;
}

bool Session::operator==(const Session& other) const {
    return *impl_ == *other.impl_;
}

bool Session::operator!=(const Session& other) const {
    return !(*impl_ == *other.impl_);
}

const char* Session::id() const {
    return impl_->id_.c_str();
}

void Session::set_id(const char* id) {
    impl_->id_ = id;
}

const char* Session::user() const {
    return impl_->user_.c_str();
}

void Session::set_user(const char* user) {
    impl_->user_ = user;
}

const char* Session::locale() const {
    return impl_->locale();
}

void Session::set_locale(const char* locale) {
    impl_->locale_ = locale;
}

unsigned int Session::socket_id() const {
    return impl_->socket_id_;
}

void Session::set_socket_id(unsigned int socket_id) {
    impl_->socket_id_ = socket_id;
}

EndpointInfo Session::endpoint_info() const {
    return impl_->endpoint_info_;
}

void Session::set_endpoint_info(EndpointInfo endpoint_info) {
    impl_->endpoint_info_ = endpoint_info;
}

}  // namespace Quorvane
