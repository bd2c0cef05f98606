// ISO 8601 date-times and durations: the readers on arbitrary text, the throwing forms with only
// their own exception, and the writers on arbitrary 64-bit counts, read back to the same instant.

#include "helper/conversions.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include "fuzz_check.h"

namespace {

constexpr long untouched = 0x5A5A5A5A5A5A5A5A;

void check_date_time_text(const std::string& text) {
    long out = untouched;
    const bool good = Quorvane::try_iso_to_ns(text.c_str(), out);
    if (!good) {
        FUZZ_CHECK(out == untouched);
    }
    try {
        const long thrown_or_not = Quorvane::iso_to_ns(text.c_str());
        FUZZ_CHECK(good && thrown_or_not == out);
    } catch (const std::runtime_error& error) {
        FUZZ_CHECK(!good);
        FUZZ_CHECK(std::strcmp(error.what(), "invalid argument") == 0);
    }
    try {
        FUZZ_CHECK(Quorvane::iso_to_ns(text) == out && good);
    } catch (const std::runtime_error& error) {
        FUZZ_CHECK(!good);
        FUZZ_CHECK(std::strcmp(error.what(), "invalid argument") == 0);
    }
    if (!good || text[0] == 'P') {
        return;
    }
    // A date-time resolves whole 100 ns ticks, and its own text reads back to it.
    FUZZ_CHECK(out % 100 == 0);
    long again = untouched;
    FUZZ_CHECK(Quorvane::try_iso_to_ns(Quorvane::ns_to_iso(out).c_str(), again));
    FUZZ_CHECK(again == out);
}

void check_duration_text(const std::string& text) {
    long out = untouched;
    const bool good = Quorvane::try_duration_iso_to_ns(text, out);
    if (!good) {
        FUZZ_CHECK(out == untouched);
    }
    try {
        FUZZ_CHECK(Quorvane::duration_iso_to_ns(text) == out && good);
    } catch (const std::runtime_error& error) {
        FUZZ_CHECK(!good);
        FUZZ_CHECK(std::strcmp(error.what(), "invalid iso duration format") == 0);
    }
    // A date-time reader hands a text starting with P to the duration reader.
    const std::string up_to_nul(text.c_str());
    if (!up_to_nul.empty() && up_to_nul[0] == 'P') {
        long as_date_time = untouched;
        long as_duration = untouched;
        FUZZ_CHECK(Quorvane::try_iso_to_ns(up_to_nul.c_str(), as_date_time) ==
                   Quorvane::try_duration_iso_to_ns(up_to_nul, as_duration));
        FUZZ_CHECK(as_date_time == as_duration);
    }
}

void check_writers(long ns) {
    const std::string instant = Quorvane::ns_to_iso(ns);
    FUZZ_CHECK(instant.size() >= 20 && instant.size() <= 28 && instant.back() == 'Z');
    long read = untouched;
    FUZZ_CHECK(Quorvane::try_iso_to_ns(instant.c_str(), read));
    FUZZ_CHECK(read == ns / 100 * 100);

    const std::string span = Quorvane::ns_to_duration_iso(ns);
    long span_read = untouched;
    FUZZ_CHECK(Quorvane::try_duration_iso_to_ns(span, span_read));
    FUZZ_CHECK(span_read == ns);
}

void check_calendar(FuzzedDataProvider& input) {
    const int days = input.ConsumeIntegral<int>();
    int day = days;
    const auto year_and_month = Quorvane::calculate_year_and_month(day);
    FUZZ_CHECK(year_and_month.second >= 1 && year_and_month.second <= 12);
    FUZZ_CHECK(day >= 1 && day <= Quorvane::calculate_days_in_month(year_and_month.first,
                                                                    year_and_month.second));
    FUZZ_CHECK(Quorvane::calculate_days(year_and_month.first, year_and_month.second, day) == days);

    // Any year within the int range of day counts, and any day of the month, splits back.
    const int year = input.ConsumeIntegralInRange(-5000000, 5000000);
    const int month = input.ConsumeIntegralInRange(1, 12);
    const int length = Quorvane::calculate_days_in_month(year, month);
    FUZZ_CHECK(length == 29 ? Quorvane::is_leap_year(year) && month == 2 : length >= 28);
    const int month_day = input.ConsumeIntegralInRange(1, length);
    int count = Quorvane::calculate_days(year, month, month_day);
    const auto split = Quorvane::calculate_year_and_month(count);
    FUZZ_CHECK(split.first == year && split.second == month && count == month_day);
    (void)Quorvane::calculate_days(input.ConsumeIntegral<int>(), month,
                                   input.ConsumeIntegral<int>());
    (void)Quorvane::calculate_days_in_month(input.ConsumeIntegral<int>(),
                                            input.ConsumeIntegral<int>());
    (void)Quorvane::validate_ticks(input.ConsumeIntegral<int>(), input.ConsumeIntegral<int>(),
                                   input.ConsumeIntegral<int>());

    // Moving units: the rest ends in its documented interval and nothing is lost on the way.
    const long unit = input.ConsumeIntegralInRange<long>(1, 1000000000000L);
    long rest = input.ConsumeIntegralInRange<long>(-unit * 1000, unit * 1000);
    const long before = rest;
    const int start = input.ConsumeIntegralInRange(-1000, 1000);
    const int moved = Quorvane::calculate_time(start, unit, rest);
    FUZZ_CHECK(before >= 0 ? rest >= 0 && rest < unit : rest >= -unit && rest <= -1);
    FUZZ_CHECK(static_cast<long>(moved - start) * unit + rest == before);

    const long ticks = input.ConsumeIntegral<long>();
    const std::string mask = Quorvane::iso_template_string_with_ticks(ticks);
    FUZZ_CHECK(ticks < 1 ? mask == "yyyy-MM-ddTHH:mm:ssZ"
                         : mask.size() > 21 && mask.compare(0, 20, "yyyy-MM-ddTHH:mm:ss.") == 0);
    FUZZ_CHECK(mask.back() == 'Z' && mask[mask.size() - 2] != '0');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    check_date_time_text(text);
    check_duration_text(text);
    // The numbers come from the tail of the input, so that a seed stays a readable text.
    FuzzedDataProvider input(data, size);
    check_writers(input.ConsumeIntegral<long>());
    check_calendar(input);
    return 0;
}
