// The object model as a program: each input is read as a sequence of operations on a few Values,
// containers, commands, groups and sessions, among them wrong kinds, misses, end positions and
// positions of other containers. Only what the headers call valid for any state is done; reading
// through an end position is done only to see the one documented exception. Iterators and element
// references live within one operation, because growth and erasure invalidate them.

#include "QuorvaneExtApi.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include "fuzz_check.h"

using Quorvane::Binary;
using Quorvane::Command;
using Quorvane::CommandGroup;
using Quorvane::ConstIterator;
using Quorvane::ConstVectorIterator;
using Quorvane::Context;
using Quorvane::ErrorValue;
using Quorvane::Iterator;
using Quorvane::Map;
using Quorvane::Session;
using Quorvane::Timespan;
using Quorvane::Timestamp;
using Quorvane::Value;
using Quorvane::ValueType;
using Quorvane::Vector;
using Quorvane::VectorIterator;

namespace {

constexpr int pool_size = 4;

ValueType any_kind(FuzzedDataProvider& input) {
    static constexpr ValueType kinds[] = {
        ValueType::Null,   ValueType::Bool,    ValueType::Int,      ValueType::Double,
        ValueType::String, ValueType::Vector,  ValueType::Map,      ValueType::Struct,
        ValueType::Binary, ValueType::Int64,   ValueType::DateTime, ValueType::TimeSpan,
        ValueType::Event,  ValueType::Message, ValueType::Alarm,    ValueType::Any};
    const auto pick = input.ConsumeIntegralInRange<std::size_t>(0, sizeof kinds / sizeof *kinds);
    if (pick < sizeof kinds / sizeof *kinds) {
        return kinds[pick];
    }
    return static_cast<ValueType>(input.ConsumeIntegral<std::int32_t>());
}

// Keys are NUL-terminated texts, so a key ends at its first NUL byte.
std::string any_key(FuzzedDataProvider& input) {
    return input.ConsumeRandomLengthString(6).c_str();
}

// The number of values in a tree. Copies of large trees are refused, because appending a value
// to itself doubles it and a few hundred operations would otherwise exhaust memory.
std::size_t weight(const Value& value) {
    std::size_t count = 1;
    if (const auto* vector = value.get_vector()) {
        for (auto it = vector->begin(); it != vector->end(); ++it) {
            count += weight(*it);
        }
    }
    if (const auto* map = value.get_map()) {
        for (auto it = map->begin(); it != map->end(); ++it) {
            count += weight(*it);
        }
    }
    return count;
}

constexpr std::size_t copy_limit = 256;

// Expects the documented exception of a read at an end position.
template <class Read>
void expect_not_dereferencable(Read read) {
    try {
        read();
        FUZZ_CHECK(!"an end position was read");
    } catch (const std::runtime_error& error) {
        FUZZ_CHECK(std::strcmp(error.what(), "iterator not dereferrencable") == 0);
    }
}

class Program {
public:
    explicit Program(FuzzedDataProvider& input) : input_(input) {}

    void run() {
        while (input_.remaining_bytes() > 0) {
            step();
        }
        for (const Value& value : values_) {
            check_reads(value);
        }
    }

private:
    Value& any_value() { return values_[input_.ConsumeIntegralInRange(0, pool_size - 1)]; }

    // A fresh value of any kind, or a copy of one of the pool.
    Value make_value() {
        switch (input_.ConsumeIntegralInRange(0, 10)) {
            case 0:
                return Value();
            case 1:
                return Value(input_.ConsumeBool());
            case 2:
                return Value(input_.ConsumeIntegral<int>());
            case 3:
                return Value(input_.ConsumeIntegral<long>());
            case 4:
                return Value(input_.ConsumeFloatingPoint<double>());
            case 5:
                return Value(input_.ConsumeRandomLengthString(12).c_str());
            case 6: {
                std::string bytes = input_.ConsumeRandomLengthString(12);
                return Value(Binary{bytes.size(), reinterpret_cast<unsigned char*>(&bytes[0])});
            }
            case 7:
                return Value(Timestamp(input_.ConsumeIntegral<long>()));
            case 8:
                return Value(Timespan(input_.ConsumeIntegral<long>()));
            default: {
                const Value& copied = any_value();
                return weight(copied) <= copy_limit ? copied : Value();
            }
        }
    }

