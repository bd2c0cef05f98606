// ResultPair: the handle and its record.

#include "protocol/result_pair.h"

#include <cstdlib>
#include <utility>

#include "QuorvaneExtApi.h"
#include "helper/algorithm/string.h"

namespace Quorvane {

ResultPair::ResultPair() : impl_(new ResultPairImpl) {}

ResultPair::ResultPair(ErrorValue result) : impl_(new ResultPairImpl{result, {}}) {}

ResultPair::ResultPair(ErrorValue result, const char* text) : impl_(nullptr) {
    // A missing text is a bug in the caller that would otherwise surface far away, in whoever
    // reads the result; stop here instead.
    if (text == nullptr) {
        std::abort();
    }
    impl_ = new ResultPairImpl{result, text};
}

ResultPair::ResultPair(const ResultPair& other) : impl_(new ResultPairImpl(*other.impl_)) {}

ResultPair& ResultPair::operator=(ResultPair other) {
    std::swap(impl_, other.impl_);
    return *this;
}

ResultPair::~ResultPair() {
    delete impl_;
    impl_ = nullptr;
}

bool ResultPair::swap(ResultPair& other) {
    std::swap(impl_, other.impl_);
    return true;
}

ErrorValue ResultPair::result() const {
    return impl_->result;
}

const char* ResultPair::text() const {
    return impl_->text.c_str();
}

void ResultPair::set_result(ErrorValue result) {
    impl_->result = result;
}

void ResultPair::set_text(const char* text) {
    impl_->text = text;
}

bool ResultPair::operator==(const ErrorValue& result) const {
    return impl_->result == result;
}

bool ResultPair::operator!=(const ErrorValue& result) const {
    return !(*this == result);
}

bool ResultPair::operator==(const ResultPair& other) const {
    return impl_->result == other.impl_->result &&
           Algorithm::equals(impl_->text.c_str(), other.impl_->text.c_str());
}

bool ResultPair::operator!=(const ResultPair& other) const {
    return !(*this == other);
}

}  // namespace Quorvane
