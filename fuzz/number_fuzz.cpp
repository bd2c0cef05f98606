// Numbers and byte strings: every text reader of helper/algorithm/number.h and every edit of
// helper/algorithm/string.h on arbitrary bytes, with the agreements the headers promise between
// the families and between reading and writing.

#include "helper/algorithm/number.h"
#include "helper/algorithm/string.h"
#include "QuorvaneExtData.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz_check.h"

namespace A = Quorvane::Algorithm;

namespace {

// The try_, as_ and is_ forms of one family agree: a value, or nothing, 0 and false.
template <class Try, class As, class Is>
void check_family(const std::string& text, Try try_as, As as, Is is) {
    const auto value = try_as(text);
    if (value) {
        FUZZ_CHECK(as(text) == *value);
        FUZZ_CHECK(is(text));
    } else {
        FUZZ_CHECK(as(text) == 0);
        FUZZ_CHECK(!is(text));
    }
}

void check_numbers(const std::string& text) {
    check_family(text, A::try_as_int64, A::as_int64, A::is_int64);
    check_family(text, A::try_as_int32, A::as_int32, A::is_int32);
    check_family(text, A::try_as_uint64, A::as_uint64, A::is_uint64);
    check_family(text, A::try_as_size_t, A::as_size_t, A::is_size_t);
    check_family(text, A::try_as_uint32, A::as_uint32, A::is_uint32);
    check_family(text, A::try_as_uint16, A::as_uint16, A::is_uint16);

    // The narrower signed forms read the same strtol number and only add a range.
    const auto wide = A::try_as_int64(text);
    const auto narrow = A::try_as_int32(text);
    if (narrow) {
        FUZZ_CHECK(wide && *wide == *narrow);
    }
    const auto as_int = A::try_as_int(text);
    FUZZ_CHECK(as_int == narrow);
    FUZZ_CHECK(A::is_int(text) == static_cast<bool>(narrow));
    const auto small = A::try_as_int16(text);
    FUZZ_CHECK(A::is_int16(text) == static_cast<bool>(small));
    if (small) {
        FUZZ_CHECK(narrow && *narrow == *small);
    }
    const auto unsigned_small = A::try_as_uint16(text);
    const auto unsigned_mid = A::try_as_uint32(text);
    if (unsigned_small) {
        FUZZ_CHECK(unsigned_mid && *unsigned_mid == *unsigned_small);
    }
    FUZZ_CHECK(A::try_as_size_t(text) == A::try_as_uint64(text));

    const auto real = A::try_as_double(text);
    if (real) {
        const double again = A::as_double(text);
        FUZZ_CHECK(again == *real || (again != again && *real != *real));
    } else {
        FUZZ_CHECK(A::as_double(text) == 0.0);
        FUZZ_CHECK(!A::is_double(text));
    }
    if (text.find('.') == std::string::npos) {
        FUZZ_CHECK(!A::is_double(text));
    }
    (void)A::as_int64_lax(text);
}

// Whatever faststr and to_string write, the readers take back.
void check_writing(FuzzedDataProvider& input) {
    const auto signed_value = input.ConsumeIntegral<std::int64_t>();
    const auto unsigned_value = input.ConsumeIntegral<std::uint64_t>();
    const auto int_value = input.ConsumeIntegral<int>();
    FUZZ_CHECK(A::try_as_int64(A::faststr(signed_value)) == signed_value);
    FUZZ_CHECK(A::try_as_uint64(A::faststr(unsigned_value)) == unsigned_value);
    FUZZ_CHECK(A::try_as_int32(A::to_string(int_value)) == int_value);
    FUZZ_CHECK(A::faststr(int_value).size() == static_cast<std::size_t>(A::num_digits(int_value)));
    if (signed_value >= std::numeric_limits<std::int32_t>::min() &&
        signed_value <= std::numeric_limits<std::uint32_t>::max()) {
        FUZZ_CHECK(A::to_string(static_cast<long>(signed_value)) == A::faststr(signed_value));
    }

    // Every integer width is written as its decimal number, through faststr or a stream alike.
    FUZZ_CHECK(A::to_string(static_cast<long>(signed_value)) == std::to_string(signed_value));
    FUZZ_CHECK(A::to_string(static_cast<unsigned long>(unsigned_value)) ==
               std::to_string(unsigned_value));
    FUZZ_CHECK(A::to_string(static_cast<unsigned int>(unsigned_value)) ==
               std::to_string(static_cast<unsigned int>(unsigned_value)));
    FUZZ_CHECK(A::to_string(static_cast<short>(signed_value)) ==
               std::to_string(static_cast<short>(signed_value)));
    FUZZ_CHECK(A::to_string(static_cast<unsigned short>(unsigned_value)) ==
               std::to_string(static_cast<unsigned short>(unsigned_value)));
    FUZZ_CHECK(A::to_string(static_cast<signed char>(signed_value)) ==
               std::to_string(static_cast<signed char>(signed_value)));
    FUZZ_CHECK(A::to_string(static_cast<unsigned char>(unsigned_value)) ==
               std::to_string(static_cast<unsigned char>(unsigned_value)));
    FUZZ_CHECK(A::faststr(static_cast<char>(signed_value)) ==
               std::to_string(static_cast<char>(signed_value)));
    FUZZ_CHECK(A::faststr(static_cast<Quorvane::ErrorValue>(int_value)) ==
               std::to_string(int_value));
    FUZZ_CHECK(A::num_digits(static_cast<signed char>(signed_value)) ==
               static_cast<int>(std::to_string(static_cast<signed char>(signed_value)).size()));

    const double real = input.ConsumeFloatingPoint<double>();
    const auto precision = input.ConsumeIntegralInRange<unsigned long>(0, 40);
    const std::string fixed = A::to_string(real, precision, input.ConsumeBool());
    FUZZ_CHECK(!fixed.empty());
    (void)A::compare_double(real, real);
    (void)A::compare_double_as_float(real, input.ConsumeFloatingPoint<double>());
    (void)A::compare_float(static_cast<float>(real), input.ConsumeFloatingPoint<float>());
    FUZZ_CHECK(A::is_integer(real) == (std::trunc(real) == real));
    (void)A::trailing_zeros(static_cast<unsigned int>(unsigned_value));
    (void)A::trailing_zeros(int_value);
    (void)A::trailing_zeros(static_cast<unsigned long>(unsigned_value));
    (void)A::trailing_zeros(static_cast<long>(signed_value));
}

bool is_blank(unsigned char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

void check_strings(FuzzedDataProvider& input) {
    const std::string text = input.ConsumeRandomLengthString(256);
    const std::string needle = input.ConsumeRandomLengthString(8);
    const std::string other = input.ConsumeRandomLengthString(8);
    const char byte = input.ConsumeIntegral<char>();
    const auto offset = input.ConsumeIntegralInRange<unsigned long>(0, 300);

    check_numbers(text);

    FUZZ_CHECK(A::to_vector(text).size() == text.size());
    (void)A::contains_only_digits(text);
    FUZZ_CHECK(A::count_occurrences(text, byte) ==
               static_cast<std::size_t>(std::count(text.begin(), text.end(), byte)));
    (void)A::count_occurrences(text, needle);

    std::string trimmed = text;
    A::trim(trimmed);
    FUZZ_CHECK(trimmed.empty() || (!is_blank(trimmed.front()) && !is_blank(trimmed.back())));
    FUZZ_CHECK(A::trim_result(text) == trimmed);
    std::string left = text;
    A::ltrim(left);
    std::string right = text;
    A::rtrim(right);
    FUZZ_CHECK(left.size() <= text.size() && right.size() <= text.size());
    std::string by_set = text;
    A::trim(by_set, needle.c_str());
    FUZZ_CHECK(A::trim_result(text, needle.c_str()) == by_set);
    A::ltrim(by_set, other.c_str());
    A::rtrim(by_set, other.c_str());

    std::string replaced = text;
    const bool found = A::replace(replaced, needle, other);
    FUZZ_CHECK(found == (!text.empty() && text.find(needle) != std::string::npos));
    std::string replaced_byte = text;
    FUZZ_CHECK(A::replace(replaced_byte, byte, 'x') == (text.find(byte) != std::string::npos));
    std::string all = text;
    A::replace_all(all, needle, other);
    if (!needle.empty() && other.find(needle) == std::string::npos &&
        needle.find(other) == std::string::npos) {
        (void)A::count_occurrences(all, needle);
    }
    std::string all_bytes = text;
    A::replace_all(all_bytes, byte, static_cast<char>(byte + 1));
    FUZZ_CHECK(all_bytes.size() == text.size());
    FUZZ_CHECK(all_bytes.find(byte) == std::string::npos);

    std::string removed = text;
    A::remove_all(removed, needle);
    FUZZ_CHECK(removed.size() <= text.size());
    std::string removed_byte = text;
    A::remove_all(removed_byte, byte);
    FUZZ_CHECK(removed_byte.find(byte) == std::string::npos);

    std::string start = text;
    FUZZ_CHECK(A::remove_start(start, needle) == A::starts_with(text, needle));
    FUZZ_CHECK(A::remove_start_copy(text, needle) == start);
    std::string end = text;
    FUZZ_CHECK(A::remove_end(end, needle) == A::ends_with(text, needle));
    FUZZ_CHECK(A::remove_end_copy(text, needle) == end);
    std::string cut = text;
    FUZZ_CHECK(A::erase_from(cut, needle) == (text.find(needle) != std::string::npos));
    std::string cut_byte = text;
    FUZZ_CHECK(A::erase_from(cut_byte, byte) == (text.find(byte) != std::string::npos));
    FUZZ_CHECK(A::starts_with(text, byte) == (!text.empty() && text.front() == byte));
    FUZZ_CHECK(A::ends_with(text, byte) == (!text.empty() && text.back() == byte));

    const bool expected = offset <= text.size() && text.find(needle, offset) != std::string::npos;
    FUZZ_CHECK(A::contains(text, needle, offset) == expected);
    (void)A::contains(text, needle.c_str(), offset);
    (void)A::contains(text, byte, offset);
    (void)A::contains(text.c_str(), byte);
    (void)A::icontains(text, needle);
    (void)A::iequals(text.c_str(), needle.c_str());
    (void)A::iequals(text, needle.c_str());
    (void)A::istarts_with(text, needle);
    FUZZ_CHECK(A::equals(text.c_str(), text.c_str()));
    FUZZ_CHECK(A::empty(text.c_str()) == (text.empty() || text.front() == '\0'));
    FUZZ_CHECK(A::to_upper(text).size() == text.size());
    FUZZ_CHECK(A::to_lower(text).size() == text.size());

    std::vector<std::string> pieces;
    A::split(pieces, text, needle, offset);
    if (!text.empty() && !needle.empty()) {
        const auto whole = A::split(text, needle);
        FUZZ_CHECK(A::join(whole, needle) == text);
    }
    (void)A::escape_for_lua_gsub(text);
    std::string simplified = text;
    A::simplify_whitespace_not_between_quotation_marks(simplified);
    FUZZ_CHECK(simplified.size() <= text.size());
    try {
        const int digit = A::char_to_digit(byte);
        FUZZ_CHECK(byte >= '0' && byte <= '9' && digit == byte - '0');
    } catch (const std::runtime_error&) {
        FUZZ_CHECK(byte < '0' || byte > '9');
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    check_numbers(std::string(reinterpret_cast<const char*>(data), size));
    check_strings(input);
    check_writing(input);
    return 0;
}