    // Every read answers, and kind and answer fit together where the header ties them.
    static void check_reads(const Value& value) {
        const ValueType type = value.type();
        FUZZ_CHECK(value.isset() == (type != ValueType::Null));
        (void)value.get_bool();
        (void)value.get_int32();
        const long wide = value.get_int64();
        if (type != ValueType::Int64 && type != ValueType::DateTime &&
            type != ValueType::TimeSpan) {
            FUZZ_CHECK(wide == 0);
        }
        (void)value.get_double();
        FUZZ_CHECK(value.get_string() != nullptr);
        const Binary bytes = value.get_binary();
        if (type != ValueType::Binary) {
            FUZZ_CHECK(bytes.size == 0 && bytes.bytes == nullptr);
        } else {
            FUZZ_CHECK(bytes.size == value.size());
            FUZZ_CHECK((bytes.size == 0) == (bytes.bytes == nullptr));
        }
        if (type != ValueType::DateTime) {
            FUZZ_CHECK(value.get_timestamp() == Timestamp());
        }
        if (type != ValueType::TimeSpan) {
            FUZZ_CHECK(value.get_timespan() == Timespan());
        }
        const auto* map = value.get_map();
        const auto* vector = value.get_vector();
        FUZZ_CHECK(map == nullptr || vector == nullptr);
        if (type == ValueType::Map || type == ValueType::Struct) {
            FUZZ_CHECK(map != nullptr && map->size() == value.size());
        }
        if (type == ValueType::Vector) {
            FUZZ_CHECK(vector != nullptr && vector->size() == value.size());
        }
        if (type == ValueType::String || type == ValueType::Vector || type == ValueType::Map ||
            type == ValueType::Struct) {
            FUZZ_CHECK(value.empty() == (value.size() == 0));
        }
        if (type != ValueType::Map && type != ValueType::Struct) {
            FUZZ_CHECK(value.begin() == value.end());
        }
        if (type != ValueType::Vector) {
            FUZZ_CHECK(value.begin_vector() == value.end_vector());
        }
        (void)static_cast<bool>(value);
        (void)static_cast<int>(value);
        (void)static_cast<long>(value);
        (void)static_cast<double>(value);
        (void)static_cast<const char*>(value);
        (void)static_cast<Binary>(value);
    }

    // A miss drops every guarded write and stays an empty Null.
    void poke_miss(Value& miss) {
        switch (input_.ConsumeIntegralInRange(0, 8)) {
            case 0:
                miss = make_value();
                break;
            case 1:
                miss.set(input_.ConsumeIntegral<int>());
                break;
            case 2:
                miss.set_type(any_kind(input_));
                break;
            case 3:
                miss.convert(any_kind(input_));
                break;
            case 4:
                miss << make_value();
                break;
            case 5:
                miss.resize(input_.ConsumeIntegralInRange(0, 8), make_value());
                break;
            case 6:
                FUZZ_CHECK(miss.insert(any_key(input_).c_str(), make_value()) == miss.end());
                break;
            case 7:
                FUZZ_CHECK(miss.remove(input_.ConsumeIntegral<unsigned long>()) ==
                           Quorvane::HMI_E_INVALID_TYPE);
                break;
            default:
                miss.clear();
                break;
        }
        FUZZ_CHECK(miss.type() == ValueType::Null && miss.size() == 0 && miss.empty());
        check_reads(miss);
    }

