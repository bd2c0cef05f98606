#include "helper/algorithm/number.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace Quorvane::Algorithm {

namespace {

// One entry of a byte's decimal text: up to "-128", kept with its length so that building the
// result needs no strlen and, being short, no allocation.
struct ByteText {
    char text[4];
    unsigned char size;
};

constexpr ByteText byte_text(int value) {
    ByteText entry{};
    unsigned magnitude = value < 0 ? static_cast<unsigned>(-value) : static_cast<unsigned>(value);
    char digits[3] = {};
    int count = 0;
    do {
        digits[count++] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (value < 0) {
        entry.text[entry.size++] = '-';
    }
    while (count > 0) {
        entry.text[entry.size++] = digits[--count];
    }
    return entry;
}

// Indexed by the byte's unsigned value: "0" to "127", then "-128" to "-1".
constexpr std::array<ByteText, 256> make_signed_byte_texts() {
    std::array<ByteText, 256> table{};
    for (int index = 0; index < 256; ++index) {
        table[index] = byte_text(index < 128 ? index : index - 256);
    }
    return table;
}

// "0" to "255".
constexpr std::array<ByteText, 256> make_unsigned_byte_texts() {
    std::array<ByteText, 256> table{};
    for (int index = 0; index < 256; ++index) {
        table[index] = byte_text(index);
    }
    return table;
}

constexpr std::array<ByteText, 256> signed_byte_texts = make_signed_byte_texts();
constexpr std::array<ByteText, 256> unsigned_byte_texts = make_unsigned_byte_texts();

std::string from_table(const std::array<ByteText, 256>& table, unsigned char index) {
    const ByteText& entry = table[index];
    return std::string(entry.text, entry.size);
}

// A finite double is a binary fraction of at most 1074 binary places, so its decimal expansion
// ends by the 1074th decimal and every later one is 0. The stream is never asked for more: it
// would build the whole text on the stack, and it truncates a count beyond the range of int.
constexpr unsigned long exact_decimals = 1074;

// The end pointer of strtol and strtoul must stand on the terminating NUL: the whole text (up to a
// NUL inside it) is the number.
bool ends_on_nul(const char* end) {
    return *end == '\0';
}

// strtol and strtoul answer an extreme value both for that exact number and for any larger one.
// Apart from the one plain spelling of the extreme, a text that gave it (with a sign, leading zeros
// or blanks) is read again by a text stream, which flags an overflow instead of saturating.
template <class T>
boost::optional<T> read_through_stream(const std::string& text) {
    std::istringstream stream(text);
    T value{};
    stream >> value;
    if (stream.fail() || stream.bad()) {
        return boost::none;
    }
    return value;
}

boost::optional<std::int64_t> try_as_int64_with_fallback(const std::string& text, bool fallback) {
    if (text.empty()) {
        return boost::none;
    }
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (!ends_on_nul(end)) {
        return boost::none;
    }
    if (value != LONG_MIN && value != LONG_MAX) {
        return value;
    }
    if ((value == LONG_MIN && text == "-9223372036854775808") ||
        (value == LONG_MAX && text == "9223372036854775807")) {
        return value;
    }
    if (!fallback) {
        return boost::none;
    }
    return read_through_stream<long>(text);
}

boost::optional<std::uint64_t> try_as_uint64_with_fallback(const std::string& text, bool fallback) {
    if (text.empty() || text.front() == '-') {
        return boost::none;
    }
    char* end = nullptr;
    const unsigned long value = std::strtoul(text.c_str(), &end, 10);
    if (!ends_on_nul(end)) {
        return boost::none;
    }
    if (value != ULONG_MAX || text == "18446744073709551615") {
        return value;
    }
    if (!fallback) {
        return boost::none;
    }
    return read_through_stream<unsigned long>(text);
}

// A value the base parser read, if it lies in the range of the narrower type.
template <class Narrow, class Wide>
boost::optional<Narrow> narrowed(const boost::optional<Wide>& value) {
    if (!value || *value < std::numeric_limits<Narrow>::min() ||
        *value > std::numeric_limits<Narrow>::max()) {
        return boost::none;
    }
    return static_cast<Narrow>(*value);
}

template <class T>
boost::optional<T> signed_without_fallback(const std::string& text) {
    return narrowed<T>(try_as_int64_with_fallback(text, false));
}

template <class T>
boost::optional<T> unsigned_without_fallback(const std::string& text) {
    return narrowed<T>(try_as_uint64_with_fallback(text, false));
}

// Count of trailing decimal zeros of the full 64-bit value; 0 for 0.
int count_trailing_zeros(std::uint64_t value) {
    if (value == 0) {
        return 0;
    }
    int count = 0;
    for (; value % 10 == 0; value /= 10) {
        ++count;
    }
    return count;
}

std::uint64_t magnitude(std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return value < 0 ? 0 - bits : bits;
}

}  // namespace

std::string to_string(bool value) {
    return value ? "true" : "false";
}

std::string to_string(signed char value) {
    return from_table(signed_byte_texts, static_cast<unsigned char>(value));
}

std::string to_string(unsigned char value) {
    return from_table(unsigned_byte_texts, value);
}

std::string to_string(short value) {
    return faststr(value);
}

std::string to_string(unsigned short value) {
    return faststr(value);
}

std::string to_string(int value) {
    return faststr(value);
}

std::string to_string(unsigned int value) {
    return faststr(value);
}

std::string to_string(long value) {
    if (value >= -2147483648L && value <= 4294967295L) {
        return faststr(value);
    }
    return to_string_via_sstream(value);
}

std::string to_string(unsigned long value) {
    if (value <= 4294967295UL) {
        return faststr(value);
    }
    return to_string_via_sstream(value);
}

std::string to_string(double value, unsigned long precision, bool strip) {
    const unsigned long decimals = precision == 0 ? 1 : precision;
    std::ostringstream stream;
    stream.precision(static_cast<std::streamsize>(std::min(decimals, exact_decimals)));
    stream << std::fixed << value;
    std::string text = stream.str();
    if (!strip) {
        if (decimals > exact_decimals && std::isfinite(value)) {
            text.append(decimals - exact_decimals, '0');
        }
        return text;
    }
    const std::size_t point = text.find('.');
    const std::size_t last_kept = text.find_last_not_of('0');
    if (point == std::string::npos || last_kept == std::string::npos) {
        return text;
    }
    // Zeros in front of the point belong to the integer part and are never touched.
    text.erase(last_kept > point ? last_kept + 1 : point);
    return text;
}

boost::optional<std::int64_t> try_as_int64(const std::string& text) {
    return try_as_int64_with_fallback(text, true);
}

std::int64_t as_int64(const std::string& text) {
    return try_as_int64(text).value_or(0);
}

bool is_int64(const std::string& text) {
    return try_as_int64(text).has_value();
}

boost::optional<std::int32_t> try_as_int32(const std::string& text) {
    return signed_without_fallback<std::int32_t>(text);
}

std::int32_t as_int32(const std::string& text) {
    return try_as_int32(text).value_or(0);
}

bool is_int32(const std::string& text) {
    return try_as_int32(text).has_value();
}

boost::optional<int> try_as_int(const std::string& text) {
    return try_as_int32(text);
}

bool is_int(const std::string& text) {
    return is_int32(text);
}

boost::optional<std::int16_t> try_as_int16(const std::string& text) {
    return signed_without_fallback<std::int16_t>(text);
}

bool is_int16(const std::string& text) {
    return try_as_int16(text).has_value();
}

boost::optional<std::uint64_t> try_as_uint64(const std::string& text) {
    return try_as_uint64_with_fallback(text, true);
}

std::uint64_t as_uint64(const std::string& text) {
    return try_as_uint64(text).value_or(0);
}

bool is_uint64(const std::string& text) {
    return try_as_uint64(text).has_value();
}

boost::optional<std::size_t> try_as_size_t(const std::string& text) {
    return try_as_uint64_with_fallback(text, true);
}

std::size_t as_size_t(const std::string& text) {
    return try_as_size_t(text).value_or(0);
}

bool is_size_t(const std::string& text) {
    return try_as_size_t(text).has_value();
}

boost::optional<std::uint32_t> try_as_uint32(const std::string& text) {
    return unsigned_without_fallback<std::uint32_t>(text);
}

std::uint32_t as_uint32(const std::string& text) {
    return try_as_uint32(text).value_or(0);
}

bool is_uint32(const std::string& text) {
    return try_as_uint32(text).has_value();
}

boost::optional<std::uint16_t> try_as_uint16(const std::string& text) {
    return unsigned_without_fallback<std::uint16_t>(text);
}

std::uint16_t as_uint16(const std::string& text) {
    return try_as_uint16(text).value_or(0);
}

bool is_uint16(const std::string& text) {
    return try_as_uint16(text).has_value();
}

boost::optional<double> try_as_double(const std::string& text) {
    if (text.empty()) {
        return boost::none;
    }
    const char* const begin = text.c_str();
    char* end = nullptr;
    const double value = std::strtod(begin, &end);
    if (end == begin) {
        return boost::none;
    }
    return value;
}

double as_double(const std::string& text) {
    return try_as_double(text).value_or(0.0);
}

bool is_double(const std::string& text) {
    return text.find('.') != std::string::npos && try_as_double(text).has_value();
}

std::int64_t as_int64_lax(const std::string& text) {
    return std::strtol(text.c_str(), nullptr, 10);
}

bool compare_double(double a, double b) {
    return a == b || std::fabs(a - b) <= 2.220446049250313e-16;
}

bool compare_double_as_float(double a, double b) {
    return a == b || std::fabs(a - b) <= 1.1920928955078125e-7;
}

bool compare_float(float a, float b) {
    return a == b || std::fabs(a - b) <= 1.1920929e-7F;
}

bool is_integer(double value) {
    return std::trunc(value) == value;
}

int trailing_zeros(unsigned int value) {
    return count_trailing_zeros(value);
}

int trailing_zeros(int value) {
    return count_trailing_zeros(magnitude(value));
}

int trailing_zeros(unsigned long value) {
    return count_trailing_zeros(value);
}

int trailing_zeros(long value) {
    return count_trailing_zeros(static_cast<std::uint32_t>(magnitude(value)));
}

}  // namespace Quorvane::Algorithm
