// The error catalogue: names, texts and exit codes of ErrorValue, and the result stream builders.

#include "helper/api_helper.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "helper/algorithm/number.h"

namespace Quorvane {

// =============================================================================================
// Error catalogue
// =============================================================================================

namespace {

struct CatalogueRow {
    ErrorValue value;
    const char* name;
    const char* text;
};

// The symbolic name is the enumerator's own spelling, so the two cannot drift apart.
#define ROW(name, text) \
    { HMI_E_##name, #name, text }

// Every named outcome, in ascending order of its number. Two rows share "Invalid checksum", and
// "Schmea missing" is the established wording that hosts and logs already match on.
constexpr CatalogueRow kCatalogue[] = {
    // Outcomes that are no failure
    ROW(SUCCESS, "No Error: Success"),
    ROW(FINISHED, "No Error: Finished"),
    ROW(DISCONNECTED, "No Error: Disconnected"),
    ROW(SHUTDOWN, "No Error: Shutdown"),
    ROW(RESTART, "No Error: Restart required"),
    ROW(SKIP, "No Error: Skip"),
    ROW(FIRST_INIT, "No Error: First initialization"),
    ROW(UPGRADE, "No Error: Upgrade"),
    ROW(UNCHANGED, "No Error: Unchanged"),
    ROW(IGNORE, "No Error: Ignore"),
    // General
    ROW(SERVER, "Server error"),
    ROW(FAIL, "Command failed"),
    ROW(UNEXPECTED, "Unexpected error"),
    ROW(SCRIPT, "Script error"),
    ROW(REQUIRED_EXTENSION_MISSING, "Required extension missing"),
    ROW(INIT, "Initialization failed"),
    ROW(NO_LANGUAGE_FILE, "No language file"),
    ROW(SYNTAX, "Invalid syntax"),
    ROW(FILE_NOT_FOUND, "File not found"),
    ROW(FILESYSTEM, "Filesystem error"),
    ROW(REQUEST_TOO_LARGE, "Request too large"),
    ROW(DATABASE, "Database error"),
    ROW(INVALID_POINTER, "Invalid pointer"),
    ROW(INVALID_PARAMETER, "Invalid parameter"),
    ROW(INVALID_TYPE, "Invalid type"),
    ROW(NOT_REGISTERED, "Not registered"),
    ROW(NOT_IMPLEMENTED, "Not implemented"),
    ROW(ID_IN_USE, "ID in use"),
    ROW(SYMBOL_IN_USE, "Symbol in use"),
    ROW(INTERRUPTED, "Interrupted"),
    ROW(FILE_LOCK, "File locked"),
    ROW(FILE_IN_USE, "File in use"),
    ROW(FILE_WRITE, "Unable to write file"),
    ROW(INVALID_PATH, "Invalid path"),
    ROW(HANDLE, "Invalid handle"),
    ROW(ENCODE, "Unable to encode message"),
    ROW(DECODE, "Unable to decode message"),
    ROW(NETWORK, "Network error"),
    ROW(LANGUAGE, "Invalid language"),
    ROW(CACHE, "Invalid cache"),
    ROW(ENDPOINT_DENIED, "Access to endpoint denied"),
    ROW(ENDPOINT_BUSY, "Endpoint is busy"),
    ROW(ENDPOINT_INVALID, "Invalid endpoint"),
    ROW(WEBSERVER_UNEXPECTED, "Unexpected error from web server"),
    ROW(WEBSOCKET_UNEXPECTED, "Unexpected websocket"),
    ROW(LUA_EXEC, "Unable to execute lua"),
    ROW(ENTRY_NOT_FOUND, "Entry not found"),
    ROW(INVALID_SYMBOL, "Invalid symbol"),
    ROW(BLACKLISTED, "Blacklisted"),
    ROW(UPLOAD_TIMER_EXPIRED, "Upload timer expired"),
    ROW(SERVER_ALREADY_RUNNING, "Server already running"),
    ROW(PROTOCOL, "Protocol error"),
    ROW(PAGING, "Invalid paging"),
    // Symbols
    ROW(INVALID_SUBSYMBOL, "Invalid subsymbol"),
    ROW(SYMBOL_NOT_MAPPED, "Symbol not mapped"),
    ROW(SYMBOL_SCHEMA_MISSING, "Schmea missing"),
    ROW(INVALID_METHOD, "Invalid method"),
    // Interface
    ROW(API, "Invalid API usage"),
    ROW(INTERFACE_VERSION, "Invalid interface version - Please update the extension"),
    ROW(INTERFACE_POINTER, "Invalid interface pointer"),
    ROW(CRT_NOT_FOUND, "CRT not found"),
    ROW(CRT_INIT, "CRT initialization failed"),
    // Storage
    ROW(STORAGE, "Config error"),
    ROW(STORAGE_WRITE, "Unable to write configuration"),
    ROW(STORAGE_VERSION, "Invalid configuration version"),
    ROW(STORAGE_CREATE, "Unable to create configuration"),
    ROW(STORAGE_STORE, "Unable to write to configuration"),
    ROW(STORAGE_LOAD, "Unable to load configuration"),
    ROW(STORAGE_FILE_NOT_FOUND, "Unable to find configuration file"),
    ROW(STORAGE_ADD_PARAMETER, "Error while adding parameter to configuration"),
    ROW(STORAGE_SCHEMA, "Invalid configuration schema"),
    ROW(STORAGE_CONSTRAINT, "Configuration constraint failed"),
    ROW(STORAGE_ADD, "Unable to add configuration"),
    ROW(STORAGE_EXTENSION, "Invalid storage extension"),
    ROW(STORAGE_PARAMETER, "Invalid configuration parameter"),
    ROW(STORAGE_TYPE, "Invalid configuration type"),
    ROW(CONNECT, "Unable to connect"),
    ROW(STORAGE_BACKUP, "Error while creating configuration backup"),
    // Schema
    ROW(SCHEMA, "Invalid schema"),
    ROW(TYPE_MISMATCH, "Type mismatch"),
    ROW(RANGE_MISMATCH, "Range mismatch"),
    ROW(INVALID_FIELD, "Invalid field"),
    ROW(REQUIRED_FIELD, "Required field"),
    ROW(UNEXPECTED_FIELD, "Unexpected field"),
    ROW(ENUM_VALUE_MISMATCH, "Enum value mismatch"),
    ROW(ARRAY_RANGE_MISMATCH, "Array range mismatch"),
    ROW(STRING_LENGTH_MISMATCH, "String length mismatch"),
    ROW(MULTIPLE_MATCHES, "Multiple matches"),
    ROW(NO_MATCHES, "No matches"),
    ROW(UNIQUE, "Unique constraint failed"),
    ROW(FORMAT, "Invalid format"),
    ROW(TYPE_MISSING, "Type missing"),
    ROW(EXCLUDED, "Excluded"),
    ROW(MIGRATION, "Migration failed"),
    ROW(MIGRATION_RULE, "Invalid migration rule"),
    ROW(MIGRATION_PATH, "Invalid migration path"),
    ROW(RECURSION, "Recursion"),
    ROW(REGEX, "Invalid regex"),
    // Extension
    ROW(EXTENSION, "Extension returned an error"),
    ROW(EXTENSION_LOAD, "Unable to load extension"),
    ROW(INVALID_DOMAIN, "Invalid domain"),
    ROW(DOMAIN_ACTIVE, "Domain is active"),
    ROW(LOG_EXTENSION, "No logger extension found"),
    ROW(AUTH_EXTENSION, "No authentication extension found"),
    ROW(EXTENSION_CONFIG, "Invalid extension configuration"),
    ROW(EXTENSION_HANDLER, "Invalid extension handler"),
    ROW(UNLOAD_FAILED, "Extension unload failed"),
    ROW(AUTH_WAIT, "Waiting for authentication"),
    ROW(DOMAIN_DISABLED, "Domain is disabled"),
    ROW(EXTENSION_CONNECT, "Connecting to extension failed"),
    ROW(REMOTE_CONNECT, "Connecting to remote system failed"),
    ROW(REMOTE_TIMEOUT, "Remote system not responding"),
    // Session
    ROW(SESSION, "Session error"),
    ROW(INVALID_SESSION, "Invalid session"),
    ROW(AUTH_USER_NOT_FOUND, "User not found"),
    ROW(AUTH_FAILED, "Authentication failed"),
    ROW(AUTH_GROUP_NOT_FOUND, "Group not found"),
    ROW(INSUFFICIENT_ACCESS, "Insufficient access"),
    ROW(CREATE_SESSION, "Create session"),
    ROW(SESSION_NOT_FOUND, "Session not found"),
    ROW(CERTIFICATE, "Certificate"),
    ROW(NO_LOGIN_DATA, "No login data"),
    ROW(ALREADY_LOGGED_IN, "Already logged in"),
    ROW(SESSION_TIMEOUT, "Session timeout"),
    ROW(TOO_MANY_CONNECTIONS, "Too many connections"),
    ROW(DECRYPT, "Unable to decrypt"),
    ROW(AUTH_DISABLED, "Authentication is disabled"),
    ROW(CERTIFICATE_NOT_VALID, "Certificate not valid"),
    // Integrity
    ROW(CHECKSUM, "Invalid checksum"),
    ROW(INVALID_CHECKSUM, "Invalid checksum"),
    ROW(CHECKSUM_UNEXPECTED, "Checksum unexpected"),
    ROW(CHECKSUM_MATCH, "Checksum mismatch"),
    ROW(SIGNATURE, "Invalid signature"),
    ROW(SIGNATURE_MISSING, "Signature missing"),
    ROW(SIGNATURE_MISMATCH, "Signature mismatch"),
    ROW(KEY_MISSING, "Security key missing"),
    ROW(RESTART_REQUIRED, "Restart required"),
    ROW(INITIALIZE_PASSWORD, "Password not initialized"),
};

#undef ROW

constexpr bool ascending(const CatalogueRow* first, const CatalogueRow* last) {
    for (const CatalogueRow* row = first; row + 1 < last; ++row) {
        if (!(row->value < (row + 1)->value)) {
            return false;
        }
    }
    return true;
}
static_assert(ascending(std::begin(kCatalogue), std::end(kCatalogue)),
              "the catalogue is searched by bisection");

// The row of `value`, or null for a number the catalogue does not hold.
const CatalogueRow* find_row(ErrorValue value) {
    const CatalogueRow* row =
        std::lower_bound(std::begin(kCatalogue), std::end(kCatalogue), value,
                         [](const CatalogueRow& r, ErrorValue v) { return r.value < v; });
    return row != std::end(kCatalogue) && row->value == value ? row : nullptr;
}

// The outcome each exit code stands for, indexed by the code.
constexpr ErrorValue kExitCodeOutcomes[] = {
    HMI_E_SUCCESS,                 // 0
    HMI_E_UNEXPECTED,              // 1
    HMI_E_DISCONNECTED,            // 2
    HMI_E_SHUTDOWN,                // 3
    HMI_E_RESTART,                 // 4
    HMI_E_UNEXPECTED,              // 5
    HMI_E_SYNTAX,                  // 6
    HMI_E_FILE_NOT_FOUND,          // 7
    HMI_E_DATABASE,                // 8
    HMI_E_INVALID_PARAMETER,       // 9
    HMI_E_UNEXPECTED,              // 10
    HMI_E_STORAGE,                 // 11
    HMI_E_SCHEMA,                  // 12
    HMI_E_EXTENSION,               // 13
    HMI_E_UNEXPECTED,              // 14
    HMI_E_SESSION_TIMEOUT,         // 15
    HMI_E_ENDPOINT_INVALID,        // 16
    HMI_E_ENDPOINT_BUSY,           // 17
    HMI_E_SERVER_ALREADY_RUNNING,  // 18
    HMI_E_FINISHED,                // 19
};

}  // namespace

String get_error_string(ErrorValue value) {
    const CatalogueRow* row = find_row(value);
    return String(row != nullptr ? row->name : "ERROR");
}

std::string get_error_string_pretty(ErrorValue value, ErrorMessageDetails details) {
    const CatalogueRow* row = find_row(value);
    // A number without a row is written as an outcome number always is, through a text stream,
    // so it follows the global locale like the numbers a ResultStream composes.
    std::string text = row != nullptr ? std::string(row->text) : Algorithm::to_string(value);
    if (details == ErrorMessageDetails::SymbolicName) {
        text += " (HMI_E_";
        text += row != nullptr ? row->name : "ERROR";
        text += ")";
    }
    return text;
}

std::string get_error_string_with_path_pretty(ErrorValue value, const std::string& path) {
    std::string text = get_error_string_pretty(value, ErrorMessageDetails::None);
    if (!path.empty()) {
        text += " [Path: '";
        text += path;
        text += "']";
    }
    return text;
}

int error_value_to_exit_code(ErrorValue value) {
    // Outcomes a supervisor tells apart get a code of their own.
    switch (value) {
        case HMI_E_SUCCESS:
            return 0;
        case HMI_E_DISCONNECTED:
            return 2;
        case HMI_E_SHUTDOWN:
            return 3;
        case HMI_E_RESTART:
            return 4;
        case HMI_E_FINISHED:
            return 19;
        case HMI_E_SCRIPT:
        case HMI_E_SYNTAX:
            return 6;
        case HMI_E_FILE_NOT_FOUND:
            return 7;
        case HMI_E_DATABASE:
            return 8;
        case HMI_E_INVALID_PARAMETER:
            return 9;
        case HMI_E_ENDPOINT_DENIED:
        case HMI_E_ENDPOINT_INVALID:
            return 16;
        case HMI_E_ENDPOINT_BUSY:
            return 17;
        case HMI_E_SERVER_ALREADY_RUNNING:
            return 18;
        case HMI_E_CONNECT:
            return 5;
        case HMI_E_SESSION_TIMEOUT:
            return 15;
        case HMI_E_CERTIFICATE_NOT_VALID:
            return 14;
        default:
            break;
    }
    // Whole blocks share one code, numbers without a row included, so an outcome added to a block
    // later already leaves the process with the right code.
    switch (static_cast<std::uint32_t>(value) & ~std::uint32_t{0xFF}) {
        case 0x500:
            return 11;
        case 0x600:
            return 12;
        case 0x800:
            return 13;
        case 0x1200:
            return 14;
        default:
            return 5;
    }
}

ErrorValue exit_code_to_error_value(int code) {
    // Taken as unsigned, a negative code is simply too large.
    const auto index = static_cast<unsigned int>(code);
    return index < std::size(kExitCodeOutcomes) ? kExitCodeOutcomes[index] : HMI_E_UNEXPECTED;
}

// =============================================================================================
// Result streams
// =============================================================================================

ResultStream::ResultStream(ErrorValue result) : ResultStreamBase(result) {}

ResultStream::operator ResultPair() const {
    return ResultPair(result_, stream_.str().c_str());
}

ResultStreamAppendLastError::ResultStreamAppendLastError(ErrorValue result)
    : ResultStreamBase(result) {}

ResultStreamAppendLastError::operator ResultPair() const {
    std::ostringstream text;
    text << stream_.str() << ": ";
    // Read only now, after the copy: the number is the one current when the pair is made.
    const int error = errno;
    text << error;
    return ResultPair(result_, text.str().c_str());
}

ResultPair result_from_stream_last_error(ErrorValue result, const std::ostringstream& stream) {
    return ResultPair(result, stream.str().c_str());
}

ResultPair result_from_stream_last_error(ErrorValue result, const std::stringstream& stream) {
    return ResultPair(result, stream.str().c_str());
}

}  // namespace Quorvane