    void value_step(Value& value) {
        switch (input_.ConsumeIntegralInRange(0, 21)) {
            case 0:
                value = make_value();
                break;
            case 1: {
                // Text and bytes may come from the value itself.
                switch (input_.ConsumeIntegralInRange(0, 9)) {
                    case 0:
                        // Only a String's storage is sure to end in NUL; bytes are not.
                        if (value.type() == ValueType::String) {
                            value.set(value.get_string());
                        }
                        break;
                    case 1:
                        value.set(value.get_binary());
                        break;
                    case 2:
                        value.set(input_.ConsumeBool());
                        break;
                    case 3:
                        value.set(input_.ConsumeIntegral<int>());
                        break;
                    case 4:
                        value.set(input_.ConsumeIntegral<long>());
                        break;
                    case 5:
                        value.set(input_.ConsumeFloatingPoint<double>());
                        break;
                    case 6:
                        value.set(Timestamp(input_.ConsumeIntegral<long>()));
                        break;
                    case 7:
                        value.set(Timespan(input_.ConsumeIntegral<long>()));
                        break;
                    case 8:
                        value.set(input_.ConsumeRandomLengthString(12).c_str());
                        break;
                    default:
                        value = static_cast<Binary>(value);
                        break;
                }
                break;
            }
            case 2:
                value.set_type(any_kind(input_));
                break;
            case 3:
                value.convert(any_kind(input_));
                break;
            case 4:
                check_reads(value);
                break;
            case 5: {
                // Appending the value to itself copies what it was.
                if (input_.ConsumeBool()) {
                    if (weight(value) <= copy_limit) {
                        value << value;
                    }
                } else {
                    value << make_value();
                }
                break;
            }
            case 6:
                value.resize(input_.ConsumeIntegralInRange(0, 12), make_value());
                break;
            case 7: {
                const std::string key = any_key(input_);
                const auto kind = input_.ConsumeIntegralInRange(0, 5);
                Iterator<Value> at;
                if (kind == 0) {
                    at = value.insert(key.c_str(), make_value());
                } else if (kind == 1) {
                    at = value.insert_or_update(key.c_str(), make_value());
                } else if (kind == 2) {
                    at = value.insert(key.c_str(), input_.ConsumeRandomLengthString(8).c_str());
                } else if (kind == 3) {
                    at = value.insert_or_update(key.c_str(), input_.ConsumeIntegral<long>());
                } else if (kind == 4) {
                    at = value.insert(key.c_str(), input_.ConsumeBool());
                } else {
                    at = value.insert_or_update(key.c_str(),
                                                Timespan(input_.ConsumeIntegral<long>()));
                }
                if (value.type() == ValueType::Map || value.type() == ValueType::Struct) {
                    FUZZ_CHECK(at != value.end());
                    FUZZ_CHECK(key == at.name());
                    check_reads(*at);
                } else {
                    FUZZ_CHECK(at == value.end());
                }
                break;
            }
            case 8: {
                // Chains of [] never fail; a write at the end of a miss is dropped.
                Value* node = &value;
                const auto depth = input_.ConsumeIntegralInRange(1, 3);
                for (int i = 0; i < depth; ++i) {
                    if (input_.ConsumeBool()) {
                        node = &(*node)[any_key(input_).c_str()];
                    } else if (input_.ConsumeBool()) {
                        node = &(*node)[input_.ConsumeIntegralInRange<unsigned long>(0, 16)];
                    } else {
                        node = &(*node)[input_.ConsumeIntegralInRange<int>(-2, 16)];
                    }
                }
                const Value& read_only = *node;
                check_reads(read_only);
                if (node != &value && input_.ConsumeBool()) {
                    value_leaf_write(*node);
                }
                break;
            }
            case 9:
                (void)value.remove(input_.ConsumeIntegralInRange<unsigned long>(0, 16));
                break;
            case 10:
                (void)value.remove(input_.ConsumeIntegralInRange<unsigned long>(0, 16),
                                   input_.ConsumeIntegralInRange<unsigned long>(0, 20));
                break;
            case 11:
                walk_map(value);
                break;
            case 12:
                walk_vector(value);
                break;
            case 13:
                value.clear();
                break;
            case 14:
                value.reserve(input_.ConsumeIntegralInRange(0, 64));
                break;
            case 15: {
                const std::string key = any_key(input_);
                const Value& read_only = value;
                auto found = value.find(key.c_str());
                auto const_found = read_only.find(key.c_str());
                FUZZ_CHECK((found == value.end()) == (const_found == read_only.end()));
                if (found != value.end()) {
                    FUZZ_CHECK(key == found.name());
                    FUZZ_CHECK(&*found == &*const_found);
                } else {
                    expect_not_dereferencable([&] { (void)*found; });
                    expect_not_dereferencable([&] { (void)const_found.name(); });
                }
                break;
            }
            case 16: {
                const auto index = input_.ConsumeIntegralInRange<unsigned long>(0, 16);
                const Value& read_only = value;
                auto found = value.find(index);
                auto const_found = read_only.find(index);
                const bool inside = value.type() == ValueType::Vector && index < value.size();
                FUZZ_CHECK((found != value.end_vector()) == inside);
                FUZZ_CHECK((const_found != read_only.end_vector()) == inside);
                if (inside) {
                    FUZZ_CHECK(&*found == &value[index]);
                } else {
                    expect_not_dereferencable([&] { (void)*const_found; });
                }
                break;
            }
            case 17: {
                Value& other = any_value();
                value.swap(other);
                break;
            }
            case 18: {
                Value copy(value);
                FUZZ_CHECK(copy.type() == value.type() && copy.size() == value.size());
                check_reads(copy);
                break;
            }
            case 19: {
                // Misses: an index on anything but a vector, a key on anything but a keyed kind,
                // and positions past the end.
                Value& miss = value.type() == ValueType::Vector
                                  ? value[static_cast<unsigned long>(value.size() + 1)]
                                  : value[0ul];
                poke_miss(miss);
                break;
            }
            case 20: {
                const Value& read_only = value;
                const auto* map = read_only.get_map();
                const auto* vector = read_only.get_vector();
                if (map != nullptr) {
                    for (auto it = map->begin(); it != map->end(); ++it) {
                        check_reads(*it);
                    }
                }
                if (vector != nullptr) {
                    for (auto it = vector->begin(); it != vector->end(); ++it) {
                        check_reads(*it);
                    }
                }
                break;
            }
            default: {
                const Value& read_only = value;
                check_reads(read_only[any_key(input_).c_str()]);
                break;
            }
        }
    }

    void value_leaf_write(Value& leaf) {
        switch (input_.ConsumeIntegralInRange(0, 3)) {
            case 0:
                leaf = make_value();
                break;
            case 1:
                leaf.set(input_.ConsumeRandomLengthString(8).c_str());
                break;
            case 2:
                leaf << make_value();
                break;
            default:
                leaf.insert(any_key(input_).c_str(), make_value());
                break;
        }
    }

