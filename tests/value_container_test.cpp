#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "allocation_count.h"

#include <cstdlib>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

using Quorvane::Binary;
using Quorvane::ConstIterator;
using Quorvane::ConstVectorIterator;
using Quorvane::Iterator;
using Quorvane::Timespan;
using Quorvane::Timestamp;
using Quorvane::Value;
using Quorvane::ValueType;
using Quorvane::VectorIterator;

namespace {

unsigned char kBytes[] = {1, 2, 3};

Binary three_bytes() {
    return Binary{3, kBytes};
}

// The shared empty value, reached the way an extension reaches it: by a miss.
Value& shared_empty() {
    Value probe;
    return probe["missing"];
}

Value vector_of(std::initializer_list<int> numbers) {
    Value value;
    for (int number : numbers) {
        value << Value(number);
    }
    return value;
}

Value struct_of(std::initializer_list<const char*> keys) {
    Value value;
    int number = 1;
    for (const char* key : keys) {
        value.insert(key, Value(number++));
    }
    return value;
}

Value map_of(std::initializer_list<const char*> keys) {
    Value value = struct_of(keys);
    value.set_type(ValueType::Map);
    return value;
}

Value retagged_any(Value value) {
    value.set_type(ValueType::Any);
    return value;
}

// One value of every kind, and of Any over each storage.
struct Sample {
    const char* name;
    Value value;
};

std::vector<Sample> samples() {
    return {
        {"Null", Value()},
        {"Bool", Value(true)},
        {"Int", Value(0)},
        {"Double", Value(1.5)},
        {"String", Value("abc")},
        {"Vector", vector_of({1, 2})},
        {"Map", map_of({"a", "b"})},
        {"Struct", struct_of({"a", "b"})},
        {"Binary", Value(three_bytes())},
        {"Int64", Value(5L)},
        {"DateTime", Value(Timestamp(5))},
        {"TimeSpan", Value(Timespan(5))},
        {"Any over a map", retagged_any(struct_of({"a", "b"}))},
        {"Any over a vector", retagged_any(vector_of({1, 2}))},
        {"Any over a text", retagged_any(Value("abc"))},
    };
}

const Value& read_only(const Value& value) {
    return value;
}

// The end of the shared always-empty map and vector, as a Null hands them out.
Iterator<Value> shared_map_end() {
    return Value().end();
}
VectorIterator<Value> shared_vector_end() {
    return Value().end_vector();
}

std::vector<int> numbers_in(const Value& value) {
    std::vector<int> result;
    for (ConstVectorIterator<Value> at = value.begin_vector(); at != value.end_vector(); ++at) {
        result.push_back(at->get_int32());
    }
    return result;
}

std::vector<std::string> keys_in(const Value& value) {
    std::vector<std::string> result;
    for (ConstIterator<Value> at = value.begin(); at != value.end(); ++at) {
        result.push_back(at.name());
    }
    return result;
}

// A description of everything a value holds, down the whole tree, for telling "unchanged".
std::string snapshot(const Value& value) {
    // The bytes of a Binary carry no terminator, so they are read through their view.
    const Binary bytes = value.get_binary();
    const std::string text =
        value.type() == ValueType::Binary
            ? std::string(reinterpret_cast<const char*>(bytes.bytes), bytes.size)
            : std::string(value.get_string());
    std::string result = std::to_string(static_cast<int>(value.type())) + ":" + text + ":" +
                         std::to_string(value.get_int32()) + ":" +
                         std::to_string(value.get_int64()) + ":" +
                         std::to_string(value.get_double()) + ":" + std::to_string(value.size());
    if (const Quorvane::Vector<Value>* vector = value.get_vector()) {
        for (unsigned long index = 0; index < vector->size(); ++index) {
            result += "[" + snapshot(*vector->get(index)) + "]";
        }
    }
    if (const Quorvane::Map<Value>* map = value.get_map()) {
        for (ConstIterator<Value> at = map->begin(); at != map->end(); ++at) {
            result += "{" + std::string(at.name()) + "=" + snapshot(*at) + "}";
        }
    }
    return result;
}

}  // namespace

// ---- storage ------------------------------------------------------------------------------

TEST(ValueContainer, NewValueHoldsNoContainer) {
    Value value;
    EXPECT_EQ(value.get_map(), nullptr);
    EXPECT_EQ(value.get_vector(), nullptr);
    EXPECT_EQ(read_only(value).get_map(), nullptr);
    EXPECT_EQ(read_only(value).get_vector(), nullptr);
    EXPECT_EQ(value.size(), 0u);
    EXPECT_TRUE(value.empty());
}

TEST(ValueContainer, ContainerReadsByKind) {
    const struct {
        const char* name;
        bool map;
        bool vector;
    } rows[] = {
        {"Null", false, false},
        {"Bool", false, false},
        {"Int", false, false},
        {"Double", false, false},
        {"String", false, false},
        {"Vector", false, true},
        {"Map", true, false},
        {"Struct", true, false},
        {"Binary", false, false},
        {"Int64", false, false},
        {"DateTime", false, false},
        {"TimeSpan", false, false},
        {"Any over a map", true, false},
        {"Any over a vector", false, true},
        {"Any over a text", false, false},
    };
    std::vector<Sample> values = samples();
    ASSERT_EQ(values.size(), sizeof rows / sizeof rows[0]);
    for (std::size_t index = 0; index < values.size(); ++index) {
        Value& value = values[index].value;
        EXPECT_STREQ(values[index].name, rows[index].name);
        EXPECT_EQ(value.get_map() != nullptr, rows[index].map) << rows[index].name;
        EXPECT_EQ(read_only(value).get_map() != nullptr, rows[index].map) << rows[index].name;
        EXPECT_EQ(value.get_vector() != nullptr, rows[index].vector) << rows[index].name;
        EXPECT_EQ(read_only(value).get_vector() != nullptr, rows[index].vector) << rows[index].name;
    }
}

TEST(ValueContainer, MapAndStructAnswerAlikeButKeepTheirKinds) {
    Value map = map_of({"a"});
    Value record = struct_of({"a"});
    EXPECT_EQ(map.type(), ValueType::Map);
    EXPECT_EQ(record.type(), ValueType::Struct);
    ASSERT_NE(map.get_map(), nullptr);
    ASSERT_NE(record.get_map(), nullptr);
    EXPECT_EQ(map.get_map()->size(), record.get_map()->size());
    EXPECT_EQ(map["a"].get_int32(), record["a"].get_int32());
}

TEST(ValueContainer, ContainerReadGivesTheStoredContainer) {
    Value value = vector_of({4, 5});
    ASSERT_NE(value.get_vector(), nullptr);
    value.get_vector()->add(Value(6));
    EXPECT_EQ(numbers_in(value), (std::vector<int>{4, 5, 6}));
    Value record = struct_of({"a"});
    record.get_map()->insert("b", Value(2));
    EXPECT_EQ(keys_in(record), (std::vector<std::string>{"a", "b"}));
}

