#include "helper/algorithm/number.h"

#include "QuorvaneExtData.h"

#include <gtest/gtest.h>

#include <boost/optional/optional_io.hpp>

#include <cinttypes>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale>
#include <new>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "allocation_count.h"

using namespace Quorvane::Algorithm;
using Quorvane::ErrorValue;

namespace {

enum class Scoped : std::int64_t { Low = -9223372036854775807LL - 1 };

std::string printf_signed(long long value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%lld", value);
    return buffer;
}

std::string printf_unsigned(unsigned long long value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%llu", value);
    return buffer;
}

std::string printf_fixed(double value, int precision) {
    const int size = std::snprintf(nullptr, 0, "%.*f", precision, value);
    std::string text(static_cast<std::size_t>(size) + 1, '\0');
    std::snprintf(text.data(), text.size(), "%.*f", precision, value);
    text.pop_back();
    return text;
}

// What the C library makes of a whole text in base 10: the value, if strtol or strtoul reads the
// text up to its first NUL, and whether that value is an extreme that may stand for a saturation.
struct CReading {
    bool whole;
    long signed_value;
    unsigned long unsigned_value;
};

CReading c_reading(const std::string& text) {
    CReading reading{};
    char* signed_end = nullptr;
    reading.signed_value = std::strtol(text.c_str(), &signed_end, 10);
    char* unsigned_end = nullptr;
    reading.unsigned_value = std::strtoul(text.c_str(), &unsigned_end, 10);
    reading.whole = !text.empty() && *signed_end == '\0';
    return reading;
}

// The narrow families read without the stream: the C library's value if it is whole, in range
// and not an extreme that strtol or strtoul may have saturated to.
template <class T>
boost::optional<T> expected_signed(const std::string& text) {
    const CReading reading = c_reading(text);
    if (!reading.whole || reading.signed_value < std::numeric_limits<T>::min() ||
        reading.signed_value > std::numeric_limits<T>::max()) {
        return boost::none;
    }
    return static_cast<T>(reading.signed_value);
}

template <class T>
boost::optional<T> expected_unsigned(const std::string& text) {
    const CReading reading = c_reading(text);
    if (!reading.whole || text.front() == '-' ||
        reading.unsigned_value > std::numeric_limits<T>::max()) {
        return boost::none;
    }
    return static_cast<T>(reading.unsigned_value);
}

// What an input stream reads from the text, if it sets neither its fail nor its bad flag.
template <class T>
boost::optional<T> stream_reading(const std::string& text) {
    std::istringstream stream(text);
    T value{};
    stream >> value;
    if (stream.fail() || stream.bad()) {
        return boost::none;
    }
    return value;
}

// Up to 23 bytes of digits, signs, blanks and tabs, and an x: mostly numbers, some not.
std::string random_digit_text(std::mt19937& random) {
    const std::string alphabet = "0123456789+- \tx";
    std::string text;
    const std::size_t length = random() % 24;
    for (std::size_t k = 0; k < length; ++k) {
        text += alphabet[random() % alphabet.size()];
    }
    return text;
}

// Texts around the limits of every family, in the spellings strtol and strtoul accept and some
// they do not.
std::vector<std::string> limit_texts() {
    std::vector<std::string> texts = {"",
                                      " ",
                                      "+",
                                      "-",
                                      "x",
                                      "0x10",
                                      "1e3",
                                      "1.0",
                                      "5 ",
                                      "5\t",
                                      "--5",
                                      "+-5",
                                      std::string("7\0x", 3),
                                      std::string("\0", 1)};
    for (const char* number :
         {"0", "1", "32767", "32768", "65535", "65536", "2147483647", "2147483648", "4294967295",
          "4294967296", "9223372036854775807", "9223372036854775808", "18446744073709551615",
          "18446744073709551616", "99999999999999999999999"}) {
        for (const char* prefix : {"", "-", "+", "0", " ", "\t-", " +00"}) {
            texts.push_back(std::string(prefix) + number);
        }
    }
    return texts;
}

// A global locale with digit grouping, to tell stream-written numbers from faststr-written ones.
struct GroupingPunct : std::numpunct<char> {
    char do_thousands_sep() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

// A global locale whose decimal mark is a comma.
struct CommaPunct : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

class GlobalLocale {
public:
    explicit GlobalLocale(std::numpunct<char>* facet)
        : previous_(std::locale::global(std::locale(std::locale::classic(), facet))) {}
    ~GlobalLocale() { std::locale::global(previous_); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale previous_;
};

// Numbers at the edges of the ways faststr writes: the 32-bit writer, ten digits, and more.
std::vector<unsigned long long> interesting_magnitudes() {
    std::vector<unsigned long long> values = {0,
                                              1,
                                              9,
                                              10,
                                              99,
                                              100,
                                              2147483647ULL,
                                              2147483648ULL,
                                              4294967295ULL,
                                              4294967296ULL,
                                              4294967297ULL,
                                              9999999999ULL,
                                              10000000000ULL,
                                              10000000001ULL,
                                              10000000100ULL,
                                              19999999999ULL,
                                              20000000000ULL,
                                              4294967295000000000ULL,
                                              9223372036854775807ULL,
                                              9223372036854775808ULL,
                                              10000000000000000000ULL,
                                              18446744073709551615ULL};
    unsigned long long power = 1;
    for (int digits = 1; digits <= 19; ++digits) {
        power *= 10;
        values.push_back(power - 1);
        values.push_back(power);
        values.push_back(power + 1);
    }
    std::mt19937_64 random(20240601);
    for (int i = 0; i < 2000; ++i) {
        values.push_back(random() >> (random() % 64));
    }
    return values;
}

}  // namespace

TEST(NumberToString, BoolIsTrueOrFalse) {
    EXPECT_EQ(to_string(true), "true");
    EXPECT_EQ(to_string(false), "false");
}

TEST(NumberToString, SignedCharTableHasEveryByteAsDecimalNumber) {
    for (int value = -128; value <= 127; ++value) {
        EXPECT_EQ(to_string(static_cast<signed char>(value)), printf_signed(value)) << value;
    }
    EXPECT_EQ(to_string(static_cast<signed char>(-128)), "-128");
}

TEST(NumberToString, UnsignedCharTableHasEveryByteAsDecimalNumber) {
    for (int value = 0; value <= 255; ++value) {
        EXPECT_EQ(to_string(static_cast<unsigned char>(value)), printf_signed(value)) << value;
    }
    EXPECT_EQ(to_string(static_cast<unsigned char>('A')), "65");
}

TEST(NumberToString, ShortAndIntOverloadsAreDecimal) {
    EXPECT_EQ(to_string(static_cast<short>(-32768)), "-32768");
    EXPECT_EQ(to_string(static_cast<short>(32767)), "32767");
    EXPECT_EQ(to_string(static_cast<unsigned short>(65535)), "65535");
    EXPECT_EQ(to_string(0), "0");
    EXPECT_EQ(to_string(-1), "-1");
    EXPECT_EQ(to_string(INT_MIN), "-2147483648");
    EXPECT_EQ(to_string(INT_MAX), "2147483647");
    EXPECT_EQ(to_string(0U), "0");
    EXPECT_EQ(to_string(UINT_MAX), "4294967295");
}

TEST(NumberToString, ShortOverloadsWriteEveryValueLikePrintf) {
    for (int value = -32768; value <= 32767; ++value) {
        ASSERT_EQ(to_string(static_cast<short>(value)), printf_signed(value)) << value;
    }
    for (int value = 0; value <= 65535; ++value) {
        ASSERT_EQ(to_string(static_cast<unsigned short>(value)), printf_signed(value)) << value;
    }
}

TEST(NumberToString, IntegerOverloadsWriteLikePrintf) {
    for (unsigned long long bits : interesting_magnitudes()) {
        const auto narrow = static_cast<unsigned int>(bits);
        ASSERT_EQ(to_string(narrow), printf_unsigned(narrow)) << narrow;
        ASSERT_EQ(to_string(static_cast<int>(narrow)), printf_signed(static_cast<int>(narrow)))
            << narrow;
        ASSERT_EQ(to_string(static_cast<unsigned long>(bits)), printf_unsigned(bits)) << bits;
        ASSERT_EQ(to_string(static_cast<long>(bits)), printf_signed(static_cast<long>(bits)))
            << bits;
    }
}

TEST(NumberToString, LongOverloadIsDecimalOverTheWholeRange) {
    for (long value :
         {LONG_MIN, -2147483649L, -2147483648L, -1L, 0L, 4294967295L, 4294967296L, LONG_MAX}) {
        EXPECT_EQ(to_string(value), printf_signed(value)) << value;
    }
}

TEST(NumberToString, UnsignedLongOverloadIsDecimalOverTheWholeRange) {
    for (unsigned long value : {0UL, 4294967295UL, 4294967296UL, ULONG_MAX}) {
        EXPECT_EQ(to_string(value), printf_unsigned(value)) << value;
    }
}

TEST(NumberToString, LongBeyondThirtyTwoBitsGoesThroughTheStream) {
    GlobalLocale grouping(new GroupingPunct);
    EXPECT_EQ(to_string(4294967296L), "4,294,967,296");
    EXPECT_EQ(to_string(-2147483649L), "-2,147,483,649");
    EXPECT_EQ(to_string(4294967296UL), "4,294,967,296");
}

TEST(NumberToString, ThirtyTwoBitRangeOfLongIgnoresTheLocale) {
    GlobalLocale grouping(new GroupingPunct);
    EXPECT_EQ(to_string(4294967295L), "4294967295");
    EXPECT_EQ(to_string(-2147483648L), "-2147483648");
    EXPECT_EQ(to_string(4294967295UL), "4294967295");
    EXPECT_EQ(to_string(1234567), "1234567");
    EXPECT_EQ(to_string(1234567U), "1234567");
    EXPECT_EQ(to_string(static_cast<short>(-12345)), "-12345");
    EXPECT_EQ(to_string(static_cast<unsigned short>(65535)), "65535");
}

TEST(NumberToString, IntegerOverloadsAllocateAtMostOnce) {
    EXPECT_EQ(allocation_count::of([] { to_string(static_cast<signed char>(-128)); }), 0U);
    EXPECT_EQ(allocation_count::of([] { to_string(static_cast<unsigned char>(255)); }), 0U);
    EXPECT_LE(allocation_count::of([] { to_string(static_cast<short>(-32768)); }), 1U);
    EXPECT_LE(allocation_count::of([] { to_string(static_cast<unsigned short>(65535)); }), 1U);
    EXPECT_LE(allocation_count::of([] { to_string(INT_MIN); }), 1U);
    EXPECT_LE(allocation_count::of([] { to_string(UINT_MAX); }), 1U);
    EXPECT_LE(allocation_count::of([] { to_string(-2147483648L); }), 1U);
    EXPECT_LE(allocation_count::of([] { to_string(4294967295L); }), 1U);
    EXPECT_LE(allocation_count::of([] { to_string(4294967295UL); }), 1U);
    EXPECT_LE(allocation_count::of([] { faststr(ULLONG_MAX); }), 1U);
    EXPECT_LE(allocation_count::of([] { faststr(LONG_MIN); }), 1U);
}

TEST(Faststr, WritesUnsignedValuesLikePrintf) {
    for (unsigned long long value : interesting_magnitudes()) {
        ASSERT_EQ(faststr(value), printf_unsigned(value)) << value;
        ASSERT_EQ(faststr(static_cast<unsigned long>(value)), printf_unsigned(value)) << value;
    }
}

TEST(Faststr, WritesSignedValuesLikePrintf) {
    for (unsigned long long bits : interesting_magnitudes()) {
        const auto value = static_cast<long>(bits);
        ASSERT_EQ(faststr(value), printf_signed(value)) << value;
        if (value != LONG_MIN) {
            ASSERT_EQ(faststr(-value), printf_signed(-value)) << value;
        }
    }
    EXPECT_EQ(faststr(LONG_MIN), "-9223372036854775808");
    EXPECT_EQ(faststr(LONG_MAX), "9223372036854775807");
}

TEST(Faststr, WritesEveryNarrowTypeAtItsLimits) {
    EXPECT_EQ(faststr(INT_MIN), "-2147483648");
    EXPECT_EQ(faststr(INT_MAX), "2147483647");
    EXPECT_EQ(faststr(UINT_MAX), "4294967295");
    EXPECT_EQ(faststr(static_cast<short>(-32768)), "-32768");
    EXPECT_EQ(faststr(static_cast<unsigned short>(65535)), "65535");
    EXPECT_EQ(faststr(static_cast<unsigned char>(255)), "255");
    EXPECT_EQ(faststr(static_cast<unsigned char>(0)), "0");
    EXPECT_EQ(faststr(ULLONG_MAX), "18446744073709551615");
}

TEST(Faststr, WritesCharAsItsNumber) {
    EXPECT_EQ(faststr<char>('A'), "65");
    EXPECT_EQ(faststr<char>('0'), "48");
    EXPECT_EQ(faststr<unsigned char>('A'), "65");
    EXPECT_EQ(faststr<char>(static_cast<char>(CHAR_MIN)), printf_signed(CHAR_MIN));
}

TEST(Faststr, WritesErrorValueAsItsNumber) {
    EXPECT_EQ(faststr(Quorvane::HMI_E_INVALID_PARAMETER), "269");
    EXPECT_EQ(faststr(Quorvane::HMI_E_SUCCESS), "0");
    EXPECT_EQ(faststr(static_cast<ErrorValue>(-7)), "-7");
    EXPECT_EQ(faststr(static_cast<ErrorValue>(INT32_MIN)), "-2147483648");
    EXPECT_EQ(faststr<ErrorValue>(Quorvane::HMI_E_INVALID_PARAMETER), "269");
    EXPECT_EQ(faststr(Scoped::Low), "-9223372036854775808");
}

TEST(Faststr, IgnoresTheGlobalLocale) {
    GlobalLocale grouping(new GroupingPunct);
    EXPECT_EQ(faststr(1234567), "1234567");
    EXPECT_EQ(faststr(12345678901234ULL), "12345678901234");
}

TEST(NumberToStringTemplate, WritesCharAsTheCharacter) {
    EXPECT_EQ(to_string<char>('A'), "A");
    EXPECT_EQ(to_string<unsigned char>('A'), "A");
    EXPECT_EQ(to_string('A'), "A");
}

TEST(NumberToStringTemplate, WritesIntegersInDecimal) {
    EXPECT_EQ(to_string<int>(-42), "-42");
    EXPECT_EQ(to_string<unsigned int>(UINT_MAX), "4294967295");
    EXPECT_EQ(to_string<short>(-32768), "-32768");
    EXPECT_EQ(to_string<unsigned short>(65535), "65535");
    EXPECT_EQ(to_string<long>(LONG_MIN), "-9223372036854775808");
    EXPECT_EQ(to_string<unsigned long>(ULONG_MAX), "18446744073709551615");
    EXPECT_EQ(to_string<unsigned long long>(ULLONG_MAX), "18446744073709551615");
}

TEST(NumberToStringTemplate, WritesErrorValueAsItsNumber) {
    EXPECT_EQ(to_string<ErrorValue>(Quorvane::HMI_E_INVALID_PARAMETER), "269");
    EXPECT_EQ(to_string(Quorvane::HMI_E_INVALID_PARAMETER), "269");
    EXPECT_EQ(to_string<ErrorValue>(static_cast<ErrorValue>(-7)), "-7");
}

TEST(NumberToStringTemplate, GoesThroughTheStreamEvenForSmallNumbers) {
    GlobalLocale grouping(new GroupingPunct);
    EXPECT_EQ(to_string<int>(1234567), "1,234,567");
    EXPECT_EQ(to_string<long>(1234), "1,234");
}

TEST(NumberToStringTemplate, EveryTypeGoesThroughTheStream) {
    GlobalLocale grouping(new GroupingPunct);
    EXPECT_EQ(to_string<int>(-1234), "-1,234");
    EXPECT_EQ(to_string<unsigned int>(1234U), "1,234");
    EXPECT_EQ(to_string<short>(-1234), "-1,234");
    EXPECT_EQ(to_string<unsigned short>(1234), "1,234");
    EXPECT_EQ(to_string<long>(1234L), "1,234");
    EXPECT_EQ(to_string<unsigned long>(1234UL), "1,234");
    EXPECT_EQ(to_string<unsigned long long>(1234ULL), "1,234");
    EXPECT_EQ(to_string<ErrorValue>(static_cast<ErrorValue>(1234)), "1,234");
    EXPECT_EQ(to_string<char>('7'), "7");
    EXPECT_EQ(to_string<unsigned char>(200), std::string(1, static_cast<char>(200)));
    EXPECT_EQ(to_string<char>('\0'), std::string(1, '\0'));
}

TEST(ToStringViaSstream, WritesWhatTheStreamWrites) {
    EXPECT_EQ(to_string_via_sstream<int>(-42), "-42");
    EXPECT_EQ(to_string_via_sstream<short>(7), "7");
    EXPECT_EQ(to_string_via_sstream<long>(LONG_MAX), "9223372036854775807");
    EXPECT_EQ(to_string_via_sstream<char>('x'), "x");
    EXPECT_EQ(to_string_via_sstream<unsigned long>(ULONG_MAX), "18446744073709551615");
    GlobalLocale grouping(new GroupingPunct);
    EXPECT_EQ(to_string_via_sstream<int>(1000), "1,000");
}

TEST(DoubleToString, PrecisionZeroFormatsWithOneDecimal) {
    EXPECT_EQ(to_string(1.25, 0, false), printf_fixed(1.25, 1));
    EXPECT_EQ(to_string(3.0, 0, false), "3.0");
    EXPECT_EQ(to_string(0.0, 0, true), "0");
}

TEST(DoubleToString, WithoutStripKeepsEveryDecimal) {
    EXPECT_EQ(to_string(1.5, 10, false), "1.5000000000");
    EXPECT_EQ(to_string(100.0, 2, false), "100.00");
    EXPECT_EQ(to_string(-0.0, 3, false), "-0.000");
}

TEST(DoubleToString, StripRemovesTrailingZerosAndALonePoint) {
    const struct {
        double value;
        unsigned long precision;
        const char* expected;
    } rows[] = {
        {2.5, 1, "2.5"},      {1.5, 10, "1.5"},
        {1.0, 10, "1"},       {0.0, 10, "0"},
        {-0.0, 10, "-0"},     {100.0, 10, "100"},
        {100.0, 1, "100"},    {10.5, 3, "10.5"},
        {-2.25, 10, "-2.25"}, {0.001, 3, "0.001"},
        {0.0001, 3, "0"},     {1e20, 2, "100000000000000000000"},
        {0.04, 1, "0"},       {0.1, 20, "0.10000000000000000555"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(to_string(row.value, row.precision, true), row.expected)
            << row.value << " " << row.precision;
    }
}

TEST(DoubleToString, StrippedTextMatchesTheStreamAndNeverEndsInAPoint) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> values(-1e6, 1e6);
    for (int i = 0; i < 500; ++i) {
        const double value = values(random);
        const int precision = static_cast<int>(random() % 12) + 1;
        const std::string full = printf_fixed(value, precision);
        const std::string stripped = to_string(value, static_cast<unsigned long>(precision), true);
        ASSERT_EQ(to_string(value, static_cast<unsigned long>(precision), false), full);
        ASSERT_FALSE(stripped.empty());
        ASSERT_NE(stripped.back(), '.') << full;
        ASSERT_EQ(full.compare(0, stripped.size(), stripped), 0) << full;
        ASSERT_EQ(std::strtod(stripped.c_str(), nullptr), std::strtod(full.c_str(), nullptr));
    }
}

TEST(DoubleToString, DecimalsBeyondTheExactExpansionAreZeros) {
    const double values[] = {0.1,
                             -1.5,
                             1e-300,
                             std::numeric_limits<double>::denorm_min(),
                             -std::numeric_limits<double>::min(),
                             std::numeric_limits<double>::max(),
                             0.0};
    for (double value : values) {
        for (int precision : {1073, 1074, 1075, 1100, 2000}) {
            const std::string full = printf_fixed(value, precision);
            ASSERT_EQ(to_string(value, static_cast<unsigned long>(precision), false), full)
                << value << " " << precision;
            if (precision >= 1074) {
                ASSERT_EQ(to_string(value, static_cast<unsigned long>(precision), true),
                          to_string(value, 1074, true))
                    << value << " " << precision;
            }
        }
    }
}

TEST(DoubleToString, HugePrecisionKeepsItsMeaning) {
    EXPECT_EQ(to_string(1.5, 4294967299UL, true), "1.5");
    EXPECT_EQ(to_string(1.5, ULONG_MAX, true), "1.5");
    EXPECT_EQ(to_string(0.1, 100000000UL, true), to_string(0.1, 1074, true));
    EXPECT_EQ(to_string(-2.0, 2147483648UL, true), "-2");
    const std::string wide = to_string(1.25, 20000000UL, false);
    ASSERT_EQ(wide.size(), 20000002U);
    EXPECT_EQ(wide.compare(0, 4, "1.25"), 0);
    EXPECT_EQ(wide.find_first_not_of('0', 4), std::string::npos);
    EXPECT_EQ(to_string(std::numeric_limits<double>::infinity(), 20000000UL, false), "inf");
    EXPECT_EQ(to_string(std::nan(""), 20000000UL, false), "nan");
}

TEST(DoubleToString, StripNeverTouchesGroupedDigitsInFrontOfThePoint) {
    GlobalLocale grouping(new GroupingPunct);
    EXPECT_EQ(to_string(1000000.0, 2, false), "1,000,000.00");
    EXPECT_EQ(to_string(1000000.0, 2, true), "1,000,000");
    EXPECT_EQ(to_string(1000.5, 3, true), "1,000.5");
}

TEST(DoubleToString, InfinityAndNanStayAsTheStreamWritesThem) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(to_string(std::nan(""), 10, true), "nan");
    EXPECT_EQ(to_string(inf, 10, true), "inf");
    EXPECT_EQ(to_string(-inf, 10, true), "-inf");
    EXPECT_EQ(to_string(inf, 3, false), "inf");
}

TEST(DoubleToString, ForeignDecimalMarkIsLeftAsItStands) {
    GlobalLocale comma(new CommaPunct);
    EXPECT_EQ(to_string(1.5, 2, false), "1,50");
    EXPECT_EQ(to_string(1.5, 2, true), "1,50");
    EXPECT_EQ(to_string(2.0, 3, true), "2,000");
}

TEST(ParseInt64, StatedExamples) {
    EXPECT_EQ(as_int64("12abc"), 0);
    EXPECT_EQ(as_int64_lax("12abc"), 12);
    EXPECT_EQ(as_int64(" 12"), 12);
    EXPECT_EQ(as_int64("12 "), 0);
    EXPECT_EQ(as_int64("0x10"), 0);
    EXPECT_FALSE(is_int64(""));
}

TEST(ParseInt64, AcceptsWhatStrtolAcceptsAsAWholeText) {
    EXPECT_EQ(try_as_int64("0"), 0L);
    EXPECT_EQ(try_as_int64("+5"), 5L);
    EXPECT_EQ(try_as_int64("-5"), -5L);
    EXPECT_EQ(try_as_int64("\t\n 7"), 7L);
    EXPECT_EQ(try_as_int64("007"), 7L);
    EXPECT_FALSE(try_as_int64("   "));
    EXPECT_FALSE(try_as_int64("--5"));
    EXPECT_FALSE(try_as_int64("+"));
    EXPECT_FALSE(try_as_int64("-"));
    EXPECT_FALSE(try_as_int64("1.0"));
    EXPECT_FALSE(try_as_int64("1e3"));
    EXPECT_FALSE(try_as_int64("abc"));
    EXPECT_FALSE(try_as_int64("5\n"));
}

TEST(ParseInt64, StopsAtTheFirstNulByte) {
    EXPECT_EQ(try_as_int64(std::string("12\0ab", 5)), 12L);
    EXPECT_EQ(try_as_int64(std::string("\0", 1)), 0L);
    EXPECT_FALSE(try_as_int64(std::string("1 \0", 3)));
}

TEST(ParseInt64, AgreesWithStrtolOnRandomDigitTexts) {
    std::mt19937 random(99);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = random_digit_text(random);
        char* end = nullptr;
        const long value = std::strtol(text.c_str(), &end, 10);
        const bool whole = !text.empty() && *end == '\0';
        const auto parsed = try_as_int64(text);
        if (value != LONG_MIN && value != LONG_MAX) {
            ASSERT_EQ(parsed.has_value(), whole) << text;
            if (whole) {
                ASSERT_EQ(*parsed, value) << text;
            }
        } else if (!whole) {
            ASSERT_FALSE(parsed) << text;
        }
        ASSERT_EQ(as_int64_lax(text), value) << text;
    }
}

