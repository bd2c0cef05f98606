#pragma once
// Plain data of the host/extension boundary: the kinds of a Value, the outcome codes and the
// byte view that is passed by value. Nothing here owns memory or has behaviour beyond naming.
//
// Every enumeration has a fixed underlying type, so a number outside the named ones is carried
// as it is instead of being undefined.

#include <cstdint>

#include "helper/crosscompile.h"

namespace Quorvane {

// The kind of a Value. The enumerator names double as class names (Vector, Map, String, ...),
// hence a scoped enumeration.
enum class ValueType : std::int32_t {
    Null = 0,
    Bool = 1,
    Int = 2,
    Double = 3,
    String = 4,
    Vector = 5,
    Map = 6,
    Struct = 7,
    Binary = 8,
    Int64 = 9,
    DateTime = 10,
    TimeSpan = 11,
    Event = 64,
    Message = 65,
    Alarm = 66,
    Any = 256,
};

// Lower-case kind name for schemas: "null", "bool", ..., "date-time", "timespan", ..., "any".
// Numbers that name no kind answer "null". The text is static.
QUORVANE_API const char* get_type_string(ValueType type);

namespace Algorithm {
// Capitalised kind name for messages: "Null", "Bool", ..., "DateTime", "TimeSpan", ..., "Any".
// Numbers that name no kind answer "Null". The text is static.
QUORVANE_API const char* value_type_to_string(ValueType type);
}  // namespace Algorithm

// Outcome of an operation. 0 is success; the catalogue with texts and exit codes lives with
// get_error_string in helper/api_helper.h.
enum ErrorValue : std::int32_t {
    HMI_E_SUCCESS = 0,
};

// (listener kinds)

// A non-owning view of raw bytes, passed by value. A Binary read from a Value points into that
// value's storage and is invalidated by the next write to the value.
struct Binary {
    std::uint64_t size = 0;
    unsigned char* bytes = nullptr;
};

}  // namespace Quorvane
