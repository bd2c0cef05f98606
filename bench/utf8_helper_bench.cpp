// The Windows-1252 check and conversions against the C library's iconv (CP1252), on the same
// text: mostly ASCII with some accented letters and the euro sign, as in HMI labels.
#include "helper/utf8_helper.h"

#include <string>

#include <benchmark/benchmark.h>
#include <iconv.h>

namespace {

namespace UTF8 = Quorvane::UTF8;

std::string windows1252_text(std::size_t size) {
    const std::string piece =
        "Tank level \xE9tage 3: 42 \x80 / Druck \xFC"
        "ber Grenze; ";
    std::string text;
    while (text.size() < size) {
        text += piece;
    }
    text.resize(size);
    return text;
}

std::string ascii_text(std::size_t size) {
    std::string text;
    while (text.size() < size) {
        text += "Pump 7 running, setpoint 12.5 bar; ";
    }
    text.resize(size);
    return text;
}

// Converts with one descriptor opened per call, as a caller without a cache would.
std::string iconv_convert(const char* to, const char* from, const std::string& input) {
    iconv_t descriptor = iconv_open(to, from);
    std::string output(input.size() * 3, '\0');
    char* in_next = const_cast<char*>(input.data());
    std::size_t in_left = input.size();
    char* out_next = output.data();
    std::size_t out_left = output.size();
    iconv(descriptor, &in_next, &in_left, &out_next, &out_left);
    iconv_close(descriptor);
    output.resize(output.size() - out_left);
    return output;
}

void check_quorvane(benchmark::State& state) {
    const std::string text = ascii_text(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            UTF8::no_conversion_between_Windows1252_and_UTF8_needed(text.c_str()));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void windows1252_to_utf8_quorvane(benchmark::State& state) {
    const std::string text = windows1252_text(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(UTF8::no_boost::Windows1252_to_UTF8(text));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void windows1252_to_utf8_iconv(benchmark::State& state) {
    const std::string text = windows1252_text(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(iconv_convert("UTF-8", "CP1252", text));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void utf8_to_windows1252_quorvane(benchmark::State& state) {
    const std::string text = UTF8::no_boost::Windows1252_to_UTF8(
        windows1252_text(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(UTF8::no_boost::UTF8_to_Windows1252(text));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(text.size()));
}

void utf8_to_windows1252_iconv(benchmark::State& state) {
    const std::string text = UTF8::no_boost::Windows1252_to_UTF8(
        windows1252_text(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(iconv_convert("CP1252", "UTF-8", text));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(text.size()));
}

// Text with a bad byte every 16 bytes: the lenient engine's replacement path.
void utf8_to_u16_with_bad_bytes_quorvane(benchmark::State& state) {
    std::string text = ascii_text(static_cast<std::size_t>(state.range(0)));
    for (std::size_t i = 0; i < text.size(); i += 16) {
        text[i] = '\xFF';
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(UTF8::no_boost::to_u16string(text));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

BENCHMARK(check_quorvane)->Arg(32)->Arg(4 << 10);
BENCHMARK(windows1252_to_utf8_quorvane)->Arg(32)->Arg(4 << 10);
BENCHMARK(windows1252_to_utf8_iconv)->Arg(32)->Arg(4 << 10);
BENCHMARK(utf8_to_windows1252_quorvane)->Arg(32)->Arg(4 << 10);
BENCHMARK(utf8_to_windows1252_iconv)->Arg(32)->Arg(4 << 10);
BENCHMARK(utf8_to_u16_with_bad_bytes_quorvane)->Arg(4 << 10)->Arg(256 << 10);

}  // namespace
