#pragma once
// Plain data of the host/extension boundary: the kinds of a Value, the outcome codes and the
// byte view that is passed by value. Nothing here owns memory or has behaviour beyond naming.
//
// Every enumeration has a fixed underlying type, so a number outside the named ones is carried
// as it is instead of being undefined.

#include <cstdint>
#include <string>

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

// The family of a listener, as its type() reports it to the host. Kinds 7, 9, 10, 11 and 12 have
// no listener interface in this library; the host may use them for its own purposes. Scoped,
// because several names are also class names (Alarm, Command, Session, Event).
enum class ListenerType : std::int32_t {
    Config = 0,
    EventLocalization = 1,
    Alarm = 2,
    Request = 3,
    Subscription = 4,
    Session = 5,
    Shutdown = 6,
    Historize = 7,
    Auth = 8,
    File = 9,
    Command = 10,
    Script = 11,
    CommitConfig = 12,
    ExportConfig = 13,
    Event = 14,
    AsyncRequest = 15,
    AsyncEventLocalization = 16,
    Http = 17,
    AsyncHttp = 18,
};

// The enumerator's name ("Config", ..., "AsyncHttp"); an empty string for a number outside 0 to
// 18. Throws only on allocation failure.
QUORVANE_API std::string listener_type_to_string(ListenerType type);

// A non-owning view of raw bytes, passed by value. A Binary read from a Value points into that
// value's storage and is invalidated by the next write to the value.
struct Binary {
    std::uint64_t size = 0;
    unsigned char* bytes = nullptr;
};

}  // namespace Quorvane