    // Walks a map in key order, reading, removing under the iterator, and stepping past both ends.
    void walk_map(Value& value) {
        const bool keyed = value.type() == ValueType::Map || value.type() == ValueType::Struct;
        std::string previous;
        bool first = true;
        for (auto it = value.begin(); it != value.end();) {
            const std::string key = it.name();
            FUZZ_CHECK(first || previous < key);
            first = false;
            previous = key;
            check_reads(*it);
            if (input_.ConsumeBool()) {
                const auto size = value.size();
                it = value.remove(it);
                FUZZ_CHECK(value.size() == size - 1);
                continue;
            }
            ++it;
        }
        auto end = value.end();
        expect_not_dereferencable([&] { (void)*end; });
        expect_not_dereferencable([&] { (void)end.name(); });
        ++end;
        FUZZ_CHECK(end == value.end());
        FUZZ_CHECK(value.remove(end) == value.end());
        // An empty handle and a position of another map erase nothing.
        const auto size = value.size();
        Value other;
        other.insert(any_key(input_).c_str(), make_value());
        FUZZ_CHECK(value.remove(Iterator<Value>()) == value.end());
        FUZZ_CHECK(value.remove(other.begin()) == value.end());
        FUZZ_CHECK(value.size() == size && other.size() == 1);
        auto back = value.end();
        --back;
        if (keyed && value.size() > 0) {
            check_reads(*back);
            auto begin = value.begin();
            --begin;
            FUZZ_CHECK(begin == value.begin());
        }
        ConstIterator<Value> const_end = static_cast<const Value&>(value).end();
        expect_not_dereferencable([&] { (void)*const_end; });
    }

    // Walks a vector within its bounds; inserts and removes at own, end and foreign positions.
    void walk_vector(Value& value) {
        const bool is_vector = value.type() == ValueType::Vector;
        const unsigned long size = is_vector ? value.size() : 0;
        switch (input_.ConsumeIntegralInRange(0, 5)) {
            case 0: {
                auto it = value.begin_vector();
                for (unsigned long i = 0; i < size; ++i, ++it) {
                    FUZZ_CHECK(&*it == &value[i]);
                    FUZZ_CHECK(it->type() == value[i].type());
                    FUZZ_CHECK(*it.name() == '\0');
                }
                FUZZ_CHECK(it == value.end_vector());
                FUZZ_CHECK(value.end_vector() - value.begin_vector() == static_cast<long>(size));
                expect_not_dereferencable([&] { (void)*it; });
                FUZZ_CHECK(*it.name() == '\0');
                break;
            }
            case 1: {
                const auto at = input_.ConsumeIntegralInRange<unsigned long>(0, size);
                auto position = value.begin_vector() + at;
                VectorIterator<Value> inserted;
                switch (input_.ConsumeIntegralInRange(0, 4)) {
                    case 0:
                        inserted =
                            value.insert(position, input_.ConsumeRandomLengthString(8).c_str());
                        break;
                    case 1:
                        inserted = value.insert(position, input_.ConsumeIntegral<long>());
                        break;
                    case 2: {
                        std::string bytes = input_.ConsumeRandomLengthString(8);
                        inserted = value.insert(
                            position,
                            Binary{bytes.size(), reinterpret_cast<unsigned char*>(&bytes[0])});
                        break;
                    }
                    case 3:
                        inserted =
                            value.insert(position, Timestamp(input_.ConsumeIntegral<long>()));
                        break;
                    default:
                        inserted = value.insert(position, make_value());
                        break;
                }
                if (is_vector) {
                    FUZZ_CHECK(value.size() == size + 1);
                    FUZZ_CHECK(&*inserted == &value[at]);
                } else {
                    FUZZ_CHECK(inserted == value.end_vector());
                }
                break;
            }
            case 2: {
                const auto at = input_.ConsumeIntegralInRange<unsigned long>(0, size);
                auto next = value.remove(value.begin_vector() + at);
                if (at < size) {
                    FUZZ_CHECK(value.size() == size - 1);
                    FUZZ_CHECK(next - value.begin_vector() == static_cast<long>(at));
                } else {
                    FUZZ_CHECK(next == value.end_vector());
                }
                break;
            }
            case 3: {
                // A position of another vector appends on insert and erases nothing on remove.
                Value other;
                other << make_value() << make_value();
                VectorIterator<Value> foreign;
                if (input_.ConsumeBool()) {
                    foreign = other.begin_vector();
                    if (input_.ConsumeBool()) {
                        ++foreign;
                    }
                }
                if (input_.ConsumeBool()) {
                    value.insert(foreign, make_value());
                    if (is_vector) {
                        FUZZ_CHECK(value.size() == size + 1);
                    }
                } else {
                    FUZZ_CHECK(value.remove(foreign) == value.end_vector());
                    if (is_vector) {
                        FUZZ_CHECK(value.size() == size);
                    }
                }
                FUZZ_CHECK(other.size() == 2);
                break;
            }
            case 4: {
                if (size == 0) {
                    break;
                }
                const auto at = input_.ConsumeIntegralInRange<unsigned long>(0, size - 1);
                auto it = value.begin_vector();
                it += at;
                FUZZ_CHECK(&it[0] == &value[at]);
                auto copy = it;
                if (at > 0) {
                    it--;
                    FUZZ_CHECK(copy - it == 1);
                }
                it = copy - at;
                FUZZ_CHECK(it == value.begin_vector());
                FUZZ_CHECK(it <= copy && copy >= it && (at == 0 || (it < copy && copy > it)));
                ConstVectorIterator<Value> reading(copy);
                FUZZ_CHECK(&*reading == &value[at]);
                FUZZ_CHECK(reading->type() == value[at].type());
                break;
            }
            default: {
                const Value& read_only = value;
                auto it = read_only.begin_vector();
                auto end = read_only.end_vector();
                FUZZ_CHECK(end - it == static_cast<long>(size));
                it += size;
                FUZZ_CHECK(it == end);
                if (size > 0) {
                    it -= 1;
                    check_reads(*it);
                }
                break;
            }
        }
    }

