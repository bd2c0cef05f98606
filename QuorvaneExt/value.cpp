// Value: the handle, its guard, and the names of the kinds.

#include <utility>

#include "protocol/empty_values.h"
#include "protocol/value.h"

namespace Quorvane {

Value::Value() : impl_(new ValueImpl) {}

Value::Value(const Value& other) : impl_(new ValueImpl) { impl_->Copy(*other.impl_); }

Value::Value(const char* text) : impl_(new ValueImpl) { impl_->set(text); }

Value::Value(bool flag) : impl_(new ValueImpl) { impl_->set(flag); }

Value::Value(int number) : impl_(new ValueImpl) { impl_->set(number); }

Value::Value(long number) : impl_(new ValueImpl) { impl_->set(number); }

Value::Value(double number) : impl_(new ValueImpl) { impl_->set(number); }

Value::Value(Timestamp time) : impl_(new ValueImpl) { impl_->set(time); }

Value::Value(Timespan span) : impl_(new ValueImpl) { impl_->set(span); }

Value::Value(Binary bytes) : impl_(new ValueImpl) { impl_->set(bytes); }

Value::~Value() {
    delete impl_;
    impl_ = nullptr;
}

bool Value::guarded() const { return impl_ == EmptyValues::empty_Value().impl_; }

Value& Value::operator=(Value other) {
    if (!guarded()) {
        std::swap(impl_, other.impl_);
    }
    return *this;
}

Value& Value::operator=(const char* text) {
    set(text);
    return *this;
}

Value& Value::operator=(bool flag) {
    set(flag);
    return *this;
}

Value& Value::operator=(int number) {
    set(number);
    return *this;
}

Value& Value::operator=(long number) {
    set(number);
    return *this;
}

Value& Value::operator=(double number) {
    set(number);
    return *this;
}

Value& Value::operator=(Timestamp time) {
    set(time);
    return *this;
}

Value& Value::operator=(Timespan span) {
    set(span);
    return *this;
}

Value& Value::operator=(Binary bytes) {
    impl_->set(bytes);
    return *this;
}

void Value::set(const char* text) {
    if (!guarded()) {
        impl_->set(text);
    }
}

void Value::set(bool flag) {
    if (!guarded()) {
        impl_->set(flag);
    }
}

void Value::set(int number) {
    if (!guarded()) {
        impl_->set(number);
    }
}

void Value::set(long number) {
    if (!guarded()) {
        impl_->set(number);
    }
}

void Value::set(double number) {
    if (!guarded()) {
        impl_->set(number);
    }
}

void Value::set(const Timestamp& time) {
    if (!guarded()) {
        impl_->set(time);
    }
}

void Value::set(const Timespan& span) {
    if (!guarded()) {
        impl_->set(span);
    }
}

void Value::set(Binary bytes) {
    if (!guarded()) {
        impl_->set(bytes);
    }
}

bool Value::swap(Value& other) {
    std::swap(impl_, other.impl_);
    return true;
}

ValueType Value::type() const { return impl_->type; }

bool Value::isset() const { return impl_->type != ValueType::Null; }

Value& Value::set_type(ValueType type) {
    if (!guarded()) {
        impl_->set_type(type);
    }
    return *this;
}

Value& Value::convert(ValueType type) {
    if (!guarded()) {
        impl_->Convert(type);
    }
    return *this;
}

bool Value::get_bool() const { return impl_->get_bool(); }
int Value::get_int32() const { return impl_->get_int32(); }
long Value::get_int64() const { return impl_->get_int64(); }
double Value::get_double() const { return impl_->get_double(); }
const char* Value::get_string() const { return impl_->get_string(); }
Binary Value::get_binary() { return impl_->get_binary(); }
Binary Value::get_binary() const { return impl_->get_binary(); }
Timestamp Value::get_timestamp() const { return impl_->get_timestamp(); }
Timespan Value::get_timespan() const { return impl_->get_timespan(); }

Value::operator bool() const { return impl_->get_bool(); }
Value::operator int() const { return impl_->get_int32(); }
Value::operator long() const { return impl_->get_int64(); }
Value::operator double() const { return impl_->get_double(); }
Value::operator const char*() const { return impl_->get_string(); }
Value::operator Timestamp() const { return impl_->get_timestamp(); }
Value::operator Timespan() const { return impl_->get_timespan(); }
Value::operator Binary() const { return impl_->get_binary(); }

namespace {

struct KindNames {
    ValueType type;
    const char* capitalised;
    const char* lower_case;
};

constexpr KindNames kKindNames[] = {
    {ValueType::Null, "Null", "null"},
    {ValueType::Bool, "Bool", "bool"},
    {ValueType::Int, "Int", "int"},
    {ValueType::Double, "Double", "double"},
    {ValueType::String, "String", "string"},
    {ValueType::Vector, "Vector", "vector"},
    {ValueType::Map, "Map", "map"},
    {ValueType::Struct, "Struct", "struct"},
    {ValueType::Binary, "Binary", "binary"},
    {ValueType::Int64, "Int64", "int64"},
    {ValueType::DateTime, "DateTime", "date-time"},
    {ValueType::TimeSpan, "TimeSpan", "timespan"},
    {ValueType::Event, "Event", "event"},
    {ValueType::Message, "Message", "message"},
    {ValueType::Alarm, "Alarm", "alarm"},
    {ValueType::Any, "Any", "any"},
};

// Numbers that name no kind fall back to the Null entry.
const KindNames& kind_names(ValueType type) {
    for (const KindNames& names : kKindNames) {
        if (names.type == type) {
            return names;
        }
    }
    return kKindNames[0];
}

}  // namespace

const char* get_type_string(ValueType type) { return kind_names(type).lower_case; }

namespace Algorithm {
const char* value_type_to_string(ValueType type) { return kind_names(type).capitalised; }
}  // namespace Algorithm

}  // namespace Quorvane
