#include "helper/conversions.h"

#include "helper/algorithm/memory.h"
#include "helper/algorithm/number.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
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
constexpr long ns_per_day = ticks_per_day * ns_per_tick;

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

}  // namespace

bool is_leap_year(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int calculate_days(int year, int month, int day) {
    // Counting years from March puts the leap day at the end of the year, so the month lengths
    // before it follow the fixed 153-days-per-5-months pattern. Wide arithmetic keeps extreme
    // arguments free of overflow.
    const long shifted_year = static_cast<long>(year) - (month < 3 ? 1 : 0);
    const long era = (shifted_year >= 0 ? shifted_year : shifted_year - 399) / 400;
    const long year_of_era = shifted_year - era * 400;
    const long shifted_month = month < 3 ? month + 9L : month - 3L;
    const long day_of_year = (153 * shifted_month + 2) / 5 + day - 1;
    const long day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
    return static_cast<int>(era * days_per_era + day_of_era - days_to_epoch);
}

std::pair<int, int> calculate_year_and_month(int& days) {
    const long z = static_cast<long>(days) + days_to_epoch;
    const long era = (z >= 0 ? z : z - (days_per_era - 1)) / days_per_era;
    const long day_of_era = z - era * days_per_era;
    const long year_of_era =
        (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
    const long day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
    const long shifted_month = (5 * day_of_year + 2) / 153;
    const long month = shifted_month < 10 ? shifted_month + 3 : shifted_month - 9;
    days = static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1);
    return {static_cast<int>(year_of_era + era * 400 + (month < 3 ? 1 : 0)),
            static_cast<int>(month)};
}

int calculate_days_in_month(int year, int month) {
    switch (month) {
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        case 2:
            return is_leap_year(year) ? 29 : 28;
        default:
            return 31;
    }
}

int calculate_time(int start, long unit, long& rest) {
    // Whole units are moved at once; the outcome is that of moving them one by one.
    long moved;
    if (rest >= 0) {
        moved = rest / unit;
        rest -= moved * unit;
        return static_cast<int>(start + moved);
    }
    // A negative rest stops at -unit rather than 0: the caller's start already stands for the
    // last unit of the enclosing field, and the remaining rest is borrowed from it.
    const unsigned long magnitude = 0UL - static_cast<unsigned long>(rest);
    moved = static_cast<long>((magnitude - 1) / static_cast<unsigned long>(unit));
    rest += moved * unit;
    return static_cast<int>(start - moved);
}

std::string iso_template_string_with_ticks(long ticks) {
    static constexpr char whole_second_mask[] = "yyyy-MM-ddTHH:mm:ssZ";
    static constexpr char fraction_mask[] = "yyyy-MM-ddTHH:mm:ss.0000000";
    constexpr std::size_t fraction_start = sizeof("yyyy-MM-ddTHH:mm:ss.") - 1;
    constexpr std::size_t fraction_digits = sizeof(fraction_mask) - 1 - fraction_start;
    if (ticks < 1) {
        return whole_second_mask;
    }
    char digits[std::numeric_limits<long>::digits10 + 1];
    const std::size_t written = static_cast<std::size_t>(
        std::to_chars(digits, digits + sizeof(digits), ticks).ptr - digits);
    const std::size_t padding = written < fraction_digits ? fraction_digits - written : 0;
    // Ticks are at least 1, so a non-zero digit stops the trim.
    std::size_t digit_count = written;
    while (digits[digit_count - 1] == '0') {
        --digit_count;
    }
    std::string mask;
    mask.reserve(fraction_start + padding + digit_count + 1);
    mask.append(fraction_mask, fraction_start + padding);
    mask.append(digits, digit_count);
    mask.push_back('Z');
    return mask;
}

bool validate_ticks(int ticks, int hour, int second) {
    return ticks == 0 || (second != 60 && hour != 24);
}

std::string ns_to_iso(long ns) {
    if (ns > largest_instant) {
        return largest_instant_text;
    }
    if (ns < smallest_instant) {
        return smallest_instant_text;
    }
    const long ticks = ns / ns_per_tick;
    const long ticks_of_day = ticks % ticks_per_day;
    long rest = ticks_of_day;
    // Before the epoch the rest of the day is negative: the clock then counts back from the last
    // second of the previous day.
    const bool before_midnight = rest < 0;
    const int hour = calculate_time(before_midnight ? 23 : 0, ticks_per_hour, rest);
    const int minute = calculate_time(before_midnight ? 59 : 0, ticks_per_minute, rest);
    const int second = calculate_time(before_midnight ? 59 : 0, ticks_per_second, rest);
    if (rest < 0) {
        rest += ticks_per_second;
    }
    int day = static_cast<int>(ns / ns_per_day - (ticks_of_day < 0 ? 1 : 0));
    const auto [year, month] = calculate_year_and_month(day);

    std::string text = iso_template_string_with_ticks(rest);
    char* const mask = text.data();
    int digits_of_year = year;
    for (int position = 3; position >= 0; --position) {
        mask[position] = static_cast<char>('0' + digits_of_year % 10);
        digits_of_year /= 10;
    }
    const int fields[] = {month, day, hour, minute, second};
    const std::size_t positions[] = {5, 8, 11, 14, 17};
    for (std::size_t i = 0; i < 5; ++i) {
        Algorithm::hmi_memcpy_s(mask + positions[i], 2, numbers_two_digits[fields[i]], 2);
    }
    return text;
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

// The fields of a date-time text in reading order. The two zone fields are applied to hour and
// minute as soon as they are read.
namespace iso_field {
enum Field { year, month, day, hour, minute, second, fraction, zone_hour, zone_minute };
}  // namespace iso_field
using iso_field::Field;

constexpr int whole_field_digits[] = {4, 2, 2, 2, 2, 2, 0, 2, 2};
constexpr int iso_fraction_digits = 7;
constexpr int largest_fraction_weight = 1000000;

// The writable range as date-time fields. Below the first, a text saturates to the smallest
// instant; from the second on, to the largest.
constexpr int first_writable_fields[] = {1677, 9, 21, 0, 12, 43, 1452242};
constexpr int first_saturated_fields[] = {2262, 4, 11, 23, 47, 16, 8547759};

// Range checks of a field just read; zone hour and minute see the zone fields, the others the
// date and time fields read so far.
bool field_in_range(Field field, const int* fields) {
    using namespace iso_field;
    const int value = fields[field];
    switch (field) {
        case month:
            return value >= 1 && value <= 12;
        case day:
            return value >= 1 && value <= calculate_days_in_month(fields[year], fields[month]);
        case hour:
            return value <= 24;
        case minute:
        case second:
            // 24:00:00 closes the day and nothing may follow it; 60 admits the leap second.
            return value <= (field == minute ? 59 : 60) && (fields[hour] != 24 || value == 0);
        case fraction:
            return validate_ticks(value, fields[hour], fields[second]);
        case zone_hour:
            return value <= 14;
        case zone_minute:
            return value <= 59 && (fields[zone_hour] != 14 || value == 0);
        default:
            return true;
    }
}

bool fields_before(const int* fields, const int* bound) {
    return std::lexicographical_compare(fields, fields + 7, bound, bound + 7);
}

}  // namespace

bool try_iso_to_ns(const char* text, long& out) {
    if (text == nullptr || *text == '\0') {
        return false;
    }
    if (*text == 'P') {
        return try_duration_iso_to_ns(text, out);
    }

    using namespace iso_field;
    int fields[9] = {};
    // Extended texts separate the date fields with '-', which the character after the year tells.
    bool extended = false;
    // +1 when the zone offset is added to the clock, -1 when it is subtracted.
    int offset_direction = 1;
    int fraction_digits_read = 0;
    const char* p = text;
    Field field = year;
    for (;;) {
        int& value = fields[field];
        if (field == fraction) {
            for (int weight = largest_fraction_weight; weight > 0 && is_digit(*p); weight /= 10) {
                value += (*p++ - '0') * weight;
                ++fraction_digits_read;
            }
            if (fraction_digits_read == 0) {
                return false;
            }
            // Beyond 100 ns only the next digit counts, for rounding; the sum may reach a whole
            // second, which the arithmetic below carries over.
            if (fraction_digits_read == iso_fraction_digits && is_digit(*p)) {
                value += *p >= '5' ? 1 : 0;
                while (is_digit(*p)) {
                    ++p;
                }
            }
        } else {
            for (int digit = 0; digit < whole_field_digits[field]; ++digit, ++p) {
                if (!is_digit(*p)) {
                    return false;
                }
                value = value * 10 + (*p - '0');
            }
        }
        if (!field_in_range(field, fields)) {
            return false;
        }
        if (field == zone_hour) {
            fields[hour] += offset_direction * value;
        } else if (field == zone_minute) {
            fields[minute] += offset_direction * value;
        }

        // What may follow the field just read.
        const char c = *p;
        if (c == '\0' && field >= day) {
            break;
        }
        if (c == 'Z' && field >= hour && field <= fraction) {
            if (p[1] != '\0') {
                return false;
            }
            break;
        }
        const bool sign = c == '+' || c == '-';
        switch (field) {
            case year:
                extended = c == '-';
                if (!extended && !is_digit(c)) {
                    return false;
                }
                p += extended ? 1 : 0;
                field = month;
                continue;
            case month:
                if (extended ? c != '-' : !is_digit(c)) {
                    return false;
                }
                p += extended ? 1 : 0;
                field = day;
                continue;
            case day:
                if (c != 'T') {
                    return false;
                }
                ++p;
                field = hour;
                continue;
            case hour:
            case minute:
            case second:
                if (!extended) {
                    // Basic texts run the clock fields, and the fraction after the second,
                    // together.
                    if (!is_digit(c)) {
                        return false;
                    }
                    field = static_cast<Field>(field + 1);
                    continue;
                }
                if (c == ':' && field != second) {
                    field = static_cast<Field>(field + 1);
                } else if (c == '.' || c == ',') {
                    // Deliberately a fraction of the second even after an hour or a minute.
                    field = fraction;
                } else if (sign) {
                    offset_direction = c == '+' ? -1 : 1;
                    field = zone_hour;
                } else {
                    return false;
                }
                ++p;
                continue;
            case fraction:
                if (extended && sign) {
                    offset_direction = c == '+' ? -1 : 1;
                } else if (!extended && fraction_digits_read < iso_fraction_digits) {
                    // A basic text takes whatever stops a short fraction as the sign of a zone,
                    // and always as a negative offset, so that the offset is added.
                    offset_direction = 1;
                } else {
                    return false;
                }
                ++p;
                field = zone_hour;
                continue;
            case zone_hour:
                if (c == ':') {
                    ++p;
                } else if (!is_digit(c)) {
                    return false;
                }
                field = zone_minute;
                continue;
            case zone_minute:
                return false;
        }
    }

    // The range is judged on the fields as the zone left them.
    if (fields_before(fields, first_writable_fields)) {
        out = smallest_instant;
        return true;
    }
    if (!fields_before(fields, first_saturated_fields)) {
        out = largest_instant;
        return true;
    }
    const long ticks = fields[fraction] + fields[second] * ticks_per_second +
                       fields[minute] * ticks_per_minute + fields[hour] * ticks_per_hour +
                       calculate_days(fields[year], fields[month], fields[day]) * ticks_per_day;
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
    constexpr std::uint64_t time_part_limit = ns_per_duration_day - 1;
    constexpr std::uint64_t fraction_limit = ns_per_second - 1;
    std::uint64_t limit = no_limit;
    std::uint64_t years = 0, months = 0, days = 0, hours = 0, minutes = 0, seconds = 0;
    std::uint64_t fraction_ns = 0;
    std::uint64_t fraction_weight = 0;
    // Numbers are unsigned and wrap silently when too long.
    std::uint64_t number = 0;
    bool has_number = false;
    bool time_part = false;
    bool in_fraction = false;
    bool fraction_open = false;

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
            time_part = true;
            limit = time_part_limit;
            number = 0;
            has_number = false;
            continue;
        }
        if (!has_number) {
            return false;
        }
        switch (c) {
            case 'Y':
                if (limit <= ns_per_year) {
                    return false;
                }
                years = number;
                limit = ns_per_year;
                break;
            case 'M':
                if (time_part ? limit <= ns_per_minute : limit <= ns_per_month) {
                    return false;
                }
                (time_part ? minutes : months) = number;
                limit = time_part ? ns_per_minute : ns_per_month;
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
                if (limit <= ns_per_duration_day) {
                    return false;
                }
                days += number;
                limit = ns_per_duration_day;
                break;
            case 'H':
                if (limit <= ns_per_hour) {
                    return false;
                }
                hours = number;
                limit = ns_per_hour;
                break;
            case '.':
            case ',':
                if (!time_part || limit < ns_per_second) {
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
                    // Digits after a closed fraction and another S extend the same fraction.
                    if (limit != fraction_limit) {
                        return false;
                    }
                    fraction_open = false;
                } else {
                    if (!time_part || limit <= ns_per_second) {
                        return false;
                    }
                    seconds = number;
                    limit = ns_per_second;
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