TEST(ParseInt64, ExtremesAreValidInTheirPlainSpelling) {
    EXPECT_EQ(try_as_int64("9223372036854775807"), LONG_MAX);
    EXPECT_EQ(try_as_int64("-9223372036854775808"), LONG_MIN);
}

TEST(ParseInt64, OtherSpellingsOfTheExtremesAreConfirmedByTheStream) {
    EXPECT_EQ(try_as_int64("+9223372036854775807"), LONG_MAX);
    EXPECT_EQ(try_as_int64("09223372036854775807"), LONG_MAX);
    EXPECT_EQ(try_as_int64(" 9223372036854775807"), LONG_MAX);
    EXPECT_EQ(try_as_int64("-09223372036854775808"), LONG_MIN);
    EXPECT_EQ(try_as_int64(" -9223372036854775808"), LONG_MIN);
}

TEST(ParseInt64, SaturatedValuesFail) {
    for (const char* text :
         {"9223372036854775808", "-9223372036854775809", "99999999999999999999999",
          "+9223372036854775808", " 9223372036854775808", "-99999999999999999999"}) {
        EXPECT_FALSE(try_as_int64(text)) << text;
        EXPECT_EQ(as_int64(text), 0) << text;
        EXPECT_FALSE(is_int64(text)) << text;
    }
}

