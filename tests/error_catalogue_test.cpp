#include "helper/api_helper.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <locale>
#include <random>
#include <set>
#include <string>
#include <type_traits>

using namespace Quorvane;

namespace {

ErrorValue error(long long number) {
    return static_cast<ErrorValue>(number);
}

std::string name_of(ErrorValue value) {
    return get_error_string(value).name();
}

std::string detailed(ErrorValue value) {
    return get_error_string_pretty(value, ErrorMessageDetails::SymbolicName);
}

std::string plain(ErrorValue value) {
    return get_error_string_pretty(value);
}

struct Row {
    ErrorValue enumerator;
    int number;
    const char* name;
    const char* text;
    const char* detailed_text;
    int exit_code;
};

// Every outcome with its number, its name, both texts and the code a process leaves with.
const Row kRows[] = {
    {HMI_E_SUCCESS, 0, "SUCCESS", "No Error: Success", "No Error: Success (HMI_E_SUCCESS)", 0},
    {HMI_E_FINISHED, 1, "FINISHED", "No Error: Finished", "No Error: Finished (HMI_E_FINISHED)",
     19},
    {HMI_E_DISCONNECTED, 2, "DISCONNECTED", "No Error: Disconnected",
     "No Error: Disconnected (HMI_E_DISCONNECTED)", 2},
    {HMI_E_SHUTDOWN, 3, "SHUTDOWN", "No Error: Shutdown", "No Error: Shutdown (HMI_E_SHUTDOWN)", 3},
    {HMI_E_RESTART, 4, "RESTART", "No Error: Restart required",
     "No Error: Restart required (HMI_E_RESTART)", 4},
    {HMI_E_SKIP, 5, "SKIP", "No Error: Skip", "No Error: Skip (HMI_E_SKIP)", 5},
    {HMI_E_FIRST_INIT, 6, "FIRST_INIT", "No Error: First initialization",
     "No Error: First initialization (HMI_E_FIRST_INIT)", 5},
    {HMI_E_UPGRADE, 7, "UPGRADE", "No Error: Upgrade", "No Error: Upgrade (HMI_E_UPGRADE)", 5},
    {HMI_E_UNCHANGED, 8, "UNCHANGED", "No Error: Unchanged",
     "No Error: Unchanged (HMI_E_UNCHANGED)", 5},
    {HMI_E_IGNORE, 9, "IGNORE", "No Error: Ignore", "No Error: Ignore (HMI_E_IGNORE)", 5},
    {HMI_E_SERVER, 256, "SERVER", "Server error", "Server error (HMI_E_SERVER)", 5},
    {HMI_E_FAIL, 257, "FAIL", "Command failed", "Command failed (HMI_E_FAIL)", 5},
    {HMI_E_UNEXPECTED, 258, "UNEXPECTED", "Unexpected error", "Unexpected error (HMI_E_UNEXPECTED)",
     5},
    {HMI_E_SCRIPT, 259, "SCRIPT", "Script error", "Script error (HMI_E_SCRIPT)", 6},
    {HMI_E_REQUIRED_EXTENSION_MISSING, 260, "REQUIRED_EXTENSION_MISSING",
     "Required extension missing", "Required extension missing (HMI_E_REQUIRED_EXTENSION_MISSING)",
     5},
    {HMI_E_INIT, 261, "INIT", "Initialization failed", "Initialization failed (HMI_E_INIT)", 5},
    {HMI_E_NO_LANGUAGE_FILE, 262, "NO_LANGUAGE_FILE", "No language file",
     "No language file (HMI_E_NO_LANGUAGE_FILE)", 5},
    {HMI_E_SYNTAX, 263, "SYNTAX", "Invalid syntax", "Invalid syntax (HMI_E_SYNTAX)", 6},
    {HMI_E_FILE_NOT_FOUND, 264, "FILE_NOT_FOUND", "File not found",
     "File not found (HMI_E_FILE_NOT_FOUND)", 7},
    {HMI_E_FILESYSTEM, 265, "FILESYSTEM", "Filesystem error", "Filesystem error (HMI_E_FILESYSTEM)",
     5},
    {HMI_E_REQUEST_TOO_LARGE, 266, "REQUEST_TOO_LARGE", "Request too large",
     "Request too large (HMI_E_REQUEST_TOO_LARGE)", 5},
    {HMI_E_DATABASE, 267, "DATABASE", "Database error", "Database error (HMI_E_DATABASE)", 8},
    {HMI_E_INVALID_POINTER, 268, "INVALID_POINTER", "Invalid pointer",
     "Invalid pointer (HMI_E_INVALID_POINTER)", 5},
    {HMI_E_INVALID_PARAMETER, 269, "INVALID_PARAMETER", "Invalid parameter",
     "Invalid parameter (HMI_E_INVALID_PARAMETER)", 9},
    {HMI_E_INVALID_TYPE, 270, "INVALID_TYPE", "Invalid type", "Invalid type (HMI_E_INVALID_TYPE)",
     5},
    {HMI_E_NOT_REGISTERED, 271, "NOT_REGISTERED", "Not registered",
     "Not registered (HMI_E_NOT_REGISTERED)", 5},
    {HMI_E_NOT_IMPLEMENTED, 272, "NOT_IMPLEMENTED", "Not implemented",
     "Not implemented (HMI_E_NOT_IMPLEMENTED)", 5},
    {HMI_E_ID_IN_USE, 273, "ID_IN_USE", "ID in use", "ID in use (HMI_E_ID_IN_USE)", 5},
    {HMI_E_SYMBOL_IN_USE, 274, "SYMBOL_IN_USE", "Symbol in use",
     "Symbol in use (HMI_E_SYMBOL_IN_USE)", 5},
    {HMI_E_INTERRUPTED, 275, "INTERRUPTED", "Interrupted", "Interrupted (HMI_E_INTERRUPTED)", 5},
    {HMI_E_FILE_LOCK, 276, "FILE_LOCK", "File locked", "File locked (HMI_E_FILE_LOCK)", 5},
    {HMI_E_FILE_IN_USE, 277, "FILE_IN_USE", "File in use", "File in use (HMI_E_FILE_IN_USE)", 5},
    {HMI_E_FILE_WRITE, 278, "FILE_WRITE", "Unable to write file",
     "Unable to write file (HMI_E_FILE_WRITE)", 5},
    {HMI_E_INVALID_PATH, 279, "INVALID_PATH", "Invalid path", "Invalid path (HMI_E_INVALID_PATH)",
     5},
    {HMI_E_HANDLE, 280, "HANDLE", "Invalid handle", "Invalid handle (HMI_E_HANDLE)", 5},
    {HMI_E_ENCODE, 281, "ENCODE", "Unable to encode message",
     "Unable to encode message (HMI_E_ENCODE)", 5},
    {HMI_E_DECODE, 282, "DECODE", "Unable to decode message",
     "Unable to decode message (HMI_E_DECODE)", 5},
    {HMI_E_NETWORK, 283, "NETWORK", "Network error", "Network error (HMI_E_NETWORK)", 5},
    {HMI_E_LANGUAGE, 284, "LANGUAGE", "Invalid language", "Invalid language (HMI_E_LANGUAGE)", 5},
    {HMI_E_CACHE, 285, "CACHE", "Invalid cache", "Invalid cache (HMI_E_CACHE)", 5},
    {HMI_E_ENDPOINT_DENIED, 286, "ENDPOINT_DENIED", "Access to endpoint denied",
     "Access to endpoint denied (HMI_E_ENDPOINT_DENIED)", 16},
    {HMI_E_ENDPOINT_BUSY, 287, "ENDPOINT_BUSY", "Endpoint is busy",
     "Endpoint is busy (HMI_E_ENDPOINT_BUSY)", 17},
    {HMI_E_ENDPOINT_INVALID, 288, "ENDPOINT_INVALID", "Invalid endpoint",
     "Invalid endpoint (HMI_E_ENDPOINT_INVALID)", 16},
    {HMI_E_WEBSERVER_UNEXPECTED, 289, "WEBSERVER_UNEXPECTED", "Unexpected error from web server",
     "Unexpected error from web server (HMI_E_WEBSERVER_UNEXPECTED)", 5},
    {HMI_E_WEBSOCKET_UNEXPECTED, 290, "WEBSOCKET_UNEXPECTED", "Unexpected websocket",
     "Unexpected websocket (HMI_E_WEBSOCKET_UNEXPECTED)", 5},
    {HMI_E_LUA_EXEC, 291, "LUA_EXEC", "Unable to execute lua",
     "Unable to execute lua (HMI_E_LUA_EXEC)", 5},
    {HMI_E_ENTRY_NOT_FOUND, 292, "ENTRY_NOT_FOUND", "Entry not found",
     "Entry not found (HMI_E_ENTRY_NOT_FOUND)", 5},
    {HMI_E_INVALID_SYMBOL, 293, "INVALID_SYMBOL", "Invalid symbol",
     "Invalid symbol (HMI_E_INVALID_SYMBOL)", 5},
    {HMI_E_BLACKLISTED, 294, "BLACKLISTED", "Blacklisted", "Blacklisted (HMI_E_BLACKLISTED)", 5},
    {HMI_E_UPLOAD_TIMER_EXPIRED, 295, "UPLOAD_TIMER_EXPIRED", "Upload timer expired",
     "Upload timer expired (HMI_E_UPLOAD_TIMER_EXPIRED)", 5},
    {HMI_E_SERVER_ALREADY_RUNNING, 296, "SERVER_ALREADY_RUNNING", "Server already running",
     "Server already running (HMI_E_SERVER_ALREADY_RUNNING)", 18},
    {HMI_E_PROTOCOL, 297, "PROTOCOL", "Protocol error", "Protocol error (HMI_E_PROTOCOL)", 5},
    {HMI_E_PAGING, 298, "PAGING", "Invalid paging", "Invalid paging (HMI_E_PAGING)", 5},
    {HMI_E_INVALID_SUBSYMBOL, 512, "INVALID_SUBSYMBOL", "Invalid subsymbol",
     "Invalid subsymbol (HMI_E_INVALID_SUBSYMBOL)", 5},
    {HMI_E_SYMBOL_NOT_MAPPED, 513, "SYMBOL_NOT_MAPPED", "Symbol not mapped",
     "Symbol not mapped (HMI_E_SYMBOL_NOT_MAPPED)", 5},
    {HMI_E_SYMBOL_SCHEMA_MISSING, 514, "SYMBOL_SCHEMA_MISSING", "Schmea missing",
     "Schmea missing (HMI_E_SYMBOL_SCHEMA_MISSING)", 5},
    {HMI_E_INVALID_METHOD, 515, "INVALID_METHOD", "Invalid method",
     "Invalid method (HMI_E_INVALID_METHOD)", 5},
    {HMI_E_API, 768, "API", "Invalid API usage", "Invalid API usage (HMI_E_API)", 5},
    {HMI_E_INTERFACE_VERSION, 769, "INTERFACE_VERSION",
     "Invalid interface version - Please update the extension",
     "Invalid interface version - Please update the extension (HMI_E_INTERFACE_VERSION)", 5},
    {HMI_E_INTERFACE_POINTER, 770, "INTERFACE_POINTER", "Invalid interface pointer",
     "Invalid interface pointer (HMI_E_INTERFACE_POINTER)", 5},
    {HMI_E_CRT_NOT_FOUND, 771, "CRT_NOT_FOUND", "CRT not found",
     "CRT not found (HMI_E_CRT_NOT_FOUND)", 5},
    {HMI_E_CRT_INIT, 772, "CRT_INIT", "CRT initialization failed",
     "CRT initialization failed (HMI_E_CRT_INIT)", 5},
    {HMI_E_STORAGE, 1280, "STORAGE", "Config error", "Config error (HMI_E_STORAGE)", 11},
    {HMI_E_STORAGE_WRITE, 1281, "STORAGE_WRITE", "Unable to write configuration",
     "Unable to write configuration (HMI_E_STORAGE_WRITE)", 11},
    {HMI_E_STORAGE_VERSION, 1282, "STORAGE_VERSION", "Invalid configuration version",
     "Invalid configuration version (HMI_E_STORAGE_VERSION)", 11},
    {HMI_E_STORAGE_CREATE, 1283, "STORAGE_CREATE", "Unable to create configuration",
     "Unable to create configuration (HMI_E_STORAGE_CREATE)", 11},
    {HMI_E_STORAGE_STORE, 1284, "STORAGE_STORE", "Unable to write to configuration",
     "Unable to write to configuration (HMI_E_STORAGE_STORE)", 11},
    {HMI_E_STORAGE_LOAD, 1285, "STORAGE_LOAD", "Unable to load configuration",
     "Unable to load configuration (HMI_E_STORAGE_LOAD)", 11},
    {HMI_E_STORAGE_FILE_NOT_FOUND, 1286, "STORAGE_FILE_NOT_FOUND",
     "Unable to find configuration file",
     "Unable to find configuration file (HMI_E_STORAGE_FILE_NOT_FOUND)", 11},
    {HMI_E_STORAGE_ADD_PARAMETER, 1287, "STORAGE_ADD_PARAMETER",
     "Error while adding parameter to configuration",
     "Error while adding parameter to configuration (HMI_E_STORAGE_ADD_PARAMETER)", 11},
    {HMI_E_STORAGE_SCHEMA, 1288, "STORAGE_SCHEMA", "Invalid configuration schema",
     "Invalid configuration schema (HMI_E_STORAGE_SCHEMA)", 11},
    {HMI_E_STORAGE_CONSTRAINT, 1289, "STORAGE_CONSTRAINT", "Configuration constraint failed",
     "Configuration constraint failed (HMI_E_STORAGE_CONSTRAINT)", 11},
    {HMI_E_STORAGE_ADD, 1290, "STORAGE_ADD", "Unable to add configuration",
     "Unable to add configuration (HMI_E_STORAGE_ADD)", 11},
    {HMI_E_STORAGE_EXTENSION, 1291, "STORAGE_EXTENSION", "Invalid storage extension",
     "Invalid storage extension (HMI_E_STORAGE_EXTENSION)", 11},
    {HMI_E_STORAGE_PARAMETER, 1292, "STORAGE_PARAMETER", "Invalid configuration parameter",
     "Invalid configuration parameter (HMI_E_STORAGE_PARAMETER)", 11},
    {HMI_E_STORAGE_TYPE, 1293, "STORAGE_TYPE", "Invalid configuration type",
     "Invalid configuration type (HMI_E_STORAGE_TYPE)", 11},
    {HMI_E_CONNECT, 1294, "CONNECT", "Unable to connect", "Unable to connect (HMI_E_CONNECT)", 5},
    {HMI_E_STORAGE_BACKUP, 1295, "STORAGE_BACKUP", "Error while creating configuration backup",
     "Error while creating configuration backup (HMI_E_STORAGE_BACKUP)", 11},
    {HMI_E_SCHEMA, 1536, "SCHEMA", "Invalid schema", "Invalid schema (HMI_E_SCHEMA)", 12},
    {HMI_E_TYPE_MISMATCH, 1537, "TYPE_MISMATCH", "Type mismatch",
     "Type mismatch (HMI_E_TYPE_MISMATCH)", 12},
    {HMI_E_RANGE_MISMATCH, 1538, "RANGE_MISMATCH", "Range mismatch",
     "Range mismatch (HMI_E_RANGE_MISMATCH)", 12},
    {HMI_E_INVALID_FIELD, 1539, "INVALID_FIELD", "Invalid field",
     "Invalid field (HMI_E_INVALID_FIELD)", 12},
    {HMI_E_REQUIRED_FIELD, 1540, "REQUIRED_FIELD", "Required field",
     "Required field (HMI_E_REQUIRED_FIELD)", 12},
    {HMI_E_UNEXPECTED_FIELD, 1541, "UNEXPECTED_FIELD", "Unexpected field",
     "Unexpected field (HMI_E_UNEXPECTED_FIELD)", 12},
    {HMI_E_ENUM_VALUE_MISMATCH, 1542, "ENUM_VALUE_MISMATCH", "Enum value mismatch",
     "Enum value mismatch (HMI_E_ENUM_VALUE_MISMATCH)", 12},
    {HMI_E_ARRAY_RANGE_MISMATCH, 1543, "ARRAY_RANGE_MISMATCH", "Array range mismatch",
     "Array range mismatch (HMI_E_ARRAY_RANGE_MISMATCH)", 12},
    {HMI_E_STRING_LENGTH_MISMATCH, 1544, "STRING_LENGTH_MISMATCH", "String length mismatch",
     "String length mismatch (HMI_E_STRING_LENGTH_MISMATCH)", 12},
    {HMI_E_MULTIPLE_MATCHES, 1545, "MULTIPLE_MATCHES", "Multiple matches",
     "Multiple matches (HMI_E_MULTIPLE_MATCHES)", 12},
    {HMI_E_NO_MATCHES, 1546, "NO_MATCHES", "No matches", "No matches (HMI_E_NO_MATCHES)", 12},
    {HMI_E_UNIQUE, 1547, "UNIQUE", "Unique constraint failed",
     "Unique constraint failed (HMI_E_UNIQUE)", 12},
    {HMI_E_FORMAT, 1548, "FORMAT", "Invalid format", "Invalid format (HMI_E_FORMAT)", 12},
    {HMI_E_TYPE_MISSING, 1549, "TYPE_MISSING", "Type missing", "Type missing (HMI_E_TYPE_MISSING)",
     12},
    {HMI_E_EXCLUDED, 1550, "EXCLUDED", "Excluded", "Excluded (HMI_E_EXCLUDED)", 12},
    {HMI_E_MIGRATION, 1551, "MIGRATION", "Migration failed", "Migration failed (HMI_E_MIGRATION)",
     12},
    {HMI_E_MIGRATION_RULE, 1552, "MIGRATION_RULE", "Invalid migration rule",
     "Invalid migration rule (HMI_E_MIGRATION_RULE)", 12},
    {HMI_E_MIGRATION_PATH, 1553, "MIGRATION_PATH", "Invalid migration path",
     "Invalid migration path (HMI_E_MIGRATION_PATH)", 12},
    {HMI_E_RECURSION, 1554, "RECURSION", "Recursion", "Recursion (HMI_E_RECURSION)", 12},
    {HMI_E_REGEX, 1555, "REGEX", "Invalid regex", "Invalid regex (HMI_E_REGEX)", 12},
    {HMI_E_EXTENSION, 2048, "EXTENSION", "Extension returned an error",
     "Extension returned an error (HMI_E_EXTENSION)", 13},
    {HMI_E_EXTENSION_LOAD, 2049, "EXTENSION_LOAD", "Unable to load extension",
     "Unable to load extension (HMI_E_EXTENSION_LOAD)", 13},
    {HMI_E_INVALID_DOMAIN, 2050, "INVALID_DOMAIN", "Invalid domain",
     "Invalid domain (HMI_E_INVALID_DOMAIN)", 13},
    {HMI_E_DOMAIN_ACTIVE, 2051, "DOMAIN_ACTIVE", "Domain is active",
     "Domain is active (HMI_E_DOMAIN_ACTIVE)", 13},
    {HMI_E_LOG_EXTENSION, 2052, "LOG_EXTENSION", "No logger extension found",
     "No logger extension found (HMI_E_LOG_EXTENSION)", 13},
    {HMI_E_AUTH_EXTENSION, 2053, "AUTH_EXTENSION", "No authentication extension found",
     "No authentication extension found (HMI_E_AUTH_EXTENSION)", 13},
    {HMI_E_EXTENSION_CONFIG, 2054, "EXTENSION_CONFIG", "Invalid extension configuration",
     "Invalid extension configuration (HMI_E_EXTENSION_CONFIG)", 13},
    {HMI_E_EXTENSION_HANDLER, 2055, "EXTENSION_HANDLER", "Invalid extension handler",
     "Invalid extension handler (HMI_E_EXTENSION_HANDLER)", 13},
    {HMI_E_UNLOAD_FAILED, 2056, "UNLOAD_FAILED", "Extension unload failed",
     "Extension unload failed (HMI_E_UNLOAD_FAILED)", 13},
    {HMI_E_AUTH_WAIT, 2057, "AUTH_WAIT", "Waiting for authentication",
     "Waiting for authentication (HMI_E_AUTH_WAIT)", 13},
    {HMI_E_DOMAIN_DISABLED, 2058, "DOMAIN_DISABLED", "Domain is disabled",
     "Domain is disabled (HMI_E_DOMAIN_DISABLED)", 13},
    {HMI_E_EXTENSION_CONNECT, 2059, "EXTENSION_CONNECT", "Connecting to extension failed",
     "Connecting to extension failed (HMI_E_EXTENSION_CONNECT)", 13},
    {HMI_E_REMOTE_CONNECT, 2060, "REMOTE_CONNECT", "Connecting to remote system failed",
     "Connecting to remote system failed (HMI_E_REMOTE_CONNECT)", 13},
    {HMI_E_REMOTE_TIMEOUT, 2061, "REMOTE_TIMEOUT", "Remote system not responding",
     "Remote system not responding (HMI_E_REMOTE_TIMEOUT)", 13},
    {HMI_E_SESSION, 4096, "SESSION", "Session error", "Session error (HMI_E_SESSION)", 5},
    {HMI_E_INVALID_SESSION, 4097, "INVALID_SESSION", "Invalid session",
     "Invalid session (HMI_E_INVALID_SESSION)", 5},
    {HMI_E_AUTH_USER_NOT_FOUND, 4098, "AUTH_USER_NOT_FOUND", "User not found",
     "User not found (HMI_E_AUTH_USER_NOT_FOUND)", 5},
    {HMI_E_AUTH_FAILED, 4099, "AUTH_FAILED", "Authentication failed",
     "Authentication failed (HMI_E_AUTH_FAILED)", 5},
    {HMI_E_AUTH_GROUP_NOT_FOUND, 4100, "AUTH_GROUP_NOT_FOUND", "Group not found",
     "Group not found (HMI_E_AUTH_GROUP_NOT_FOUND)", 5},
    {HMI_E_INSUFFICIENT_ACCESS, 4101, "INSUFFICIENT_ACCESS", "Insufficient access",
     "Insufficient access (HMI_E_INSUFFICIENT_ACCESS)", 5},
    {HMI_E_CREATE_SESSION, 4102, "CREATE_SESSION", "Create session",
     "Create session (HMI_E_CREATE_SESSION)", 5},
    {HMI_E_SESSION_NOT_FOUND, 4103, "SESSION_NOT_FOUND", "Session not found",
     "Session not found (HMI_E_SESSION_NOT_FOUND)", 5},
    {HMI_E_CERTIFICATE, 4104, "CERTIFICATE", "Certificate", "Certificate (HMI_E_CERTIFICATE)", 5},
    {HMI_E_NO_LOGIN_DATA, 4105, "NO_LOGIN_DATA", "No login data",
     "No login data (HMI_E_NO_LOGIN_DATA)", 5},
    {HMI_E_ALREADY_LOGGED_IN, 4106, "ALREADY_LOGGED_IN", "Already logged in",
     "Already logged in (HMI_E_ALREADY_LOGGED_IN)", 5},
    {HMI_E_SESSION_TIMEOUT, 4107, "SESSION_TIMEOUT", "Session timeout",
     "Session timeout (HMI_E_SESSION_TIMEOUT)", 15},
    {HMI_E_TOO_MANY_CONNECTIONS, 4108, "TOO_MANY_CONNECTIONS", "Too many connections",
     "Too many connections (HMI_E_TOO_MANY_CONNECTIONS)", 5},
    {HMI_E_DECRYPT, 4109, "DECRYPT", "Unable to decrypt", "Unable to decrypt (HMI_E_DECRYPT)", 5},
    {HMI_E_AUTH_DISABLED, 4110, "AUTH_DISABLED", "Authentication is disabled",
     "Authentication is disabled (HMI_E_AUTH_DISABLED)", 5},
    {HMI_E_CERTIFICATE_NOT_VALID, 4111, "CERTIFICATE_NOT_VALID", "Certificate not valid",
     "Certificate not valid (HMI_E_CERTIFICATE_NOT_VALID)", 14},
    {HMI_E_CHECKSUM, 4608, "CHECKSUM", "Invalid checksum", "Invalid checksum (HMI_E_CHECKSUM)", 14},
    {HMI_E_INVALID_CHECKSUM, 4609, "INVALID_CHECKSUM", "Invalid checksum",
     "Invalid checksum (HMI_E_INVALID_CHECKSUM)", 14},
    {HMI_E_CHECKSUM_UNEXPECTED, 4610, "CHECKSUM_UNEXPECTED", "Checksum unexpected",
     "Checksum unexpected (HMI_E_CHECKSUM_UNEXPECTED)", 14},
    {HMI_E_CHECKSUM_MATCH, 4611, "CHECKSUM_MATCH", "Checksum mismatch",
     "Checksum mismatch (HMI_E_CHECKSUM_MATCH)", 14},
    {HMI_E_SIGNATURE, 4612, "SIGNATURE", "Invalid signature", "Invalid signature (HMI_E_SIGNATURE)",
     14},
    {HMI_E_SIGNATURE_MISSING, 4613, "SIGNATURE_MISSING", "Signature missing",
     "Signature missing (HMI_E_SIGNATURE_MISSING)", 14},
    {HMI_E_SIGNATURE_MISMATCH, 4614, "SIGNATURE_MISMATCH", "Signature mismatch",
     "Signature mismatch (HMI_E_SIGNATURE_MISMATCH)", 14},
    {HMI_E_KEY_MISSING, 4615, "KEY_MISSING", "Security key missing",
     "Security key missing (HMI_E_KEY_MISSING)", 14},
    {HMI_E_RESTART_REQUIRED, 4616, "RESTART_REQUIRED", "Restart required",
     "Restart required (HMI_E_RESTART_REQUIRED)", 14},
    {HMI_E_INITIALIZE_PASSWORD, 4617, "INITIALIZE_PASSWORD", "Password not initialized",
     "Password not initialized (HMI_E_INITIALIZE_PASSWORD)", 14},
};

// Groups digits by threes with '.' in the global locale for the life of the object, so that a
// number written through a text stream shows it.
class GroupedDigits {
public:
    GroupedDigits()
        : previous_(std::locale::global(std::locale(std::locale::classic(), new Punct))) {}
    ~GroupedDigits() { std::locale::global(previous_); }
    GroupedDigits(const GroupedDigits&) = delete;
    GroupedDigits& operator=(const GroupedDigits&) = delete;

private:
    struct Punct : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale previous_;
};

std::set<int> named_numbers() {
    std::set<int> numbers;
    for (const Row& row : kRows) {
        numbers.insert(row.number);
    }
    return numbers;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// The enumeration
// ---------------------------------------------------------------------------------------------

TEST(ErrorValue, IsSignedThirtyTwoBits) {
    EXPECT_TRUE((std::is_same<std::underlying_type_t<ErrorValue>, std::int32_t>::value));
    EXPECT_EQ(sizeof(ErrorValue), 4u);
}

TEST(ErrorValue, CarriesNumbersWithoutARow) {
    EXPECT_EQ(static_cast<std::int32_t>(error(INT32_MIN)), INT32_MIN);
    EXPECT_EQ(static_cast<std::int32_t>(error(INT32_MAX)), INT32_MAX);
    EXPECT_EQ(static_cast<std::int32_t>(error(7000)), 7000);
}

TEST(ErrorValue, EveryRowHasItsNumber) {
    for (const Row& row : kRows) {
        EXPECT_EQ(static_cast<int>(row.enumerator), row.number) << row.name;
    }
}

TEST(ErrorValue, CatalogueHasOneHundredThirtyEightDistinctRows) {
    EXPECT_EQ(sizeof(kRows) / sizeof(kRows[0]), 138u);
    EXPECT_EQ(named_numbers().size(), 138u);
}

TEST(ErrorValue, BlocksAreDense) {
    const std::set<int> numbers = named_numbers();
    const int blocks[][2] = {{0, 9},       {256, 298},   {512, 515},   {768, 772},  {1280, 1295},
                             {1536, 1555}, {2048, 2061}, {4096, 4111}, {4608, 4617}};
    std::size_t covered = 0;
    for (const auto& block : blocks) {
        for (int number = block[0]; number <= block[1]; ++number) {
            EXPECT_EQ(numbers.count(number), 1u) << number;
            ++covered;
        }
    }
    EXPECT_EQ(covered, numbers.size());
}

TEST(ErrorMessageDetails, IsSignedThirtyTwoBitsWithTheTwoFlags) {
    EXPECT_TRUE((std::is_same<std::underlying_type_t<ErrorMessageDetails>, std::int32_t>::value));
    EXPECT_EQ(static_cast<int>(ErrorMessageDetails::None), 0);
    EXPECT_EQ(static_cast<int>(ErrorMessageDetails::SymbolicName), 1);
}

// ---------------------------------------------------------------------------------------------
// Names and texts, row by row
// ---------------------------------------------------------------------------------------------

TEST(ErrorString, EveryRowHasItsSymbolicName) {
    for (const Row& row : kRows) {
        EXPECT_EQ(name_of(error(row.number)), row.name) << row.number;
    }
}

TEST(ErrorStringPretty, EveryRowHasItsText) {
    for (const Row& row : kRows) {
        EXPECT_EQ(get_error_string_pretty(error(row.number), ErrorMessageDetails::None), row.text)
            << row.name;
    }
}

TEST(ErrorStringPretty, EveryRowHasItsDetailedText) {
    for (const Row& row : kRows) {
        EXPECT_EQ(detailed(error(row.number)), row.detailed_text) << row.name;
    }
}

TEST(ErrorStringPretty, DefaultsToTheTextAlone) {
    for (const Row& row : kRows) {
        EXPECT_EQ(plain(error(row.number)), row.text) << row.name;
    }
}

TEST(ErrorStringPretty, FlagsOtherThanOneGiveTheTextAlone) {
    for (const int flag : {2, 3, -1, 255, INT32_MIN, INT32_MAX}) {
        const auto details = static_cast<ErrorMessageDetails>(flag);
        EXPECT_EQ(get_error_string_pretty(HMI_E_INVALID_PARAMETER, details), "Invalid parameter")
            << flag;
        EXPECT_EQ(get_error_string_pretty(error(7000), details), "7000") << flag;
    }
}

TEST(ErrorStringPretty, InvalidParameterReadsWithItsName) {
    EXPECT_EQ(detailed(HMI_E_INVALID_PARAMETER), "Invalid parameter (HMI_E_INVALID_PARAMETER)");
}

TEST(ErrorStringPretty, KeepsTheEstablishedWordings) {
    EXPECT_EQ(plain(HMI_E_SYMBOL_SCHEMA_MISSING), "Schmea missing");
    EXPECT_EQ(plain(HMI_E_CHECKSUM), "Invalid checksum");
    EXPECT_EQ(plain(HMI_E_INVALID_CHECKSUM), "Invalid checksum");
    EXPECT_EQ(name_of(HMI_E_CHECKSUM), "CHECKSUM");
    EXPECT_EQ(name_of(HMI_E_INVALID_CHECKSUM), "INVALID_CHECKSUM");
}

TEST(ErrorStringPretty, OutcomesThatAreNoFailureSaySo) {
    for (const Row& row : kRows) {
        const bool no_error = std::string(row.text).rfind("No Error: ", 0) == 0;
        EXPECT_EQ(no_error, row.number >= 0 && row.number <= 9) << row.name;
    }
}

// ---------------------------------------------------------------------------------------------
// Numbers without a row
// ---------------------------------------------------------------------------------------------

TEST(ErrorString, NumbersWithoutARowAreError) {
    for (const long long number : {10LL, 299LL, 516LL, -1LL, -258LL, 255LL, 773LL, 1296LL, 4112LL,
                                   4618LL, 7000LL, 0x10100LL, INT32_MIN * 1LL, INT32_MAX * 1LL}) {
        EXPECT_EQ(name_of(error(number)), "ERROR") << number;
    }
}

TEST(ErrorStringPretty, NumberWithoutARowReadsAsItsDecimal) {
    EXPECT_EQ(get_error_string_pretty(error(-1), ErrorMessageDetails::None), "-1");
    EXPECT_EQ(plain(error(7000)), "7000");
    EXPECT_EQ(plain(error(INT32_MIN)), "-2147483648");
    EXPECT_EQ(plain(error(INT32_MAX)), "2147483647");
    EXPECT_EQ(plain(error(1234567)), "1234567");
}

TEST(ErrorStringPretty, NumberWithoutARowHasTheFallbackName) {
    EXPECT_EQ(detailed(error(7000)), "7000 (HMI_E_ERROR)");
    EXPECT_EQ(detailed(error(-1)), "-1 (HMI_E_ERROR)");
    EXPECT_EQ(detailed(error(10)), "10 (HMI_E_ERROR)");
}

TEST(ErrorStringPretty, NumberWithoutARowIsWrittenUnderTheGlobalLocale) {
    const GroupedDigits grouped;
    EXPECT_EQ(plain(error(7000)), "7.000");
    EXPECT_EQ(plain(error(-1)), "-1");
    EXPECT_EQ(detailed(error(-1234567)), "-1.234.567 (HMI_E_ERROR)");
    EXPECT_EQ(get_error_string_with_path_pretty(error(4112), "a"), "4.112 [Path: 'a']");
    EXPECT_EQ(name_of(error(7000)), "ERROR");
    EXPECT_EQ(detailed(HMI_E_STORAGE_BACKUP),
              "Error while creating configuration backup (HMI_E_STORAGE_BACKUP)");
}

TEST(ErrorString, ReturnsAnIndependentCopyOfTheName) {
    String name = get_error_string(HMI_E_FAIL);
    name.set_name("changed");
    String fallback = get_error_string(error(7000));
    fallback.set_name("changed");
    EXPECT_EQ(name_of(HMI_E_FAIL), "FAIL");
    EXPECT_EQ(name_of(error(7000)), "ERROR");
    EXPECT_EQ(detailed(error(7000)), "7000 (HMI_E_ERROR)");
}

TEST(ErrorString, EveryOtherNumberNearTheBlocksHasNoNameAndNoText) {
    const std::set<int> numbers = named_numbers();
    for (int number = -600; number <= 5200; ++number) {
        if (numbers.count(number) != 0) {
            continue;
        }
        const std::string decimal = std::to_string(number);
        EXPECT_EQ(name_of(error(number)), "ERROR") << number;
        EXPECT_EQ(plain(error(number)), decimal);
        EXPECT_EQ(detailed(error(number)), decimal + " (HMI_E_ERROR)");
    }
}

// ---------------------------------------------------------------------------------------------
// Texts with a path
// ---------------------------------------------------------------------------------------------

TEST(ErrorStringWithPathPretty, EmptyPathIsThePlainText) {
    for (const Row& row : kRows) {
        EXPECT_EQ(get_error_string_with_path_pretty(error(row.number), ""),
                  get_error_string_pretty(error(row.number), ErrorMessageDetails::None));
    }
    EXPECT_EQ(get_error_string_with_path_pretty(error(-1), ""), "-1");
}

TEST(ErrorStringWithPathPretty, AppendsThePathWithoutDetails) {
    for (const Row& row : kRows) {
        EXPECT_EQ(get_error_string_with_path_pretty(error(row.number), "Plant::Pump[2]"),
                  std::string(row.text) + " [Path: 'Plant::Pump[2]']")
            << row.name;
    }
}

TEST(ErrorStringWithPathPretty, InvalidPathReadsWithThePath) {
    EXPECT_EQ(get_error_string_with_path_pretty(HMI_E_INVALID_PATH, "a::b[1]"),
              "Invalid path [Path: 'a::b[1]']");
}

TEST(ErrorStringWithPathPretty, NumberWithoutARowReadsAsItsDecimal) {
    EXPECT_EQ(get_error_string_with_path_pretty(error(7000), "x"), "7000 [Path: 'x']");
}

TEST(ErrorStringWithPathPretty, PathIsWrittenUnescaped) {
    EXPECT_EQ(get_error_string_with_path_pretty(HMI_E_ENTRY_NOT_FOUND, "it's"),
              "Entry not found [Path: 'it's']");
    EXPECT_EQ(get_error_string_with_path_pretty(HMI_E_ENTRY_NOT_FOUND, "'\"\\\n]"),
              "Entry not found [Path: ''\"\\\n]']");
    EXPECT_EQ(get_error_string_with_path_pretty(HMI_E_ENTRY_NOT_FOUND, " "),
              "Entry not found [Path: ' ']");
}

TEST(ErrorStringWithPathPretty, KeepsEveryByteOfThePath) {
    const std::string path("a\0b\xff", 4);
    const char expected[] = "No Error: Success [Path: 'a\0b\xff']";
    EXPECT_EQ(get_error_string_with_path_pretty(HMI_E_SUCCESS, path),
              std::string(expected, sizeof expected - 1));
}

// ---------------------------------------------------------------------------------------------
// Exit codes
// ---------------------------------------------------------------------------------------------

TEST(ErrorValueToExitCode, EveryRowHasItsExitCode) {
    for (const Row& row : kRows) {
        EXPECT_EQ(error_value_to_exit_code(error(row.number)), row.exit_code) << row.name;
    }
}

TEST(ErrorValueToExitCode, RowsWithCodesOfTheirOwn) {
    EXPECT_EQ(error_value_to_exit_code(HMI_E_SUCCESS), 0);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_FINISHED), 19);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_SCRIPT), 6);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_SYNTAX), 6);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_ENDPOINT_DENIED), 16);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_ENDPOINT_INVALID), 16);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_SESSION_TIMEOUT), 15);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_CERTIFICATE_NOT_VALID), 14);
}