TEST(ValueContainer, CopyIsDeep) {
    Value tree = struct_of({"a"});
    tree.insert("list", vector_of({1, 2}));
    Value copy(tree);
    copy["list"][0] = 9;
    copy["a"] = 7;
    EXPECT_EQ(tree["list"][0].get_int32(), 1);
    EXPECT_EQ(tree["a"].get_int32(), 1);
    EXPECT_EQ(copy["list"][0].get_int32(), 9);
    Value assigned;
    assigned = tree;
    tree["list"] << Value(3);
    EXPECT_EQ(assigned["list"].size(), 2u);
}

TEST(ValueContainer, RetaggingToContainerKinds) {
    Value vector = vector_of({1});
    vector.set_type(ValueType::Struct);
    EXPECT_EQ(vector.type(), ValueType::Struct);
    EXPECT_EQ(vector.size(), 0u);

    Value map = map_of({"a"});
    map.set_type(ValueType::Struct);
    EXPECT_EQ(keys_in(map), (std::vector<std::string>{"a"}));
    map.set_type(ValueType::Map);
    EXPECT_EQ(keys_in(map), (std::vector<std::string>{"a"}));
    map.set_type(ValueType::Vector);
    EXPECT_EQ(map.type(), ValueType::Vector);
    EXPECT_EQ(map.size(), 0u);

    Value any_map = retagged_any(struct_of({"a"}));
    ASSERT_NE(any_map.get_map(), nullptr);
    any_map.set_type(ValueType::Map);
    EXPECT_EQ(keys_in(any_map), (std::vector<std::string>{"a"}));

    Value any_vector = retagged_any(vector_of({1, 2}));
    any_vector.set_type(ValueType::Vector);
    EXPECT_EQ(numbers_in(any_vector), (std::vector<int>{1, 2}));

    Value any_text = retagged_any(Value("x"));
    any_text.set_type(ValueType::Vector);
    EXPECT_EQ(any_text.type(), ValueType::Vector);
    EXPECT_TRUE(any_text.empty());

    Value fresh;
    fresh.set_type(ValueType::Map);
    ASSERT_NE(fresh.get_map(), nullptr);
    EXPECT_TRUE(fresh.empty());
}

// ---- indexing -----------------------------------------------------------------------------

TEST(ValueIndexing, NumberOnAVector) {
    Value value = vector_of({10, 20});
    EXPECT_EQ(value[0].get_int32(), 10);
    EXPECT_EQ(value[1UL].get_int32(), 20);
    EXPECT_EQ(&read_only(value)[1], value.get_vector()->get(1));
    EXPECT_EQ(&read_only(value)[0UL], value.get_vector()->get(0));
    EXPECT_EQ(&value[2], &shared_empty());
    EXPECT_EQ(&value[2UL], &shared_empty());
    EXPECT_EQ(&value[-1], &shared_empty());
    EXPECT_EQ(&read_only(value)[-1], &shared_empty());
    EXPECT_EQ(&read_only(value)[7UL], &shared_empty());
    EXPECT_EQ(value.size(), 2u);
}

TEST(ValueIndexing, KeyOnAMapAndAStruct) {
    for (Value value : {map_of({"a", "b"}), struct_of({"a", "b"})}) {
        EXPECT_EQ(value["b"].get_int32(), 2);
        EXPECT_EQ(&read_only(value)["a"], value.get_map()->get("a"));
        EXPECT_EQ(&value["c"], &shared_empty());
        EXPECT_EQ(&value["A"], &shared_empty());
        EXPECT_EQ(&read_only(value)["c"], &shared_empty());
        EXPECT_EQ(value.size(), 2u);
    }
}

TEST(ValueIndexing, WrongKindsMiss) {
    // A number answers only on a Vector, a key only on a Map or Struct; an Any never answers.
    for (Sample& sample : samples()) {
        const ValueType kind = sample.value.type();
        Value& value = sample.value;
        if (kind != ValueType::Vector) {
            EXPECT_EQ(&value[0], &shared_empty()) << sample.name;
            EXPECT_EQ(&value[0UL], &shared_empty()) << sample.name;
            EXPECT_EQ(&read_only(value)[0], &shared_empty()) << sample.name;
            EXPECT_EQ(&read_only(value)[0UL], &shared_empty()) << sample.name;
        }
        if (kind != ValueType::Map && kind != ValueType::Struct) {
            EXPECT_EQ(&value["a"], &shared_empty()) << sample.name;
            EXPECT_EQ(&read_only(value)["a"], &shared_empty()) << sample.name;
        }
    }
}

TEST(ValueIndexing, WritingThroughAMissIsDropped) {
    Value value;
    value["key"] = 5;
    value[3] = 5;
    EXPECT_EQ(value.type(), ValueType::Null);
    EXPECT_EQ(shared_empty().type(), ValueType::Null);
    Value record = struct_of({"a"});
    record["b"] = "text";
    record["a"]["deeper"][2] = 1.5;
    EXPECT_EQ(keys_in(record), (std::vector<std::string>{"a"}));
    EXPECT_EQ(record["a"].get_int32(), 1);
    EXPECT_EQ(shared_empty().type(), ValueType::Null);
}

TEST(ValueIndexing, ChainsMixKeysAndNumbers) {
    Value tree;
    tree.insert("list", vector_of({1}));
    tree["list"] << struct_of({"x"});
    EXPECT_EQ(tree["list"][1]["x"].get_int32(), 1);
    EXPECT_EQ(&tree["list"][5]["x"][0]["y"], &shared_empty());
    EXPECT_EQ(&tree["nothing"]["x"], &shared_empty());
}

TEST(ValueIndexing, ElementsCanBeAssignedAndRead) {
    Value value = vector_of({1, 2});
    value[1] = "two";
    EXPECT_STREQ(value[1].get_string(), "two");
    Value record = struct_of({"a"});
    record["a"] = vector_of({3});
    EXPECT_EQ(record["a"][0].get_int32(), 3);
}

// ---- adding -------------------------------------------------------------------------------

TEST(ValueAdding, StreamingOnNullMakesAVector) {
    Value value;
    value << Value(1) << Value("x");
    EXPECT_EQ(value.type(), ValueType::Vector);
    EXPECT_EQ(value.size(), 2u);
    EXPECT_EQ(value[0].get_int32(), 1);
    EXPECT_STREQ(value[1].get_string(), "x");
}

TEST(ValueAdding, StreamingOnOtherKindsDoesNothing) {
    for (Sample& sample : samples()) {
        const ValueType kind = sample.value.type();
        if (kind == ValueType::Null || kind == ValueType::Vector) {
            continue;
        }
        const std::string before = snapshot(sample.value);
        Value& result = sample.value << Value(1);
        EXPECT_EQ(&result, &sample.value);
        EXPECT_EQ(sample.value.type(), kind) << sample.name;
        EXPECT_EQ(snapshot(sample.value), before) << sample.name;
    }
}

TEST(ValueAdding, StreamingAValueIntoItselfAppendsACopy) {
    Value value = vector_of({1});
    value << value;
    EXPECT_EQ(value.size(), 2u);
    EXPECT_EQ(value[1][0].get_int32(), 1);
    for (int round = 0; round < 5; ++round) {
        value << value[0];
    }
    EXPECT_EQ(value.size(), 7u);
    EXPECT_EQ(value[6].get_int32(), 1);
}