TEST(ParseInt32, RangeIsThatOfThirtyTwoBits) {
    EXPECT_FALSE(try_as_int32("2147483648"));
    EXPECT_FALSE(try_as_int32("-2147483649"));
    EXPECT_EQ(try_as_int32("2147483647"), 2147483647);
    EXPECT_EQ(try_as_int32("-2147483648"), INT_MIN);
    EXPECT_EQ(as_int32("2147483648"), 0);
    EXPECT_EQ(as_int32("12abc"), 0);
    EXPECT_EQ(as_int32(" -17"), -17);
    EXPECT_TRUE(is_int32("2147483647"));
    EXPECT_FALSE(is_int32("9223372036854775807"));
    EXPECT_FALSE(is_int32("+9223372036854775807"));
    EXPECT_FALSE(is_int32(""));
}

TEST(ParseInt, IsTheSameAsInt32) {
    for (const char* text : {"", "0", "-2147483648", "2147483647", "2147483648", " 5", "5 ", "x"}) {
        EXPECT_EQ(try_as_int(text), try_as_int32(text)) << text;
        EXPECT_EQ(is_int(text), is_int32(text)) << text;
    }
}

TEST(ParseInt16, RangeIsThatOfSixteenBits) {
    EXPECT_EQ(try_as_int16("32767"), std::int16_t{32767});
    EXPECT_EQ(try_as_int16("-32768"), std::int16_t{-32768});
    EXPECT_FALSE(try_as_int16("32768"));
    EXPECT_FALSE(try_as_int16("-32769"));
    EXPECT_TRUE(is_int16("-1"));
    EXPECT_FALSE(is_int16("70000"));
    EXPECT_FALSE(is_int16(""));
}

