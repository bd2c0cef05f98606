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

void check_calendar(int days) {
    int day = days;
    const auto year_and_month = Quorvane::calculate_year_and_month(day);
    FUZZ_CHECK(year_and_month.second >= 1 && year_and_month.second <= 12);
    FUZZ_CHECK(day >= 1 &&
               day <= Quorvane::calculate_days_in_month(year_and_month.first,
                                                        year_and_month.second));
    FUZZ_CHECK(Quorvane::calculate_days(year_and_month.first, year_and_month.second, day) == days);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    check_date_time_text(text);
    check_duration_text(text);
    // The numbers come from the tail of the input, so that a seed stays a readable text.
    FuzzedDataProvider input(data, size);
    check_writers(input.ConsumeIntegral<long>());
    check_calendar(input.ConsumeIntegral<int>());
    return 0;
}
