// Context: the handle and its record.

#include "protocol/context.h"

#include <utility>

namespace Quorvane {

bool ContextImpl::operator==(const ContextImpl& other) const noexcept {
    return session == other.session && hash == other.hash &&
           subscription_id == other.subscription_id && request_type == other.request_type &&
           domain == other.domain;
}

Context::Context() : impl_(new ContextImpl) {}

// Delegating, so that the implementation is released should copying the domain throw.
Context::Context(const char* domain) : Context() {
    impl_->domain = domain;
}

Context::Context(const Context& other) : impl_(new ContextImpl(*other.impl_)) {}

Context& Context::operator=(Context other) {
    std::swap(impl_, other.impl_);
    return *this;
}

Context::~Context() {
    delete impl_;
    impl_ = nullptr;
}

bool Context::operator==(const Context& other) const {
    return *impl_ == *other.impl_;
}

bool Context::operator!=(const Context& other) const {
    return !(*impl_ == *other.impl_);
}

Session& Context::session() {
    return impl_->session;
}

const Session& Context::session() const {
    return impl_->session;
}

void Context::set_session(const Session& session) {
    impl_->session = session;
}

const char* Context::domain() const {
    return impl_->domain.c_str();
}

void Context::set_domain(const char* domain) {
    impl_->domain = domain;
}

RequestType Context::request_type() const {
    return impl_->request_type;
}

void Context::set_request_type(RequestType request_type) {
    impl_->request_type = request_type;
}

unsigned int Context::hash() const {
    return impl_->hash;
}

void Context::set_hash(unsigned int hash) {
    impl_->hash = hash;
}

unsigned int Context::subscription_id() const {
    return impl_->subscription_id;
}

void Context::set_subscription_id(unsigned int subscription_id) {
    impl_->subscription_id = subscription_id;
}

}  // namespace Quorvane
