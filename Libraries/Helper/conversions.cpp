#include "helper/conversions.h"

#include "helper/algorithm/memory.h"
#include "helper/algorithm/number.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace Quorvane {

// ---------------------------------------------------------------------------------------------
// Calendar and ISO 8601 time
// ---------------------------------------------------------------------------------------------

namespace {

constexpr long ticks_per_day = 864000000000L;
constexpr long ticks_per_hour = 36000000000L;
constexpr long ticks_per_minute = 600000000L;
constexpr long ticks_per_second = 10000000L;
constexpr long ns_per_tick = 100L;

// The writable range stops at the last whole ticks inside the 64-bit range.
constexpr long largest_instant = 9223372036854775800L;
constexpr long smallest_instant = -9223372036854775800L;
constexpr char largest_instant_text[] = "2262-04-11T23:47:16.8547758Z";
constexpr char smallest_instant_text[] = "1677-09-21T00:12:43.1452242Z";

// Nanosecond weights of the duration designators; a year is 365.25 days and a month a twelfth
// of that.
constexpr std::uint64_t ns_per_year = 31557600000000000ULL;
constexpr std::uint64_t ns_per_month = 2629800000000000ULL;
constexpr std::uint64_t ns_per_duration_day = 86400000000000ULL;
constexpr std::uint64_t ns_per_hour = 3600000000000ULL;
constexpr std::uint64_t ns_per_minute = 60000000000ULL;
constexpr std::uint64_t ns_per_second = 1000000000ULL;

// Days from 0000-03-01 to 1970-01-01 in the March-based count below.
constexpr long days_to_epoch = 719468;
constexpr long days_per_era = 146097;  // 400 Gregorian years

// The exported calendar functions are thin wrappers around these, so that the date-time writer
// and parser can have them inlined with constant units instead of calling through the export
// table.

constexpr bool leap_year(long year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr int month_length(long year, int month) {
    switch (month) {
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        case 2:
            return leap_year(year) ? 29 : 28;
        default:
            return 31;
    }
}

// Counting years from March puts the leap day at the end of the year, so that the months before
// it follow the fixed pattern of 153 days per 5 months. The year must not be negative once moved
// to March, so that its part is unsigned and needs no floor corrections; a month outside 1 to 12
// counts on arithmetically, as far as truncating division goes.
constexpr long days_from_date_after_year_zero(long year, long month, long day) {
    const bool january_or_february = month < 3;
    const auto march_year = static_cast<std::uint32_t>(year - (january_or_february ? 1 : 0));
    const long march_month = january_or_february ? month + 9 : month - 3;
    const auto days_before_year =
        static_cast<long>(march_year * 365 + march_year / 4 - march_year / 100 + march_year / 400);
    return days_before_year + (153 * march_month + 2) / 5 + day - 1 - days_to_epoch;
}

// Any year: whole 400-year eras, which all have the same length, carry the year into the range
// above. Wide arithmetic keeps extreme arguments free of overflow.
constexpr long days_from_date(long year, long month, long day) {
    const long march_year = year - (month < 3 ? 1 : 0);
    const long era = (march_year >= 0 ? march_year : march_year - 399) / 400;
    return era * days_per_era + days_from_date_after_year_zero(year - era * 400, month, day);
}

struct Date {
    long year;
    long month;
    long day;
};

// Splits days since 0000-03-01 into a date. Century, year of the century and day of the year come
// from the average lengths 36524.25 and 365.25 days, counted in quarter days so that the division
// is exact. Within a March-based year the month lengths repeat 31, 30, 31, 30, 31 every 153 days;
// the factor 2141 / 65536 (about 1 / 30.6) yields the month in the high half of one product and
// the day of the month, scaled, in its low half. Exact for every count up to 2^30.
constexpr Date date_from_march_days(std::uint32_t days) {
    const std::uint32_t quarter_days = 4 * days + 3;
    const std::uint32_t century = quarter_days / 146097;
    const std::uint32_t day_of_century = quarter_days % 146097 / 4;
    const std::uint32_t quarter_days_of_century = 4 * day_of_century + 3;
    const std::uint32_t year_of_century = quarter_days_of_century / 1461;
    const std::uint32_t day_of_year = quarter_days_of_century % 1461 / 4;
    const std::uint32_t month_and_day = 2141 * day_of_year + 197913;
    // Day 306 of a March-based year is January 1 of the next calendar year.
    const bool next_year = day_of_year >= 306;
    const std::uint32_t month = (month_and_day >> 16) - (next_year ? 12 : 0);
    return {100 * century + year_of_century + next_year, month,
            (month_and_day & 0xFFFF) / 2141 + 1};
}

// Any day count since 1970-01-01: whole eras carry the count into the range above.
constexpr Date date_from_days(long days) {
    const long z = days + days_to_epoch;
    const long era = (z >= 0 ? z : z - (days_per_era - 1)) / days_per_era;
    Date date = date_from_march_days(static_cast<std::uint32_t>(z - era * days_per_era));
    date.year += era * 400;
    return date;
}

// Whole units are moved at once; the outcome is that of moving them one by one. A negative rest
// stops at -unit rather than 0: the caller's start already stands for the last unit of the
// enclosing field, and the remaining rest is borrowed from it.
inline long move_units(long start, long unit, long& rest) {
    if (rest >= 0) {
        const long moved = rest / unit;
        rest -= moved * unit;
        return start + moved;
    }
    const unsigned long magnitude = 0UL - static_cast<unsigned long>(rest);
    const long moved = static_cast<long>((magnitude - 1) / static_cast<unsigned long>(unit));
    rest += moved * unit;
    return start - moved;
}

constexpr bool fraction_allowed(long ticks, long hour, long second) {
    return ticks == 0 || (second != 60 && hour != 24);
}

// Decimal digits in the bytes of a word, most significant digit in the lowest byte, so that the
// word is stored as text at once. Each step halves the lanes: 32-bit lanes of four digits become
// 16-bit lanes of two, then bytes of one. A lane n is split by a multiplication that divides
// exactly for the lane's range (5243 / 2^19 for n < 10000, 103 / 2^10 for n < 100), and the
// quotient stays in the lower lane while the remainder moves to the higher one.
constexpr std::uint64_t split_hundreds(std::uint64_t lanes) {
    const std::uint64_t hundreds = ((lanes * 5243) >> 19) & 0x0000007F0000007FULL;
    return (lanes << 16) - hundreds * (100 * 0x10000 - 1);
}

constexpr std::uint64_t split_tens(std::uint64_t lanes) {
    const std::uint64_t tens = ((lanes * 103) >> 10) & 0x000F000F000F000FULL;
    return (lanes << 8) - tens * (10 * 0x100 - 1);
}

constexpr std::uint64_t ascii_zeros = 0x3030303030303030ULL;

// Stores the eight bytes of a word, the lowest first, whatever the byte order.
void store_text(char* destination, std::uint64_t text) {
    for (std::size_t i = 0; i < 8; ++i) {
        destination[i] = static_cast<char>(text >> (8 * i));
    }
}

// The years an instant can fall in, and their four digits, which the writer copies at once.
constexpr long first_writable_year = 1677;
constexpr long last_writable_year = 2262;

struct YearTexts {
    char digits[last_writable_year - first_writable_year + 1][4];
};

constexpr YearTexts make_year_texts() {
    YearTexts years{};
    for (long year = first_writable_year; year <= last_writable_year; ++year) {
        long rest = year;
        for (int i = 3; i >= 0; --i, rest /= 10) {
            years.digits[year - first_writable_year][i] = static_cast<char>('0' + rest % 10);
        }
    }
    return years;
}

constexpr YearTexts year_texts = make_year_texts();

// A mask holds the placeholders, then "." and the digits of the ticks when there are any, then
// "Z". Ticks up to 9999999 take seven digits; larger ones, which no instant produces, all theirs.
// Every mask starts as the longest of seven digits and is cut back.
constexpr char fraction_mask[] = "yyyy-MM-ddTHH:mm:ss.0000000Z";
constexpr std::size_t fraction_start = sizeof("yyyy-MM-ddTHH:mm:ss.") - 1;
constexpr std::size_t widest_mask = fraction_start + std::numeric_limits<long>::digits10 + 2;

// Fills the fraction of a mask that already holds fraction_mask, for ticks of the second from 0
// to 9999999, and returns the mask's length. Only the first 28 bytes are written.
inline std::size_t write_fraction(long ticks, char* mask) {
    // The seven digits are written as the eight of ten times the ticks, whose last is always 0.
    const auto fraction = static_cast<std::uint64_t>(ticks) * 10;
    const std::uint64_t digits =
        split_tens(split_hundreds(fraction / 10000 + (fraction % 10000 << 32)));
    store_text(mask + fraction_start, digits | ascii_zeros);
    // The highest non-zero byte is the last digit to keep. Without ticks the mask ends after the
    // seconds, with no point.
    const auto kept_digits = static_cast<std::size_t>(71 - __builtin_clzll(digits | 1)) / 8;
    const std::size_t length = ticks == 0 ? fraction_start - 1 : fraction_start + kept_digits;
    mask[fraction_start - 1] = ticks == 0 ? 'Z' : '.';
    mask[length] = 'Z';
    return length + 1;
}

// Writes the mask of a date-time with the given ticks of the second; returns its length.
std::size_t write_mask(long ticks, char* mask) {
    std::memcpy(mask, fraction_mask, sizeof(fraction_mask) - 1);
    if (ticks < ticks_per_second) {
        return write_fraction(ticks < 1 ? 0 : ticks, mask);
    }
    std::size_t length = static_cast<std::size_t>(
        std::to_chars(mask + fraction_start, mask + widest_mask - 1, ticks).ptr - mask);
    while (mask[length - 1] == '0') {
        --length;
    }
    mask[length++] = 'Z';
    return length;
}

// The text of an instant within the writable range. One named result, so that it is built in
// the caller's string.
std::string writable_instant_to_iso(long ns) {
    // Counted from 0000-03-01, every writable instant is positive, so days and the time of day
    // are a plain quotient and remainder. Before the epoch this is the clock counted back from
    // 23:59:59 of the day before, and ticks still truncate toward zero as the instant's own unit.
    const auto ticks = static_cast<std::uint64_t>(ns / ns_per_tick + days_to_epoch * ticks_per_day);
    const auto ticks_of_day = ticks % ticks_per_day;
    const auto seconds_of_day = static_cast<std::uint32_t>(ticks_of_day / ticks_per_second);
    const Date date = date_from_march_days(static_cast<std::uint32_t>(ticks / ticks_per_day));

    // The mask is the text itself: it is made at its longest and cut to the fraction it needs.
    std::string text(fraction_mask, sizeof(fraction_mask) - 1);
    char* const mask = &text[0];
    const std::size_t length =
        write_fraction(static_cast<long>(ticks_of_day % ticks_per_second), mask);
    std::memcpy(mask, year_texts.digits[date.year - first_writable_year], 4);
    // Each copy fills two bytes of the mask from the constant table, so none is refused.
    const long fields[] = {date.month, date.day, seconds_of_day / 3600, seconds_of_day / 60 % 60,
                           seconds_of_day % 60};
    const std::size_t positions[] = {5, 8, 11, 14, 17};
    for (std::size_t i = 0; i < 5; ++i) {
        Algorithm::hmi_memcpy_s(mask + positions[i], 2, numbers_two_digits[fields[i]], 2);
    }
    text.erase(length);
    return text;
}

}  // namespace

bool is_leap_year(int year) {
    return leap_year(year);
}

int calculate_days(int year, int month, int day) {
    return static_cast<int>(days_from_date(year, month, day));
}

std::pair<int, int> calculate_year_and_month(int& days) {
    const Date date = date_from_days(days);
    days = static_cast<int>(date.day);
    return {static_cast<int>(date.year), static_cast<int>(date.month)};
}

int calculate_days_in_month(int year, int month) {
    return month_length(year, month);
}

int calculate_time(int start, long unit, long& rest) {
    return static_cast<int>(move_units(start, unit, rest));
}

std::string iso_template_string_with_ticks(long ticks) {
    char mask[widest_mask];
    return std::string(mask, write_mask(ticks, mask));
}

bool validate_ticks(int ticks, int hour, int second) {
    return fraction_allowed(ticks, hour, second);
}

std::string ns_to_iso(long ns) {
    if (ns > largest_instant) {
        return std::string(largest_instant_text, sizeof(largest_instant_text) - 1);
    }
    if (ns < smallest_instant) {
        return std::string(smallest_instant_text, sizeof(smallest_instant_text) - 1);
    }
    return writable_instant_to_iso(ns);
}

std::string ns_to_duration_iso(long ns) {
    // The most negative value has no positive counterpart; its bit pattern read as unsigned is
    // its magnitude.
    const std::uint64_t magnitude =
        ns < 0 ? 0 - static_cast<std::uint64_t>(ns) : static_cast<std::uint64_t>(ns);
    const std::uint64_t days = magnitude / ns_per_duration_day;
    std::uint64_t rest = magnitude % ns_per_duration_day;
    const std::uint64_t hours = rest / ns_per_hour;
    rest %= ns_per_hour;
    const std::uint64_t minutes = rest / ns_per_minute;
    rest %= ns_per_minute;
    const double seconds = static_cast<double>(rest) / 1e9;

    std::ostringstream text;
    if (ns < 0) {
        text << '-';
    }
    text << 'P';
    if (days != 0) {
        text << days << 'D';
    }
    if (ns == 0 || hours != 0 || minutes != 0 || seconds > 0.0) {
        text << 'T';
        if (hours != 0) {
            text << hours << 'H';
        }
        if (minutes != 0) {
            text << minutes << 'M';
        }
    }
    if (ns == 0 || seconds > 0.0) {
        text << Algorithm::to_string(seconds, 10, true) << 'S';
    }
    return text.str();
}

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Reads exactly `width` digits into value. It stops at the first byte that is no digit, so it
// never looks past the terminator.
template <int width>
bool read_digits(const char*& p, int& value) {
    int result = 0;
    for (int i = 0; i < width; ++i) {
        if (!is_digit(p[i])) {
            return false;
        }
        result = result * 10 + (p[i] - '0');
    }
    p += width;
    value = result;
    return true;
}

// The states of the date-time reader once the date is read: the clock field to read next, in
// reading order, and the end.
enum class Iso { hour, minute, second, fraction, zone_hour, complete };

Iso next_field(Iso field) {
    return static_cast<Iso>(static_cast<int>(field) + 1);
}

// What may follow hour, minute, second or fraction, the field given by `state`. On success
// `state` is the next state and p stands on its first byte. The ways on to a further clock field
// are tried first, as the most frequent.
inline bool follow_clock_field(Iso& state, const char*& p, bool extended, bool short_fraction,
                               int& offset_direction) {
    const char c = *p;
    if (state != Iso::fraction) {
        if (!extended) {
            // Basic texts run the clock fields, and the fraction after the second, together.
            if (is_digit(c)) {
                state = next_field(state);
                return true;
            }
        } else if (c == ':' && state != Iso::second) {
            state = next_field(state);
            ++p;
            return true;
        } else if (c == '.' || c == ',') {
            // Deliberately a fraction of the second even after an hour or a minute.
            state = Iso::fraction;
            ++p;
            return true;
        }
    }
    if (c == '\0') {
        state = Iso::complete;
        return true;
    }
    if (c == 'Z') {
        state = Iso::complete;
        return p[1] == '\0';
    }
    if (state == Iso::fraction) {
        if (extended ? c != '+' && c != '-' : !short_fraction) {
            return false;
        }
        // A basic text takes whatever stops a short fraction as the sign of a zone, and always as
        // a negative offset, so that the offset is added.
        offset_direction = extended && c == '+' ? -1 : 1;
    } else if (!extended || (c != '+' && c != '-')) {
        return false;
    } else {
        offset_direction = c == '+' ? -1 : 1;
    }
    ++p;
    state = Iso::zone_hour;
    return true;
}

constexpr int iso_fraction_digits = 7;
// The weight of the last of n fractional digits, in ticks.
constexpr int fraction_scale[iso_fraction_digits + 1] = {0,    1000000, 100000, 10000,
                                                         1000, 100,     10,     1};

// The writable range as date-time fields, year down to fraction. Below the first, a text
// saturates to the smallest instant; from the second on, to the largest.
constexpr int first_writable_fields[] = {first_writable_year, 9, 21, 0, 12, 43, 1452242};
constexpr int first_saturated_fields[] = {last_writable_year, 4, 11, 23, 47, 16, 8547759};

bool fields_before(const int* fields, const int* bound) {
    return std::lexicographical_compare(fields, fields + 7, bound, bound + 7);
}

// A duration read where a time was asked for. Out of line: the copy of the text that the
// duration reader takes would otherwise give the date-time reader a stack frame on every call.
__attribute__((noinline)) bool read_duration_as_time(const char* text, long& out) {
    return try_duration_iso_to_ns(text, out);
}

}  // namespace

