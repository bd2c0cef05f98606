#include "helper/conversions.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Quorvane;

constexpr long ns_per_second = 1000000000L;
constexpr long ns_per_minute = 60 * ns_per_second;
constexpr long ns_per_hour = 60 * ns_per_minute;
constexpr long ns_per_day = 24 * ns_per_hour;
constexpr long largest_instant = 9223372036854775800L;
constexpr long smallest_instant = -9223372036854775800L;
constexpr long untouched = 4242;

// Seconds since the epoch of some instants used below.
constexpr long s_2024_02_29 = 1709164800L;
constexpr long s_2024_03_01 = 1709251200L;

// An independent date-time text: the C library's broken-down UTC time of the whole seconds,
// with the 100 ns ticks of the second written by hand.
std::string c_library_iso(long ns) {
    const long ticks = ns / 100;
    long seconds = ticks / 10000000;
    long ticks_of_second = ticks % 10000000;
    if (ticks_of_second < 0) {
        ticks_of_second += 10000000;
        --seconds;
    }
    const time_t t = seconds;
    tm broken_down{};
    gmtime_r(&t, &broken_down);
    char text[64];
    std::size_t length = strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S", &broken_down);
    if (ticks_of_second != 0) {
        text[length++] = '.';
        for (long weight = 1000000; weight > 0 && ticks_of_second != 0; weight /= 10) {
            text[length++] = static_cast<char>('0' + ticks_of_second / weight);
            ticks_of_second %= weight;
        }
    }
    text[length++] = 'Z';
    return std::string(text, length);
}

// Nanosecond counts over the whole 64-bit range, with extra weight near the epoch and the bounds.
std::vector<long> pseudo_random_instants(std::size_t count) {
    std::mt19937_64 engine(20240229);
    std::uniform_int_distribution<long> whole(LONG_MIN, LONG_MAX);
    std::uniform_int_distribution<long> near(-1000000000000000L, 1000000000000000L);
    std::uniform_int_distribution<long> edge(0, 100000000000L);
    std::vector<long> values;
    values.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        switch (i % 4) {
            case 0:
            case 1:
                values.push_back(whole(engine));
                break;
            case 2:
                values.push_back(near(engine));
                break;
            default:
                values.push_back(i % 8 == 3 ? LONG_MAX - edge(engine) : LONG_MIN + edge(engine));
                break;
        }
    }
    return values;
}

long truncated_to_ticks(long ns) {
    return ns / 100 * 100;
}

// ---------------------------------------------------------------------------------------------
// Calendar
// ---------------------------------------------------------------------------------------------

TEST(NumbersTwoDigits, HoldsZeroPaddedTextsOfZeroToFiftyNine) {
    for (int value = 0; value < 60; ++value) {
        const char expected[3] = {static_cast<char>('0' + value / 10),
                                  static_cast<char>('0' + value % 10), '\0'};
        EXPECT_STREQ(numbers_two_digits[value], expected) << value;
    }
}

