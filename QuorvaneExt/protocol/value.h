#pragma once
// Private to the library: not part of the API.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "QuorvaneExtApi.h"
#include "helper/headers/variant.h"

namespace Quorvane {

// A storage alternative whose class joins the object model later. It keeps its number now, so
// that the alternative numbers the reads test never shift.
template <int Number>
struct ReservedAlternative {};

// The record behind Value: a storage variant and a kind, kept as two independent fields. Several
// kinds share one alternative, and after a retagging the two may disagree, so every read tests
// the kind first and the storage second.
class ValueImpl {
public:
    using Bytes = std::vector<std::uint8_t>;
    using Data = variant<double,                  // Null, Bool, Int, Double
                         ReservedAlternative<1>,  // Message
                         ReservedAlternative<2>,  // Event
                         Bytes,                   // String (with its NUL), Binary
                         long,                    // Int64, DateTime, TimeSpan
                         ReservedAlternative<5>,  // Alarm
                         Vector<Value>,           // Vector
                         Map<Value>>;             // Map, Struct

    // Alternative numbers of Data.
    enum Alternative : std::size_t {
        kDouble = 0,
        kMessage = 1,
        kEvent = 2,
        kBytes = 3,
        kLong = 4,
        kAlarm = 5,
        kVector = 6,
        kMap = 7,
    };

    Data data{0.0};
    ValueType type = ValueType::Null;

    // Deep copy of the other record's content and kind.
    void Copy(const ValueImpl& other);

    void set(bool flag);
    void set(int number);
    void set(long number);
    void set(double number);
    void set(const char* text);
    void set(Binary bytes);
    void set(const Timestamp& time);
    void set(const Timespan& span);

    void set_type(ValueType new_type);
    void Convert(ValueType target);

    bool get_bool() const;
    int get_int32() const;
    long get_int64() const;
    double get_double() const;
    const char* get_string() const;
    Binary get_binary() const;
    Timestamp get_timestamp() const;
    Timespan get_timespan() const;

    // Kind Map, data a copy of the map (never Struct). Null changes nothing.
    void set(const Map<Value>* map);
    // Kind Vector, data a copy of the vector. Null changes nothing.
    void set(const Vector<Value>* vector);
    // Map, Struct, or an Any holding a map: the map. Otherwise null.
    Map<Value>* get_map();
    const Map<Value>* get_map() const;
    // Vector, or an Any holding a vector: the vector. Otherwise null.
    Vector<Value>* get_vector();
    const Vector<Value>* get_vector() const;

    // The measure of Value::size: text length, byte count, or element count by kind.
    unsigned long size() const;
    // A Null becomes a Vector first; a Vector is cut to `count` or filled up to it with copies
    // of `fill`; any other kind stays as it is.
    void resize(unsigned long count, const Value& fill);

private:
    bool holds(Alternative alternative) const { return data.index() == alternative; }
    template <Alternative Kind, class Container>
    void replace_with(const Container& container);
};

}  // namespace Quorvane