TEST(ErrorValueToExitCode, ConnectLeavesItsBlock) {
    EXPECT_EQ(error_value_to_exit_code(HMI_E_CONNECT), 5);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_STORAGE_TYPE), 11);
    EXPECT_EQ(error_value_to_exit_code(HMI_E_STORAGE_BACKUP), 11);
}

TEST(ErrorValueToExitCode, BlocksAreTakenWhole) {
    struct Block {
        int first;
        int code;
    };
    for (const Block block :
         {Block{0x500, 11}, Block{0x600, 12}, Block{0x800, 13}, Block{0x1200, 14}}) {
        for (int number = block.first; number <= block.first + 0xFF; ++number) {
            if (number == HMI_E_CONNECT) {
                continue;
            }
            EXPECT_EQ(error_value_to_exit_code(error(number)), block.code) << number;
        }
    }
    EXPECT_EQ(error_value_to_exit_code(error(1296)), 11);
    EXPECT_EQ(error_value_to_exit_code(error(0x5FF)), 11);
}

TEST(ErrorValueToExitCode, OtherBlocksGiveFive) {
    EXPECT_EQ(error_value_to_exit_code(error(4112)), 5);
    for (const int first : {0x100, 0x200, 0x300, 0x400, 0x700, 0x900, 0x1000, 0x1100, 0x1300}) {
        for (int number = first; number <= first + 0xFF; ++number) {
            if (number == HMI_E_SCRIPT || number == HMI_E_SYNTAX ||
                number == HMI_E_FILE_NOT_FOUND || number == HMI_E_DATABASE ||
                number == HMI_E_INVALID_PARAMETER || number == HMI_E_ENDPOINT_DENIED ||
                number == HMI_E_ENDPOINT_INVALID || number == HMI_E_ENDPOINT_BUSY ||
                number == HMI_E_SERVER_ALREADY_RUNNING || number == HMI_E_SESSION_TIMEOUT ||
                number == HMI_E_CERTIFICATE_NOT_VALID) {
                continue;
            }
            EXPECT_EQ(error_value_to_exit_code(error(number)), 5) << number;
        }
    }
}

