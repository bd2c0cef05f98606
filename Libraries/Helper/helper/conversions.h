#pragma once
// Conversions between the library's values and their text forms.

#include "helper/crosscompile.h"

#include <string>
#include <utility>

namespace Quorvane {

// ---------------------------------------------------------------------------------------------
// Calendar and ISO 8601 time
//
// Every time value is a signed 64-bit count of nanoseconds; date-times count from the Unix epoch.
// Date-time text carries at most seven fractional digits, so it resolves 100 ns ticks. The
// calendar is proleptic Gregorian and UTC only.
// ---------------------------------------------------------------------------------------------

// Texts "00" to "59", indexed by value: the two-digit fields of a date-time.
inline constexpr char numbers_two_digits[60][3] = {
    "00", "01", "02", "03", "04", "05", "06", "07", "08", "09",  //
    "10", "11", "12", "13", "14", "15", "16", "17", "18", "19",  //
    "20", "21", "22", "23", "24", "25", "26", "27", "28", "29",  //
    "30", "31", "32", "33", "34", "35", "36", "37", "38", "39",  //
    "40", "41", "42", "43", "44", "45", "46", "47", "48", "49",  //
    "50", "51", "52", "53", "54", "55", "56", "57", "58", "59"};

// Gregorian leap year: divisible by 4 and, for a century, by 400. Any int, negative years too.
QUORVANE_API bool is_leap_year(int year);

// Days from 1970-01-01 to the given date, negative before it. month is 1 to 12; day is not
// checked against the month, so day 0 or day 32 count on arithmetically. Results that do not fit
// an int (years beyond about +-5.8 million) wrap.
QUORVANE_API int calculate_days(int year, int month, int day);

// Inverse of calculate_days: splits a day count since 1970-01-01 into {year, month} and
// overwrites days with the day of the month, counted from 1. Every int is a valid day count.
QUORVANE_API std::pair<int, int> calculate_year_and_month(int& days);

// Length of a month: 30 for 4, 6, 9 and 11, 28 or 29 for 2, and 31 for every other value,
// including 0 and anything above 12.
QUORVANE_API int calculate_days_in_month(int year, int month);

// One step of splitting a rest into clock fields: moves whole units out of rest into the field,
// returning start changed by the number of units moved. A rest at or above 0 ends below unit and
// counts start up. A negative rest ends between -unit and -1 (never at 0) and counts start down,
// so that a time before midnight can be split from starts 23, 59, 59. unit must be above 0 and
// the result must fit an int. Constant time.
QUORVANE_API int calculate_time(int start, long unit, long& rest);

// The mask that ns_to_iso fills: "yyyy-MM-ddTHH:mm:ssZ" for ticks below 1, otherwise the same with
// ".", the ticks as seven digits with trailing zeros removed, and "Z" (5000000 ends ".5Z"). The
// letters are placeholders overwritten at fixed positions. Ticks above 9999999 are written with
// all their digits; ns_to_iso never produces them.
QUORVANE_API std::string iso_template_string_with_ticks(long ticks);

// Whether a fraction of the second may stand with the given hour and second: always when ticks is
// 0, otherwise only outside a leap second (60) and outside the end of day (hour 24).
QUORVANE_API bool validate_ticks(int ticks, int hour, int second);

// Date-time text in UTC of ns since the epoch, "2024-02-29T12:00:00.5Z": 20 to 28 characters,
// always ending in Z, with the fraction truncated toward zero to 100 ns and written without
// trailing zeros. Values beyond +-9223372036854775800 give the texts of those bounds. Never
// fails; one allocation, no formatted output.
QUORVANE_API std::string ns_to_iso(long ns);

// Duration text of ns, "-P1DT2H3M4.5S": days, hours and minutes when not 0, seconds with up to
// ten decimals (trailing zeros removed) when above 0; 0 is "PT0S". Weeks, months and years are
// never written. Numbers go through a text stream and so follow the global locale. Never fails.
QUORVANE_API std::string ns_to_duration_iso(long ns);

// Parses a date-time of the ISO 8601 subset this library reads, in extended ("2024-02-29T12:00Z")
// or basic ("20240229T1200Z") form, with an optional fraction and zone; a text starting with P is
// read as a duration by try_duration_iso_to_ns instead. Times before 1677-09-21T00:12:43.1452242
// and from 2262-04-11T23:47:16.8547759 on saturate to -+9223372036854775800 and still succeed.
// On success writes out and returns true; on a bad text, a null or an empty text returns false
// and leaves out alone. One pass, reads nothing past the terminator; allocates only to hand a
// duration on.
QUORVANE_API bool try_iso_to_ns(const char* text, long& out);

// Parses a duration "[-]P[nY][nM][nW|nD][T[nH][nM][n[.n]S]]" into ns: a year counts 365.25
// days, a month 30.4375 days; designators must fall in size, a week stands alone, and the
// fraction of the second is truncated to ns. Oversized numbers wrap silently. On success writes
// out and returns true; on a bad text returns false and leaves out alone.
QUORVANE_API bool try_duration_iso_to_ns(const std::string& text, long& out);

// As try_iso_to_ns, but a bad text throws std::runtime_error("invalid argument"). The string form
// reads up to the first NUL.
QUORVANE_API long iso_to_ns(const char* text);
QUORVANE_API long iso_to_ns(const std::string& text);

// As try_duration_iso_to_ns, but a bad text throws std::runtime_error("invalid iso duration
// format").
QUORVANE_API long duration_iso_to_ns(const std::string& text);

}  // namespace Quorvane