TEST(ValueAdding, ResizeOnNullMakesAVectorOfFills) {
    Value value;
    value.resize(2, Value("fill"));
    EXPECT_EQ(value.type(), ValueType::Vector);
    ASSERT_EQ(value.size(), 2u);
    EXPECT_STREQ(value[0].get_string(), "fill");
    EXPECT_STREQ(value[1].get_string(), "fill");
    value[0] = 1;
    value.resize(1, Value());
    ASSERT_EQ(value.size(), 1u);
    EXPECT_EQ(value[0].get_int32(), 1);
    value.resize(3, Value(7));
    EXPECT_EQ(numbers_in(value), (std::vector<int>{1, 7, 7}));
    value.resize(3, Value(8));
    EXPECT_EQ(numbers_in(value), (std::vector<int>{1, 7, 7}));
    value.resize(0, Value());
    EXPECT_EQ(value.type(), ValueType::Vector);
    EXPECT_TRUE(value.empty());
}

TEST(ValueAdding, ResizeWithAFillFromTheSameVector) {
    Value value = vector_of({5});
    value.resize(40, value[0]);
    EXPECT_EQ(value.size(), 40u);
    EXPECT_EQ(value[39].get_int32(), 5);
    value.resize(42, value);
    EXPECT_EQ(value[41].size(), 40u);
}

TEST(ValueAdding, ResizeOnOtherKindsDoesNothing) {
    for (Sample& sample : samples()) {
        const ValueType kind = sample.value.type();
        if (kind == ValueType::Null || kind == ValueType::Vector) {
            continue;
        }
        const std::string before = snapshot(sample.value);
        sample.value.resize(5, Value(1));
        EXPECT_EQ(sample.value.type(), kind) << sample.name;
        EXPECT_EQ(snapshot(sample.value), before) << sample.name;
    }
}

TEST(ValueAdding, KeyedInsertOnNullMakesAStruct) {
    Value value;
    Iterator<Value> at = value.insert("k", Value(5));
    EXPECT_EQ(value.type(), ValueType::Struct);
    EXPECT_EQ(value.size(), 1u);
    EXPECT_STREQ(at.name(), "k");
    EXPECT_EQ(at->get_int32(), 5);
    at = value.insert("k", Value(6));
    EXPECT_EQ(at->get_int32(), 5);
    EXPECT_EQ(value["k"].get_int32(), 5);
    at = value.insert_or_update("k", Value(6));
    EXPECT_EQ(at->get_int32(), 6);
    EXPECT_EQ(value["k"].get_int32(), 6);
    EXPECT_EQ(value.size(), 1u);
}

TEST(ValueAdding, KeyedInsertOrUpdateOnNullMakesAStruct) {
    Value value;
    value.insert_or_update("k", "text");
    EXPECT_EQ(value.type(), ValueType::Struct);
    EXPECT_STREQ(value["k"].get_string(), "text");
}

TEST(ValueAdding, KeyedInsertKeepsAMapAMap) {
    Value value = map_of({"a"});
    value.insert("b", Value(2));
    value.insert_or_update("a", Value(9));
    EXPECT_EQ(value.type(), ValueType::Map);
    EXPECT_EQ(value["a"].get_int32(), 9);
    EXPECT_EQ(value["b"].get_int32(), 2);
}

TEST(ValueAdding, TextItemsBecomeStrings) {
    Value value;
    value.insert("a", "first");
    value.insert("a", "second");
    value.insert_or_update("b", "third");
    EXPECT_EQ(value["a"].type(), ValueType::String);
    EXPECT_STREQ(value["a"].get_string(), "first");
    EXPECT_STREQ(value["b"].get_string(), "third");
    value.insert_or_update("b", static_cast<const char*>(nullptr));
    EXPECT_EQ(value["b"].type(), ValueType::Null);
}

TEST(ValueAdding, KeyedInsertOnOtherKindsGivesTheEndOfTheSharedMap) {
    for (Sample& sample : samples()) {
        const ValueType kind = sample.value.type();
        if (kind == ValueType::Null || kind == ValueType::Map || kind == ValueType::Struct) {
            continue;
        }
        const std::string before = snapshot(sample.value);
        EXPECT_TRUE(sample.value.insert("k", Value(1)) == shared_map_end()) << sample.name;
        EXPECT_TRUE(sample.value.insert("k", "x") == shared_map_end()) << sample.name;
        EXPECT_TRUE(sample.value.insert_or_update("k", Value(1)) == shared_map_end())
            << sample.name;
        EXPECT_TRUE(sample.value.insert_or_update("k", "x") == shared_map_end()) << sample.name;
        EXPECT_TRUE(sample.value.insert("k", 1) == shared_map_end()) << sample.name;
        EXPECT_TRUE(sample.value.insert_or_update("k", 1) == shared_map_end()) << sample.name;
        EXPECT_TRUE(sample.value.insert("k", Value(1)) == sample.value.end()) << sample.name;
        EXPECT_EQ(sample.value.type(), kind) << sample.name;
        EXPECT_EQ(snapshot(sample.value), before) << sample.name;
    }
}

TEST(ValueAdding, KeyedInsertOnAVectorGivesItsOwnEnd) {
    Value value = vector_of({1});
    Iterator<Value> at = value.insert("k", Value(1));
    EXPECT_TRUE(at == value.end());
    EXPECT_TRUE(value.begin() == value.end());
}

TEST(ValueAdding, PositionInsertOnAVector) {
    Value value = vector_of({1, 3});
    VectorIterator<Value> at = value.insert(value.find(1UL), Value(2));
    EXPECT_EQ(at->get_int32(), 2);
    at = value.insert(value.begin_vector(), Value(0));
    EXPECT_TRUE(at == value.begin_vector());
    at = value.insert(value.end_vector(), Value(4));
    EXPECT_EQ(at - value.begin_vector(), 4);
    EXPECT_EQ(numbers_in(value), (std::vector<int>{0, 1, 2, 3, 4}));
    at = value.insert(value.begin_vector(), "text");
    EXPECT_STREQ(at->get_string(), "text");
}

TEST(ValueAdding, PositionInsertWithAPositionOfAnotherValueAppends) {
    Value list = vector_of({1, 2});
    Value other = vector_of({3});
    Value record = struct_of({"a"});
    VectorIterator<Value> at = list.insert(other.begin_vector(), Value(4));
    EXPECT_EQ(at - list.begin_vector(), 2);
    at = list.insert(record.end_vector(), 5);
    EXPECT_EQ(at - list.begin_vector(), 3);
    at = list.insert(VectorIterator<Value>(), Value(6));
    EXPECT_EQ(at - list.begin_vector(), 4);
    EXPECT_EQ(numbers_in(list), (std::vector<int>{1, 2, 4, 5, 6}));
    EXPECT_EQ(numbers_in(other), (std::vector<int>{3}));
    EXPECT_TRUE(Value().begin_vector() == Value().end_vector());
}

TEST(ValueAdding, PositionInsertOnNullChangesNothing) {
    Value value;
    EXPECT_TRUE(value.insert(value.end_vector(), Value(1)) == shared_vector_end());
    EXPECT_TRUE(value.insert(value.end_vector(), 1) == shared_vector_end());
    EXPECT_TRUE(value.insert(value.end_vector(), "x") == shared_vector_end());
    EXPECT_EQ(value.type(), ValueType::Null);
    EXPECT_EQ(shared_empty().type(), ValueType::Null);
}

