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

// Outcome of an operation: every command result, ResultPair and process exit code is one of
// these. 0 is success, 1 to 9 are outcomes that are no failure, and failures lie in blocks by the
// bits above the low eight. Unscoped, so that HMI_E_<name> reads as the name a detailed error text
// shows; the fixed type lets any other number travel unchanged (it has no name and no text).
// Names, texts and exit codes: get_error_string and friends in helper/api_helper.h.
enum ErrorValue : std::int32_t {
    // Outcomes that are no failure.
    HMI_E_SUCCESS = 0,
    HMI_E_FINISHED = 1,
    HMI_E_DISCONNECTED = 2,
    HMI_E_SHUTDOWN = 3,
    HMI_E_RESTART = 4,
    HMI_E_SKIP = 5,
    HMI_E_FIRST_INIT = 6,
    HMI_E_UPGRADE = 7,
    HMI_E_UNCHANGED = 8,
    HMI_E_IGNORE = 9,

    // General server failures.
    HMI_E_SERVER = 256,
    HMI_E_FAIL = 257,
    HMI_E_UNEXPECTED = 258,
    HMI_E_SCRIPT = 259,
    HMI_E_REQUIRED_EXTENSION_MISSING = 260,
    HMI_E_INIT = 261,
    HMI_E_NO_LANGUAGE_FILE = 262,
    HMI_E_SYNTAX = 263,
    HMI_E_FILE_NOT_FOUND = 264,
    HMI_E_FILESYSTEM = 265,
    HMI_E_REQUEST_TOO_LARGE = 266,
    HMI_E_DATABASE = 267,
    HMI_E_INVALID_POINTER = 268,
    HMI_E_INVALID_PARAMETER = 269,
    HMI_E_INVALID_TYPE = 270,
    HMI_E_NOT_REGISTERED = 271,
    HMI_E_NOT_IMPLEMENTED = 272,
    HMI_E_ID_IN_USE = 273,
    HMI_E_SYMBOL_IN_USE = 274,
    HMI_E_INTERRUPTED = 275,
    HMI_E_FILE_LOCK = 276,
    HMI_E_FILE_IN_USE = 277,
    HMI_E_FILE_WRITE = 278,
    HMI_E_INVALID_PATH = 279,
    HMI_E_HANDLE = 280,
    HMI_E_ENCODE = 281,
    HMI_E_DECODE = 282,
    HMI_E_NETWORK = 283,
    HMI_E_LANGUAGE = 284,
    HMI_E_CACHE = 285,
    HMI_E_ENDPOINT_DENIED = 286,
    HMI_E_ENDPOINT_BUSY = 287,
    HMI_E_ENDPOINT_INVALID = 288,
    HMI_E_WEBSERVER_UNEXPECTED = 289,
    HMI_E_WEBSOCKET_UNEXPECTED = 290,
    HMI_E_LUA_EXEC = 291,
    HMI_E_ENTRY_NOT_FOUND = 292,
    HMI_E_INVALID_SYMBOL = 293,
    HMI_E_BLACKLISTED = 294,
    HMI_E_UPLOAD_TIMER_EXPIRED = 295,
    HMI_E_SERVER_ALREADY_RUNNING = 296,
    HMI_E_PROTOCOL = 297,
    HMI_E_PAGING = 298,

    // Symbol resolution.
    HMI_E_INVALID_SUBSYMBOL = 512,
    HMI_E_SYMBOL_NOT_MAPPED = 513,
    HMI_E_SYMBOL_SCHEMA_MISSING = 514,
    HMI_E_INVALID_METHOD = 515,

    // The host/extension interface and runtime loading.
    HMI_E_API = 768,
    HMI_E_INTERFACE_VERSION = 769,
    HMI_E_INTERFACE_POINTER = 770,
    HMI_E_CRT_NOT_FOUND = 771,
    HMI_E_CRT_INIT = 772,