TEST(ErrorValueToExitCode, NumbersWithoutARowBelowTheGeneralBlockGiveFive) {
    for (int number = 10; number < 0x100; ++number) {
        EXPECT_EQ(error_value_to_exit_code(error(number)), 5) << number;
    }
}

TEST(ErrorValueToExitCode, LooksOnlyAtTheBitsAboveTheLowEight) {
    // Higher bits make a different block, not the same one.
    EXPECT_EQ(error_value_to_exit_code(error(0x10500)), 5);
    EXPECT_EQ(error_value_to_exit_code(error(0x1500)), 5);
    EXPECT_EQ(error_value_to_exit_code(error(0x1600)), 5);
    EXPECT_EQ(error_value_to_exit_code(error(0x11200)), 5);
    EXPECT_EQ(error_value_to_exit_code(error(0x4FF)), 5);
    EXPECT_EQ(error_value_to_exit_code(error(0x700)), 5);
}

TEST(ErrorValueToExitCode, NegativeAndOtherNumbersGiveFive) {
    for (const long long number : {-1LL, -2LL, -256LL, -0x500LL, -0x1200LL, INT32_MIN * 1LL,
                                   INT32_MAX * 1LL, 10LL, 255LL, 7000LL}) {
        EXPECT_EQ(error_value_to_exit_code(error(number)), 5) << number;
    }
}

