// Lookups, walks and indexing chains of the containers, each beside the standard container that
// does the same work on the same input.

#include "QuorvaneExtApi.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

using Quorvane::Iterator;
using Quorvane::Map;
using Quorvane::Value;
using Quorvane::Vector;
using Quorvane::VectorIterator;

namespace {

constexpr int kCount = 1000;

std::vector<std::string> keys() {
    std::vector<std::string> result;
    for (int number = 0; number < kCount; ++number) {
        result.push_back("key" + std::to_string(number * 7919 % kCount));
    }
    return result;
}

void VectorGetByIndex(benchmark::State& state) {
    Vector<Value> vector;
    for (int number = 0; number < kCount; ++number) {
        vector.add(Value(number));
    }
    for (auto _ : state) {
        for (std::size_t index = 0; index < kCount; ++index) {
            benchmark::DoNotOptimize(vector.get(index));
        }
    }
}
BENCHMARK(VectorGetByIndex);

void StdVectorAtIndex(benchmark::State& state) {
    std::vector<Value> vector;
    for (int number = 0; number < kCount; ++number) {
        vector.emplace_back(number);
    }
    for (auto _ : state) {
        for (std::size_t index = 0; index < kCount; ++index) {
            benchmark::DoNotOptimize(&vector[index]);
        }
    }
}
BENCHMARK(StdVectorAtIndex);

void MapGetByKey(benchmark::State& state) {
    const std::vector<std::string> names = keys();
    Map<Value> map;
    for (int number = 0; number < kCount; ++number) {
        map.insert(names[number].c_str(), Value(number));
    }
    for (auto _ : state) {
        for (const std::string& name : names) {
            benchmark::DoNotOptimize(map.get(name.c_str()));
        }
    }
}
BENCHMARK(MapGetByKey);

void StdMapFindByKey(benchmark::State& state) {
    const std::vector<std::string> names = keys();
    std::map<std::string, Value> map;
    for (int number = 0; number < kCount; ++number) {
        map.emplace(names[number], Value(number));
    }
    for (auto _ : state) {
        for (const std::string& name : names) {
            // A caller holding only a text pointer builds the key first.
            benchmark::DoNotOptimize(map.find(std::string(name.c_str())));
        }
    }
}
BENCHMARK(StdMapFindByKey);

void VectorIteration(benchmark::State& state) {
    Vector<Value> vector;
    for (int number = 0; number < kCount; ++number) {
        vector.add(Value(number));
    }
    for (auto _ : state) {
        long sum = 0;
        for (VectorIterator<Value> at = vector.begin(), end = vector.end(); at != end; ++at) {
            sum += at->get_int32();
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(VectorIteration);

void StdVectorIteration(benchmark::State& state) {
    std::vector<Value> vector;
    for (int number = 0; number < kCount; ++number) {
        vector.emplace_back(number);
    }
    for (auto _ : state) {
        long sum = 0;
        for (const Value& item : vector) {
            sum += item.get_int32();
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(StdVectorIteration);

void MapIteration(benchmark::State& state) {
    const std::vector<std::string> names = keys();
    Map<Value> map;
    for (int number = 0; number < kCount; ++number) {
        map.insert(names[number].c_str(), Value(number));
    }
    for (auto _ : state) {
        long sum = 0;
        for (Iterator<Value> at = map.begin(), end = map.end(); at != end; ++at) {
            sum += at->get_int32();
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(MapIteration);

void StdMapIteration(benchmark::State& state) {
    const std::vector<std::string> names = keys();
    std::map<std::string, Value> map;
    for (int number = 0; number < kCount; ++number) {
        map.emplace(names[number], Value(number));
    }
    for (auto _ : state) {
        long sum = 0;
        for (const auto& entry : map) {
            sum += entry.second.get_int32();
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(StdMapIteration);

// A request-shaped tree: {"items": [ {"name": ..., "tags": [..]} x 100 ]}.
Value request_tree() {
    Value items;
    for (int number = 0; number < 100; ++number) {
        Value item;
        item.insert("name", Value(std::to_string(number).c_str()));
        Value tags;
        tags << Value("a") << Value("b") << Value("c");
        item.insert("tags", tags);
        items << item;
    }
    Value root;
    root.insert("items", items);
    return root;
}

void ValueIndexingChain(benchmark::State& state) {
    const Value root = request_tree();
    for (auto _ : state) {
        for (int number = 0; number < 100; ++number) {
            benchmark::DoNotOptimize(root["items"][number]["tags"][2].get_string());
        }
    }
}
BENCHMARK(ValueIndexingChain);

void ValueIndexingChainThatMisses(benchmark::State& state) {
    const Value root = request_tree();
    for (auto _ : state) {
        for (int number = 0; number < 100; ++number) {
            benchmark::DoNotOptimize(root["items"][number + 100]["tags"][2].get_string());
        }
    }
}
BENCHMARK(ValueIndexingChainThatMisses);

// The same walk on standard containers of the same shape.
struct StdItem {
    std::string name;
    std::vector<std::string> tags;
};

void StdIndexingChain(benchmark::State& state) {
    std::map<std::string, std::vector<std::map<std::string, StdItem>>> root;
    auto& items = root["items"];
    for (int number = 0; number < 100; ++number) {
        items.push_back({{"tags", StdItem{std::to_string(number), {"a", "b", "c"}}}});
    }
    for (auto _ : state) {
        for (int number = 0; number < 100; ++number) {
            benchmark::DoNotOptimize(root.find(std::string("items"))
                                         ->second[number]
                                         .find(std::string("tags"))
                                         ->second.tags[2]
                                         .c_str());
        }
    }
}
BENCHMARK(StdIndexingChain);

void ValueDeepCopy(benchmark::State& state) {
    const Value root = request_tree();
    for (auto _ : state) {
        Value copy(root);
        benchmark::DoNotOptimize(copy.size());
    }
}
BENCHMARK(ValueDeepCopy);

void VectorAppend(benchmark::State& state) {
    for (auto _ : state) {
        Vector<Value> vector;
        for (int number = 0; number < kCount; ++number) {
            vector.add(Value(number));
        }
        benchmark::DoNotOptimize(vector.size());
    }
}
BENCHMARK(VectorAppend);

void StdVectorAppend(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<Value> vector;
        for (int number = 0; number < kCount; ++number) {
            vector.push_back(Value(number));
        }
        benchmark::DoNotOptimize(vector.size());
    }
}
BENCHMARK(StdVectorAppend);

}  // namespace