bool try_iso_to_ns(const char* text, long& out) {
    if (text == nullptr || *text == '\0') {
        return false;
    }
    if (*text == 'P') {
        return read_duration_as_time(text, out);
    }

    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, fraction = 0;
    int zone_hour = 0;
    // +1 when the zone offset is added to the clock, -1 when it is subtracted.
    int offset_direction = 1;
    const char* p = text;

    // Extended texts separate the date fields with '-', which the character after the year tells.
    if (!read_digits<4>(p, year)) {
        return false;
    }
    const bool extended = *p == '-';
    p += extended ? 1 : 0;
    if (!read_digits<2>(p, month) || static_cast<unsigned>(month - 1) >= 12) {
        return false;
    }
    if (extended) {
        if (*p != '-') {
            return false;
        }
        ++p;
    }
    if (!read_digits<2>(p, day) ||
        static_cast<unsigned>(day - 1) >= static_cast<unsigned>(month_length(year, month))) {
        return false;
    }

    // The fields only ever follow each other in reading order, so each state is visited at most
    // once and in turn: a field that is skipped, or the end of the text, simply moves the state
    // past the tests below.
    Iso state = Iso::complete;
    if (*p == 'T') {
        ++p;
        state = Iso::hour;
    } else if (*p != '\0') {
        return false;
    }
    if (state == Iso::hour) {
        if (!read_digits<2>(p, hour) || hour > 24 ||
            !follow_clock_field(state, p, extended, false, offset_direction)) {
            return false;
        }
    }
    // Hour 24 stands for the end of the day: minute, second and fraction must all be 0.
    const bool end_of_day = hour == 24;
    if (state == Iso::minute) {
        if (!read_digits<2>(p, minute) || minute > (end_of_day ? 0 : 59) ||
            !follow_clock_field(state, p, extended, false, offset_direction)) {
            return false;
        }
    }
    if (state == Iso::second) {
        // 60 admits the leap second.
        if (!read_digits<2>(p, second) || second > (end_of_day ? 0 : 60) ||
            !follow_clock_field(state, p, extended, false, offset_direction)) {
            return false;
        }
    }
    if (state == Iso::fraction) {
        int digits_read = 0;
        while (digits_read < iso_fraction_digits && is_digit(*p)) {
            fraction = fraction * 10 + (*p++ - '0');
            ++digits_read;
        }
        if (digits_read == 0) {
            return false;
        }
        // Digits count by weight, the first in units of 100 ms.
        fraction *= fraction_scale[digits_read];
        // Beyond 100 ns only the next digit counts, for rounding; the sum may reach a whole
        // second, which the arithmetic below carries over.
        if (digits_read == iso_fraction_digits && is_digit(*p)) {
            fraction += *p >= '5' ? 1 : 0;
            while (is_digit(*p)) {
                ++p;
            }
        }
        if (!fraction_allowed(fraction, hour, second) ||
            !follow_clock_field(state, p, extended, digits_read < iso_fraction_digits,
                                offset_direction)) {
            return false;
        }
    }
    if (state == Iso::zone_hour) {
        if (!read_digits<2>(p, zone_hour) || zone_hour > 14) {
            return false;
        }
        // The zone is applied to the clock at once; the fields may leave their range.
        hour += offset_direction * zone_hour;
        if (*p == ':' || is_digit(*p)) {
            p += *p == ':' ? 1 : 0;
            int zone_minute = 0;
            if (!read_digits<2>(p, zone_minute) || zone_minute > 59 ||
                (zone_hour == 14 && zone_minute != 0)) {
                return false;
            }
            minute += offset_direction * zone_minute;
        }
        if (*p != '\0') {
            return false;
        }
    }

    // The range is judged field by field on the fields as the zone left them. Years strictly
    // between the bounds' years need no further look.
    if (year <= first_writable_year || year >= last_writable_year) {
        const int fields[] = {year, month, day, hour, minute, second, fraction};
        if (fields_before(fields, first_writable_fields)) {
            out = smallest_instant;
            return true;
        }
        if (!fields_before(fields, first_saturated_fields)) {
            out = largest_instant;
            return true;
        }
    }
    // The year is at least 1677 here.
    const long ticks = fraction + second * ticks_per_second + minute * ticks_per_minute +
                       hour * ticks_per_hour +
                       days_from_date_after_year_zero(year, month, day) * ticks_per_day;
    // A zone can push the clock fields past their range, so an instant that passed the field
    // test may still lie beyond a bound; it saturates as well.
    if (ticks > largest_instant / ns_per_tick) {
        out = largest_instant;
    } else if (ticks < smallest_instant / ns_per_tick) {
        out = smallest_instant;
    } else {
        out = ticks * ns_per_tick;
    }
    return true;
}