TEST(IsLeapYear, FollowsTheGregorianRule) {
    const struct {
        int year;
        bool leap;
    } rows[] = {{2024, true}, {2023, false}, {2000, true},  {1900, false}, {2100, false},
                {2400, true}, {1600, true},  {1700, false}, {0, true},     {1, false},
                {-4, true},   {-100, false}, {-400, true},  {-1, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(is_leap_year(row.year), row.leap) << row.year;
    }
}

TEST(CalculateDays, CountsFromTheEpoch) {
    EXPECT_EQ(calculate_days(1970, 1, 1), 0);
    EXPECT_EQ(calculate_days(1969, 12, 31), -1);
    EXPECT_EQ(calculate_days(1970, 1, 2), 1);
    EXPECT_EQ(calculate_days(2024, 2, 29), s_2024_02_29 / 86400);
    EXPECT_EQ(calculate_days(2024, 3, 1), s_2024_03_01 / 86400);
    EXPECT_EQ(calculate_days(1677, 9, 21), -106752);
    EXPECT_EQ(calculate_days(2262, 4, 11), 106751);
    EXPECT_EQ(calculate_days(0, 3, 1), -719468);
    EXPECT_EQ(calculate_days(0, 2, 29), -719469);
}

TEST(CalculateYearAndMonth, SetsTheArgumentToTheDayOfTheMonth) {
    int days = -1;
    EXPECT_EQ(calculate_year_and_month(days), std::make_pair(1969, 12));
    EXPECT_EQ(days, 31);
    days = 0;
    EXPECT_EQ(calculate_year_and_month(days), std::make_pair(1970, 1));
    EXPECT_EQ(days, 1);
    days = -719469;
    EXPECT_EQ(calculate_year_and_month(days), std::make_pair(0, 2));
    EXPECT_EQ(days, 29);
    days = -719468 - 367;
    EXPECT_EQ(calculate_year_and_month(days), std::make_pair(-1, 2));
    EXPECT_EQ(days, 28);
}

TEST(Calendar, AgreesWithTheCLibraryForEveryDayFrom1677To2262) {
    const int first = calculate_days(1677, 1, 1);
    const int last = calculate_days(2262, 12, 31);
    ASSERT_LT(first, last);
    for (int day_count = first; day_count <= last; ++day_count) {
        const time_t t = static_cast<time_t>(day_count) * 86400;
        tm broken_down{};
        ASSERT_NE(gmtime_r(&t, &broken_down), nullptr);
        const int year = broken_down.tm_year + 1900;
        const int month = broken_down.tm_mon + 1;
        ASSERT_EQ(calculate_days(year, month, broken_down.tm_mday), day_count);
        tm date{};
        date.tm_year = broken_down.tm_year;
        date.tm_mon = broken_down.tm_mon;
        date.tm_mday = broken_down.tm_mday;
        ASSERT_EQ(timegm(&date), t);
        int day = day_count;
        ASSERT_EQ(calculate_year_and_month(day), std::make_pair(year, month)) << day_count;
        ASSERT_EQ(day, broken_down.tm_mday) << day_count;
    }
}

TEST(Calendar, RoundTripsAcrossEveryIntDayCount) {
    for (long day_count = INT_MIN; day_count <= INT_MAX; day_count += 9973) {
        int day = static_cast<int>(day_count);
        const auto [year, month] = calculate_year_and_month(day);
        ASSERT_GE(month, 1);
        ASSERT_LE(month, 12);
        ASSERT_GE(day, 1);
        ASSERT_LE(day, calculate_days_in_month(year, month));
        ASSERT_EQ(calculate_days(year, month, day), day_count);
    }
    int day = INT_MAX;
    const auto [year, month] = calculate_year_and_month(day);
    EXPECT_EQ(calculate_days(year, month, day), INT_MAX);
}

TEST(Calendar, TakesExtremeArgumentsWithoutOverflow) {
    EXPECT_TRUE(is_leap_year(INT_MIN));
    EXPECT_FALSE(is_leap_year(INT_MAX));
    calculate_days(INT_MIN, INT_MIN, INT_MIN);
    calculate_days(INT_MAX, INT_MAX, INT_MAX);
    int day = INT_MIN;
    const auto [year, month] = calculate_year_and_month(day);
    EXPECT_EQ(calculate_days(year, month, day), INT_MIN);
}

TEST(Calendar, AgreesWithADayByDayWalkAcrossYearZero) {
    // An independent calendar: the date moved one day at a time from the epoch, by the month
    // lengths alone, some 3300 years each way.
    const auto month_length = [](int year, int month) {
        const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        const int lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        return lengths[month - 1];
    };
    for (const int step : {1, -1}) {
        int year = 1970, month = 1, day = 1;
        for (int day_count = 0; day_count != step * 1200000; day_count += step) {
            ASSERT_EQ(calculate_days(year, month, day), day_count) << year << '-' << month;
            int split = day_count;
            ASSERT_EQ(calculate_year_and_month(split), std::make_pair(year, month)) << day_count;
            ASSERT_EQ(split, day) << day_count;
            day += step;
            if (day > month_length(year, month)) {
                day = 1;
                month = month % 12 + 1;
                year += month == 1 ? 1 : 0;
            } else if (day < 1) {
                month = month == 1 ? 12 : month - 1;
                year -= month == 12 ? 1 : 0;
                day = month_length(year, month);
            }
        }
    }
}

TEST(CalculateDays, CountsDaysOutsideTheMonthOnArithmetically) {
    const struct {
        int year, month, day;
        int same_year, same_month, same_day;
    } rows[] = {
        {2024, 3, 0, 2024, 2, 29},  {2023, 3, 0, 2023, 2, 28},  {2024, 1, 0, 2023, 12, 31},
        {2023, 1, 32, 2023, 2, 1},  {2023, 2, 29, 2023, 3, 1},  {2024, 2, 30, 2024, 3, 1},
        {2024, 4, 31, 2024, 5, 1},  {2024, 12, 32, 2025, 1, 1}, {2024, 3, -1, 2024, 2, 28},
        {1970, 1, 0, 1969, 12, 31}, {1970, 1, 366, 1971, 1, 1}, {0, 3, 0, 0, 2, 29},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(calculate_days(row.year, row.month, row.day),
                  calculate_days(row.same_year, row.same_month, row.same_day))
            << row.year << '-' << row.month << '-' << row.day;
    }
}

TEST(CalculateDaysInMonth, GivesThirtyOneForEveryMonthOutsideTheNamedOnes) {
    const int common[] = {31, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 31, 31};
    const int leap[] = {31, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 31, 31};
    for (int month = 0; month <= 14; ++month) {
        EXPECT_EQ(calculate_days_in_month(2023, month), common[month]) << month;
        EXPECT_EQ(calculate_days_in_month(2024, month), leap[month]) << month;
    }
    EXPECT_EQ(calculate_days_in_month(1900, 2), 28);
    EXPECT_EQ(calculate_days_in_month(2000, 2), 29);
    EXPECT_EQ(calculate_days_in_month(2024, -1), 31);
    EXPECT_EQ(calculate_days_in_month(2024, INT_MAX), 31);
}

TEST(CalculateTime, MovesWholeUnitsOfAPositiveRest) {
    const struct {
        int start;
        long unit;
        long rest;
        int field;
        long rest_after;
    } rows[] = {{0, 10, 0, 0, 0},  {0, 10, 9, 0, 9},
                {0, 10, 10, 1, 0}, {0, 10, 25, 2, 5},
                {5, 10, 25, 7, 5}, {0, 36000000000L, 863999999999L, 23, 35999999999L},
                {0, 1, 59, 59, 0}};
    for (const auto& row : rows) {
        long rest = row.rest;
        EXPECT_EQ(calculate_time(row.start, row.unit, rest), row.field) << row.rest;
        EXPECT_EQ(rest, row.rest_after) << row.rest;
    }
}

TEST(CalculateTime, LeavesANegativeRestBetweenMinusUnitAndMinusOne) {
    const struct {
        int start;
        long unit;
        long rest;
        int field;
        long rest_after;
    } rows[] = {{23, 10, -1, 23, -1},
                {23, 10, -10, 23, -10},
                {23, 10, -11, 22, -1},
                {23, 10, -20, 22, -10},
                {23, 10, -25, 21, -5},
                {59, 10, -600, 0, -10},
                {23, 36000000000L, -863999999999L, 0, -35999999999L}};
    for (const auto& row : rows) {
        long rest = row.rest;
        EXPECT_EQ(calculate_time(row.start, row.unit, rest), row.field) << row.rest;
        EXPECT_EQ(rest, row.rest_after) << row.rest;
    }
}

TEST(CalculateTime, EqualsMovingOneUnitAtATime) {
    for (long unit = 1; unit <= 7; ++unit) {
        for (long original = -60; original <= 60; ++original) {
            long expected_rest = original;
            int expected_field = 30;
            if (expected_rest >= 0) {
                while (expected_rest >= unit) {
                    expected_rest -= unit;
                    ++expected_field;
                }
            } else {
                while (expected_rest < -unit) {
                    expected_rest += unit;
                    --expected_field;
                }
            }
            long rest = original;
            EXPECT_EQ(calculate_time(30, unit, rest), expected_field) << unit << ' ' << original;
            EXPECT_EQ(rest, expected_rest) << unit << ' ' << original;
        }
    }
}

TEST(IsoTemplateStringWithTicks, WritesTheTicksWithoutTrailingZeros) {
    const struct {
        long ticks;
        const char* mask;
    } rows[] = {{0, "yyyy-MM-ddTHH:mm:ssZ"},
                {-1, "yyyy-MM-ddTHH:mm:ssZ"},
                {LONG_MIN, "yyyy-MM-ddTHH:mm:ssZ"},
                {1, "yyyy-MM-ddTHH:mm:ss.0000001Z"},
                {10, "yyyy-MM-ddTHH:mm:ss.000001Z"},
                {1200, "yyyy-MM-ddTHH:mm:ss.00012Z"},
                {5000000, "yyyy-MM-ddTHH:mm:ss.5Z"},
                {1234567, "yyyy-MM-ddTHH:mm:ss.1234567Z"},
                {9999999, "yyyy-MM-ddTHH:mm:ss.9999999Z"}};
    for (const auto& row : rows) {
        EXPECT_EQ(iso_template_string_with_ticks(row.ticks), row.mask) << row.ticks;
    }
}

TEST(IsoTemplateStringWithTicks, KeepsTheMaskShapeForTicksOfEightOrMoreDigits) {
    for (long ticks : {10000000L, 123456789L, LONG_MAX}) {
        const std::string mask = iso_template_string_with_ticks(ticks);
        EXPECT_EQ(mask.compare(0, 20, "yyyy-MM-ddTHH:mm:ss."), 0) << ticks;
        EXPECT_EQ(mask.back(), 'Z') << ticks;
    }
}

TEST(ValidateTicks, RejectsAFractionOnlyInALeapSecondOrAtTheEndOfDay) {
    const struct {
        int ticks;
        int hour;
        int second;
        bool valid;
    } rows[] = {{0, 24, 0, true},  {0, 23, 60, true},  {0, 24, 60, true},     {1, 23, 59, true},
                {1, 24, 0, false}, {1, 23, 60, false}, {5000000, 0, 0, true}, {-1, 12, 60, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(validate_ticks(row.ticks, row.hour, row.second), row.valid)
            << row.ticks << ' ' << row.hour << ' ' << row.second;
    }
}

// ---------------------------------------------------------------------------------------------
// Date-time text
// ---------------------------------------------------------------------------------------------

TEST(NsToIso, WritesTheStatedInstants) {
    const struct {
        long ns;
        const char* text;
    } rows[] = {
        {0, "1970-01-01T00:00:00Z"},
        {100, "1970-01-01T00:00:00.0000001Z"},
        {99, "1970-01-01T00:00:00Z"},
        {-99, "1970-01-01T00:00:00Z"},
        {-100, "1969-12-31T23:59:59.9999999Z"},
        {-199, "1969-12-31T23:59:59.9999999Z"},
        {-200, "1969-12-31T23:59:59.9999998Z"},
        {500000000, "1970-01-01T00:00:00.5Z"},
        {-500000000, "1969-12-31T23:59:59.5Z"},
        {-ns_per_second, "1969-12-31T23:59:59Z"},
        {-ns_per_hour, "1969-12-31T23:00:00Z"},
        {-ns_per_day, "1969-12-31T00:00:00Z"},
        {-ns_per_day - 50, "1969-12-31T00:00:00Z"},
        {-ns_per_day - 100, "1969-12-30T23:59:59.9999999Z"},
        {-ns_per_day + 100, "1969-12-31T00:00:00.0000001Z"},
        {ns_per_day - 100, "1970-01-01T23:59:59.9999999Z"},
        {s_2024_02_29 * ns_per_second + 12 * ns_per_hour, "2024-02-29T12:00:00Z"},
        {951825600L * ns_per_second + 123456789, "2000-02-29T12:00:00.1234567Z"},
        {largest_instant, "2262-04-11T23:47:16.8547758Z"},
        {smallest_instant, "1677-09-21T00:12:43.1452242Z"},
        {largest_instant - 100, "2262-04-11T23:47:16.8547757Z"},
        {smallest_instant + 100, "1677-09-21T00:12:43.1452243Z"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ns_to_iso(row.ns), row.text) << row.ns;
    }
}

TEST(NsToIso, SaturatesBeyondTheWritableRange) {
    for (long ns : {largest_instant + 1, largest_instant + 7, LONG_MAX}) {
        EXPECT_EQ(ns_to_iso(ns), "2262-04-11T23:47:16.8547758Z") << ns;
    }
    for (long ns : {smallest_instant - 1, smallest_instant - 7, LONG_MIN}) {
        EXPECT_EQ(ns_to_iso(ns), "1677-09-21T00:12:43.1452242Z") << ns;
    }
}

TEST(NsToIso, AgreesWithTheCLibraryOverPseudoRandomInstants) {
    for (long ns : pseudo_random_instants(200000)) {
        const long bounded = ns > largest_instant    ? largest_instant
                             : ns < smallest_instant ? smallest_instant
                                                     : ns;
        ASSERT_EQ(ns_to_iso(ns), c_library_iso(bounded)) << ns;
    }
}

TEST(NsToIso, AgreesWithTheCLibraryAroundEveryMidnightOfTheWritableRange) {
    const long first_day = smallest_instant / ns_per_day;
    const long last_day = largest_instant / ns_per_day;
    for (long day = first_day; day <= last_day; ++day) {
        const long midnight = day * ns_per_day;
        for (long ns : {midnight, midnight - 100, midnight + ns_per_day / 2 + 100}) {
            if (ns >= smallest_instant && ns <= largest_instant) {
                ASSERT_EQ(ns_to_iso(ns), c_library_iso(ns)) << ns;
            }
        }
    }
}

TEST(NsToIso, KeepsEveryNumberOfFractionDigitsOnBothSidesOfTheEpoch) {
    const struct {
        long ns;
        const char* text;
    } rows[] = {
        {100, "1970-01-01T00:00:00.0000001Z"},
        {1000, "1970-01-01T00:00:00.000001Z"},
        {10000, "1970-01-01T00:00:00.00001Z"},
        {100000, "1970-01-01T00:00:00.0001Z"},
        {1000000, "1970-01-01T00:00:00.001Z"},
        {10000000, "1970-01-01T00:00:00.01Z"},
        {100000000, "1970-01-01T00:00:00.1Z"},
        {123456700, "1970-01-01T00:00:00.1234567Z"},
        {120000000, "1970-01-01T00:00:00.12Z"},
        {102030400, "1970-01-01T00:00:00.1020304Z"},
        {999999900, "1970-01-01T00:00:00.9999999Z"},
        {-900, "1969-12-31T23:59:59.9999991Z"},
        {-1000, "1969-12-31T23:59:59.999999Z"},
        {-100000, "1969-12-31T23:59:59.9999Z"},
        {-990000000, "1969-12-31T23:59:59.01Z"},
        {-999999900, "1969-12-31T23:59:59.0000001Z"},
        {-ns_per_second - 100, "1969-12-31T23:59:58.9999999Z"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ns_to_iso(row.ns), row.text) << row.ns;
    }
}

TEST(TryIsoToNs, ReadsBackWhatNsToIsoWroteTruncatedToTicks) {
    for (long ns : pseudo_random_instants(200000)) {
        long out = untouched;
        ASSERT_TRUE(try_iso_to_ns(ns_to_iso(ns).c_str(), out)) << ns;
        const long expected = ns > largest_instant    ? largest_instant
                              : ns < smallest_instant ? smallest_instant
                                                      : truncated_to_ticks(ns);
        ASSERT_EQ(out, expected) << ns;
    }
}

// ---------------------------------------------------------------------------------------------
// Duration text
// ---------------------------------------------------------------------------------------------

TEST(NsToDurationIso, OmitsZeroFieldsAndStripsTheSeconds) {
    const struct {
        long ns;
        const char* text;
    } rows[] = {
        {0, "PT0S"},
        {ns_per_day, "P1D"},
        {-1500000000L, "-PT1.5S"},
        {1, "PT0.000000001S"},
        {-1, "-PT0.000000001S"},
        {ns_per_hour, "PT1H"},
        {ns_per_minute, "PT1M"},
        {ns_per_second, "PT1S"},
        {ns_per_hour + ns_per_second, "PT1H1S"},
        {ns_per_day + 1, "P1DT0.000000001S"},
        {ns_per_day + ns_per_hour, "P1DT1H"},
        {ns_per_day + ns_per_minute + 10 * ns_per_second, "P1DT1M10S"},
        {ns_per_day + ns_per_hour + ns_per_minute + 1500000000L, "P1DT1H1M1.5S"},
        {59999999999L, "PT59.999999999S"},
        {14 * ns_per_day, "P14D"},
        {400 * ns_per_day, "P400D"},
        {LONG_MAX, "P106751DT23H47M16.854775807S"},
        {LONG_MIN, "-P106751DT23H47M16.854775808S"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ns_to_duration_iso(row.ns), row.text) << row.ns;
    }
}

TEST(NsToDurationIso, WritesEachCombinationOfDaysHoursMinutesAndSecondsWithEitherSign) {
    const long d = 2 * ns_per_day, h = 3 * ns_per_hour, m = 4 * ns_per_minute, s = 5250000000L;
    const struct {
        long ns;
        const char* text;
    } rows[] = {
        {s, "PT5.25S"},
        {m, "PT4M"},
        {m + s, "PT4M5.25S"},
        {h, "PT3H"},
        {h + s, "PT3H5.25S"},
        {h + m, "PT3H4M"},
        {h + m + s, "PT3H4M5.25S"},
        {d, "P2D"},
        {d + s, "P2DT5.25S"},
        {d + m, "P2DT4M"},
        {d + m + s, "P2DT4M5.25S"},
        {d + h, "P2DT3H"},
        {d + h + s, "P2DT3H5.25S"},
        {d + h + m, "P2DT3H4M"},
        {d + h + m + s, "P2DT3H4M5.25S"},
        {10, "PT0.00000001S"},
        {999999999, "PT0.999999999S"},
        {ns_per_minute + 1, "PT1M0.000000001S"},
        {123456789012L, "PT2M3.456789012S"},
        {23 * ns_per_hour + 59 * ns_per_minute + 59999999999L, "PT23H59M59.999999999S"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ns_to_duration_iso(row.ns), row.text) << row.ns;
        EXPECT_EQ(ns_to_duration_iso(-row.ns), std::string("-") + row.text) << -row.ns;
    }
}

TEST(NsToDurationIso, IsReadBackExactly) {
    for (long ns : pseudo_random_instants(20000)) {
        long out = untouched;
        ASSERT_TRUE(try_duration_iso_to_ns(ns_to_duration_iso(ns), out)) << ns;
        ASSERT_EQ(out, ns);
    }
}

// ---------------------------------------------------------------------------------------------
// Date-time parser
// ---------------------------------------------------------------------------------------------

struct Accepted {
    const char* text;
    long ns;
};

void expect_accepted(const Accepted* rows, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        long out = untouched;
        EXPECT_TRUE(try_iso_to_ns(rows[i].text, out)) << rows[i].text;
        EXPECT_EQ(out, rows[i].ns) << rows[i].text;
    }
}

void expect_rejected(const char* const* texts, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        long out = untouched;
        EXPECT_FALSE(try_iso_to_ns(texts[i], out)) << texts[i];
        EXPECT_EQ(out, untouched) << texts[i];
    }
}