    // A cleaned-up container takes nothing but create() and cleanup(): one of them is done, and
    // the answer is whether the container may be used in this step.
    template <class Container>
    bool revive(Container& container, bool& live) {
        if (live) {
            return true;
        }
        if (input_.ConsumeBool()) {
            container.create();
            live = true;
        } else {
            container.cleanup();
        }
        return false;
    }

    void vector_step() {
        const int which = input_.ConsumeIntegralInRange(0, 1);
        Vector<Value>& vector = vectors_[which];
        bool& live = vectors_live_[which];
        if (!revive(vector, live)) {
            return;
        }
        const unsigned long size = vector.size();
        switch (input_.ConsumeIntegralInRange(0, 11)) {
            case 0: {
                const Value* added = vector.add(make_value());
                FUZZ_CHECK(added == vector.get(size));
                break;
            }
            case 1:
                FUZZ_CHECK(vector.add() != nullptr && vector.size() == size + 1);
                break;
            case 2: {
                const auto index = input_.ConsumeIntegralInRange<std::size_t>(0, size + 2);
                Value* element = vector.add(index);
                FUZZ_CHECK(element == vector.get(index < size ? index : size));
                break;
            }
            case 3: {
                const auto index = input_.ConsumeIntegral<std::size_t>();
                const ErrorValue result = vector.remove(index);
                FUZZ_CHECK((result == Quorvane::HMI_E_SUCCESS) == (index < size));
                break;
            }
            case 4: {
                const auto first = input_.ConsumeIntegralInRange<std::size_t>(0, size + 2);
                const auto last = input_.ConsumeIntegral<std::size_t>() % (size + 4);
                (void)vector.remove(first, last);
                FUZZ_CHECK(vector.size() <= size);
                break;
            }
            case 5: {
                const auto at = input_.ConsumeIntegralInRange<unsigned long>(0, size);
                auto position = vector.find(at);
                vector.insert(position, make_value());
                FUZZ_CHECK(vector.size() == size + 1);
                break;
            }
            case 6: {
                // A position of another vector appends on insert and erases nothing on remove.
                Vector<Value> other;
                other.add(make_value());
                vector.insert(other.begin(), make_value());
                FUZZ_CHECK(vector.size() == size + 1);
                FUZZ_CHECK(vector.remove(other.begin()) == vector.end());
                FUZZ_CHECK(vector.size() == size + 1 && other.size() == 1);
                // So do an empty handle, which also compares as no position at all.
                const VectorIterator<Value> nowhere;
                vector.insert(nowhere, make_value());
                FUZZ_CHECK(vector.size() == size + 2);
                FUZZ_CHECK(vector.remove(nowhere) == vector.end());
                FUZZ_CHECK(!(nowhere == vector.begin()));
                FUZZ_CHECK(!(nowhere < vector.end()) && !(vector.begin() < nowhere));
                FUZZ_CHECK(!(nowhere >= vector.end()) && !(vector.begin() <= nowhere));
                break;
            }
            case 7:
                FUZZ_CHECK(vector.clear() == Quorvane::HMI_E_SUCCESS && vector.empty());
                break;
            case 8:
                FUZZ_CHECK(vector.reserve(input_.ConsumeIntegralInRange(0, 64)) ==
                           Quorvane::HMI_E_SUCCESS);
                break;
            case 9: {
                const Vector<Value> copy(vector);
                FUZZ_CHECK(copy.size() == size);
                for (unsigned long i = 0; i < size; ++i) {
                    FUZZ_CHECK(copy.get(i)->type() == vector.get(i)->type());
                }
                // A cleaned-up vector takes nothing but create(), so only a live one is assigned.
                const int target = input_.ConsumeIntegralInRange(0, 1);
                if (vectors_live_[target]) {
                    vectors_[target] = copy;
                }
                break;
            }
            case 10: {
                vector.cleanup();
                live = false;
                // After cleanup a positional remove is still allowed and gives an empty handle.
                Vector<Value> source;
                source.add(make_value());
                (void)vector.remove(source.begin());
                break;
            }
            default: {
                const auto index = input_.ConsumeIntegralInRange<unsigned long>(0, size + 1);
                auto found = vector.find(index);
                FUZZ_CHECK((found == vector.end()) == (index >= size));
                if (index < size) {
                    auto next = vector.remove(found);
                    FUZZ_CHECK(vector.size() == size - 1);
                    FUZZ_CHECK(next - vector.begin() == static_cast<long>(index));
                } else {
                    FUZZ_CHECK(vector.remove(found) == vector.end());
                }
                break;
            }
        }
    }