bool try_duration_iso_to_ns(const std::string& text, long& out) {
    const std::size_t size = text.size();
    std::size_t i = 0;
    const bool negative = size > 0 && text[0] == '-';
    if (negative) {
        ++i;
    }
    if (i >= size || text[i] != 'P' || ++i >= size) {
        return false;
    }

    // Designators must come from the largest unit down: each one lowers the limit that the next
    // must lie below.
    constexpr std::uint64_t no_limit = std::numeric_limits<std::uint64_t>::max();
    constexpr std::uint64_t after_t_limit = ns_per_duration_day - 1;
    constexpr std::uint64_t fraction_limit = ns_per_second - 1;
    std::uint64_t limit = no_limit;
    std::uint64_t years = 0, months = 0, days = 0, hours = 0, minutes = 0, seconds = 0;
    std::uint64_t fraction_ns = 0;
    std::uint64_t fraction_weight = 0;
    // Numbers are unsigned and wrap silently when too long.
    std::uint64_t number = 0;
    bool has_number = false;
    bool after_t = false;
    bool in_fraction = false;
    bool fraction_open = false;
    // A unit must weigh less than the one before it. Fields start at 0, and the falling limit
    // lets each unit come once, so adding the number sets it.
    const auto take_unit = [&](std::uint64_t& field, std::uint64_t weight) {
        if (limit <= weight) {
            return false;
        }
        field += number;
        limit = weight;
        return true;
    };

    for (; i < size; ++i) {
        const char c = text[i];
        if (is_digit(c)) {
            const auto digit = static_cast<std::uint64_t>(c - '0');
            if (in_fraction) {
                // Digits below the nanosecond have weight 0 and so truncate.
                fraction_ns += digit * fraction_weight;
                fraction_weight /= 10;
            } else {
                number = number * 10 + digit;
            }
            has_number = true;
            continue;
        }
        if (c == 'T') {
            // Digits in front of T are dropped.
            if (limit < ns_per_duration_day || i + 1 >= size) {
                return false;
            }
            after_t = true;
            limit = after_t_limit;
            number = 0;
            has_number = false;
            continue;
        }
        if (!has_number) {
            return false;
        }
        switch (c) {
            case 'Y':
                if (!take_unit(years, ns_per_year)) {
                    return false;
                }
                break;
            case 'M':
                if (!take_unit(after_t ? minutes : months,
                               after_t ? ns_per_minute : ns_per_month)) {
                    return false;
                }
                break;
            case 'W':
                // A week count stands alone.
                if (limit != no_limit) {
                    return false;
                }
                days += number * 7;
                limit = 0;
                break;
            case 'D':
                if (!take_unit(days, ns_per_duration_day)) {
                    return false;
                }
                break;
            case 'H':
                if (!take_unit(hours, ns_per_hour)) {
                    return false;
                }
                break;
            case '.':
            case ',':
                if (!after_t || limit < ns_per_second) {
                    return false;
                }
                seconds = number;
                in_fraction = true;
                fraction_open = true;
                fraction_weight = ns_per_second / 10;
                limit = fraction_limit;
                break;
            case 'S':
                if (in_fraction) {
                    // The point left the limit below every other unit, so S is all that can
                    // follow its digits. Digits after a closed fraction and another S extend the
                    // same fraction.
                    fraction_open = false;
                } else if (!after_t || !take_unit(seconds, ns_per_second)) {
                    return false;
                }
                break;
            default:
                return false;
        }
        number = 0;
        has_number = false;
    }
    if (has_number || fraction_open) {
        return false;
    }

    const std::uint64_t magnitude = hours * ns_per_hour + days * ns_per_duration_day +
                                    months * ns_per_month + years * ns_per_year + fraction_ns +
                                    seconds * ns_per_second + minutes * ns_per_minute;
    out = static_cast<long>(negative ? 0 - magnitude : magnitude);
    return true;
}

long iso_to_ns(const char* text) {
    long ns = 0;
    if (!try_iso_to_ns(text, ns)) {
        throw std::runtime_error("invalid argument");
    }
    return ns;
}

long iso_to_ns(const std::string& text) {
    return iso_to_ns(text.c_str());
}

long duration_iso_to_ns(const std::string& text) {
    long ns = 0;
    if (!try_duration_iso_to_ns(text, ns)) {
        throw std::runtime_error("invalid iso duration format");
    }
    return ns;
}

}  // namespace Quorvane
