// Base64 throughput against Boost's archive iterators (base64_from_binary over transform_width,
// and back), on the same random bytes.
#include "helper/base64.h"

#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "boost_base64_peer.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes random_bytes(std::size_t size) {
    std::mt19937 random(42);
    Bytes bytes(size);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(random());
    }
    return bytes;
}

std::size_t size_of(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

std::string encoded(const benchmark::State& state) {
    return Quorvane::Base64::encode(random_bytes(size_of(state)));
}

// Runs `operation` on `input` once per iteration; throughput counts the raw bytes.
template <class Input, class Operation>
void measure(benchmark::State& state, const Input& input, Operation operation) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(operation(input));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void encode_quorvane(benchmark::State& state) {
    measure(state, random_bytes(size_of(state)),
            [](const Bytes& bytes) { return Quorvane::Base64::encode(bytes); });
}

void encode_boost(benchmark::State& state) {
    measure(state, random_bytes(size_of(state)), boost_base64_peer::encode);
}

void decode_quorvane(benchmark::State& state) {
    measure(state, encoded(state),
            [](const std::string& text) { return Quorvane::Base64::decode(text); });
}

void decode_boost(benchmark::State& state) {
    measure(state, encoded(state), boost_base64_peer::decode);
}

void is_base64_quorvane(benchmark::State& state) {
    measure(state, encoded(state),
            [](const std::string& text) { return Quorvane::is_base64(text.c_str()); });
}

BENCHMARK(encode_quorvane)->Arg(8)->Arg(256)->Arg(64 << 10);
BENCHMARK(encode_boost)->Arg(8)->Arg(256)->Arg(64 << 10);
BENCHMARK(decode_quorvane)->Arg(8)->Arg(256)->Arg(64 << 10);
BENCHMARK(decode_boost)->Arg(8)->Arg(256)->Arg(64 << 10);
BENCHMARK(is_base64_quorvane)->Arg(8)->Arg(256)->Arg(64 << 10);

}  // namespace