    void map_step() {
        const int which = input_.ConsumeIntegralInRange(0, 1);
        Map<Value>& map = maps_[which];
        bool& live = maps_live_[which];
        if (!revive(map, live)) {
            return;
        }
        const std::string key = any_key(input_);
        const unsigned long size = map.size();
        const bool had = map.get(key.c_str()) != nullptr;
        switch (input_.ConsumeIntegralInRange(0, 10)) {
            case 0: {
                auto at = map.insert(key.c_str(), make_value());
                FUZZ_CHECK(key == at.name() && map.size() == size + (had ? 0 : 1));
                break;
            }
            case 1: {
                const Value item = make_value();
                auto at = map.insert_or_update(key.c_str(), item);
                FUZZ_CHECK(key == at.name() && at->type() == item.type());
                break;
            }
            case 2: {
                const Value* added = map.add(key.c_str(), make_value());
                FUZZ_CHECK(added == map.get(key.c_str()));
                break;
            }
            case 3:
                FUZZ_CHECK(map.add(key.c_str()) != nullptr);
                FUZZ_CHECK(map.size() == size + (had ? 0 : 1));
                break;
            case 4:
                FUZZ_CHECK((map.remove(key.c_str()) == Quorvane::HMI_E_SUCCESS) == had);
                break;
            case 5: {
                auto found = map.find(key.c_str());
                FUZZ_CHECK((found != map.end()) == had);
                auto next = map.remove(found);
                FUZZ_CHECK(map.size() == size - (had ? 1 : 0));
                if (next != map.end()) {
                    FUZZ_CHECK(key < next.name());
                }
                break;
            }
            case 6: {
                Map<Value> other;
                other.add(key.c_str(), make_value());
                FUZZ_CHECK(map.remove(other.begin()) == map.end());
                FUZZ_CHECK(map.size() == size && other.size() == 1);
                const Iterator<Value> nowhere;
                FUZZ_CHECK(map.remove(nowhere) == map.end());
                FUZZ_CHECK(!(nowhere == map.begin()) && map.size() == size);
                break;
            }
            case 7: {
                auto it = map.begin();
                const auto steps = input_.ConsumeIntegral<std::size_t>() % (size + 3);
                if (steps < size) {
                    check_reads(it[steps]);
                } else {
                    expect_not_dereferencable([&] { (void)it[steps]; });
                }
                auto end = map.end();
                --end;
                ++end;
                FUZZ_CHECK(end == map.end());
                break;
            }
            case 8:
                FUZZ_CHECK(map.clear() == Quorvane::HMI_E_SUCCESS && map.empty());
                FUZZ_CHECK(map.reserve(4) == Quorvane::HMI_E_NOT_IMPLEMENTED);
                break;
            case 9: {
                const Map<Value> copy(map);
                FUZZ_CHECK(copy.size() == size);
                const int target = input_.ConsumeIntegralInRange(0, 1);
                if (maps_live_[target]) {
                    maps_[target] = copy;
                }
                break;
            }
            default: {
                map.cleanup();
                live = false;
                Map<Value> source;
                source.add("k", make_value());
                (void)map.remove(source.begin());
                break;
            }
        }
    }

