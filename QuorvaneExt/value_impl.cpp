// ValueImpl: writes, reads and kind changes of the record behind Value.

#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "protocol/value.h"

namespace Quorvane {
namespace {

const char kEmptyText[] = "";

bool is_one_of(ValueType type, std::initializer_list<ValueType> kinds) {
    for (ValueType kind : kinds) {
        if (type == kind) {
            return true;
        }
    }
    return false;
}

}  // namespace

void ValueImpl::Copy(const ValueImpl& other) {
    data = other.data;
    type = other.type;
}

void ValueImpl::set(bool flag) {
    data = flag ? 1.0 : 0.0;
    type = ValueType::Bool;
}

void ValueImpl::set(int number) {
    data = static_cast<double>(number);
    type = ValueType::Int;
}

void ValueImpl::set(long number) {
    data = number;
    type = ValueType::Int64;
}

void ValueImpl::set(double number) {
    data = number;
    type = ValueType::Double;
}

void ValueImpl::set(const char* text) {
    if (text == nullptr) {
        return;
    }
    const auto* first = reinterpret_cast<const std::uint8_t*>(text);
    // The copy is complete before the old content dies: the text may be this value's own.
    Bytes copy(first, first + std::strlen(text) + 1);
    data.emplace<kBytes>(std::move(copy));
    type = ValueType::String;
}

void ValueImpl::set(Binary bytes) {
    if (bytes.size != 0 && bytes.bytes == nullptr) {
        return;
    }
    // As for a text, the bytes may be this value's own.
    Bytes copy(bytes.bytes, bytes.bytes + bytes.size);
    data.emplace<kBytes>(std::move(copy));
    type = ValueType::Binary;
}

void ValueImpl::set(const Timestamp& time) {
    data = time.nanoseconds();
    type = ValueType::DateTime;
}

void ValueImpl::set(const Timespan& span) {
    data = span.nanoseconds();
    type = ValueType::TimeSpan;
}

void ValueImpl::set_type(ValueType new_type) {
    if (new_type == type) {
        return;
    }
    switch (new_type) {
        case ValueType::Null:
            data = 0.0;
            break;
        case ValueType::Int:
            // Only a Double keeps its number, rounded down; every other kind starts from zero.
            if (type == ValueType::Double && holds(kDouble)) {
                data = std::floor(std::get<kDouble>(data));
            } else {
                data = 0.0;
            }
            break;
        case ValueType::String:
            data.emplace<kBytes>();
            break;
        case ValueType::Vector:
            if (!(type == ValueType::Any && holds(kVector))) {
                data.emplace<kVector>();
            }
            break;
        case ValueType::Map:
        case ValueType::Struct:
            if (!(is_one_of(type, {ValueType::Map, ValueType::Struct, ValueType::Any}) &&
                  holds(kMap))) {
                data.emplace<kMap>();
            }
            break;
        case ValueType::Binary:
            if (!(type == ValueType::Any && holds(kBytes))) {
                data.emplace<kBytes>();
            }
            break;
        case ValueType::Event:
            data.emplace<kEvent>();
            break;
        case ValueType::Message:
            data.emplace<kMessage>();
            break;
        case ValueType::Alarm:
            data.emplace<kAlarm>();
            break;
        default:
            // Bool, Double, Int64, DateTime, TimeSpan, Any and unnamed numbers only retag.
            break;
    }
    type = new_type;
}

void ValueImpl::Convert(ValueType target) {
    if (target == ValueType::Null) {
        if (type != ValueType::Null) {
            data = 0.0;
            type = ValueType::Null;
        }
    }
}

bool ValueImpl::get_bool() const {
    return type == ValueType::Bool && holds(kDouble) && std::get<kDouble>(data) == 1.0;
}

int ValueImpl::get_int32() const {
    if (!is_one_of(type, {ValueType::Int, ValueType::Double}) || !holds(kDouble)) {
        return 0;
    }
    const double number = std::get<kDouble>(data);
    // The comparison is false for NaN as well, which lands on the same sentinel.
    if (!(number > -2147483649.0 && number < 2147483648.0)) {
        return std::numeric_limits<int>::min();
    }
    return static_cast<int>(number);
}

long ValueImpl::get_int64() const {
    if (!is_one_of(type, {ValueType::Int64, ValueType::DateTime, ValueType::TimeSpan}) ||
        !holds(kLong)) {
        return 0;
    }
    return std::get<kLong>(data);
}

double ValueImpl::get_double() const {
    if (!is_one_of(type, {ValueType::Bool, ValueType::Int, ValueType::Double, ValueType::Int64}) ||
        !holds(kDouble)) {
        return 0.0;
    }
    return std::get<kDouble>(data);
}

const char* ValueImpl::get_string() const {
    if (!holds(kBytes) || std::get<kBytes>(data).empty()) {
        return kEmptyText;
    }
    return reinterpret_cast<const char*>(std::get<kBytes>(data).data());
}

Binary ValueImpl::get_binary() const {
    if (type != ValueType::Binary || !holds(kBytes)) {
        return Binary{};
    }
    const Bytes& bytes = std::get<kBytes>(data);
    // The view is writable through a non-const Value; the record itself is not const then.
    auto* first = bytes.empty() ? nullptr : const_cast<unsigned char*>(bytes.data());
    return Binary{bytes.size(), first};
}

Timestamp ValueImpl::get_timestamp() const {
    if (type != ValueType::DateTime || !holds(kLong)) {
        return Timestamp();
    }
    return Timestamp(std::get<kLong>(data));
}

Timespan ValueImpl::get_timespan() const {
    if (type != ValueType::TimeSpan || !holds(kLong)) {
        return Timespan();
    }
    return Timespan(std::get<kLong>(data));
}

// Replacing the content frees it first, so a container that may lie inside it (this value's own,
// or one nested deeper) is copied before that happens. Numbers and bytes hold no container.
template <ValueImpl::Alternative Kind, class Container>
void ValueImpl::replace_with(const Container& container) {
    if (holds(kDouble) || holds(kBytes) || holds(kLong)) {
        data.emplace<Kind>(container);
    } else {
        const Container copy(container);
        data.emplace<Kind>(copy);
    }
}

void ValueImpl::set(const Map<Value>* map) {
    if (map == nullptr) {
        return;
    }
    replace_with<kMap>(*map);
    type = ValueType::Map;
}

void ValueImpl::set(const Vector<Value>* vector) {
    if (vector == nullptr) {
        return;
    }
    replace_with<kVector>(*vector);
    type = ValueType::Vector;
}

Map<Value>* ValueImpl::get_map() {
    const bool keyed = is_one_of(type, {ValueType::Map, ValueType::Struct, ValueType::Any});
    return keyed ? std::get_if<kMap>(&data) : nullptr;
}

const Map<Value>* ValueImpl::get_map() const {
    return const_cast<ValueImpl*>(this)->get_map();
}

Vector<Value>* ValueImpl::get_vector() {
    const bool ordered = is_one_of(type, {ValueType::Vector, ValueType::Any});
    return ordered ? std::get_if<kVector>(&data) : nullptr;
}

const Vector<Value>* ValueImpl::get_vector() const {
    return const_cast<ValueImpl*>(this)->get_vector();
}

unsigned long ValueImpl::size() const {
    switch (type) {
        case ValueType::String:
        case ValueType::Binary: {
            const Bytes* bytes = std::get_if<kBytes>(&data);
            if (bytes == nullptr || bytes->empty()) {
                return 0;
            }
            // A text counts without the NUL it is stored with.
            return type == ValueType::String ? bytes->size() - 1 : bytes->size();
        }
        case ValueType::Vector:
        case ValueType::Map:
        case ValueType::Struct:
        case ValueType::Any:
            if (const Vector<Value>* vector = get_vector()) {
                return vector->size();
            }
            if (const Map<Value>* map = get_map()) {
                return map->size();
            }
            return 0;
        default:
            return 0;
    }
}

void ValueImpl::resize(unsigned long count, const Value& fill) {
    if (type == ValueType::Null) {
        set_type(ValueType::Vector);
    }
    Vector<Value>* vector = type == ValueType::Vector ? get_vector() : nullptr;
    if (vector == nullptr) {
        return;
    }
    const unsigned long size = vector->size();
    if (size > count) {
        vector->remove(count, size);
        return;
    }
    // `fill` may be an element of this vector, or the value that holds it.
    const Value copy(fill);
    vector->reserve(count);
    while (vector->size() < count) {
        vector->add(copy);
    }
}

}  // namespace Quorvane
