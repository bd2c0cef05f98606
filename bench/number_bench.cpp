// Integer text and integer parsing of the number helpers, each measured against the standard
// library's std::to_string, snprintf, strtol and std::from_chars on the same inputs.

#include "helper/algorithm/number.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

namespace algo = Quorvane::Algorithm;

constexpr std::size_t input_count = 1024;

// Values spread over every digit count, up to the given magnitudes on each side of zero, so that
// no one length dominates.
template <class T>
std::vector<T> spread_values(std::uint64_t most_negative, std::uint64_t most_positive) {
    std::mt19937_64 random(12345);
    std::vector<T> values;
    values.reserve(input_count);
    while (values.size() < input_count) {
        const std::uint64_t magnitude = random() >> (random() % 64);
        if (random() % 2 == 0) {
            if (magnitude <= most_positive) {
                values.push_back(static_cast<T>(magnitude));
            }
        } else if (magnitude != 0 && magnitude <= most_negative) {
            values.push_back(static_cast<T>(0 - magnitude));
        }
    }
    return values;
}

const std::vector<int>& int_values() {
    static const auto values = spread_values<int>(2147483648U, 2147483647U);
    return values;
}

// Within the 32-bit range the long overload writes through faststr.
const std::vector<long>& long_values() {
    static const auto values = spread_values<long>(2147483648U, 4294967295U);
    return values;
}

// Beyond 4294967295 the unsigned long overload falls back to a text stream; faststr does not.
const std::vector<unsigned long>& wide_values() {
    static const auto values = [] {
        std::vector<unsigned long> wide;
        for (unsigned long value : spread_values<unsigned long>(0, ~0UL)) {
            wide.push_back(value | (1UL << 40));
        }
        return wide;
    }();
    return values;
}

template <class T, class Write>
void write_all(benchmark::State& state, const std::vector<T>& values, Write write) {
    for (auto _ : state) {
        for (const T value : values) {
            benchmark::DoNotOptimize(write(value));
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * values.size()));
}

std::string printf_text(long long value) {
    char buffer[32];
    const int size = std::snprintf(buffer, sizeof buffer, "%lld", value);
    return std::string(buffer, static_cast<std::size_t>(size));
}

std::string printf_text(unsigned long long value) {
    char buffer[32];
    const int size = std::snprintf(buffer, sizeof buffer, "%llu", value);
    return std::string(buffer, static_cast<std::size_t>(size));
}

void IntToString(benchmark::State& state) {
    write_all(state, int_values(), [](int v) { return algo::to_string(v); });
}
void IntStdToString(benchmark::State& state) {
    write_all(state, int_values(), [](int v) { return std::to_string(v); });
}
void IntSnprintf(benchmark::State& state) {
    write_all(state, int_values(), [](int v) { return printf_text(static_cast<long long>(v)); });
}

void LongToString(benchmark::State& state) {
    write_all(state, long_values(), [](long v) { return algo::to_string(v); });
}
void LongStdToString(benchmark::State& state) {
    write_all(state, long_values(), [](long v) { return std::to_string(v); });
}
void LongSnprintf(benchmark::State& state) {
    write_all(state, long_values(), [](long v) { return printf_text(static_cast<long long>(v)); });
}

void WideFaststr(benchmark::State& state) {
    write_all(state, wide_values(), [](unsigned long v) { return algo::faststr(v); });
}
void WideToStringThroughStream(benchmark::State& state) {
    write_all(state, wide_values(), [](unsigned long v) { return algo::to_string(v); });
}
void WideStdToString(benchmark::State& state) {
    write_all(state, wide_values(), [](unsigned long v) { return std::to_string(v); });
}
void WideSnprintf(benchmark::State& state) {
    write_all(state, wide_values(),
              [](unsigned long v) { return printf_text(static_cast<unsigned long long>(v)); });
}

BENCHMARK(IntToString);
BENCHMARK(IntStdToString);
BENCHMARK(IntSnprintf);
BENCHMARK(LongToString);
BENCHMARK(LongStdToString);
BENCHMARK(LongSnprintf);
BENCHMARK(WideFaststr);
BENCHMARK(WideToStringThroughStream);
BENCHMARK(WideStdToString);
BENCHMARK(WideSnprintf);

template <class T>
std::vector<std::string> texts_of(const std::vector<T>& values) {
    std::vector<std::string> texts;
    texts.reserve(values.size());
    for (const T value : values) {
        texts.push_back(std::to_string(value));
    }
    return texts;
}

const std::vector<std::string>& int_texts() {
    static const auto texts = texts_of(int_values());
    return texts;
}

const std::vector<std::string>& wide_texts() {
    static const auto texts = texts_of(wide_values());
    return texts;
}

template <class Parse>
void parse_all(benchmark::State& state, const std::vector<std::string>& texts, Parse parse) {
    for (auto _ : state) {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(parse(text));
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * texts.size()));
}

long strtol_whole(const std::string& text) {
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    return *end == '\0' ? value : 0;
}

template <class T>
T from_chars_whole(const std::string& text) {
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() ? value : T{};
}

void Int32AsInt32(benchmark::State& state) {
    parse_all(state, int_texts(), [](const std::string& t) { return algo::as_int32(t); });
}
void Int32TryAsInt32(benchmark::State& state) {
    parse_all(state, int_texts(), [](const std::string& t) { return algo::try_as_int32(t); });
}
void Int32Strtol(benchmark::State& state) {
    parse_all(state, int_texts(), strtol_whole);
}
void Int32FromChars(benchmark::State& state) {
    parse_all(state, int_texts(), from_chars_whole<int>);
}

void Int64AsInt64(benchmark::State& state) {
    parse_all(state, int_texts(), [](const std::string& t) { return algo::as_int64(t); });
}
void Int64Strtol(benchmark::State& state) {
    parse_all(state, int_texts(), strtol_whole);
}
void Int64FromChars(benchmark::State& state) {
    parse_all(state, int_texts(), from_chars_whole<long>);
}

void Uint64AsUint64(benchmark::State& state) {
    parse_all(state, wide_texts(), [](const std::string& t) { return algo::as_uint64(t); });
}
void Uint64TryAsUint64(benchmark::State& state) {
    parse_all(state, wide_texts(), [](const std::string& t) { return algo::try_as_uint64(t); });
}
void Uint64FromChars(benchmark::State& state) {
    parse_all(state, wide_texts(), from_chars_whole<unsigned long>);
}

// The one slow road: a saturated spelling of the extreme is read a second time by a stream.
void Int64SaturatedSpelling(benchmark::State& state) {
    const std::vector<std::string> texts(64, "+9223372036854775807");
    parse_all(state, texts, [](const std::string& t) { return algo::as_int64(t); });
}
void Int64SaturatedSpellingFromChars(benchmark::State& state) {
    const std::vector<std::string> texts(64, "9223372036854775807");
    parse_all(state, texts, from_chars_whole<long>);
}

BENCHMARK(Int32AsInt32);
BENCHMARK(Int32TryAsInt32);
BENCHMARK(Int32Strtol);
BENCHMARK(Int32FromChars);
BENCHMARK(Int64AsInt64);
BENCHMARK(Int64Strtol);
BENCHMARK(Int64FromChars);
BENCHMARK(Uint64AsUint64);
BENCHMARK(Uint64TryAsUint64);
BENCHMARK(Uint64FromChars);
BENCHMARK(Int64SaturatedSpelling);
BENCHMARK(Int64SaturatedSpellingFromChars);

}  // namespace