    void command_step() {
        Command& command = commands_[input_.ConsumeIntegralInRange(0, 1)];
        const std::string text = any_key(input_);
        switch (input_.ConsumeIntegralInRange(0, 13)) {
            case 0:
                command.set_name(text.c_str());
                FUZZ_CHECK(text == command.name());
                break;
            case 1:
                command.set_customer_data(text.c_str());
                command.set_result_string(text.c_str());
                FUZZ_CHECK(text == command.result_string());
                break;
            case 2:
                command.set_extension_result(input_.ConsumeIntegral<unsigned int>());
                command.set_options(
                    static_cast<Quorvane::CommandOption>(input_.ConsumeIntegral<std::uint32_t>()));
                break;
            case 3: {
                const bool changed = input_.ConsumeBool();
                command.set_changed(changed);
                FUZZ_CHECK(command.changed() == changed);
                break;
            }
            case 4: {
                Quorvane::ICommandMapper* mapper = command.mapper();
                mapper->set_path(text.c_str());
                mapper->set_symbol_name(text.c_str());
                mapper->set_mapping(text.c_str());
                mapper->set_domain(text.c_str());
                FUZZ_CHECK(text == command.path() && text == mapper->symbol_name());
                FUZZ_CHECK(text == command.mapping() && text == command.domain());
                break;
            }
            case 5: {
                Quorvane::ICommandMapper* mapper = command.mapper();
                const auto before = command.result();
                const auto result = static_cast<ErrorValue>(input_.ConsumeIntegral<std::int32_t>());
                const bool was_changed = command.changed();
                mapper->set_result(result);
                FUZZ_CHECK(command.result() == result);
                FUZZ_CHECK(command.changed() == (result != before || was_changed));
                mapper->set_flags(static_cast<Quorvane::InternalCommandOption>(
                    input_.ConsumeIntegral<std::uint32_t>()));
                mapper->set_last_sent(input_.ConsumeIntegral<long>());
                mapper->set_hash(input_.ConsumeIntegral<unsigned int>());
                break;
            }
            case 6:
                command.set_read_value(make_value());
                value_step(command.read_value());
                break;
            case 7:
                command.set_write_value(make_value());
                value_step(command.write_value());
                break;
            case 8:
                value_step(command.paging());
                FUZZ_CHECK(command.has_paging() == !command.paging().empty());
                break;
            case 9:
                command.mapper()->set_symbol_options(make_value());
                value_step(command.symbol_options());
                FUZZ_CHECK(command.has_symbol_options() == !command.symbol_options().empty());
                break;
            case 10: {
                command.set_processed_start(Timestamp(input_.ConsumeIntegral<long>()));
                command.set_processed_end();
                const Command& read_only = command;
                check_reads(read_only.read_value());
                check_reads(read_only.write_value());
                check_reads(read_only.paging());
                check_reads(read_only.symbol_options());
                break;
            }
            case 11: {
                const Command copy(command);
                FUZZ_CHECK(copy == command && copy.changed() == command.changed());
                FUZZ_CHECK(std::strcmp(copy.path(), command.path()) == 0);
                FUZZ_CHECK(copy.has_paging() == command.has_paging());
                commands_[input_.ConsumeIntegralInRange(0, 1)] = copy;
                break;
            }
            case 12:
                command.swap(commands_[input_.ConsumeIntegralInRange(0, 1)]);
                break;
            default: {
                CommandGroup& group = groups_[input_.ConsumeIntegralInRange(0, 1)];
                group.insert(group.find(input_.ConsumeIntegralInRange<unsigned long>(0, 4)),
                             command);
                break;
            }
        }
    }

    void group_step() {
        CommandGroup& group = groups_[input_.ConsumeIntegralInRange(0, 1)];
        const unsigned long size = group.size();
        switch (input_.ConsumeIntegralInRange(0, 9)) {
            case 0: {
                const auto at = input_.ConsumeIntegralInRange<unsigned long>(0, size + 1);
                auto inserted = group.insert(group.find(at), Command(any_key(input_).c_str()));
                FUZZ_CHECK(group.size() == size + 1);
                FUZZ_CHECK(&*inserted == &group[at < size ? at : size]);
                break;
            }
            case 1: {
                const auto at = input_.ConsumeIntegralInRange<unsigned long>(0, size + 1);
                auto next = group.remove(group.find(at));
                FUZZ_CHECK(group.size() == (at < size ? size - 1 : size));
                if (at >= size) {
                    FUZZ_CHECK(next == group.end_vector());
                }
                break;
            }
            case 2: {
                // Past the end answers the shared empty command, which drops writes.
                Command& miss = group[size + input_.ConsumeIntegralInRange<unsigned long>(0, 4)];
                FUZZ_CHECK(!miss.isset());
                miss.set_name(any_key(input_).c_str());
                miss.set_read_value(make_value());
                miss.read_value() = make_value();
                poke_miss(miss.write_value());
                FUZZ_CHECK(!miss.has_paging() && !miss.has_symbol_options());
                FUZZ_CHECK(miss.processed_start() == Timestamp());
                break;
            }
            case 3:
                if (size > 0) {
                    Command& command =
                        group[input_.ConsumeIntegralInRange<unsigned long>(0, size - 1)];
                    FUZZ_CHECK(command.isset());
                    command.set_result_string(any_key(input_).c_str());
                    command.write_value() << make_value();
                }
                break;
            case 4: {
                const CommandGroup& read_only = group;
                unsigned long count = 0;
                for (auto it = read_only.begin_vector(); it != read_only.end_vector(); ++it) {
                    FUZZ_CHECK(it->isset());
                    ++count;
                }
                FUZZ_CHECK(count == size);
                auto end = group.end_vector();
                expect_not_dereferencable([&] { (void)*end; });
                break;
            }
            case 5: {
                const CommandGroup copy(group);
                FUZZ_CHECK(copy == group && copy.size() == size);
                groups_[input_.ConsumeIntegralInRange(0, 1)] = copy;
                break;
            }
            case 6:
                group.set_domain(any_key(input_).c_str());
                group.set_result(input_.ConsumeIntegral<unsigned int>());
                group.mapper()->set_flags(static_cast<Quorvane::CommandGroupFlags>(
                    input_.ConsumeIntegral<std::uint32_t>()));
                group.mapper()->set_change_state(static_cast<Quorvane::MapperChangeState>(
                    input_.ConsumeIntegral<std::int32_t>()));
                break;
            case 7:
                group.reserve(input_.ConsumeIntegralInRange(0, 32));
                break;
            case 8:
                group.clear();
                FUZZ_CHECK(group.empty());
                break;
            default:
                group.swap(groups_[input_.ConsumeIntegralInRange(0, 1)]);
                break;
        }
    }