TEST(ParseUint64, StatedExamples) {
    EXPECT_FALSE(is_uint64("-1"));
    EXPECT_FALSE(try_as_uint64("18446744073709551616"));
    EXPECT_EQ(try_as_uint64("18446744073709551615"), ULONG_MAX);
    EXPECT_EQ(try_as_uint64(" -5"), 18446744073709551611UL);
    EXPECT_FALSE(try_as_uint64(""));
    EXPECT_FALSE(try_as_uint64("-0"));
}

TEST(ParseUint64, AcceptsWhatStrtoulAcceptsAsAWholeText) {
    EXPECT_EQ(try_as_uint64("0"), 0UL);
    EXPECT_EQ(try_as_uint64("+42"), 42UL);
    EXPECT_EQ(try_as_uint64(" 42"), 42UL);
    EXPECT_FALSE(try_as_uint64("42 "));
    EXPECT_FALSE(try_as_uint64("0x2A"));
    EXPECT_FALSE(try_as_uint64(" "));
    EXPECT_EQ(try_as_uint64(std::string("42\0z", 4)), 42UL);
    EXPECT_EQ(as_uint64("abc"), 0U);
}

TEST(ParseUint64, OtherSpellingsOfTheLargestValueAreConfirmedByTheStream) {
    EXPECT_EQ(try_as_uint64("+18446744073709551615"), ULONG_MAX);
    EXPECT_EQ(try_as_uint64("018446744073709551615"), ULONG_MAX);
    EXPECT_EQ(try_as_uint64(" 18446744073709551615"), ULONG_MAX);
    EXPECT_FALSE(try_as_uint64("+18446744073709551616"));
    EXPECT_FALSE(try_as_uint64("99999999999999999999999"));
    EXPECT_EQ(as_uint64("18446744073709551616"), 0U);
}