    // Configuration storage (CONNECT sits here too, but is no storage failure).
    HMI_E_STORAGE = 1280,
    HMI_E_STORAGE_WRITE = 1281,
    HMI_E_STORAGE_VERSION = 1282,
    HMI_E_STORAGE_CREATE = 1283,
    HMI_E_STORAGE_STORE = 1284,
    HMI_E_STORAGE_LOAD = 1285,
    HMI_E_STORAGE_FILE_NOT_FOUND = 1286,
    HMI_E_STORAGE_ADD_PARAMETER = 1287,
    HMI_E_STORAGE_SCHEMA = 1288,
    HMI_E_STORAGE_CONSTRAINT = 1289,
    HMI_E_STORAGE_ADD = 1290,
    HMI_E_STORAGE_EXTENSION = 1291,
    HMI_E_STORAGE_PARAMETER = 1292,
    HMI_E_STORAGE_TYPE = 1293,
    HMI_E_CONNECT = 1294,
    HMI_E_STORAGE_BACKUP = 1295,

    // Schema validation and migration.
    HMI_E_SCHEMA = 1536,
    HMI_E_TYPE_MISMATCH = 1537,
    HMI_E_RANGE_MISMATCH = 1538,
    HMI_E_INVALID_FIELD = 1539,
    HMI_E_REQUIRED_FIELD = 1540,
    HMI_E_UNEXPECTED_FIELD = 1541,
    HMI_E_ENUM_VALUE_MISMATCH = 1542,
    HMI_E_ARRAY_RANGE_MISMATCH = 1543,
    HMI_E_STRING_LENGTH_MISMATCH = 1544,
    HMI_E_MULTIPLE_MATCHES = 1545,
    HMI_E_NO_MATCHES = 1546,
    HMI_E_UNIQUE = 1547,
    HMI_E_FORMAT = 1548,
    HMI_E_TYPE_MISSING = 1549,
    HMI_E_EXCLUDED = 1550,
    HMI_E_MIGRATION = 1551,
    HMI_E_MIGRATION_RULE = 1552,
    HMI_E_MIGRATION_PATH = 1553,
    HMI_E_RECURSION = 1554,
    HMI_E_REGEX = 1555,

    // Extensions, domains and remote systems.
    HMI_E_EXTENSION = 2048,
    HMI_E_EXTENSION_LOAD = 2049,
    HMI_E_INVALID_DOMAIN = 2050,
    HMI_E_DOMAIN_ACTIVE = 2051,
    HMI_E_LOG_EXTENSION = 2052,
    HMI_E_AUTH_EXTENSION = 2053,
    HMI_E_EXTENSION_CONFIG = 2054,
    HMI_E_EXTENSION_HANDLER = 2055,
    HMI_E_UNLOAD_FAILED = 2056,
    HMI_E_AUTH_WAIT = 2057,
    HMI_E_DOMAIN_DISABLED = 2058,
    HMI_E_EXTENSION_CONNECT = 2059,
    HMI_E_REMOTE_CONNECT = 2060,
    HMI_E_REMOTE_TIMEOUT = 2061,

    // Sessions, logins and certificates.
    HMI_E_SESSION = 4096,
    HMI_E_INVALID_SESSION = 4097,
    HMI_E_AUTH_USER_NOT_FOUND = 4098,
    HMI_E_AUTH_FAILED = 4099,
    HMI_E_AUTH_GROUP_NOT_FOUND = 4100,
    HMI_E_INSUFFICIENT_ACCESS = 4101,
    HMI_E_CREATE_SESSION = 4102,
    HMI_E_SESSION_NOT_FOUND = 4103,
    HMI_E_CERTIFICATE = 4104,
    HMI_E_NO_LOGIN_DATA = 4105,
    HMI_E_ALREADY_LOGGED_IN = 4106,
    HMI_E_SESSION_TIMEOUT = 4107,
    HMI_E_TOO_MANY_CONNECTIONS = 4108,
    HMI_E_DECRYPT = 4109,
    HMI_E_AUTH_DISABLED = 4110,
    HMI_E_CERTIFICATE_NOT_VALID = 4111,

    // Checksums, signatures and keys.
    HMI_E_CHECKSUM = 4608,
    HMI_E_INVALID_CHECKSUM = 4609,
    HMI_E_CHECKSUM_UNEXPECTED = 4610,
    HMI_E_CHECKSUM_MATCH = 4611,
    HMI_E_SIGNATURE = 4612,
    HMI_E_SIGNATURE_MISSING = 4613,
    HMI_E_SIGNATURE_MISMATCH = 4614,
    HMI_E_KEY_MISSING = 4615,
    HMI_E_RESTART_REQUIRED = 4616,
    HMI_E_INITIALIZE_PASSWORD = 4617,
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