TEST(ExitCodeToErrorValue, EveryCodeOfTheTable) {
    const struct {
        int code;
        ErrorValue value;
    } table[] = {
        {0, HMI_E_SUCCESS},
        {1, HMI_E_UNEXPECTED},
        {2, HMI_E_DISCONNECTED},
        {3, HMI_E_SHUTDOWN},
        {4, HMI_E_RESTART},
        {5, HMI_E_UNEXPECTED},
        {6, HMI_E_SYNTAX},
        {7, HMI_E_FILE_NOT_FOUND},
        {8, HMI_E_DATABASE},
        {9, HMI_E_INVALID_PARAMETER},
        {10, HMI_E_UNEXPECTED},
        {11, HMI_E_STORAGE},
        {12, HMI_E_SCHEMA},
        {13, HMI_E_EXTENSION},
        {14, HMI_E_UNEXPECTED},
        {15, HMI_E_SESSION_TIMEOUT},
        {16, HMI_E_ENDPOINT_INVALID},
        {17, HMI_E_ENDPOINT_BUSY},
        {18, HMI_E_SERVER_ALREADY_RUNNING},
        {19, HMI_E_FINISHED},
    };
    for (const auto& row : table) {
        EXPECT_EQ(exit_code_to_error_value(row.code), row.value) << row.code;
    }
}