TEST(ParseSizeT, FollowsTheUnsigned64BitRules) {
    for (const char* text : {"", "0", "-1", " -5", "18446744073709551615", "18446744073709551616",
                             "+18446744073709551615", "12 ", "3"}) {
        EXPECT_EQ(try_as_size_t(text), try_as_uint64(text)) << text;
        EXPECT_EQ(as_size_t(text), as_uint64(text)) << text;
        EXPECT_EQ(is_size_t(text), is_uint64(text)) << text;
    }
}

TEST(ParseUint32, RangeIsThatOfThirtyTwoBits) {
    EXPECT_EQ(try_as_uint32("4294967295"), 4294967295U);
    EXPECT_FALSE(try_as_uint32("4294967296"));
    EXPECT_FALSE(try_as_uint32("-1"));
    EXPECT_FALSE(try_as_uint32(" -1"));
    EXPECT_EQ(as_uint32("4294967296"), 0U);
    EXPECT_TRUE(is_uint32("0"));
    EXPECT_FALSE(is_uint32("18446744073709551615"));
}

TEST(ParseUint16, RangeIsThatOfSixteenBits) {
    EXPECT_EQ(as_uint16("65536"), 0U);
    EXPECT_EQ(as_uint16("65535"), 65535U);
    EXPECT_EQ(try_as_uint16("0"), std::uint16_t{0});
    EXPECT_FALSE(try_as_uint16("-0"));
    EXPECT_FALSE(is_uint16("65536"));
    EXPECT_TRUE(is_uint16(" 80"));
}

