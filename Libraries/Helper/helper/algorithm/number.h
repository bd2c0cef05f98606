#pragma once
// Numbers to text and text to numbers, and the tolerant comparison of floating-point values.
//
// Parsing follows the C library exactly: a number is valid when strtol, strtoul or strtod accepts
// the text. Nothing here throws for bad text: as_ forms answer 0, try_as_ forms an empty optional,
// is_ forms false. No function keeps state; all may be called from any thread.

#include "helper/crosscompile.h"

#include <boost/optional.hpp>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <type_traits>

namespace Quorvane::Algorithm {

namespace detail {

// The decimal digit pairs "00" to "99", two bytes each, for writing ten digits in five steps.
inline constexpr char digit_pairs[] =
    "00010203040506070809"
    "10111213141516171819"
    "20212223242526272829"
    "30313233343536373839"
    "40414243444546474849"
    "50515253545556575859"
    "60616263646566676869"
    "70717273747576777879"
    "80818283848586878889"
    "90919293949596979899";

template <class T>
struct integer_of {
    using type = T;
};
template <class T>
struct integer_of_enum {
    using type = std::underlying_type_t<T>;
};
// The integer behind a number or an enumeration, so that ErrorValue is written as its number.
template <class T>
using integer_t =
    typename std::conditional_t<std::is_enum_v<T>, integer_of_enum<T>, integer_of<T>>::type;

template <class T>
inline constexpr bool is_writable_integer_v = (std::is_integral_v<T> ||
                                               std::is_enum_v<T>)&&!std::is_same_v<T, bool>;

// Writes exactly ten digits, leading zeros included, of a value below 10000000000.
inline char* write_ten_digits(char* out, std::uint64_t value) {
    const auto pair = [&out](std::uint64_t two_digits) {
        out[0] = digit_pairs[2 * two_digits];
        out[1] = digit_pairs[2 * two_digits + 1];
        out += 2;
    };
    pair(value / 100000000);
    value %= 100000000;
    pair(value / 1000000);
    value %= 1000000;
    pair(value / 10000);
    value %= 10000;
    pair(value / 100);
    pair(value % 100);
    return out;
}

// Decimal digits of a 64-bit value: the 32-bit writer of the standard library where it suffices,
// otherwise the part above ten digits through it and the last ten digits in pairs.
inline char* write_decimal(char* out, char* end, std::uint64_t value) {
    if (value <= UINT32_MAX) {
        return std::to_chars(out, end, static_cast<std::uint32_t>(value)).ptr;
    }
    constexpr std::uint64_t ten_digits = 10000000000ULL;
    if (value >= ten_digits) {
        out = std::to_chars(out, end, static_cast<std::uint32_t>(value / ten_digits)).ptr;
        value %= ten_digits;
    }
    return write_ten_digits(out, value);
}

}  // namespace detail

// Decimal text of an integer (or of an enumeration's number) without stream or locale: a stack
// buffer and at most one allocation, for the result. char and unsigned char are written as numbers,
// so faststr<char>('A') is "65".
template <class T, std::enable_if_t<detail::is_writable_integer_v<T>, int> = 0>
std::string faststr(T value) {
    using Integer = detail::integer_t<T>;
    using Unsigned = std::make_unsigned_t<Integer>;
    const auto number = static_cast<Integer>(value);

    char buffer[24];  // a sign and twenty digits at most
    char* const end = buffer + sizeof buffer;
    char* out = buffer;
    auto magnitude = static_cast<Unsigned>(number);
    if constexpr (std::is_signed_v<Integer>) {
        if (number < 0) {
            *out++ = '-';
            magnitude = static_cast<Unsigned>(Unsigned{0} - magnitude);
        }
    }
    if constexpr (sizeof(Unsigned) <= sizeof(std::uint32_t)) {
        out = std::to_chars(out, end, static_cast<std::uint32_t>(magnitude)).ptr;
    } else {
        out = detail::write_decimal(out, end, magnitude);
    }
    return std::string(buffer, out);
}

// The text a default-constructed output stream makes of the value: it follows the current global
// locale (digit grouping included), and a char comes out as the character itself.
template <class T>
std::string to_string_via_sstream(const T& value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

// Stream-written text of an integer or enumeration, never through faststr: char and unsigned char
// come out as the one character (to_string<char>('A') is "A"), an enumeration as its number.
// Hot code calls the non-template overloads below instead.
template <class T, std::enable_if_t<detail::is_writable_integer_v<T>, int> = 0>
std::string to_string(const T& value) {
    if constexpr (std::is_enum_v<T>) {
        return to_string_via_sstream(static_cast<detail::integer_t<T>>(value));
    } else {
        return to_string_via_sstream(value);
    }
}

// "true" or "false".
QUORVANE_API std::string to_string(bool value);
// The decimal number, not the character, from a constant table: no allocation.
QUORVANE_API std::string to_string(signed char value);
QUORVANE_API std::string to_string(unsigned char value);
// Decimal through faststr: no stream, no locale, at most one allocation.
QUORVANE_API std::string to_string(short value);
QUORVANE_API std::string to_string(unsigned short value);
QUORVANE_API std::string to_string(int value);
QUORVANE_API std::string to_string(unsigned int value);
// Decimal through faststr from -2147483648 to 4294967295; values beyond go through a text stream
// and so follow the global locale.
QUORVANE_API std::string to_string(long value);
// Decimal through faststr up to 4294967295; values above go through a text stream.
QUORVANE_API std::string to_string(unsigned long value);
// Fixed notation with `precision` decimals (0 is taken as 1) through a text stream: rounding is
// the stream's and the decimal mark the global locale's. With `strip`, trailing zeros behind the
// point go, and the point with them when no other decimal is left: 1.0 gives "1", 100.0 gives
// "100", -0.0 gives "-0"; a text without '.' (infinities, NaN, a foreign decimal mark) stays as it
// is. Without `strip` the text holds all `precision` decimals, so its size grows with it, and a
// precision too large for memory fails as an allocation does.
QUORVANE_API std::string to_string(double value, unsigned long precision, bool strip);

// Signed 64 bits: the whole text, up to its first NUL byte, must be one base-10 strtol number
// (leading white space and one sign allowed; nothing behind it). Saturated results are confirmed
// by a second reading through a text stream, so "+9223372036854775807" is valid and
// "9223372036854775808" is not. A bad text gives an empty optional, 0 or false.
QUORVANE_API boost::optional<std::int64_t> try_as_int64(const std::string& text);
QUORVANE_API std::int64_t as_int64(const std::string& text);
QUORVANE_API bool is_int64(const std::string& text);

// Signed 32 bits, -2147483648 to 2147483647, by the same strtol rule without the stream reading;
// out of range is a bad text. try_as_int is the same.
QUORVANE_API boost::optional<std::int32_t> try_as_int32(const std::string& text);
QUORVANE_API std::int32_t as_int32(const std::string& text);
QUORVANE_API bool is_int32(const std::string& text);
QUORVANE_API boost::optional<int> try_as_int(const std::string& text);
QUORVANE_API bool is_int(const std::string& text);

// Signed 16 bits, -32768 to 32767.
QUORVANE_API boost::optional<std::int16_t> try_as_int16(const std::string& text);
QUORVANE_API bool is_int16(const std::string& text);

// Unsigned 64 bits: the whole text, up to its first NUL byte, must be one base-10 strtoul number.
// A text whose first byte is '-' fails, but only the first byte is looked at: " -5" is read as
// strtoul reads it, 18446744073709551611. The largest value is confirmed through a text stream,
// as for the signed form.
QUORVANE_API boost::optional<std::uint64_t> try_as_uint64(const std::string& text);
QUORVANE_API std::uint64_t as_uint64(const std::string& text);
QUORVANE_API bool is_uint64(const std::string& text);

// size_t: the same rules as the unsigned 64-bit family.
QUORVANE_API boost::optional<std::size_t> try_as_size_t(const std::string& text);
QUORVANE_API std::size_t as_size_t(const std::string& text);
QUORVANE_API bool is_size_t(const std::string& text);

// Unsigned 32 bits, 0 to 4294967295, by the same strtoul rule without the stream reading.
QUORVANE_API boost::optional<std::uint32_t> try_as_uint32(const std::string& text);
QUORVANE_API std::uint32_t as_uint32(const std::string& text);
QUORVANE_API bool is_uint32(const std::string& text);

// Unsigned 16 bits, 0 to 65535.
QUORVANE_API boost::optional<std::uint16_t> try_as_uint16(const std::string& text);
QUORVANE_API std::uint16_t as_uint16(const std::string& text);
QUORVANE_API bool is_uint16(const std::string& text);

// Whatever strtod reads from the front of the text, in the C library's current locale: trailing
// rubbish is tolerated ("1.5kg" is 1.5), as are exponents, hexadecimal floats, "inf" and "nan";
// overflow is no failure. Only an empty text or one without a number fails; as_double gives 0.0.
QUORVANE_API boost::optional<double> try_as_double(const std::string& text);
QUORVANE_API double as_double(const std::string& text);
// False for a text without '.', so "5" and "1e5" are no doubles here although try_as_double
// reads them; otherwise whether try_as_double succeeds.
QUORVANE_API bool is_double(const std::string& text);

// strtol in base 10 of the text's numeric prefix: 0 when there is none, saturated when too large.
// Never fails: "12abc" is 12.
QUORVANE_API std::int64_t as_int64_lax(const std::string& text);

// as<T> and try_as<T> are the as_ and try_as_ forms of T, for long, unsigned long, int,
// unsigned int, unsigned short and double.
template <class T>
T as(const std::string&) {
    static_assert(!std::is_same_v<T, T>,
                  "as<T> exists for long, unsigned long, int, "
                  "unsigned int, unsigned short and double");
    return T{};
}
template <class T>
boost::optional<T> try_as(const std::string&) {
    static_assert(!std::is_same_v<T, T>,
                  "try_as<T> exists for long, unsigned long, int, "
                  "unsigned int, unsigned short and double");
    return boost::none;
}

template <>
inline long as<long>(const std::string& text) {
    return as_int64(text);
}
template <>
inline unsigned long as<unsigned long>(const std::string& text) {
    return as_uint64(text);
}
template <>
inline int as<int>(const std::string& text) {
    return as_int32(text);
}
template <>
inline unsigned int as<unsigned int>(const std::string& text) {
    return as_uint32(text);
}
template <>
inline unsigned short as<unsigned short>(const std::string& text) {
    return as_uint16(text);
}
template <>
inline double as<double>(const std::string& text) {
    return as_double(text);
}

template <>
inline boost::optional<long> try_as<long>(const std::string& text) {
    return try_as_int64(text);
}
template <>
inline boost::optional<unsigned long> try_as<unsigned long>(const std::string& text) {
    return try_as_uint64(text);
}
template <>
inline boost::optional<int> try_as<int>(const std::string& text) {
    return try_as_int32(text);
}
template <>
inline boost::optional<unsigned int> try_as<unsigned int>(const std::string& text) {
    return try_as_uint32(text);
}
template <>
inline boost::optional<unsigned short> try_as<unsigned short>(const std::string& text) {
    return try_as_uint16(text);
}
template <>
inline boost::optional<double> try_as<double>(const std::string& text) {
    return try_as_double(text);
}

// Equal, or apart by at most 2.220446049250313e-16 (absolute, not relative). Equal infinities are
// equal; NaN is equal to nothing.
QUORVANE_API bool compare_double(double a, double b);
// The same with the float tolerance 1.1920928955078125e-7, computed in doubles.
QUORVANE_API bool compare_double_as_float(double a, double b);
// The same in floats with the tolerance 1.1920929e-7.
QUORVANE_API bool compare_float(float a, float b);

// Whether truncating changes nothing: true for infinities, false for NaN.
QUORVANE_API bool is_integer(double value);

// Count of trailing decimal zeros; 0 for the value 0. Signed forms count on the magnitude.
QUORVANE_API int trailing_zeros(unsigned int value);
QUORVANE_API int trailing_zeros(int value);
QUORVANE_API int trailing_zeros(unsigned long value);
// Looks only at the low 32 bits of the magnitude, unlike the unsigned long form: 10000000000
// reports what 1410065408 has, 0.
QUORVANE_API int trailing_zeros(long value);

// Length of the decimal text, minus sign included: -5 gives 2, -128 gives 4, the most negative
// int gives 11. Meant for int and signed char.
template <class T>
constexpr int num_digits(T value) {
    static_assert(std::is_integral_v<T> && !std::is_same_v<T, bool>, "num_digits needs an integer");
    using Unsigned = std::make_unsigned_t<T>;
    auto magnitude = static_cast<Unsigned>(value);
    int count = 1;
    if constexpr (std::is_signed_v<T>) {
        if (value < 0) {
            magnitude = static_cast<Unsigned>(Unsigned{0} - magnitude);
            ++count;
        }
    }
    for (; magnitude >= 10; magnitude /= 10) {
        ++count;
    }
    return count;
}

}  // namespace Quorvane::Algorithm
