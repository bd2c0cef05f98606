#include "protocol/string.h"

#include <utility>

#include "QuorvaneExtApi.h"

namespace Quorvane {

String::String() : impl_(new StringImpl) {}

String::String(const char* text) : impl_(new StringImpl{text}) {}

String::String(const String& other) : impl_(new StringImpl(*other.impl_)) {}

String& String::operator=(String other) {
    std::swap(impl_, other.impl_);
    return *this;
}

String::~String() {
    delete impl_;
    impl_ = nullptr;
}

bool String::swap(String& other) {
    std::swap(impl_, other.impl_);
    return true;
}

const char* String::name() const {
    return impl_->text.c_str();
}

void String::set_name(const char* text) {
    impl_->text = text;
}

bool String::isset() const {
    return impl_ != nullptr;
}

}  // namespace Quorvane
