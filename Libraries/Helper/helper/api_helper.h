#pragma once
// Free functions that work on the object model from outside it.

#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>

#include "QuorvaneExtApi.h"
#include "QuorvaneExtData.h"
#include "helper/crosscompile.h"

namespace Quorvane {

// ---------------------------------------------------------------------------------------------
// Error catalogue
//
// Each ErrorValue has a symbolic name, a text for people and a process exit code. A number that
// the catalogue does not hold is still answered: its name is "ERROR", its text its own decimal
// number, its exit code 5. Nothing here fails or keeps state; the texts are constants, and only
// the allocation of a returned text can throw.
// ---------------------------------------------------------------------------------------------

// What get_error_string_pretty adds to the text. Any other number counts as None.
enum class ErrorMessageDetails : std::int32_t {
    None = 0,          // the text alone
    SymbolicName = 1,  // the text, then " (HMI_E_<name>)"
};

// The symbolic name without its prefix, e.g. "INVALID_PARAMETER"; "ERROR" for an unknown number.
QUORVANE_API String get_error_string(ErrorValue value);

// The text for people, e.g. "Invalid parameter"; with SymbolicName it reads
// "Invalid parameter (HMI_E_INVALID_PARAMETER)". An unknown number reads as itself in signed
// decimal, written through a text stream and so under the global locale: "7000", or
// "7000 (HMI_E_ERROR)".
QUORVANE_API std::string get_error_string_pretty(
    ErrorValue value, ErrorMessageDetails details = ErrorMessageDetails::None);

// The plain text, followed by " [Path: '<path>']" unless the path is empty. The path is written
// as it stands, without escaping; no symbolic name is added.
QUORVANE_API std::string get_error_string_with_path_pretty(ErrorValue value,
                                                           const std::string& path);

// The code a process ends with after this outcome. A few rows have codes of their own and win
// over their block: SUCCESS, DISCONNECTED, SHUTDOWN and RESTART their own numbers, FINISHED 19,
// SCRIPT and SYNTAX 6, FILE_NOT_FOUND 7, DATABASE 8, INVALID_PARAMETER 9, ENDPOINT_DENIED and
// ENDPOINT_INVALID 16, ENDPOINT_BUSY 17, SERVER_ALREADY_RUNNING 18, SESSION_TIMEOUT 15,
// CERTIFICATE_NOT_VALID 14, and CONNECT 5 although it sits in the storage block. Then the storage,
// schema, extension and integrity blocks give 11, 12, 13 and 14, whole, numbers without a row
// included. Everything else, negative numbers too, gives 5.
QUORVANE_API int error_value_to_exit_code(ErrorValue value);

// The outcome a process exit code stands for. Not the inverse of error_value_to_exit_code: 1, 5,
// 10 and 14 give UNEXPECTED, 6 gives SYNTAX also when SCRIPT produced it, 16 gives
// ENDPOINT_INVALID, 19 gives FINISHED, and every code outside 0 to 19, negative ones included,
// gives UNEXPECTED.
QUORVANE_API ErrorValue exit_code_to_error_value(int code);

// ---------------------------------------------------------------------------------------------
// Result streams
//
// Builders that compose the text of a ResultPair with stream syntax, meant to live as
// temporaries in a return statement:
//     return ResultStream(HMI_E_INVALID_TYPE) << "Got value of type " << value.type();
// Converting leaves the builder unchanged, so it can be converted again.
// ---------------------------------------------------------------------------------------------

namespace detail {

// The code and the text being built, shared by both builders; `Builder` is the builder itself,
// so that each `<<` hands back the type whose conversion applies.
template <class Builder>
class ResultStreamBase {
public:
    // Appends the text form the stream gives the value, under the global locale.
    template <class T>
    Builder& operator<<(const T& value) {
        stream_ << value;
        return static_cast<Builder&>(*this);
    }
    // Manipulators such as std::endl.
    Builder& operator<<(std::ostream& (*manipulator)(std::ostream&)) {
        stream_ << manipulator;
        return static_cast<Builder&>(*this);
    }
    // A kind is written by its capitalised name ("Map"), not its number.
    Builder& operator<<(ValueType type) {
        stream_ << Algorithm::value_type_to_string(type);
        return static_cast<Builder&>(*this);
    }

protected:
    explicit ResultStreamBase(ErrorValue result) : result_(result) {}

    ErrorValue result_;
    std::ostringstream stream_;
};

}  // namespace detail

// The code and the composed text. Nothing written gives an empty text.
class QUORVANE_API ResultStream : public detail::ResultStreamBase<ResultStream> {
public:
    explicit ResultStream(ErrorValue result);
    operator ResultPair() const;
};

// For failures of the operating system: the composed text, then ": " and errno in signed
// decimal ("Unable to write file: 28"; nothing written gives ": 28"). No system message is
// looked up. errno is per thread, so convert on the thread that saw the failure.
class QUORVANE_API ResultStreamAppendLastError
    : public detail::ResultStreamBase<ResultStreamAppendLastError> {
public:
    explicit ResultStreamAppendLastError(ErrorValue result);
    operator ResultPair() const;
};

// The code and the stream's text as it stands. In spite of the name nothing is appended: errno
// is left out, unlike ResultStreamAppendLastError.
QUORVANE_API ResultPair result_from_stream_last_error(ErrorValue result,
                                                      const std::ostringstream& stream);
QUORVANE_API ResultPair result_from_stream_last_error(ErrorValue result,
                                                      const std::stringstream& stream);

}  // namespace Quorvane