TEST(ValueAdding, PositionInsertOnOtherKindsGivesTheEndOfTheSharedVector) {
    for (Sample& sample : samples()) {
        const ValueType kind = sample.value.type();
        if (kind == ValueType::Vector) {
            continue;
        }
        const std::string before = snapshot(sample.value);
        Value donor = vector_of({1});
        EXPECT_TRUE(sample.value.insert(donor.begin_vector(), Value(1)) == shared_vector_end())
            << sample.name;
        EXPECT_TRUE(sample.value.insert(donor.begin_vector(), 1.5) == shared_vector_end())
            << sample.name;
        EXPECT_TRUE(sample.value.insert(donor.begin_vector(), Value(1)) ==
                    sample.value.end_vector())
            << sample.name;
        EXPECT_EQ(snapshot(sample.value), before) << sample.name;
        EXPECT_EQ(donor.size(), 1u);
    }
}

namespace {

// Every insertion form with one item type: the new element must have `kind`.
template <class T>
void expect_item_kind(const T& item, ValueType kind, const char* name) {
    Value keyed;
    keyed.insert<T>("k", item);
    EXPECT_EQ(keyed.type(), ValueType::Struct) << name;
    EXPECT_EQ(keyed["k"].type(), kind) << name;
    keyed.insert<T>("k", item);
    EXPECT_EQ(keyed.size(), 1u) << name;

    Value updated;
    updated.insert_or_update<T>("k", item);
    updated.insert_or_update<T>("k", item);
    EXPECT_EQ(updated.type(), ValueType::Struct) << name;
    EXPECT_EQ(updated["k"].type(), kind) << name;
    EXPECT_EQ(updated.size(), 1u) << name;

    Value ordered = vector_of({0});
    VectorIterator<Value> at = ordered.insert<T>(ordered.begin_vector(), item);
    EXPECT_EQ(at->type(), kind) << name;
    EXPECT_EQ(ordered[0].type(), kind) << name;
    EXPECT_EQ(ordered.size(), 2u) << name;
}

}  // namespace

TEST(ValueAdding, EveryItemTypeGivesItsKind) {
    expect_item_kind<Value>(Value(1.5), ValueType::Double, "Value");
    expect_item_kind<bool>(true, ValueType::Bool, "bool");
    expect_item_kind<int>(3, ValueType::Int, "int");
    expect_item_kind<long>(3L, ValueType::Int64, "long");
    expect_item_kind<double>(2.5, ValueType::Double, "double");
    expect_item_kind<const char*>("text", ValueType::String, "char const*");
    expect_item_kind<Binary>(three_bytes(), ValueType::Binary, "Binary");
    expect_item_kind<Timestamp>(Timestamp(7), ValueType::DateTime, "Timestamp");
    expect_item_kind<Timespan>(Timespan(7), ValueType::TimeSpan, "Timespan");
}

TEST(ValueAdding, DeducedItemTypesPickTheirForms) {
    Value value;
    value.insert("bool", true);
    value.insert("int", 1);
    value.insert("long", 1L);
    value.insert("double", 1.0);
    value.insert("text", "x");
    value.insert("binary", three_bytes());
    value.insert("time", Timestamp(1));
    value.insert("span", Timespan(1));
    value.insert("value", Value(1));
    const struct {
        const char* key;
        ValueType kind;
    } rows[] = {
        {"bool", ValueType::Bool},     {"int", ValueType::Int},       {"long", ValueType::Int64},
        {"double", ValueType::Double}, {"text", ValueType::String},   {"binary", ValueType::Binary},
        {"time", ValueType::DateTime}, {"span", ValueType::TimeSpan}, {"value", ValueType::Int}};
    for (const auto& row : rows) {
        EXPECT_EQ(value[row.key].type(), row.kind) << row.key;
    }
    EXPECT_EQ(value["time"].get_int64(), 1);
    EXPECT_EQ(value["binary"].get_binary().size, 3u);
}

TEST(ValueAdding, TheStoredItemIsACopy) {
    Value item("original");
    Value value;
    Iterator<Value> at = value.insert("k", item);
    EXPECT_NE(&*at, &item);
    item = "changed";
    EXPECT_STREQ(value["k"].get_string(), "original");
    Value list;
    list << item;
    EXPECT_NE(&list[0], &item);
    VectorIterator<Value> placed = list.insert(list.begin_vector(), item);
    EXPECT_NE(&*placed, &item);
}

// ---- removing and emptying ----------------------------------------------------------------

