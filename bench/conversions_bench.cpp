// Date-time text both ways, measured against the C library (gmtime_r with strftime, strptime with
// timegm) and against Howard Hinnant's date library (date::format, date::parse) on the same
// instants and texts. Every peer produces or reads the same UTC text with 100 ns ticks, and every
// formatter returns a std::string. The counter allocs_per_op counts calls of operator new. The
// inputs are walked in turn by an index that wraps at a constant power of two, so that the loop
// around the peers costs next to nothing.

#include "helper/conversions.h"

#include <benchmark/benchmark.h>
#include <date/date.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <new>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// The benchmarks run on one thread.
unsigned long allocations = 0;

}  // namespace

// Kept out of line with the deletes: once inlined, g++ pairs malloc and free with new-expressions
// and reports a mismatch.
__attribute__((noinline)) void* operator new(std::size_t size) {
    ++allocations;
    if (void* block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}

__attribute__((noinline)) void operator delete(void* block) noexcept {
    std::free(block);
}

__attribute__((noinline)) void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

using Ticks = std::chrono::duration<long, std::ratio<1, 10000000>>;
using TickTime = date::sys_time<Ticks>;

constexpr std::size_t input_count = 1024;

// Instants spread over the writable range: a quarter on whole seconds, the rest with fractions
// of one to seven digits.
const std::vector<long>& instants() {
    static const std::vector<long> values = [] {
        std::mt19937_64 engine(1970);
        std::uniform_int_distribution<long> range(-9223372036854775800L, 9223372036854775800L);
        std::vector<long> result;
        for (std::size_t i = 0; i < input_count; ++i) {
            long ns = range(engine);
            if (i % 4 == 0) {
                ns -= ns % 1000000000L;
            } else if (i % 4 == 1) {
                ns -= ns % 1000000L;
            }
            result.push_back(ns);
        }
        return result;
    }();
    return values;
}

const std::vector<std::string>& texts() {
    static const std::vector<std::string> values = [] {
        std::vector<std::string> result;
        for (long ns : instants()) {
            result.push_back(Quorvane::ns_to_iso(ns));
        }
        return result;
    }();
    return values;
}

std::string c_library_format(long ns) {
    const long ticks = ns / 100;
    long seconds = ticks / 10000000;
    long fraction = ticks % 10000000;
    if (fraction < 0) {
        fraction += 10000000;
        --seconds;
    }
    const time_t t = seconds;
    tm broken_down;
    gmtime_r(&t, &broken_down);
    char text[64];
    std::size_t length = strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S", &broken_down);
    // Seven digits by constant divisions, then the trailing zeros cut, so that the glue around
    // the C library costs little next to it.
    if (fraction != 0) {
        text[length] = '.';
        for (std::size_t i = 7; i > 0; --i, fraction /= 10) {
            text[length + i] = static_cast<char>('0' + fraction % 10);
        }
        length += 8;
        while (text[length - 1] == '0') {
            --length;
        }
    }
    text[length++] = 'Z';
    return std::string(text, length);
}

bool c_library_parse(const char* text, long& out) {
    tm broken_down{};
    const char* rest = strptime(text, "%Y-%m-%dT%H:%M:%S", &broken_down);
    if (rest == nullptr) {
        return false;
    }
    long fraction = 0;
    if (*rest == '.') {
        long weight = 1000000;
        for (++rest; *rest >= '0' && *rest <= '9'; ++rest, weight /= 10) {
            fraction += (*rest - '0') * weight;
        }
    }
    if (rest[0] != 'Z' || rest[1] != '\0') {
        return false;
    }
    out = (static_cast<long>(timegm(&broken_down)) * 10000000 + fraction) * 100;
    return true;
}

std::string date_format(long ns) {
    return date::format("%FT%TZ", TickTime(Ticks(ns / 100)));
}

bool date_parse(const std::string& text, long& out) {
    std::istringstream in(text);
    TickTime time;
    in >> date::parse("%FT%TZ", time);
    if (in.fail()) {
        return false;
    }
    out = time.time_since_epoch().count() * 100;
    return true;
}

void count_allocations(benchmark::State& state, unsigned long before) {
    state.counters["allocs_per_op"] = benchmark::Counter(static_cast<double>(allocations - before),
                                                         benchmark::Counter::kAvgIterations);
}

template <class Format>
void format_all(benchmark::State& state, Format format) {
    const std::vector<long>& inputs = instants();
    const unsigned long before = allocations;
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(format(inputs[i]));
        i = (i + 1) % input_count;
    }
    count_allocations(state, before);
}

template <class Parse>
void parse_all(benchmark::State& state, Parse parse) {
    const std::vector<std::string>& inputs = texts();
    const unsigned long before = allocations;
    std::size_t i = 0;
    long out = 0;
    for (auto _ : state) {
        if (!parse(inputs[i], out)) {
            state.SkipWithError("a peer rejected a text");
            break;
        }
        benchmark::DoNotOptimize(out);
        i = (i + 1) % input_count;
    }
    count_allocations(state, before);
}

void NsToIso(benchmark::State& state) {
    format_all(state, [](long ns) { return Quorvane::ns_to_iso(ns); });
}
BENCHMARK(NsToIso);

void NsToIso_CLibrary_gmtime_r_strftime(benchmark::State& state) {
    format_all(state, c_library_format);
}
BENCHMARK(NsToIso_CLibrary_gmtime_r_strftime);

void NsToIso_DateLibrary_format(benchmark::State& state) {
    format_all(state, date_format);
}
BENCHMARK(NsToIso_DateLibrary_format);

void TryIsoToNs(benchmark::State& state) {
    parse_all(state, [](const std::string& text, long& out) {
        return Quorvane::try_iso_to_ns(text.c_str(), out);
    });
}
BENCHMARK(TryIsoToNs);

void TryIsoToNs_CLibrary_strptime_timegm(benchmark::State& state) {
    parse_all(state, [](const std::string& text, long& out) {
        return c_library_parse(text.c_str(), out);
    });
}
BENCHMARK(TryIsoToNs_CLibrary_strptime_timegm);

void TryIsoToNs_DateLibrary_parse(benchmark::State& state) {
    parse_all(state, date_parse);
}
BENCHMARK(TryIsoToNs_DateLibrary_parse);

// All peers must agree on every input before any timing means something.
const bool peers_agree = [] {
    for (std::size_t i = 0; i < input_count; ++i) {
        const long ns = instants()[i];
        const std::string& text = texts()[i];
        long c_ns = 0;
        long date_ns = 0;
        long own_ns = 0;
        if (c_library_format(ns) != text || !c_library_parse(text.c_str(), c_ns) ||
            !date_parse(text, date_ns) || !Quorvane::try_iso_to_ns(text.c_str(), own_ns) ||
            c_ns != own_ns || date_ns != own_ns ||
            date_format(ns).compare(0, 19, text, 0, 19) != 0) {
            throw std::logic_error("peers disagree on " + text);
        }
    }
    return true;
}();

}  // namespace
