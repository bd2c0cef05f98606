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
// always ending in Z, with up to seven fractional digits and no trailing zeros. ns is first cut
// toward zero to whole 100 ns ticks, so -99 to 99 ns write the epoch and -100 to -199 ns write
// 1969-12-31T23:59:59.9999999Z. Values above 9223372036854775800 give
// "2262-04-11T23:47:16.8547758Z", values below -9223372036854775800
// "1677-09-21T00:12:43.1452242Z". Never fails; one allocation, no formatted output.
QUORVANE_API std::string ns_to_iso(long ns);

// Duration text of ns, "-P1DT2H3M4.5S": a leading "-" for a negative ns, then days, hours and
// minutes when not 0, and seconds with up to ten decimals (trailing zeros removed) when above 0;
// T is written only before hours, minutes or seconds, and 0 is "PT0S". The most negative value
// is written by its magnitude. Weeks, months and years are never written. Numbers go through a
// text stream and so follow the global locale. Never fails.
QUORVANE_API std::string ns_to_duration_iso(long ns);

// Parses a date-time of the ISO 8601 subset this library reads into ns since the epoch. A text
// starting with P is read as a duration by try_duration_iso_to_ns instead ("-P..." fails).
//
// The date is "YYYY-MM-DD" (extended) or "YYYYMMDD" (basic), complete on its own; the year has
// four digits and no sign. After it may come "T" and the clock, in the same form:
// - extended "hh[:mm[:ss]]", basic "hh[mm[ss]]". Hour 24 takes only zero minutes, seconds and
//   fraction, and second 60 (a leap second) only a zero fraction; each counts on into the next
//   day or minute;
// - a fraction of the second, in extended form after "." or "," following the hour, the minute
//   or the second ("T12.5" is 12:00:00.5), in basic form directly after the seconds. The seventh
//   digit is the last kept; an eighth of 5 or more rounds up, and further digits are skipped;
// - "Z" as the last character, or a zone "+hh", "-hh", "+hh:mm", "+hhmm" up to 14:00. In basic
//   form a zone may only follow a fraction of one to six digits, and any byte but Z that ends
//   that fraction, "+" too, is taken as the sign "-" (the offset is added).
// The zone is applied to hour and minute, which may then leave their range. The range is judged
// field by field, year down to fraction, on those shifted fields: before
// 1677-09-21T00:12:43.1452242 out is -9223372036854775800, from 2262-04-11T23:47:16.8547759 on
// it is 9223372036854775800, and the text still succeeds. Fields inside the range that the zone
// carries past a bound as an instant saturate in the same way.
//
// On success writes out and returns true; on a bad text, a null or an empty text returns false
// and leaves out alone. One pass, reads nothing past the terminator; allocates only to hand a
// duration on, so that std::bad_alloc is all it may throw.
QUORVANE_API bool try_iso_to_ns(const char* text, long& out);

// Parses a duration "[-]P[nY][nM][nD][T[nH][nM][n[.n]S]]" or "[-]PnW" into ns: a year counts
// 365.25 days, a month 30.4375 days. Each unit must be smaller than the one before it, and at
// least one must be there; only a fraction may still follow whole seconds, and its number then
// gives the seconds ("PT1S2.5S" is 2.5 s). H may also stand without T ("P1H"), and then nothing may
// follow it; digits in front of T are dropped. The fraction of the second takes "." or ",", keeps
// nine digits (truncated to ns), and further digits closed by another S extend it ("PT1.5S5S" is
// 1.55 s). Numbers and the sum are unsigned 64-bit and wrap silently.
// On success writes out and returns true; on a bad text (a "+" sign, lower case, a NUL or any
// other byte included) returns false and leaves out alone.
QUORVANE_API bool try_duration_iso_to_ns(const std::string& text, long& out);

// As try_iso_to_ns, but a bad text throws std::runtime_error("invalid argument"). The string form
// reads up to the first NUL.
QUORVANE_API long iso_to_ns(const char* text);
QUORVANE_API long iso_to_ns(const std::string& text);

// As try_duration_iso_to_ns, but a bad text throws std::runtime_error("invalid iso duration
// format").
QUORVANE_API long duration_iso_to_ns(const std::string& text);

}  // namespace Quorvane