TEST(ParseNarrowFamilies, AgreeWithTheCLibraryAndTheirRange) {
    for (const std::string& text : limit_texts()) {
        EXPECT_EQ(try_as_int32(text), expected_signed<std::int32_t>(text)) << text;
        EXPECT_EQ(as_int32(text), expected_signed<std::int32_t>(text).value_or(0)) << text;
        EXPECT_EQ(is_int32(text), expected_signed<std::int32_t>(text).has_value()) << text;
        EXPECT_EQ(try_as_int(text), expected_signed<int>(text)) << text;
        EXPECT_EQ(is_int(text), expected_signed<int>(text).has_value()) << text;
        EXPECT_EQ(try_as_int16(text), expected_signed<std::int16_t>(text)) << text;
        EXPECT_EQ(is_int16(text), expected_signed<std::int16_t>(text).has_value()) << text;
        EXPECT_EQ(try_as_uint32(text), expected_unsigned<std::uint32_t>(text)) << text;
        EXPECT_EQ(as_uint32(text), expected_unsigned<std::uint32_t>(text).value_or(0)) << text;
        EXPECT_EQ(is_uint32(text), expected_unsigned<std::uint32_t>(text).has_value()) << text;
        EXPECT_EQ(try_as_uint16(text), expected_unsigned<std::uint16_t>(text)) << text;
        EXPECT_EQ(as_uint16(text), expected_unsigned<std::uint16_t>(text).value_or(0)) << text;
        EXPECT_EQ(is_uint16(text), expected_unsigned<std::uint16_t>(text).has_value()) << text;
    }
}

// Off the plain spelling of an extreme, the wide families take the answer of an input stream.
TEST(ParseWideFamilies, AgreeWithTheCLibraryAndTheStreamOnTheExtremes) {
    for (const std::string& text : limit_texts()) {
        const CReading reading = c_reading(text);
        boost::optional<std::int64_t> signed_expected;
        if (reading.whole && reading.signed_value != LONG_MIN && reading.signed_value != LONG_MAX) {
            signed_expected = reading.signed_value;
        } else if (reading.whole) {
            signed_expected = stream_reading<long>(text);
        }
        EXPECT_EQ(try_as_int64(text), signed_expected) << text;
        EXPECT_EQ(as_int64(text), signed_expected.value_or(0)) << text;
        EXPECT_EQ(is_int64(text), signed_expected.has_value()) << text;

        boost::optional<std::uint64_t> unsigned_expected;
        if (reading.whole && text.front() != '-' && reading.unsigned_value != ULONG_MAX) {
            unsigned_expected = reading.unsigned_value;
        } else if (reading.whole && text.front() != '-') {
            unsigned_expected = stream_reading<unsigned long>(text);
        }
        EXPECT_EQ(try_as_uint64(text), unsigned_expected) << text;
        EXPECT_EQ(as_uint64(text), unsigned_expected.value_or(0)) << text;
        EXPECT_EQ(is_uint64(text), unsigned_expected.has_value()) << text;
        EXPECT_EQ(try_as_size_t(text), unsigned_expected) << text;
    }
}

TEST(ParseUint64, AgreesWithStrtoulOnRandomDigitTexts) {
    std::mt19937 random(1234);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = random_digit_text(random);
        const CReading reading = c_reading(text);
        const auto parsed = try_as_uint64(text);
        if (!reading.whole || text.front() == '-') {
            ASSERT_FALSE(parsed) << text;
        } else if (reading.unsigned_value != ULONG_MAX) {
            ASSERT_EQ(parsed, reading.unsigned_value) << text;
        }
    }
}

TEST(ParseUint64, SignBehindBlanksIsReadAsStrtoulReadsIt) {
    EXPECT_EQ(try_as_uint64(" -5"), std::strtoul(" -5", nullptr, 10));
    EXPECT_EQ(try_as_uint64("\t-18446744073709551615"), 1UL);
    EXPECT_FALSE(try_as_uint32(" -5"));
    EXPECT_FALSE(try_as_uint16(" -5"));
}

