// Value: the handle, its guard, and the names of the kinds.

#include <type_traits>
#include <utility>

#include "protocol/empty_values.h"
#include "protocol/value.h"

namespace Quorvane {

Value::Value() : impl_(new ValueImpl) {}

Value::Value(const Value& other) : impl_(new ValueImpl) {
    impl_->Copy(*other.impl_);
}

Value::Value(const char* text) : impl_(new ValueImpl) {
    impl_->set(text);
}

Value::Value(bool flag) : impl_(new ValueImpl) {
    impl_->set(flag);
}

Value::Value(int number) : impl_(new ValueImpl) {
    impl_->set(number);
}

Value::Value(long number) : impl_(new ValueImpl) {
    impl_->set(number);
}

Value::Value(double number) : impl_(new ValueImpl) {
    impl_->set(number);
}

Value::Value(Timestamp time) : impl_(new ValueImpl) {
    impl_->set(time);
}

Value::Value(Timespan span) : impl_(new ValueImpl) {
    impl_->set(span);
}

Value::Value(Binary bytes) : impl_(new ValueImpl) {
    impl_->set(bytes);
}

Value::~Value() {
    delete impl_;
    impl_ = nullptr;
}

bool Value::guarded() const {
    return impl_ == EmptyValues::empty_Value().impl_;
}

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

ValueType Value::type() const {
    return impl_->type;
}

bool Value::isset() const {
    return impl_->type != ValueType::Null;
}

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

bool Value::get_bool() const {
    return impl_->get_bool();
}
int Value::get_int32() const {
    return impl_->get_int32();
}
long Value::get_int64() const {
    return impl_->get_int64();
}
double Value::get_double() const {
    return impl_->get_double();
}
const char* Value::get_string() const {
    return impl_->get_string();
}
Binary Value::get_binary() {
    return impl_->get_binary();
}
Binary Value::get_binary() const {
    return impl_->get_binary();
}
Timestamp Value::get_timestamp() const {
    return impl_->get_timestamp();
}
Timespan Value::get_timespan() const {
    return impl_->get_timespan();
}

Value::operator bool() const {
    return impl_->get_bool();
}
Value::operator int() const {
    return impl_->get_int32();
}
Value::operator long() const {
    return impl_->get_int64();
}
Value::operator double() const {
    return impl_->get_double();
}
Value::operator const char*() const {
    return impl_->get_string();
}
Value::operator Timestamp() const {
    return impl_->get_timestamp();
}
Value::operator Timespan() const {
    return impl_->get_timespan();
}
Value::operator Binary() const {
    return impl_->get_binary();
}

// ---- as a container -------------------------------------------------------------------------

namespace {

Iterator<Value> shared_map_end() {
    return EmptyIterators::empty_iterator().end();
}

VectorIterator<Value> shared_vector_end() {
    return EmptyIterators::empty_vector_iterator().end();
}

// The same ends as read-only iterators, made directly so that they cost one allocation.
ConstIterator<Value> shared_map_const_end() {
    const Map<Value>& shared = EmptyIterators::empty_iterator();
    return shared.end();
}

ConstVectorIterator<Value> shared_vector_const_end() {
    const Vector<Value>& shared = EmptyIterators::empty_vector_iterator();
    return shared.end();
}

// A keyed insertion: a Null turns into a Struct, a Map or Struct takes the item, anything else
// answers the end of the shared map.
Iterator<Value> insert_keyed(ValueImpl& impl, const char* key, const Value& item, bool update) {
    if (impl.type == ValueType::Null) {
        impl.set_type(ValueType::Struct);
    }
    if (impl.type != ValueType::Map && impl.type != ValueType::Struct) {
        return shared_map_end();
    }
    Map<Value>* map = impl.get_map();
    return update ? map->insert_or_update(key, item) : map->insert(key, item);
}

// An insertion at a position: only a Vector takes it; a Null stays a Null.
VectorIterator<Value> insert_at(ValueImpl& impl, const VectorIterator<Value>& position,
                                const Value& item) {
    if (impl.type != ValueType::Vector) {
        return shared_vector_end();
    }
    return impl.get_vector()->insert(position, item);
}

}  // namespace

Vector<Value>* Value::own_vector() const {
    return impl_->type == ValueType::Vector && !guarded() ? impl_->get_vector() : nullptr;
}

Map<Value>* Value::own_map() const {
    const bool keyed = impl_->type == ValueType::Map || impl_->type == ValueType::Struct;
    return keyed && !guarded() ? impl_->get_map() : nullptr;
}

Map<Value>* Value::get_map() {
    return guarded() ? nullptr : impl_->get_map();
}

const Map<Value>* Value::get_map() const {
    return guarded() ? nullptr : impl_->get_map();
}

Vector<Value>* Value::get_vector() {
    return guarded() ? nullptr : impl_->get_vector();
}

const Vector<Value>* Value::get_vector() const {
    return impl_->get_vector();
}

Value& Value::operator[](unsigned long index) {
    Vector<Value>* vector = own_vector();
    Value* element = vector != nullptr ? vector->get(index) : nullptr;
    return element != nullptr ? *element : EmptyValues::empty_Value();
}

const Value& Value::operator[](unsigned long index) const {
    return const_cast<Value&>(*this)[index];
}

// The index is sign-extended, so a negative one lands far beyond any size.
Value& Value::operator[](int index) {
    return (*this)[static_cast<unsigned long>(long{index})];
}

const Value& Value::operator[](int index) const {
    return const_cast<Value&>(*this)[static_cast<unsigned long>(long{index})];
}

Value& Value::operator[](const char* key) {
    Map<Value>* map = own_map();
    Value* element = map != nullptr ? map->get(key) : nullptr;
    return element != nullptr ? *element : EmptyValues::empty_Value();
}

const Value& Value::operator[](const char* key) const {
    return const_cast<Value&>(*this)[key];
}

Value& Value::operator<<(const Value& item) {
    if (guarded()) {
        return *this;
    }
    if (impl_->type == ValueType::Null) {
        impl_->set_type(ValueType::Vector);
    }
    if (impl_->type == ValueType::Vector) {
        impl_->get_vector()->add(item);
    }
    return *this;
}

void Value::resize(unsigned long count, const Value& fill) {
    if (!guarded()) {
        impl_->resize(count, fill);
    }
}

Iterator<Value> Value::insert(const char* key, const Value& item) {
    return guarded() ? shared_map_end() : insert_keyed(*impl_, key, item, false);
}

Iterator<Value> Value::insert(const char* key, const char* item) {
    return guarded() ? shared_map_end() : insert_keyed(*impl_, key, Value(item), false);
}

Iterator<Value> Value::insert_or_update(const char* key, const Value& item) {
    return guarded() ? shared_map_end() : insert_keyed(*impl_, key, item, true);
}

Iterator<Value> Value::insert_or_update(const char* key, const char* item) {
    return guarded() ? shared_map_end() : insert_keyed(*impl_, key, Value(item), true);
}

VectorIterator<Value> Value::insert(const VectorIterator<Value>& position, const Value& item) {
    return guarded() ? shared_vector_end() : insert_at(*impl_, position, item);
}

VectorIterator<Value> Value::insert(const VectorIterator<Value>& position, const char* item) {
    return insert_at(*impl_, position, Value(item));
}

// Only the Value forms carry the guard; the other item types write through the shared empty
// value too, which callers must not rely on either way.
template <class T>
Iterator<Value> Value::insert(const char* key, const T& item) {
    if constexpr (std::is_same<T, Value>::value) {
        return insert(key, item);
    } else {
        return insert_keyed(*impl_, key, Value(item), false);
    }
}

template <class T>
Iterator<Value> Value::insert_or_update(const char* key, const T& item) {
    if constexpr (std::is_same<T, Value>::value) {
        return insert_or_update(key, item);
    } else {
        return insert_keyed(*impl_, key, Value(item), true);
    }
}

template <class T>
VectorIterator<Value> Value::insert(const VectorIterator<Value>& position, const T& item) {
    if constexpr (std::is_same<T, Value>::value) {
        return insert(position, item);
    } else {
        return insert_at(*impl_, position, Value(item));
    }
}

ErrorValue Value::remove(unsigned long index) {
    Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->remove(index) : HMI_E_INVALID_TYPE;
}

ErrorValue Value::remove(unsigned long first, unsigned long last) {
    Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->remove(first, last) : HMI_E_INVALID_TYPE;
}

Iterator<Value> Value::remove(const Iterator<Value>& position) {
    Map<Value>* map = own_map();
    return map != nullptr ? map->remove(position) : end();
}

VectorIterator<Value> Value::remove(const VectorIterator<Value>& position) {
    Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->remove(position) : end_vector();
}

void Value::clear() {
    if (Map<Value>* map = own_map()) {
        map->clear();
    } else if (Vector<Value>* vector = own_vector()) {
        vector->clear();
    } else if (impl_->type == ValueType::Binary && !guarded()) {
        impl_->set(Binary{});
    }
}

void Value::reserve(unsigned long count) {
    if (Vector<Value>* vector = own_vector()) {
        vector->reserve(count);
    }
}

unsigned long Value::size() const {
    return guarded() ? 0 : impl_->size();
}

bool Value::empty() const {
    if (guarded()) {
        return true;
    }
    switch (impl_->type) {
        case ValueType::String:
        case ValueType::Vector:
        case ValueType::Map:
        case ValueType::Struct:
            return impl_->size() == 0;
        default:
            return impl_->type == ValueType::Null;
    }
}

Iterator<Value> Value::begin() {
    Map<Value>* map = own_map();
    return map != nullptr ? map->begin() : shared_map_end();
}

Iterator<Value> Value::end() {
    Map<Value>* map = own_map();
    return map != nullptr ? map->end() : shared_map_end();
}

ConstIterator<Value> Value::begin() const {
    const Map<Value>* map = own_map();
    return map != nullptr ? map->begin() : shared_map_const_end();
}

ConstIterator<Value> Value::end() const {
    const Map<Value>* map = own_map();
    return map != nullptr ? map->end() : shared_map_const_end();
}

Iterator<Value> Value::find(const char* key) {
    Map<Value>* map = own_map();
    return map != nullptr ? map->find(key) : shared_map_end();
}

ConstIterator<Value> Value::find(const char* key) const {
    const Map<Value>* map = own_map();
    return map != nullptr ? map->find(key) : shared_map_const_end();
}

VectorIterator<Value> Value::begin_vector() {
    Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->begin() : shared_vector_end();
}

VectorIterator<Value> Value::end_vector() {
    Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->end() : shared_vector_end();
}

ConstVectorIterator<Value> Value::begin_vector() const {
    const Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->begin() : shared_vector_const_end();
}

ConstVectorIterator<Value> Value::end_vector() const {
    const Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->end() : shared_vector_const_end();
}

VectorIterator<Value> Value::find(unsigned long index) {
    Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->find(index) : shared_vector_end();
}

ConstVectorIterator<Value> Value::find(unsigned long index) const {
    const Vector<Value>* vector = own_vector();
    return vector != nullptr ? vector->find(index) : shared_vector_const_end();
}

// The item types of the insert templates, one line each; a text item is spelt through an alias
// so that `const T&` reads as a reference to the pointer.
using Text = const char*;
#define QUORVANE_FOR_EACH_INSERT_ITEM(X) \
    X(Value)                             \
    X(bool)                              \
    X(int)                               \
    X(long)                              \
    X(double)                            \
    X(Text)                              \
    X(Binary)                            \
    X(Timestamp)                         \
    X(Timespan)

#define QUORVANE_INSTANTIATE_INSERTS(T)                                                        \
    template QUORVANE_API Iterator<Value> Value::insert<T>(const char*, const T&);             \
    template QUORVANE_API Iterator<Value> Value::insert_or_update<T>(const char*, const T&);   \
    template QUORVANE_API VectorIterator<Value> Value::insert<T>(const VectorIterator<Value>&, \
                                                                 const T&);

QUORVANE_FOR_EACH_INSERT_ITEM(QUORVANE_INSTANTIATE_INSERTS)

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

const char* get_type_string(ValueType type) {
    return kind_names(type).lower_case;
}

namespace Algorithm {
const char* value_type_to_string(ValueType type) {
    return kind_names(type).capitalised;
}
}  // namespace Algorithm

}  // namespace Quorvane