TEST(ExitCodeToErrorValue, AnyOtherCodeIsUnexpected) {
    for (const int code : {20, 21, 100, 255, 256, 1280, INT_MAX, -1, -2, -19, INT_MIN}) {
        EXPECT_EQ(exit_code_to_error_value(code), HMI_E_UNEXPECTED) << code;
    }
}

TEST(ExitCodes, TheTwoDirectionsAreNotInverse) {
    EXPECT_EQ(error_value_to_exit_code(HMI_E_FINISHED), 19);
    EXPECT_EQ(exit_code_to_error_value(19), HMI_E_FINISHED);
    EXPECT_EQ(exit_code_to_error_value(1), HMI_E_UNEXPECTED);
    EXPECT_EQ(exit_code_to_error_value(error_value_to_exit_code(HMI_E_SCRIPT)), HMI_E_SYNTAX);
    EXPECT_EQ(exit_code_to_error_value(error_value_to_exit_code(HMI_E_CHECKSUM)), HMI_E_UNEXPECTED);
    EXPECT_EQ(exit_code_to_error_value(error_value_to_exit_code(HMI_E_CERTIFICATE_NOT_VALID)),
              HMI_E_UNEXPECTED);
    EXPECT_EQ(exit_code_to_error_value(error_value_to_exit_code(HMI_E_ENDPOINT_DENIED)),
              HMI_E_ENDPOINT_INVALID);
}