TEST(ParseTemplates, DoWhatTheNamedFormsDo) {
    for (const char* text : {"", "0", "-1", "12", "2147483648", "65536", "4294967296",
                             "9223372036854775808", "18446744073709551615", "1.5", "1.5kg", "x"}) {
        EXPECT_EQ(as<long>(text), as_int64(text)) << text;
        EXPECT_EQ(try_as<long>(text), try_as_int64(text)) << text;
        EXPECT_EQ(as<unsigned long>(text), as_uint64(text)) << text;
        EXPECT_EQ(try_as<unsigned long>(text), try_as_uint64(text)) << text;
        EXPECT_EQ(as<int>(text), as_int32(text)) << text;
        EXPECT_EQ(try_as<int>(text), try_as_int32(text)) << text;
        EXPECT_EQ(as<unsigned int>(text), as_uint32(text)) << text;
        EXPECT_EQ(try_as<unsigned int>(text), try_as_uint32(text)) << text;
        EXPECT_EQ(as<unsigned short>(text), as_uint16(text)) << text;
        EXPECT_EQ(try_as<unsigned short>(text), try_as_uint16(text)) << text;
        EXPECT_EQ(as<double>(text), as_double(text)) << text;
        EXPECT_EQ(try_as<double>(text), try_as_double(text)) << text;
    }
}