constexpr long at(long seconds, long extra_ns = 0) {
    return seconds * ns_per_second + extra_ns;
}

TEST(TryIsoToNs, AcceptsTheStatedTexts) {
    const Accepted rows[] = {
        {"2024-02-29", at(s_2024_02_29)},
        {"20240229", at(s_2024_02_29)},
        {"2024-03-01", at(s_2024_03_01)},
        {"20240229T120000Z", at(s_2024_02_29 + 12 * 3600)},
        {"2024-02-29T24:00:00Z", at(s_2024_03_01)},
        {"2024-02-29T23:59:60Z", at(s_2024_03_01)},
        {"2024-02-29T12:00:00+0100", at(s_2024_02_29 + 11 * 3600)},
        {"2024-02-29T12+01", at(s_2024_02_29 + 11 * 3600)},
        {"2024-03-01T12.5", at(s_2024_03_01 + 12 * 3600, 500000000)},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, RejectsTheStatedTexts) {
    const char* const texts[] = {
        "2023-02-29",
        "2024-02-29T24:00:01Z",
        "2024-02-29T23:59:60.5Z",
        "2024-02-29T12:00:00+14:01",
        "2024-02-29T12:00:00.Z",
        "2024-02",
        "2024-0229",
        "2024-02-29T12:00:00Z ",
    };
    expect_rejected(texts, std::size(texts));
}

TEST(TryIsoToNs, ReadsEveryFieldOfTheExtendedForm) {
    const long noon = s_2024_03_01 + 12 * 3600;
    const Accepted rows[] = {
        {"2024-03-01T12", at(noon)},
        {"2024-03-01T12Z", at(noon)},
        {"2024-03-01T12:34", at(noon + 34 * 60)},
        {"2024-03-01T12:34Z", at(noon + 34 * 60)},
        {"2024-03-01T12:34:56", at(noon + 34 * 60 + 56)},
        {"2024-03-01T12:34:56Z", at(noon + 34 * 60 + 56)},
        {"2024-03-01T12:34:56.7", at(noon + 34 * 60 + 56, 700000000)},
        {"2024-03-01T12:34:56,7Z", at(noon + 34 * 60 + 56, 700000000)},
        {"2024-03-01T12:34:56.1234567Z", at(noon + 34 * 60 + 56, 123456700)},
        {"2024-03-01T12:34:56.000001Z", at(noon + 34 * 60 + 56, 1000)},
        {"2024-03-01T12:34.25", at(noon + 34 * 60, 250000000)},
        {"2024-03-01T12:34,25Z", at(noon + 34 * 60, 250000000)},
        {"2024-03-01T12,5Z", at(noon, 500000000)},
        {"2024-03-01T12.5+01:00", at(noon - 3600, 500000000)},
        {"2024-03-01T12:34.5-01", at(noon + 34 * 60 + 3600, 500000000)},
        {"2024-03-01T00:00:00.0000000Z", at(s_2024_03_01)},
        {"2024-01-31", at(s_2024_03_01 - 30 * 86400)},
        {"2024-12-31T23:59:59Z", at(1735689599L)},
        {"1970-01-01T00:00:00Z", 0},
        {"1969-12-31T23:59:59.9999999Z", -100},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, AppliesTheZoneOffsetToTheClock) {
    const long noon = s_2024_03_01 + 12 * 3600;
    const Accepted rows[] = {
        {"2024-03-01T12:00:00+01:00", at(noon - 3600)},
        {"2024-03-01T12:00:00-01:00", at(noon + 3600)},
        {"2024-03-01T12:00:00-05:30", at(noon + 5 * 3600 + 30 * 60)},
        {"2024-03-01T12:00:00+0530", at(noon - 5 * 3600 - 30 * 60)},
        {"2024-03-01T12:00:00+05", at(noon - 5 * 3600)},
        {"2024-03-01T12:00:00+14:00", at(noon - 14 * 3600)},
        {"2024-03-01T12:00:00-14", at(noon + 14 * 3600)},
        {"2024-03-01T12:00:00+13:59", at(noon - 13 * 3600 - 59 * 60)},
        {"2024-03-01T12:00:00+00:00", at(noon)},
        {"2024-03-01T12:00:00.5+01:00", at(noon - 3600, 500000000)},
        {"2024-03-01T12:00+01:00", at(noon - 3600)},
        {"2024-03-01T00:30+01:00", at(s_2024_03_01 - 30 * 60)},
        {"2024-02-29T23:30-01:00", at(s_2024_03_01 + 30 * 60)},
        {"2024-03-01T12:00:00.1234567+01:00", at(noon - 3600, 123456700)},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, ReadsTheBasicForm) {
    const long noon = s_2024_03_01 + 12 * 3600;
    const Accepted rows[] = {
        {"20240301T12", at(noon)},
        {"20240301T12Z", at(noon)},
        {"20240301T1234", at(noon + 34 * 60)},
        {"20240301T1234Z", at(noon + 34 * 60)},
        {"20240301T123456", at(noon + 34 * 60 + 56)},
        {"20240301T123456Z", at(noon + 34 * 60 + 56)},
        {"20240301T1234561", at(noon + 34 * 60 + 56, 100000000)},
        {"20240301T123456123Z", at(noon + 34 * 60 + 56, 123000000)},
        {"20240301T1234561234567Z", at(noon + 34 * 60 + 56, 123456700)},
        {"20240301T12345612345678Z", at(noon + 34 * 60 + 56, 123456800)},
        {"20240301T240000", at(s_2024_03_01 + 86400)},
        {"20240301T235960", at(s_2024_03_01 + 86400)},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, TakesAnyZoneSignOfTheBasicFormAsMinus) {
    const long noon = s_2024_03_01 + 12 * 3600;
    const long offset_added = noon + 3600 + 30 * 60;
    const Accepted rows[] = {
        {"20240301T1200001-0130", at(offset_added, 100000000)},
        {"20240301T1200001+0130", at(offset_added, 100000000)},
        {"20240301T1200001+01:30", at(offset_added, 100000000)},
        {"20240301T120000123456x0130", at(offset_added, 123456000)},
        {"20240301T1200001:0130", at(offset_added, 100000000)},
        {"20240301T1200001+01", at(noon + 3600, 100000000)},
        {"20240301T1200001\xff"
         "01",
         at(noon + 3600, 100000000)},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, RejectsAZoneInTheBasicFormExceptAfterAShortFraction) {
    const char* const texts[] = {
        "20240301T12+01",      "20240301T1200+01",          "20240301T120000+01",
        "20240301T120000-01",  "20240301T1200001234567+01", "20240301T12000012345678+01",
        "20240301T1200001+",   "20240301T1200001+1",        "20240301T1200001+01Z",
        "20240301T1200001Z01",
    };
    expect_rejected(texts, std::size(texts));
}

TEST(TryIsoToNs, StopsAFractionOfEveryLengthByWhatItsModeAllows) {
    // The digits of "12345678" cut to a length; eight digits round the seventh up.
    const long ticks[] = {0,       1000000, 1200000, 1230000, 1234000,
                          1234500, 1234560, 1234567, 1234568};
    const long noon = s_2024_03_01 + 12 * 3600;
    for (std::size_t length = 1; length <= 8; ++length) {
        const std::string digits = std::string("12345678").substr(0, length);
        const long fraction_ns = ticks[length] * 100;
        const long plain = at(noon, fraction_ns);
        for (const std::string prefix : {"2024-03-01T12:00:00.", "20240301T120000"}) {
            const bool extended = prefix[4] == '-';
            const bool short_fraction = length < 7;
            const struct {
                const char* stop;
                bool accepted;
                long ns;
            } rows[] = {
                {"", true, plain},
                {"Z", true, plain},
                {"+01", extended || short_fraction,
                 at(noon + (extended ? -3600 : 3600), fraction_ns)},
                {"-01", extended || short_fraction, at(noon + 3600, fraction_ns)},
                {":01", !extended && short_fraction, at(noon + 3600, fraction_ns)},
                {"x01", !extended && short_fraction, at(noon + 3600, fraction_ns)},
                {"Z01", false, 0},
                {".5", false, 0},
            };
            for (const auto& row : rows) {
                const std::string text = prefix + digits + row.stop;
                long out = untouched;
                EXPECT_EQ(try_iso_to_ns(text.c_str(), out), row.accepted) << text;
                EXPECT_EQ(out, row.accepted ? row.ns : untouched) << text;
            }
        }
    }
}

TEST(TryIsoToNs, RoundsAtTheEighthFractionalDigit) {
    const Accepted rows[] = {
        {"1970-01-01T00:00:00.00000005Z", 100},
        {"1970-01-01T00:00:00.00000004Z", 0},
        {"1970-01-01T00:00:00.000000049999999Z", 0},
        {"1970-01-01T00:00:00.00000009Z", 100},
        {"1970-01-01T00:00:00.00000015Z", 200},
        {"1970-01-01T00:00:00.00000014999Z", 100},
        {"1970-01-01T00:00:00.1234567890123456789Z", 123456800},
        {"1970-01-01T00:00:00.1234567490123456789", 123456700},
        {"1970-01-01T00:00:00.99999995Z", ns_per_second},
        {"1970-01-01T00:00:59.99999995Z", ns_per_minute},
        {"1970-01-01T00:00:00.99999995+01:00", ns_per_second - ns_per_hour},
        {"2024-02-29T23:59:60.00000004Z", at(s_2024_03_01)},
        {"2024-02-29T24:00:00.00000004Z", at(s_2024_03_01)},
    };
    expect_accepted(rows, std::size(rows));
    const char* const texts[] = {
        "2024-02-29T23:59:60.00000005Z",
        "2024-02-29T24:00:00.00000005Z",
        "20240229T23596000000005",
        "20240229T24000000000005Z",
    };
    expect_rejected(texts, std::size(texts));
    const Accepted basic_rows[] = {
        {"20240229T23596000000004", at(s_2024_03_01)},
        {"20240229T24000000000001Z", at(s_2024_03_01)},
    };
    expect_accepted(basic_rows, std::size(basic_rows));
}

TEST(TryIsoToNs, CarriesLeapSecondsEndsOfDayAndZonesAcrossDaysMonthsAndYears) {
    constexpr long s_2023_01_01 = 1672531200L;
    constexpr long s_2023_03_01 = 1677628800L;
    constexpr long s_2024_01_01 = 1704067200L;
    constexpr long s_2025_01_01 = 1735689600L;
    const Accepted rows[] = {
        {"2023-12-31T23:59:60Z", at(s_2024_01_01)},
        {"2022-12-31T24:00:00Z", at(s_2023_01_01)},
        {"2024-12-31T24:00Z", at(s_2025_01_01)},
        {"20241231T24Z", at(s_2025_01_01)},
        {"2024-02-28T24:00", at(s_2024_02_29)},
        {"2023-02-28T24", at(s_2023_03_01)},
        {"2023-02-28T23:59:60", at(s_2023_03_01)},
        {"2024-01-01T00:30:00+01:00", at(s_2024_01_01 - 1800)},
        {"2023-12-31T23:30:00-01:00", at(s_2024_01_01 + 1800)},
        {"2024-03-01T00:00:00+14:00", at(s_2024_03_01 - 14 * 3600)},
        {"2024-02-29T23:59:60.0-14:00", at(s_2024_03_01 + 14 * 3600)},
        {"2024-12-31T24:00-00:01", at(s_2025_01_01 + 60)},
        {"2024-03-01T00:00:00.5+00:01", at(s_2024_03_01 - 60, 500000000)},
    };
    expect_accepted(rows, std::size(rows));
    const char* const texts[] = {"20240301T2400001", "20240301T2359601", "20240301T240001",
                                 "20240301T2359601Z"};
    expect_rejected(texts, std::size(texts));
}

TEST(TryIsoToNs, ChecksEachFieldAsItCompletes) {
    const char* const texts[] = {
        "2024-00-01",
        "2024-13-01",
        "20241301",
        "2024-01-00",
        "2024-01-32",
        "2024-04-31",
        "2023-02-29",
        "1900-02-29",
        "20230229",
        "2024-03-01T25",
        "2024-03-01T99:00",
        "2024-03-01T23:60",
        "2024-03-01T23:59:61",
        "2024-03-01T24:01",
        "2024-03-01T24:00:01",
        "2024-03-01T24:00:00.1",
        "2024-03-01T24.5",
        "2024-03-01T24:00,0000001",
        "2024-03-01T23:59:60.1",
        "2024-03-01T12:00:00+15",
        "2024-03-01T12:00:00+99:00",
        "2024-03-01T12:00:00+01:60",
        "2024-03-01T12:00:00-14:30",
        "20240301T2401",
        "20240301T1260",
        "20240301T1200001+1500",
    };
    expect_rejected(texts, std::size(texts));
    const long noon = s_2024_03_01 + 12 * 3600;
    const Accepted rows[] = {
        {"2024-03-01T24", at(s_2024_03_01 + 86400)},
        {"2024-03-01T24:00", at(s_2024_03_01 + 86400)},
        {"2024-03-01T24:00:00.0", at(s_2024_03_01 + 86400)},
        {"2024-03-01T24,0000000Z", at(s_2024_03_01 + 86400)},
        {"2024-03-01T12:00:60", at(noon + 60)},
        {"2024-03-01T23:59:60.0Z", at(s_2024_03_01 + 86400)},
        {"2024-03-01T12:00:00+01:59", at(noon - 3600 - 59 * 60)},
        {"2000-02-29", at(951782400L)},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, RejectsEveryNonZeroMinuteAndSecondAtTheEndOfDay) {
    char text[] = "2024-03-01T24:00:00Z";
    for (int value = 0; value <= 60; ++value) {
        for (std::size_t position : {14u, 17u}) {
            char minute_and_second[] = "00:00";
            minute_and_second[position - 14] = static_cast<char>('0' + value / 10);
            minute_and_second[position - 13] = static_cast<char>('0' + value % 10);
            std::memcpy(text + 14, minute_and_second, 5);
            long out = untouched;
            EXPECT_EQ(try_iso_to_ns(text, out), value == 0) << text;
            text[11] = '2';
            text[12] = '3';
            const bool in_range = value <= (position == 14 ? 59 : 60);
            EXPECT_EQ(try_iso_to_ns(text, out), in_range) << text;
            text[11] = '2';
            text[12] = '4';
        }
    }
}

TEST(TryIsoToNs, FollowsEachClockFieldOnlyByWhatItsModeAllows) {
    // After each prefix, a character with what completes the field it opens ("00" after a sign
    // or separator, "0" after a digit, nothing after Z) either makes a complete text or fails.
    // Each prefix alone, ending after its field, is complete.
    const struct {
        const char* prefix;
        const char* accepted;
        const char* rejected;
    } rows[] = {
        {"2024-03-01T12", ":.,+-Z", "0x T"},
        {"2024-03-01T12:34", ":.,+-Z", "0x T"},
        {"2024-03-01T12:34:56", ".,+-Z", ":0x T"},
        {"2024-03-01T12:34:56.1234567", "+-Z", ":.,x T"},
        {"2024-03-01T12:34:56.5", "+-Z", ":.,x T"},
        {"20240301T12", "0Z", ":.,+-x T"},
        {"20240301T1234", "0Z", ":.,+-x T"},
        {"20240301T123456", "0Z", ":.,+-x T"},
        {"20240301T1234561234567", "Z", ":.,+-x T"},
        {"20240301T1234565", ":.,+-xZ T", ""},
    };
    const auto complete = [](const char* prefix, char c) {
        return std::string(prefix) + c + (c == 'Z' ? "" : c == '0' ? "0" : "00");
    };
    for (const auto& row : rows) {
        long out = untouched;
        EXPECT_TRUE(try_iso_to_ns(row.prefix, out)) << row.prefix;
        for (const char* c = row.accepted; *c != '\0'; ++c) {
            EXPECT_TRUE(try_iso_to_ns(complete(row.prefix, *c).c_str(), out))
                << complete(row.prefix, *c);
        }
        for (const char* c = row.rejected; *c != '\0'; ++c) {
            out = untouched;
            EXPECT_FALSE(try_iso_to_ns(complete(row.prefix, *c).c_str(), out))
                << complete(row.prefix, *c);
            EXPECT_EQ(out, untouched);
        }
    }
}

TEST(TryIsoToNs, AcceptsOnlyTheNamedSeparators) {
    const char* const texts[] = {
        "2024-03-01t12:00:00Z",
        "2024-03-01 12:00:00Z",
        "2024-03-01T12:00:00z",
        "2024-03-01T12:00:00ZZ",
        "2024-03-01T12:00:00Z+01",
        "2024-03-01Z",
        "2024/03/01",
        "2024-03/01",
        "2024-03-01T12_00",
        "2024-03-01T12;00",
        "2024-03-01T12:00:00:00",
        "2024-03-01T12:00:00.5:00",
        "2024-03-01T12:00:00.5.5",
        "2024-03-01T12:00:00.12345678.1",
        "2024-03-01T12:00:00+01:00:00",
        "2024-03-01T12:00:00+01:00Z",
        "2024-03-01T12:00:00+01-00",
        "2024-03-01T12:00:00+0100Z",
        "2024-03-01T12:00:00x",
        "20240301T12:00",
        "20240301T1200:00",
        "20240301T120000.5",
        "20240301T120000,5",
        "2024-03-01T120000",
        "2024-03-01T12:0000",
        "202403-01",
        "2024-03-01T",
        "2024-03-01TZ",
        "+2024-03-01",
        "-2024-03-01",
        " 2024-03-01",
        "2024-03-01 ",
        "-P1D",
        "2024-03-01T12:00:00.",
        "2024-03-01T12:00:00,",
        "2024-03-01T12.",
        "2024-03-01T12:00:00.+01",
        "2024-03-01T12:00:00+",
        "2024-03-01T12:00:00-",
        "2024-03-01T12:00:00+01:",
        "2024-03-01T12:00:00+1",
        "2024-03-01T12:00:00+01:0",
        "2024-03-01+01:00",
        "2024-03-01-01",
        "2024-03-0112",
        "2024-03-01:12",
        "2024-03-01.5",
        "20240301Z",
        "20240301+01",
        "20240301-01",
        "2024-03-01T12:00:00+01:00\xff",
        "2024\xff"
        "03-01",
        "2024-03-01T12:00:00\xc3\xa4",
        "\xef\xbc\x92"
        "024-03-01",
    };
    expect_rejected(texts, std::size(texts));
}

TEST(TryIsoToNs, RejectsTextsThatEndInsideAField) {
    const char* const texts[] = {
        "",
        "2",
        "20",
        "202",
        "2024",
        "2024-",
        "2024-0",
        "2024-03",
        "2024-03-",
        "2024-03-0",
        "202403",
        "2024030",
        "2024-03-01T",
        "2024-03-01T1",
        "2024-03-01T12:",
        "2024-03-01T12:0",
        "2024-03-01T12:00:",
        "2024-03-01T12:00:0",
        "20240301T1",
        "20240301T123",
        "20240301T12345",
    };
    expect_rejected(texts, std::size(texts));
    long out = untouched;
    EXPECT_FALSE(try_iso_to_ns(nullptr, out));
    EXPECT_EQ(out, untouched);
}

TEST(TryIsoToNs, SaturatesAtBothBoundsWithoutFailing) {
    const Accepted rows[] = {
        {"9999-01-01", largest_instant},
        {"9999-12-31T23:59:59.9999999Z", largest_instant},
        {"0001-01-01", smallest_instant},
        {"0000-01-01", smallest_instant},
        {"00000101", smallest_instant},
        {"2262-04-11T23:47:16.8547758Z", largest_instant},
        {"2262-04-11T23:47:16.8547757Z", largest_instant - 100},
        {"2262-04-11T23:47:16.8547759Z", largest_instant},
        {"2262-04-11T23:47:16.85477585Z", largest_instant},
        {"2262-04-11T23:47:17Z", largest_instant},
        {"2262-04-12", largest_instant},
        {"2263-01-01", largest_instant},
        {"1677-09-21T00:12:43.1452242Z", smallest_instant},
        {"1677-09-21T00:12:43.1452243Z", smallest_instant + 100},
        {"1677-09-21T00:12:43.1452241Z", smallest_instant},
        {"1677-09-21T00:12:43Z", smallest_instant},
        {"1677-09-21", smallest_instant},
        {"1677-09-22", -9223286400000000000L},
        {"1677-01-01", smallest_instant},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, JudgesTheRangeOnTheShiftedFields) {
    const Accepted rows[] = {
        // The zone moves the hour below the lower bound's hour.
        {"1677-09-21T00:30:00+01:00", smallest_instant},
        {"1677-09-21T01:30:00+01:00",
         smallest_instant + (17 * 60 + 16) * ns_per_second + 854775800},
        {"2262-04-11T22:47:16.8547759-01:00", largest_instant},
        {"2262-04-11T23:47:16.8547758-00:00", largest_instant},
        // The day lies beyond a bound while the zone brings the instant back inside the range:
        // the fields decide, and the text saturates all the same.
        {"1677-09-20T23:59:00-01:00", smallest_instant},
        {"1677-09-20T23:30-14:00", smallest_instant},
        {"1677-08-31T24:00", smallest_instant},
        {"2262-04-12T00:30:00+01:00", largest_instant},
        {"2262-04-12T00:00:00.5+14:00", largest_instant},
        {"2262-05-01T00:00+14", largest_instant},
        {"2263-01-01T00:00+14:00", largest_instant},
        // Inside both bounds as fields, next to them as instants.
        {"1677-09-21T14:12:43.1452242-14:00", smallest_instant + 28 * ns_per_hour},
        {"2262-04-11T00:00+14:00",
         largest_instant - ((37 * 60 + 47) * 60 + 16) * ns_per_second - 854775800},
        // Clock fields pushed past their range by the zone, beyond the bound as an instant.
        {"2262-04-11T21:59:59.9999999-01:59", largest_instant},
        {"1677-09-21T02:00:00+01:59", smallest_instant},
    };
    expect_accepted(rows, std::size(rows));
}

TEST(TryIsoToNs, HandsATextStartingWithPToTheDurationParser) {
    const Accepted rows[] = {
        {"P1D", ns_per_day},
        {"PT1.5S", 1500000000L},
        {"P2W", 14 * ns_per_day},
    };
    expect_accepted(rows, std::size(rows));
    const char* const texts[] = {"P", "PT", "P1", "-P1D", "P1W2D"};
    expect_rejected(texts, std::size(texts));
}

// ---------------------------------------------------------------------------------------------
// Duration parser
// ---------------------------------------------------------------------------------------------

TEST(TryDurationIsoToNs, ReadsTheStatedTexts) {
    const struct {
        const char* text;
        long ns;
    } rows[] = {
        {"P2W", 14 * ns_per_day},
        {"-P1D", -ns_per_day},
        {"P1Y", 31557600000000000L},
        {"PT1.5S", 1500000000L},
        {"PT1,5S", 1500000000L},
        {"P5T1H", ns_per_hour},
        {"P1H", ns_per_hour},
        {"P1M", 2629800000000000L},
        {"PT1M", ns_per_minute},
        {"P1D", ns_per_day},
        {"PT0S", 0},
        {"-PT0S", 0},
        {"P0D", 0},
        {"P0W", 0},
        {"PT1S", ns_per_second},
        {"PT1H", ns_per_hour},
        {"P1DT1H", ns_per_day + ns_per_hour},
        {"P1Y2M3DT4H5M6.7S", 31557600000000000L + 2 * 2629800000000000L + 3 * ns_per_day +
                                 4 * ns_per_hour + 5 * ns_per_minute + 6700000000L},
        {"-P1Y2M3DT4H5M6S", -(31557600000000000L + 2 * 2629800000000000L + 3 * ns_per_day +
                              4 * ns_per_hour + 5 * ns_per_minute + 6 * ns_per_second)},
        {"P1Y1D", 31557600000000000L + ns_per_day},
        {"P1M1DT1S", 2629800000000000L + ns_per_day + ns_per_second},
        {"PT36H", 36 * ns_per_hour},
        {"PT90M", 90 * ns_per_minute},
        {"PT3600S", ns_per_hour},
        {"P1H", ns_per_hour},
        {"P1D2H", ns_per_day + 2 * ns_per_hour},
        {"P12T1H", ns_per_hour},
        {"PT1M1.5S", ns_per_minute + 1500000000L},
        {"PT0.000000001S", 1},
        {"PT0.0000000019S", 1},
        {"PT1.123456789123S", 1123456789L},
        {"PT1.5S5S", 1550000000L},
        {"PT1.5S05S", 1505000000L},
        {"PT0.1S2S3S", 123000000L},
        {"P106751DT23H47M16.854775807S", LONG_MAX},
        {"-P106751DT23H47M16.854775808S", LONG_MIN},
        {"-P1W", -7 * ns_per_day},
        {"P1Y1H", 31557600000000000L + ns_per_hour},
        {"P1Y2M", 31557600000000000L + 2 * 2629800000000000L},
        {"P1M1D", 2629800000000000L + ns_per_day},
        {"PT1H1M1S", ns_per_hour + ns_per_minute + ns_per_second},
        {"PT1M1S", ns_per_minute + ns_per_second},
        {"P1Y1M1DT1H1M1S", 31557600000000000L + 2629800000000000L + ns_per_day + ns_per_hour +
                               ns_per_minute + ns_per_second},
        {"P0Y0M0DT0H0M0S", 0},
        {"P007D", 7 * ns_per_day},
        {"P1D5T1H", ns_per_day + ns_per_hour},
        {"PT0.5S", 500000000L},
        {"PT0,5S", 500000000L},
        {"P1DT1,000000001S", ns_per_day + ns_per_second + 1},
        {"-PT0.000000001S", -1},
        {"PT1.5S0S", 1500000000L},
        {"PT1.000000009S9S", 1000000009L},
        // Whole seconds leave the limit at one second, where a fraction may still begin; its
        // digits in front of the point give the seconds anew.
        {"PT1S2.5S", 2500000000L},
    };
    for (const auto& row : rows) {
        long out = untouched;
        EXPECT_TRUE(try_duration_iso_to_ns(row.text, out)) << row.text;
        EXPECT_EQ(out, row.ns) << row.text;
    }
}

TEST(TryDurationIsoToNs, RejectsTheStatedAndOtherBadTexts) {
    const char* const texts[] = {
        "",
        "P",
        "PT",
        "P1",
        "P1W2D",
        "PT1.S",
        "P1S",
        "PT1H1D",
        "P1M1Y",
        "-",
        "-P",
        "+P1D",
        "--P1D",
        "p1d",
        "P1d",
        "pT1S",
        "P1D ",
        " P1D",
        "P 1D",
        "P1DT",
        "PT1",
        "PT1.5",
        "PT1.5S1",
        "PT1.5S.5S",
        "PT1.5SS",
        "PT.5S",
        "P.5D",
        "P1.5D",
        "P1,5Y",
        "PW",
        "PD",
        "PY",
        "PM",
        "PTH",
        "PTM",
        "PTS",
        "P1W1W",
        "P1W1D",
        "P1Y1W",
        "PT1W",
        "P1D1D",
        "P1D1Y",
        "P1D1M",
        "PT1H1H",
        "PT1M1H",
        "PT1S1M",
        "PT1S1S",
        "PT1Y",
        "P1HT1M",
        "P1H1M",
        "P1H1S",
        "P1HT",
        "PTT1H",
        "PT1HT1M",
        "P1T",
        "PT1.5H",
        "PT1.5M",
        "PT1.5S1H",
        "PT1,5,5S",
        "P1DT1.5",
        "P1X",
        "P1D\xff",
        ("P\xc3\xa4"
         "1D"),
        "PT1H-",
        "P-1D",
        "P+1D",
        "P1M1W",
        "P1D1W",
        "P1Y1M1W",
        "P1WT1H",
        "P1WT",
        "P1W1",
        "-P1W1D",
        "P1.5S",
        "P1,5S",
        "PT1H.5S",
        "PT1M,5S",
        "PT1S.5S",
        "PT1.5S1.5S",
        "PT1.5S1,5S",
        "P1Y2Y",
        "P1M2M",
        "P1DT1H1H",
        "P1YT",
        "PT1M1M",
        "PT1.5SZ",
        "P1DZ",
        "PT1.",
        "PT1,",
        "P1DT1.",
        "-PT1.",
        "PT1H1M1.",
    };
    for (const char* text : texts) {
        long out = untouched;
        EXPECT_FALSE(try_duration_iso_to_ns(text, out)) << text;
        EXPECT_EQ(out, untouched) << text;
    }
}

TEST(TryDurationIsoToNs, RejectsAnEmbeddedNul) {
    for (const std::string& text : {std::string("P1D\0", 4),
                                    std::string("P\0"
                                                "1D",
                                                4),
                                    std::string("PT1.5\0S", 7), std::string("\0P1D", 4)}) {
        long out = untouched;
        EXPECT_FALSE(try_duration_iso_to_ns(text, out)) << text.size();
        EXPECT_EQ(out, untouched);
    }
}

TEST(TryDurationIsoToNs, WrapsOversizedNumbersSilently) {
    const struct {
        const char* text;
        std::uint64_t magnitude;
    } rows[] = {
        {"P18446744073709551616D", 0},
        {"PT18446744073709551617S", 1000000000ULL},
        {"P213503982334601D", 18446718857709551616ULL},
        {"PT9223372036854775808S", 9223372036854775808ULL * 1000000000ULL},
        {"P99999999999999999999Y", 7766279631452241919ULL * 31557600000000000ULL},
        // Numbers that fit, whose sum in nanoseconds passes the largest signed value.
        {"P300Y", 9467280000000000000ULL},
        {"P200Y36500D", 9465120000000000000ULL},
        {"-P300Y", 0 - 9467280000000000000ULL},
    };
    for (const auto& row : rows) {
        long out = untouched;
        EXPECT_TRUE(try_duration_iso_to_ns(row.text, out)) << row.text;
        EXPECT_EQ(static_cast<std::uint64_t>(out), row.magnitude) << row.text;
    }
}

// ---------------------------------------------------------------------------------------------
// Throwing forms
// ---------------------------------------------------------------------------------------------

template <class Call>
void expect_runtime_error(Call call, const char* what) {
    try {
        call();
        ADD_FAILURE() << "no exception, expected " << what;
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), what);
    }
}

TEST(IsoToNs, ReturnsTheInstantOrThrowsInvalidArgument) {
    EXPECT_EQ(iso_to_ns("1970-01-01T00:00:01Z"), ns_per_second);
    EXPECT_EQ(iso_to_ns(std::string("1970-01-01T00:00:01Z")), ns_per_second);
    EXPECT_EQ(iso_to_ns("P1D"), ns_per_day);
    EXPECT_EQ(iso_to_ns("9999-01-01"), largest_instant);
    for (const char* text : {"", "2024-02", "2023-02-29", "-P1D", "P"}) {
        expect_runtime_error([text] { iso_to_ns(text); }, "invalid argument");
        expect_runtime_error([text] { iso_to_ns(std::string(text)); }, "invalid argument");
    }
    expect_runtime_error([] { iso_to_ns(nullptr); }, "invalid argument");
    // A duration that fails on the way through the date-time reader still reports as a time.
    for (const char* text : {"P1S", "PT1.S", "PT", "P1W2D"}) {
        expect_runtime_error([text] { iso_to_ns(text); }, "invalid argument");
    }
    EXPECT_EQ(iso_to_ns("0001-01-01"), smallest_instant);
}

TEST(IsoToNs, StringFormReadsUpToTheFirstNul) {
    EXPECT_EQ(iso_to_ns(std::string("1970-01-01\0garbage", 18)), 0);
}

TEST(DurationIsoToNs, ReturnsTheDurationOrThrowsInvalidIsoDurationFormat) {
    EXPECT_EQ(duration_iso_to_ns("PT1.5S"), 1500000000L);
    EXPECT_EQ(duration_iso_to_ns("-P1D"), -ns_per_day);
    EXPECT_EQ(duration_iso_to_ns("-PT0S"), 0);
    EXPECT_EQ(duration_iso_to_ns("P1H"), ns_per_hour);
    for (const char* text : {"", "P", "PT", "P1", "2024-02-29", "PT1.S", "P1S", "+P1D", "P1W2D"}) {
        expect_runtime_error([text] { duration_iso_to_ns(text); }, "invalid iso duration format");
    }
    expect_runtime_error([] { duration_iso_to_ns(std::string("P1D\0", 4)); },
                         "invalid iso duration format");
}

// ---------------------------------------------------------------------------------------------
// Arbitrary bytes
// ---------------------------------------------------------------------------------------------

// Feeds a text through every parser from a heap block of exactly its length plus terminator, so
// that a read past the terminator is caught by the address checker.
void parse_everywhere(const std::string& text) {
    const std::size_t size = text.size() + 1;
    const std::unique_ptr<char[]> block(new char[size]);
    std::memcpy(block.get(), text.c_str(), size);
    long out = untouched;
    if (try_iso_to_ns(block.get(), out)) {
        if (block[0] != 'P') {
            ASSERT_GE(out, smallest_instant) << text;
            ASSERT_LE(out, largest_instant) << text;
            ASSERT_EQ(out % 100, 0) << text;
        }
        ASSERT_EQ(iso_to_ns(block.get()), out);
    } else {
        ASSERT_EQ(out, untouched) << text;
        ASSERT_THROW(iso_to_ns(block.get()), std::runtime_error);
    }
    out = untouched;
    if (try_duration_iso_to_ns(text, out)) {
        ASSERT_EQ(duration_iso_to_ns(text), out);
    } else {
        ASSERT_EQ(out, untouched) << text;
        ASSERT_THROW(duration_iso_to_ns(text), std::runtime_error);
    }
}

TEST(IsoParsers, SurviveRandomBytes) {
    std::mt19937 engine(8601);
    const std::string alphabet = "0123456789-:.,+TZPWYMDHS";
    std::uniform_int_distribution<int> length(0, 40);
    std::uniform_int_distribution<int> byte(1, 255);
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    for (int round = 0; round < 20000; ++round) {
        std::string text(static_cast<std::size_t>(length(engine)), '\0');
        for (char& c : text) {
            c = round % 2 == 0 ? static_cast<char>(byte(engine)) : alphabet[pick(engine)];
        }
        if (round % 3 == 0 && !text.empty()) {
            text[0] = 'P';
        }
        parse_everywhere(text);
    }
}

TEST(IsoParsers, SurviveEverySeparatorInEveryPositionAndEveryTruncation) {
    const std::string separators = "-:T.,+Z P\xff";
    for (const std::string valid : {"2024-02-29T23:59:60.1234567+14:00", "20240229T2359601234567Z",
                                    "20240229T235960123-0130", "-P1Y2M3DT4H5M6.789S", "P2W"}) {
        for (std::size_t cut = 0; cut <= valid.size(); ++cut) {
            parse_everywhere(valid.substr(0, cut));
        }
        for (std::size_t position = 0; position < valid.size(); ++position) {
            for (char separator : separators) {
                std::string text = valid;
                text[position] = separator;
                parse_everywhere(text);
                text.insert(position, 1, separator);
                parse_everywhere(text);
            }
        }
    }
}

TEST(IsoParsers, SurviveVeryLongDigitRuns) {
    const std::string digits(100000, '9');
    parse_everywhere(digits);
    parse_everywhere("2024-02-29T12:00:00." + digits + "Z");
    parse_everywhere("2024-02-29T12:00:00." + digits);
    parse_everywhere("P" + digits + "D");
    parse_everywhere("PT1." + digits + "S");
    parse_everywhere("PT" + digits);
    long out = untouched;
    EXPECT_TRUE(try_iso_to_ns(("1970-01-01T00:00:00." + digits + "Z").c_str(), out));
    EXPECT_EQ(out, ns_per_second);
    EXPECT_TRUE(try_duration_iso_to_ns("PT1." + digits + "S", out));
    EXPECT_EQ(out, 1999999999L);
}

}  // namespace