TEST(ExitCodes, RoundTripHoldsForTheCodesThatNameOneOutcome) {
    for (const ErrorValue value :
         {HMI_E_SUCCESS, HMI_E_FINISHED, HMI_E_DISCONNECTED, HMI_E_SHUTDOWN, HMI_E_RESTART,
          HMI_E_SYNTAX, HMI_E_FILE_NOT_FOUND, HMI_E_DATABASE, HMI_E_INVALID_PARAMETER,
          HMI_E_STORAGE, HMI_E_SCHEMA, HMI_E_EXTENSION, HMI_E_SESSION_TIMEOUT,
          HMI_E_ENDPOINT_INVALID, HMI_E_ENDPOINT_BUSY, HMI_E_SERVER_ALREADY_RUNNING}) {
        EXPECT_EQ(exit_code_to_error_value(error_value_to_exit_code(value)), value) << value;
    }
}

// ---------------------------------------------------------------------------------------------
// Robustness
// ---------------------------------------------------------------------------------------------

TEST(ErrorStringWithPathPretty, KeepsAHugePath) {
    const std::string path(1 << 20, '\xff');
    const std::string text = get_error_string_with_path_pretty(HMI_E_INVALID_PATH, path);
    EXPECT_EQ(text.size(), std::string("Invalid path [Path: '']").size() + path.size());
    EXPECT_EQ(text, "Invalid path [Path: '" + path + "']");
}

TEST(ErrorStringWithPathPretty, SurvivesRandomBytes) {
    std::mt19937 generator(20240531);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> length(0, 64);
    std::uniform_int_distribution<int> number(-5000, 5000);
    for (int round = 0; round < 2000; ++round) {
        std::string path;
        for (int i = length(generator); i > 0; --i) {
            path.push_back(static_cast<char>(byte(generator)));
        }
        const ErrorValue value = error(number(generator));
        const std::string text = plain(value);
        EXPECT_EQ(get_error_string_with_path_pretty(value, path),
                  path.empty() ? text : text + " [Path: '" + path + "']");
    }
}