TEST(ValueRemoving, ByIndexAndRangeOnAVector) {
    Value value = vector_of({0, 1, 2, 3});
    EXPECT_EQ(value.remove(1UL), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(numbers_in(value), (std::vector<int>{0, 2, 3}));
    EXPECT_EQ(value.remove(3UL), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(value.remove(1UL, 9UL), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(numbers_in(value), (std::vector<int>{0}));
    EXPECT_EQ(value.remove(1UL, 0UL), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(value.remove(0UL), Quorvane::HMI_E_SUCCESS);
    EXPECT_EQ(value.remove(0UL), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(value.remove(0UL, 0UL), Quorvane::HMI_E_ENTRY_NOT_FOUND);
    EXPECT_EQ(value.type(), ValueType::Vector);
}

TEST(ValueRemoving, ByIndexOnOtherKindsIsAnInvalidType) {
    for (Sample& sample : samples()) {
        if (sample.value.type() == ValueType::Vector) {
            continue;
        }
        const std::string before = snapshot(sample.value);
        EXPECT_EQ(sample.value.remove(0UL), Quorvane::HMI_E_INVALID_TYPE) << sample.name;
        EXPECT_EQ(sample.value.remove(0UL, 1UL), Quorvane::HMI_E_INVALID_TYPE) << sample.name;
        EXPECT_EQ(static_cast<int>(sample.value.remove(0UL)), 270) << sample.name;
        EXPECT_EQ(snapshot(sample.value), before) << sample.name;
    }
}

TEST(ValueRemoving, ByIteratorOnAMapOrStruct) {
    for (Value value : {map_of({"a", "b", "c"}), struct_of({"a", "b", "c"})}) {
        Iterator<Value> next = value.remove(value.find("b"));
        EXPECT_STREQ(next.name(), "c");
        EXPECT_TRUE(value.remove(value.end()) == value.end());
        next = value.remove(value.begin());
        EXPECT_STREQ(next.name(), "c");
        EXPECT_EQ(keys_in(value), (std::vector<std::string>{"c"}));
    }
}

TEST(ValueRemoving, ByIteratorOnOtherKindsGivesTheEnd) {
    for (Sample& sample : samples()) {
        const ValueType kind = sample.value.type();
        Value donor = struct_of({"a"});
        Value ordered = vector_of({1});
        if (kind != ValueType::Map && kind != ValueType::Struct) {
            EXPECT_TRUE(sample.value.remove(donor.begin()) == shared_map_end()) << sample.name;
            EXPECT_EQ(donor.size(), 1u);
        }
        if (kind != ValueType::Vector) {
            EXPECT_TRUE(sample.value.remove(ordered.begin_vector()) == shared_vector_end())
                << sample.name;
            EXPECT_EQ(ordered.size(), 1u);
        }
    }
}

TEST(ValueRemoving, APositionOfAnotherValueErasesNothing) {
    for (Value value : {map_of({"a", "b"}), struct_of({"a", "b"})}) {
        Value other = struct_of({"a"});
        Value list = vector_of({1});
        EXPECT_TRUE(value.remove(other.begin()) == value.end());
        EXPECT_TRUE(value.remove(other.end()) == value.end());
        // A wrong-kind value hands out the end of the shared map.
        EXPECT_TRUE(value.remove(list.end()) == value.end());
        EXPECT_TRUE(value.remove(Iterator<Value>()) == value.end());
        EXPECT_EQ(keys_in(value), (std::vector<std::string>{"a", "b"}));
        EXPECT_EQ(keys_in(other), (std::vector<std::string>{"a"}));
        EXPECT_TRUE(shared_map_end() == Value().begin());
    }
    Value list = vector_of({1, 2});
    Value other = vector_of({3});
    Value record = struct_of({"a"});
    EXPECT_TRUE(list.remove(other.begin_vector()) == list.end_vector());
    EXPECT_TRUE(list.remove(record.end_vector()) == list.end_vector());
    EXPECT_TRUE(list.remove(VectorIterator<Value>()) == list.end_vector());
    EXPECT_EQ(numbers_in(list), (std::vector<int>{1, 2}));
    EXPECT_EQ(numbers_in(other), (std::vector<int>{3}));
}

TEST(ValueRemoving, ByVectorIteratorOnAVector) {
    Value value = vector_of({0, 1, 2});
    VectorIterator<Value> next = value.remove(value.find(1UL));
    EXPECT_EQ(next->get_int32(), 2);
    EXPECT_TRUE(value.remove(value.end_vector()) == value.end_vector());
    next = value.remove(value.find(1UL));
    EXPECT_TRUE(next == value.end_vector());
    EXPECT_EQ(numbers_in(value), (std::vector<int>{0}));
}

TEST(ValueClearing, ByKind) {
    Value vector = vector_of({1, 2});
    vector.clear();
    EXPECT_EQ(vector.type(), ValueType::Vector);
    EXPECT_TRUE(vector.empty());
    for (Value keyed : {map_of({"a"}), struct_of({"a"})}) {
        const ValueType kind = keyed.type();
        keyed.clear();
        EXPECT_EQ(keyed.type(), kind);
        EXPECT_TRUE(keyed.empty());
    }
    Value bytes(three_bytes());
    bytes.clear();
    EXPECT_EQ(bytes.type(), ValueType::Binary);
    EXPECT_EQ(bytes.get_binary().size, 0u);
    EXPECT_EQ(bytes.get_binary().bytes, nullptr);
    Value text("keep");
    text.clear();
    EXPECT_STREQ(text.get_string(), "keep");
    Value any_map = retagged_any(struct_of({"a"}));
    any_map.clear();
    EXPECT_EQ(any_map.size(), 1u);
    Value number(4);
    number.clear();
    EXPECT_EQ(number.get_int32(), 4);
}

TEST(ValueReserve, GrowsOnlyAVector) {
    Value value = vector_of({1});
    value.reserve(50);
    const Value* first = &value[0];
    for (int number = 0; number < 49; ++number) {
        value << Value(number);
    }
    EXPECT_EQ(&value[0], first);
    Value keyed = struct_of({"a"});
    keyed.reserve(10);
    EXPECT_EQ(keyed.size(), 1u);
    Value null;
    null.reserve(10);
    EXPECT_EQ(null.type(), ValueType::Null);
}

// ---- measuring ----------------------------------------------------------------------------

TEST(ValueMeasuring, SizeAndEmptyByKind) {
    Value empty_text("");
    Value no_bytes("abc");
    no_bytes.set_type(ValueType::Binary);
    no_bytes.set_type(ValueType::String);
    Value empty_binary(Binary{0, nullptr});
    Value any_binary = retagged_any(Value(three_bytes()));
    const struct {
        const char* name;
        Value value;
        unsigned long size;
        bool empty;
    } rows[] = {
        {"Null", Value(), 0, true},
        {"Bool false", Value(false), 0, false},
        {"Int 0", Value(0), 0, false},
        {"Double", Value(1.5), 0, false},
        {"String abc", Value("abc"), 3, false},
        {"String empty", empty_text, 0, true},
        {"String without bytes", no_bytes, 0, true},
        {"Vector of 2", vector_of({1, 2}), 2, false},
        {"Vector empty", vector_of({}).set_type(ValueType::Vector), 0, true},
        {"Map of 2", map_of({"a", "b"}), 2, false},
        {"Struct of 1", struct_of({"a"}), 1, false},
        {"Struct empty", Value().set_type(ValueType::Struct), 0, true},
        {"Binary of 3", Value(three_bytes()), 3, false},
        {"Binary empty", empty_binary, 0, false},
        {"Int64", Value(5L), 0, false},
        {"DateTime", Value(Timestamp(5)), 0, false},
        {"TimeSpan", Value(Timespan(5)), 0, false},
        {"Any over a map", retagged_any(map_of({"a", "b", "c"})), 3, false},
        {"Any over a vector", retagged_any(vector_of({1})), 1, false},
        {"Any over bytes", any_binary, 0, false},
        {"Any over nothing", retagged_any(Value()), 0, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.value.size(), row.size) << row.name;
        EXPECT_EQ(row.value.empty(), row.empty) << row.name;
    }
}

// ---- iterators ----------------------------------------------------------------------------

TEST(ValueIterators, KeyedWalkOnMapAndStruct) {
    for (Value value : {map_of({"b", "a"}), struct_of({"b", "a"})}) {
        EXPECT_EQ(keys_in(value), (std::vector<std::string>{"a", "b"}));
        std::vector<std::string> keys;
        for (Iterator<Value> at = value.begin(); at != value.end(); ++at) {
            keys.push_back(at.name());
        }
        EXPECT_EQ(keys, (std::vector<std::string>{"a", "b"}));
        EXPECT_STREQ(value.find("b").name(), "b");
        EXPECT_STREQ(read_only(value).find("b").name(), "b");
        EXPECT_TRUE(value.find("z") == value.end());
        EXPECT_TRUE(read_only(value).find("z") == read_only(value).end());
        EXPECT_FALSE(value.end() == shared_map_end());
    }
}

TEST(ValueIterators, OrderedWalkOnAVector) {
    Value value = vector_of({1, 2, 3});
    EXPECT_EQ(numbers_in(value), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(value.end_vector() - value.begin_vector(), 3);
    EXPECT_EQ(read_only(value).end_vector() - read_only(value).begin_vector(), 3);
    EXPECT_EQ(value.find(1UL)->get_int32(), 2);
    EXPECT_EQ(read_only(value).find(2UL)->get_int32(), 3);
    EXPECT_TRUE(value.find(3UL) == value.end_vector());
    EXPECT_TRUE(read_only(value).find(3UL) == read_only(value).end_vector());
    EXPECT_FALSE(value.end_vector() == shared_vector_end());
}

TEST(ValueIterators, WrongKindsGiveTheSharedEndPositions) {
    for (Sample& sample : samples()) {
        const ValueType kind = sample.value.type();
        Value& value = sample.value;
        const Value& constant = value;
        if (kind != ValueType::Map && kind != ValueType::Struct) {
            EXPECT_TRUE(value.begin() == value.end()) << sample.name;
            EXPECT_TRUE(value.begin() == shared_map_end()) << sample.name;
            EXPECT_TRUE(value.find("a") == shared_map_end()) << sample.name;
            EXPECT_TRUE(constant.begin() == constant.end()) << sample.name;
            EXPECT_TRUE(constant.begin() == ConstIterator<Value>(shared_map_end())) << sample.name;
            EXPECT_TRUE(constant.find("a") == ConstIterator<Value>(shared_map_end()))
                << sample.name;
        }
        if (kind != ValueType::Vector) {
            EXPECT_TRUE(value.begin_vector() == value.end_vector()) << sample.name;
            EXPECT_TRUE(value.begin_vector() == shared_vector_end()) << sample.name;
            EXPECT_TRUE(value.find(0UL) == shared_vector_end()) << sample.name;
            EXPECT_TRUE(constant.begin_vector() == constant.end_vector()) << sample.name;
            EXPECT_TRUE(constant.begin_vector() == ConstVectorIterator<Value>(shared_vector_end()))
                << sample.name;
            EXPECT_TRUE(constant.find(0UL) == ConstVectorIterator<Value>(shared_vector_end()))
                << sample.name;
        }
    }
}

TEST(ValueIterators, AKeyedLoopOverAVectorRunsZeroTimes) {
    Value value = vector_of({1, 2});
    EXPECT_TRUE(value.begin() == value.end());
    int rounds = 0;
    for (Iterator<Value> at = value.begin(); at != value.end(); ++at) {
        ++rounds;
    }
    EXPECT_EQ(rounds, 0);
}

TEST(ValueIterators, AnAnyOverAMapIsSeenOnlyByTheReads) {
    Value value = retagged_any(map_of({"a", "b"}));
    ASSERT_NE(value.get_map(), nullptr);
    EXPECT_EQ(value.get_map()->size(), 2u);
    EXPECT_EQ(value.size(), 2u);
    EXPECT_TRUE(value.begin() == value.end());
    EXPECT_EQ(&value["a"], &shared_empty());
    EXPECT_TRUE(value.find("a") == value.end());
}

TEST(ValueIterators, SharedEndsCannotBeRead) {
    Value value;
    EXPECT_THROW(*value.begin(), std::runtime_error);
    EXPECT_THROW(*value.begin_vector(), std::runtime_error);
    EXPECT_THROW(value.end().name(), std::runtime_error);
}

// ---- costs --------------------------------------------------------------------------------

TEST(ValueCosts, IndexingAVectorAllocatesNothing) {
    Value list = vector_of({1, 2, 3});
    shared_empty();
    const Value* seen[6] = {};
    const std::size_t allocations = allocation_count::of([&] {
        seen[0] = &list[1];
        seen[1] = &list[2UL];
        seen[2] = &read_only(list)[0];
        seen[3] = &read_only(list)[0UL];
        seen[4] = &list[3];
        seen[5] = &list[-1];
    });
    EXPECT_EQ(allocations, 0u);
    EXPECT_EQ(seen[0]->get_int32(), 2);
    EXPECT_EQ(seen[1]->get_int32(), 3);
    EXPECT_EQ(seen[2]->get_int32(), 1);
    EXPECT_EQ(seen[3]->get_int32(), 1);
    EXPECT_EQ(seen[4], &shared_empty());
    EXPECT_EQ(seen[5], &shared_empty());
}

TEST(ValueCosts, EveryIteratorHandedOutCostsOneAllocation) {
    Value list = vector_of({1, 2, 3});
    Value record = struct_of({"a", "b"});
    const Value& constant_list = list;
    const Value& constant_record = record;
    const Value item(9);
    VectorIterator<Value> position = list.begin_vector();
    const Iterator<Value> record_end = record.end();
    const VectorIterator<Value> list_end = list.end_vector();
    // The shared containers of the wrong kinds exist before anything is counted.
    shared_map_end();
    shared_vector_end();
    const struct {
        const char* name;
        std::function<void()> work;
        std::size_t allocations;
    } rows[] = {
        {"begin", [&] { record.begin(); }, 1},
        {"end", [&] { record.end(); }, 1},
        {"find hit", [&] { record.find("a"); }, 1},
        {"find miss", [&] { record.find("z"); }, 1},
        {"begin const", [&] { constant_record.begin(); }, 1},
        {"end const", [&] { constant_record.end(); }, 1},
        {"find const", [&] { constant_record.find("a"); }, 1},
        {"begin of a wrong kind", [&] { list.begin(); }, 1},
        {"find of a wrong kind", [&] { list.find("a"); }, 1},
        {"begin const of a wrong kind", [&] { constant_list.begin(); }, 1},
        {"begin_vector", [&] { list.begin_vector(); }, 1},
        {"end_vector", [&] { list.end_vector(); }, 1},
        {"find index hit", [&] { list.find(1UL); }, 1},
        {"find index miss", [&] { list.find(9UL); }, 1},
        {"begin_vector const", [&] { constant_list.begin_vector(); }, 1},
        {"find index const", [&] { constant_list.find(1UL); }, 1},
        {"begin_vector of a wrong kind", [&] { record.begin_vector(); }, 1},
        {"end_vector const of a wrong kind", [&] { constant_record.end_vector(); }, 1},
        {"insert of an existing key", [&] { record.insert("a", item); }, 1},
        {"insert on a wrong kind", [&] { list.insert("a", item); }, 1},
        {"position insert on a wrong kind", [&] { record.insert(position, item); }, 1},
        {"remove at the end of a map", [&] { record.remove(record_end); }, 1},
        {"remove at the end of a vector", [&] { list.remove(list_end); }, 1},
        {"copy", [&] { VectorIterator<Value> copy(position); }, 1},
        {"const from mutable", [&] { ConstVectorIterator<Value> copy(position); }, 1},
        {"prefix ++ and --", [&] { --++position; }, 0},
        {"+= and -=", [&] { (position += 2) -= 2; }, 0},
        {"postfix ++", [&] { position++; }, 1},
        {"postfix --", [&] { position--; }, 1},
        {"+", [&] { position + 1; }, 1},
        {"-", [&] { position - 0; }, 1},
        {"== and <", [&] { (void)(position == list_end && position < list_end); }, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(allocation_count::of(row.work), row.allocations) << row.name;
    }
    EXPECT_EQ(numbers_in(list), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(keys_in(record), (std::vector<std::string>{"a", "b"}));
}

// ---- the guard ----------------------------------------------------------------------------
//
// Each case writes through the shared empty value, so each runs in a process of its own and
// reports by its exit code.

namespace {

class ValueGuardDeathTest : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

struct GuardRow {
    const char* name;
    std::function<void(Value&)> write;
    std::function<bool(Value&)> holds;
};

void expect_in_own_process(const GuardRow& row) {
    SCOPED_TRACE(row.name);
    EXPECT_EXIT(
        {
            Value& shared = shared_empty();
            row.write(shared);
            std::exit(row.holds(shared) && &shared_empty() == &shared ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

bool still_null(Value& shared) {
    return shared.type() == ValueType::Null && read_only(shared).get_vector() == nullptr &&
           shared.get_int32() == 0;
}

// Puts a vector of `count` elements into the shared value by exchange, the one write with no
// guard that gives it a vector. The guard keeps applying to it afterwards.
void give_vector(Value& shared, int count) {
    Value donor;
    for (int number = 0; number < count; ++number) {
        donor << Value(number);
    }
    shared.swap(donor);
}

std::size_t stored_elements(Value& shared) {
    const Quorvane::Vector<Value>* vector = read_only(shared).get_vector();
    return vector == nullptr ? 0 : vector->size();
}

}  // namespace

TEST_F(ValueGuardDeathTest, GuardedWritesOfScalarsAreDropped) {
    const GuardRow rows[] = {
        {"operator=(Value)", [](Value& v) { v = Value(5); }, still_null},
        {"operator=(text)", [](Value& v) { v = "x"; }, still_null},
        {"operator=(bool)", [](Value& v) { v = true; }, still_null},
        {"operator=(int)", [](Value& v) { v = 5; }, still_null},
        {"operator=(long)", [](Value& v) { v = 5L; }, still_null},
        {"operator=(double)", [](Value& v) { v = 5.0; }, still_null},
        {"operator=(Timestamp)", [](Value& v) { v = Timestamp(5); }, still_null},
        {"operator=(Timespan)", [](Value& v) { v = Timespan(5); }, still_null},
        {"set(text)", [](Value& v) { v.set("x"); }, still_null},
        {"set(bool)", [](Value& v) { v.set(true); }, still_null},
        {"set(int)", [](Value& v) { v.set(5); }, still_null},
        {"set(long)", [](Value& v) { v.set(5L); }, still_null},
        {"set(double)", [](Value& v) { v.set(5.0); }, still_null},
        {"set(Timestamp)", [](Value& v) { v.set(Timestamp(5)); }, still_null},
        {"set(Timespan)", [](Value& v) { v.set(Timespan(5)); }, still_null},
        {"set(Binary)", [](Value& v) { v.set(three_bytes()); }, still_null},
        {"set_type", [](Value& v) { v.set_type(ValueType::Vector); }, still_null},
        {"convert", [](Value& v) { v.convert(ValueType::String); }, still_null},
    };
    for (const GuardRow& row : rows) {
        expect_in_own_process(row);
    }
}

TEST_F(ValueGuardDeathTest, AssigningABinaryWritesThroughTheGuard) {
    expect_in_own_process(
        {"operator=(Binary)", [](Value& v) { v = three_bytes(); },
         [](Value& v) { return v.type() == ValueType::Binary && v.get_binary().size == 3; }});
}

TEST_F(ValueGuardDeathTest, SwapExchangesWithoutTheGuard) {
    expect_in_own_process({"swap",
                           [](Value& v) {
                               Value other(7);
                               v.swap(other);
                               // The other handle now holds the former empty record and is an
                               // ordinary value.
                               other = 8;
                               if (other.get_int32() != 8) {
                                   std::exit(2);
                               }
                               v = 9;
                           },
                           [](Value& v) { return v.get_int32() == 7; }});
}

TEST_F(ValueGuardDeathTest, GuardedContainerWritesAreDropped) {
    const GuardRow rows[] = {
        {"operator<<", [](Value& v) { v << Value(1); }, still_null},
        {"resize", [](Value& v) { v.resize(3, Value(1)); }, still_null},
        {"insert(key, Value)",
         [](Value& v) {
             if (!(v.insert("k", Value(1)) == shared_map_end())) {
                 std::exit(2);
             }
         },
         still_null},
        {"insert(key, text)",
         [](Value& v) {
             if (!(v.insert("k", "x") == shared_map_end())) {
                 std::exit(2);
             }
         },
         still_null},
        {"insert_or_update(key, Value)",
         [](Value& v) {
             if (!(v.insert_or_update("k", Value(1)) == shared_map_end())) {
                 std::exit(2);
             }
         },
         still_null},
        {"insert_or_update(key, text)",
         [](Value& v) {
             if (!(v.insert_or_update("k", "x") == shared_map_end())) {
                 std::exit(2);
             }
         },
         still_null},
        {"insert<Value>(key)", [](Value& v) { v.insert<Value>("k", Value(1)); }, still_null},
        {"insert_or_update<Value>(key)", [](Value& v) { v.insert_or_update<Value>("k", Value(1)); },
         still_null},
        {"insert(position, Value)",
         [](Value& v) {
             if (!(v.insert(v.end_vector(), Value(1)) == shared_vector_end())) {
                 std::exit(2);
             }
         },
         still_null},
        {"clear", [](Value& v) { v.clear(); }, still_null},
        {"reserve", [](Value& v) { v.reserve(10); }, still_null},
        {"remove(index)",
         [](Value& v) {
             if (v.remove(0UL) != Quorvane::HMI_E_INVALID_TYPE ||
                 v.remove(0UL, 1UL) != Quorvane::HMI_E_INVALID_TYPE) {
                 std::exit(2);
             }
         },
         still_null},
    };
    for (const GuardRow& row : rows) {
        expect_in_own_process(row);
    }
}

TEST_F(ValueGuardDeathTest, TemplateInsertionsWriteThroughTheGuard) {
    const auto has_entry = [](Value& v) {
        return v.type() == ValueType::Struct && v.get_map() == nullptr &&
               read_only(v).get_map() == nullptr && v.size() == 0 && v.empty();
    };
    const GuardRow rows[] = {
        {"insert<int>", [](Value& v) { v.insert<int>("k", 1); }, has_entry},
        {"insert_or_update<int>", [](Value& v) { v.insert_or_update<int>("k", 1); }, has_entry},
        {"insert(key, 1)", [](Value& v) { v.insert("k", 1); }, has_entry},
        {"insert<bool>", [](Value& v) { v.insert<bool>("k", true); }, has_entry},
        {"insert<long>", [](Value& v) { v.insert<long>("k", 1L); }, has_entry},
        {"insert<double>", [](Value& v) { v.insert<double>("k", 1.0); }, has_entry},
        {"insert<char const*>", [](Value& v) { v.insert<const char*>("k", "x"); }, has_entry},
        {"insert_or_update<char const*>",
         [](Value& v) { v.insert_or_update<const char*>("k", "x"); }, has_entry},
        {"insert<Binary>", [](Value& v) { v.insert<Binary>("k", three_bytes()); }, has_entry},
        {"insert<Timestamp>", [](Value& v) { v.insert<Timestamp>("k", Timestamp(1)); }, has_entry},
        {"insert<Timespan>", [](Value& v) { v.insert<Timespan>("k", Timespan(1)); }, has_entry},
    };
    for (const GuardRow& row : rows) {
        expect_in_own_process(row);
    }
}

TEST_F(ValueGuardDeathTest, ReadsOfAFilledSharedValueStillMiss) {
    expect_in_own_process({"keyed reads", [](Value& v) { v.insert<int>("k", 1); },
                           [](Value& v) {
                               return &v["k"] == &v && &read_only(v)["k"] == &v &&
                                      v.begin() == v.end() && v.begin() == shared_map_end() &&
                                      v.find("k") == shared_map_end() &&
                                      read_only(v).begin() == read_only(v).end() &&
                                      read_only(v).find("k") == read_only(v).end() &&
                                      v.size() == 0 && v.empty();
                           }});
}

TEST_F(ValueGuardDeathTest, AVectorSwappedInStaysUnderTheGuard) {
    const auto vector_kept = [](Value& v) {
        return v.type() == ValueType::Vector && stored_elements(v) == 2 &&
               v.get_vector() == nullptr && v.size() == 0 && v.empty() && &v[0] == &v &&
               &v[0UL] == &v && &read_only(v)[1] == &v && v.begin_vector() == v.end_vector() &&
               v.begin_vector() == shared_vector_end() && v.find(0UL) == shared_vector_end() &&
               read_only(v).begin_vector() == read_only(v).end_vector() &&
               read_only(v).find(1UL) == read_only(v).end_vector() && &read_only(v)[1UL] == &v;
    };
    const GuardRow rows[] = {
        {"reads", [](Value& v) { give_vector(v, 2); }, vector_kept},
        {"operator<<",
         [](Value& v) {
             give_vector(v, 2);
             v << Value(1);
         },
         vector_kept},
        {"resize",
         [](Value& v) {
             give_vector(v, 2);
             v.resize(5, Value(1));
             v.resize(0, Value(1));
         },
         vector_kept},
        {"clear",
         [](Value& v) {
             give_vector(v, 2);
             v.clear();
         },
         vector_kept},
        {"remove",
         [](Value& v) {
             give_vector(v, 2);
             if (v.remove(0UL) != Quorvane::HMI_E_INVALID_TYPE ||
                 v.remove(0UL, 2UL) != Quorvane::HMI_E_INVALID_TYPE) {
                 std::exit(2);
             }
         },
         vector_kept},
        {"remove(position)",
         [](Value& v) {
             Value donor = vector_of({0, 1});
             VectorIterator<Value> first = donor.begin_vector();
             v.swap(donor);
             if (!(v.remove(first) == shared_vector_end())) {
                 std::exit(2);
             }
         },
         vector_kept},
        {"insert(position, Value)",
         [](Value& v) {
             Value donor = vector_of({0, 1});
             VectorIterator<Value> first = donor.begin_vector();
             v.swap(donor);
             if (!(v.insert(first, Value(5)) == shared_vector_end())) {
                 std::exit(2);
             }
         },
         vector_kept},
    };
    for (const GuardRow& row : rows) {
        expect_in_own_process(row);
    }
}

TEST_F(ValueGuardDeathTest, PositionTemplatesWriteIntoASwappedInVector) {
    const GuardRow rows[] = {
        {"insert<int>(position)",
         [](Value& v) {
             Value donor = vector_of({0, 1});
             VectorIterator<Value> first = donor.begin_vector();
             v.swap(donor);
             v.insert<int>(first, 5);
         },
         [](Value& v) { return stored_elements(v) == 3 && v.size() == 0; }},
        {"insert(position, text)",
         [](Value& v) {
             Value donor = vector_of({0, 1});
             VectorIterator<Value> first = donor.begin_vector();
             v.swap(donor);
             v.insert(first, "x");
         },
         [](Value& v) { return stored_elements(v) == 3; }},
    };
    for (const GuardRow& row : rows) {
        expect_in_own_process(row);
    }
}

TEST_F(ValueGuardDeathTest, AMapSwappedInStaysUnderTheGuard) {
    expect_in_own_process({"remove and clear",
                           [](Value& v) {
                               Value donor = struct_of({"a", "b"});
                               Iterator<Value> first = donor.begin();
                               v.swap(donor);
                               if (!(v.remove(first) == shared_map_end())) {
                                   std::exit(2);
                               }
                               v.clear();
                               v.insert("c", Value(1));
                           },
                           [](Value& v) {
                               return v.type() == ValueType::Struct && v.get_map() == nullptr &&
                                      v.size() == 0 && &v["a"] == &v;
                           }});
}

TEST_F(ValueGuardDeathTest, ABinaryInTheSharedValueIsNotCleared) {
    expect_in_own_process({"clear of Binary",
                           [](Value& v) {
                               v = three_bytes();
                               v.clear();
                           },
                           [](Value& v) { return v.get_binary().size == 3 && v.size() == 0; }});
}

TEST_F(ValueGuardDeathTest, ANullKeyOnAKeyedValueEndsTheProcess) {
    Value record = struct_of({"a"});
    EXPECT_DEATH(record[static_cast<const char*>(nullptr)], "");
    EXPECT_DEATH(read_only(record)[static_cast<const char*>(nullptr)], "");
    EXPECT_DEATH(record.find(static_cast<const char*>(nullptr)), "");
    EXPECT_DEATH(record.insert(nullptr, Value(1)), "");
    EXPECT_DEATH(record.insert_or_update(nullptr, Value(1)), "");
}

TEST(ValueIndexing, ANullKeyOnAnotherKindMisses) {
    Value list = vector_of({1});
    EXPECT_EQ(&list[static_cast<const char*>(nullptr)], &shared_empty());
    EXPECT_TRUE(list.find(static_cast<const char*>(nullptr)) == shared_map_end());
}

TEST(ValueRobustness, RandomByteKeysThroughTheKeyedOperations) {
    // Arbitrary bytes (NUL ends a key, so it is left out) through every key-taking operation of
    // a Struct value, checked against std::map in its default byte order.
    std::mt19937 random(977);
    Value record;
    std::map<std::string, int> model;
    for (int round = 0; round < 3000; ++round) {
        std::string key(random() % 5, '\0');
        for (char& byte : key) {
            byte = static_cast<char>(1 + random() % 255);
        }
        const int number = static_cast<int>(random() % 100);
        switch (random() % 5) {
            case 0:
                record.insert(key.c_str(), Value(number));
                model.emplace(key, number);
                break;
            case 1:
                record.insert_or_update(key.c_str(), number);
                model[key] = number;
                break;
            case 2: {
                const auto expected = model.find(key);
                const Value& found = read_only(record)[key.c_str()];
                EXPECT_EQ(&found == &shared_empty(), expected == model.end());
                break;
            }
            case 3: {
                const Iterator<Value> at = record.find(key.c_str());
                const bool present = model.erase(key) == 1;
                EXPECT_EQ(at != record.end(), present);
                if (present) {
                    record.remove(at);
                }
                break;
            }
            default:
                record[key.c_str()] = number;
                if (model.count(key) == 1) {
                    model[key] = number;
                }
                break;
        }
    }
    ASSERT_EQ(record.size(), model.size());
    auto expected = model.begin();
    for (ConstIterator<Value> at = read_only(record).begin(); at != read_only(record).end();
         ++at, ++expected) {
        EXPECT_EQ(at.name(), expected->first);
        EXPECT_EQ(at->get_int32(), expected->second);
    }
    EXPECT_EQ(shared_empty().type(), ValueType::Null);
}