    void session_step() {
        Session& session = context_.session();
        const std::string text = any_key(input_);
        switch (input_.ConsumeIntegralInRange(0, 5)) {
            case 0:
                session.set_id(text.c_str());
                session.set_user(text.c_str());
                FUZZ_CHECK(text == session.id() && text == session.user());
                break;
            case 1: {
                // Without a host the stored language answers, or "en" when there is none.
                session.set_locale(text.c_str());
                const std::string locale = session.locale();
                const bool fallback = text.empty() || text == "client";
                FUZZ_CHECK(locale == (fallback ? std::string("en") : text));
                break;
            }
            case 2:
                session.set_socket_id(input_.ConsumeIntegral<unsigned int>());
                session.set_endpoint_info(
                    static_cast<Quorvane::EndpointInfo>(input_.ConsumeIntegral<std::uint8_t>()));
                break;
            case 3: {
                const Session copy(session);
                FUZZ_CHECK(copy == session);
                FUZZ_CHECK(std::strcmp(copy.locale(), session.locale()) == 0);
                break;
            }
            case 4: {
                context_.set_domain(text.c_str());
                context_.set_hash(input_.ConsumeIntegral<unsigned int>());
                context_.set_subscription_id(input_.ConsumeIntegral<unsigned int>());
                context_.set_request_type(
                    static_cast<Quorvane::RequestType>(input_.ConsumeIntegral<std::int32_t>()));
                break;
            }
            default: {
                Context copy(context_);
                FUZZ_CHECK(copy == context_);
                copy.set_session(Session());
                context_ = copy;
                break;
            }
        }
    }

    // Time handles from any count, and the small text and result handles.
    void handle_step() {
        const long count = input_.ConsumeIntegral<long>();
        const Timestamp stamps[] = {
            Timestamp(count), Timestamp::from_unix_time(static_cast<int>(count)),
            Timestamp::from_file_time(count), Timestamp::from_milliseconds(count)};
        for (const Timestamp& stamp : stamps) {
            const Timestamp copy = stamp;
            FUZZ_CHECK(copy == stamp && !(copy != stamp));
            FUZZ_CHECK(stamp.seconds() == stamp.nanoseconds() / 1000000000);
            FUZZ_CHECK(stamp.milliseconds() == stamp.nanoseconds() / 1000000);
        }
        FUZZ_CHECK(Timestamp::from_unix_time(static_cast<int>(count)).seconds() ==
                   static_cast<int>(count));
        const Timespan span(count);
        FUZZ_CHECK(span.seconds() == count / 1000000000 && Timespan(span) == span);

        const std::string text = any_key(input_);
        Quorvane::String name(text.c_str());
        Quorvane::String other;
        name.swap(other);
        FUZZ_CHECK(text == other.name() && *name.name() == '\0' && name.isset());
        other.set_name(name.name());
        FUZZ_CHECK(*other.name() == '\0');

        const auto code = static_cast<ErrorValue>(input_.ConsumeIntegral<std::int32_t>());
        Quorvane::ResultPair result(code, text.c_str());
        Quorvane::ResultPair copy(result);
        FUZZ_CHECK(copy == result && copy == code && text == copy.text());
        copy.set_text(any_key(input_).c_str());
        copy.set_result(static_cast<ErrorValue>(input_.ConsumeIntegral<std::int32_t>()));
        result = copy;
        FUZZ_CHECK(result == copy);
    }

    void step() {
        switch (input_.ConsumeIntegralInRange(0, 7)) {
            case 0:
            case 1:
            case 2:
                value_step(any_value());
                break;
            case 3:
                vector_step();
                break;
            case 4:
                map_step();
                break;
            case 5:
                command_step();
                group_step();
                break;
            case 6:
                handle_step();
                break;
            default:
                session_step();
                break;
        }
    }

    FuzzedDataProvider& input_;
    Value values_[pool_size];
    Vector<Value> vectors_[2];
    bool vectors_live_[2] = {true, true};
    Map<Value> maps_[2];
    bool maps_live_[2] = {true, true};
    Command commands_[2];
    CommandGroup groups_[2];
    Context context_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Program program(input);
    program.run();
    return 0;
}