TEST(ParseDouble, ReadsANumericPrefixAsStrtodDoes) {
    EXPECT_EQ(try_as_double("1.5kg"), 1.5);
    EXPECT_EQ(try_as_double(" 2.5"), 2.5);
    EXPECT_EQ(try_as_double("1e5"), 100000.0);
    EXPECT_EQ(try_as_double("5"), 5.0);
    EXPECT_EQ(try_as_double("-0.25"), -0.25);
    EXPECT_EQ(try_as_double("0x1p4"), 16.0);
    EXPECT_EQ(try_as_double("inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(try_as_double("1e999"), std::numeric_limits<double>::infinity());
    const auto nan = try_as_double("nan");
    ASSERT_TRUE(nan);
    EXPECT_TRUE(std::isnan(*nan));
}

TEST(ParseDouble, FailsWithoutANumber) {
    EXPECT_FALSE(try_as_double(""));
    EXPECT_FALSE(try_as_double("abc"));
    EXPECT_FALSE(try_as_double("   "));
    EXPECT_FALSE(try_as_double("."));
    EXPECT_FALSE(
        try_as_double(std::string("\0"
                                  "1",
                                  2)));
    EXPECT_EQ(as_double("abc"), 0.0);
    EXPECT_EQ(as_double(""), 0.0);
}

TEST(ParseDouble, AgreesWithStrtod) {
    for (const char* text : {"3.14159", "-1e-300", "4.9e-324", "1.7976931348623157e308", "  .5",
                             "1,5", "0x.8", "-inf", "12e", "1e+", "+.e1"}) {
        char* end = nullptr;
        const double expected = std::strtod(text, &end);
        const auto parsed = try_as_double(text);
        ASSERT_EQ(parsed.has_value(), end != text) << text;
        if (parsed) {
            EXPECT_EQ(*parsed, expected) << text;
        }
    }
}

TEST(ParseDouble, UnderflowAndOverflowAreNoFailure) {
    EXPECT_EQ(try_as_double("1e-400"), 0.0);
    EXPECT_EQ(try_as_double("-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(is_double("1.0e-400"));
    EXPECT_EQ(as_double("0x1.8p1 rest"), 3.0);
}

TEST(IsDouble, NeedsAPointAndANumber) {
    EXPECT_FALSE(is_double(""));
    EXPECT_FALSE(is_double("1e5"));
    EXPECT_FALSE(is_double("5"));
    EXPECT_TRUE(is_double("1.5"));
    EXPECT_TRUE(is_double("1.5kg"));
    EXPECT_TRUE(is_double(".5"));
    EXPECT_FALSE(is_double("."));
    EXPECT_FALSE(is_double("a.b"));
    EXPECT_FALSE(is_double("inf"));
}

TEST(AsInt64Lax, IsPlainStrtol) {
    EXPECT_EQ(as_int64_lax(""), 0);
    EXPECT_EQ(as_int64_lax("abc"), 0);
    EXPECT_EQ(as_int64_lax(" -12x"), -12);
    EXPECT_EQ(as_int64_lax("0x10"), 0);
    EXPECT_EQ(as_int64_lax("007"), 7);
    EXPECT_EQ(as_int64_lax("99999999999999999999"), LONG_MAX);
    EXPECT_EQ(as_int64_lax("-99999999999999999999"), LONG_MIN);
}

TEST(CompareDouble, ToleranceIsAbsoluteMachineEpsilon) {
    EXPECT_TRUE(compare_double(1.0, 1.0 + 1e-17));
    EXPECT_TRUE(compare_double(1.0, std::nextafter(1.0, 2.0)));
    EXPECT_FALSE(compare_double(1.0, 1.0 + 4.440892098500626e-16));
    EXPECT_TRUE(compare_double(0.0, 2.220446049250313e-16));
    EXPECT_FALSE(compare_double(0.0, 2.3e-16));
    EXPECT_FALSE(compare_double(1e20, std::nextafter(1e20, 1e21)));
}

TEST(CompareDouble, InfinitiesAndNan) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::nan("");
    EXPECT_TRUE(compare_double(inf, inf));
    EXPECT_TRUE(compare_double(-inf, -inf));
    EXPECT_FALSE(compare_double(inf, -inf));
    EXPECT_FALSE(compare_double(nan, nan));
    EXPECT_FALSE(compare_double(nan, 1.0));
    EXPECT_FALSE(compare_double(inf, 1e308));
}

TEST(CompareDoubleAsFloat, ToleranceIsFloatEpsilonInDoubles) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(compare_double_as_float(1.0, 1.0000001));
    EXPECT_TRUE(compare_double_as_float(0.0, 1.1920928955078125e-7));
    EXPECT_FALSE(compare_double_as_float(0.0, std::nextafter(1.1920928955078125e-7, 1.0)));
    EXPECT_FALSE(compare_double_as_float(1.0, 1.000001));
    EXPECT_TRUE(compare_double_as_float(inf, inf));
    EXPECT_FALSE(compare_double_as_float(std::nan(""), std::nan("")));
}

TEST(CompareFloat, ToleranceIsFloatEpsilon) {
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(compare_float(std::nanf(""), std::nanf("")));
    EXPECT_TRUE(compare_float(1.0F, std::nextafter(1.0F, 2.0F)));
    EXPECT_TRUE(compare_float(0.0F, 1.1920929e-7F));
    EXPECT_FALSE(compare_float(0.0F, 2.4e-7F));
    EXPECT_TRUE(compare_float(inf, inf));
    EXPECT_FALSE(compare_float(inf, -inf));
}

TEST(IsInteger, TruncationChangesNothing) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(is_integer(0.0));
    EXPECT_TRUE(is_integer(-0.0));
    EXPECT_TRUE(is_integer(-3.0));
    EXPECT_TRUE(is_integer(1e300));
    EXPECT_FALSE(is_integer(1.5));
    EXPECT_FALSE(is_integer(-0.5));
    EXPECT_FALSE(is_integer(std::numeric_limits<double>::denorm_min()));
    EXPECT_TRUE(is_integer(inf));
    EXPECT_TRUE(is_integer(-inf));
    EXPECT_FALSE(is_integer(std::nan("")));
}

TEST(TrailingZeros, StatedExamples) {
    EXPECT_EQ(trailing_zeros(1000), 3);
    EXPECT_EQ(trailing_zeros(-100), 2);
    EXPECT_EQ(trailing_zeros(0), 0);
    EXPECT_EQ(trailing_zeros(101), 0);
}

TEST(TrailingZeros, EveryOverloadCountsDecimalZeros) {
    EXPECT_EQ(trailing_zeros(1000U), 3);
    EXPECT_EQ(trailing_zeros(0U), 0);
    EXPECT_EQ(trailing_zeros(4000000000U), 9);
    EXPECT_EQ(trailing_zeros(INT_MIN), 0);
    EXPECT_EQ(trailing_zeros(-2000000000), 9);
    EXPECT_EQ(trailing_zeros(0UL), 0);
    EXPECT_EQ(trailing_zeros(10000000000UL), 10);
    EXPECT_EQ(trailing_zeros(10000000000000000000UL), 19);
    EXPECT_EQ(trailing_zeros(-1000L), 3);
    EXPECT_EQ(trailing_zeros(0L), 0);
}

namespace {

// The zeros at the end of the printed number, and none for 0.
int zeros_at_end(const std::string& digits) {
    if (digits == "0") {
        return 0;
    }
    return static_cast<int>(digits.size() - 1 - digits.find_last_not_of('0'));
}

}  // namespace

TEST(TrailingZeros, CountsTheZerosOfTheDecimalText) {
    for (unsigned long long bits : interesting_magnitudes()) {
        const auto wide = static_cast<unsigned long>(bits);
        ASSERT_EQ(trailing_zeros(wide), zeros_at_end(printf_unsigned(wide))) << wide;
        const auto narrow = static_cast<unsigned int>(bits);
        ASSERT_EQ(trailing_zeros(narrow), zeros_at_end(printf_unsigned(narrow))) << narrow;
        const auto magnitude = static_cast<int>(narrow & 0x7fffffffU);
        ASSERT_EQ(trailing_zeros(-magnitude), zeros_at_end(printf_signed(magnitude))) << magnitude;
        ASSERT_EQ(trailing_zeros(static_cast<long>(narrow)), trailing_zeros(narrow)) << narrow;
        ASSERT_EQ(trailing_zeros(-static_cast<long>(narrow)), trailing_zeros(narrow)) << narrow;
    }
}

TEST(TrailingZeros, LongLooksOnlyAtTheLowWordOfTheMagnitude) {
    EXPECT_EQ(trailing_zeros(10000000000L), 0);  // low word 1410065408
    EXPECT_EQ(trailing_zeros(-10000000000L), 0);
    EXPECT_EQ(trailing_zeros(4294968296L), 3);  // 2^32 + 1000
    EXPECT_EQ(trailing_zeros(4294968296UL), 0);
    EXPECT_EQ(trailing_zeros(4294967296000L), 0);  // low word 0
    EXPECT_EQ(trailing_zeros(LONG_MIN), 0);
}

TEST(NumDigits, CountsTheSignToo) {
    static_assert(num_digits(-5) == 2);
    EXPECT_EQ(num_digits<int>(-5), 2);
    EXPECT_EQ(num_digits<int>(INT_MIN), 11);
    EXPECT_EQ(num_digits<signed char>(-128), 4);
    EXPECT_EQ(num_digits<int>(0), 1);
    for (int value : {9, 10, 99, 100, -9, -10, 127, INT_MAX, -2147483647}) {
        EXPECT_EQ(num_digits<int>(value), static_cast<int>(printf_signed(value).size())) << value;
    }
    for (int value = -128; value <= 127; ++value) {
        EXPECT_EQ(num_digits<signed char>(static_cast<signed char>(value)),
                  static_cast<int>(printf_signed(value).size()))
            << value;
    }
}

TEST(NumberParsers, SurviveRandomBytes) {
    std::mt19937 random(424242);
    for (int i = 0; i < 3000; ++i) {
        std::string text(random() % 40, '\0');
        for (char& c : text) {
            c = static_cast<char>(random());
        }
        (void)try_as_int64(text);
        (void)as_int64(text);
        (void)is_int64(text);
        (void)try_as_int32(text);
        (void)as_int32(text);
        (void)is_int32(text);
        (void)try_as_int(text);
        (void)is_int(text);
        (void)try_as_int16(text);
        (void)is_int16(text);
        (void)try_as_uint64(text);
        (void)as_uint64(text);
        (void)is_uint64(text);
        (void)try_as_size_t(text);
        (void)as_size_t(text);
        (void)is_size_t(text);
        (void)try_as_uint32(text);
        (void)as_uint32(text);
        (void)is_uint32(text);
        (void)try_as_uint16(text);
        (void)as_uint16(text);
        (void)is_uint16(text);
        (void)try_as_double(text);
        (void)as_double(text);
        (void)is_double(text);
        (void)as_int64_lax(text);
    }
}
