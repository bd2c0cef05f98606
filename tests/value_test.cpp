#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

using Quorvane::Binary;
using Quorvane::Timespan;
using Quorvane::Timestamp;
using Quorvane::Value;
using Quorvane::ValueType;

namespace {

Binary bytes_of(const char* text, std::size_t size) {
    return Binary{size, reinterpret_cast<unsigned char*>(const_cast<char*>(text))};
}

}  // namespace

// ---- kinds and their names ----------------------------------------------------------------

TEST(ValueType, NumbersAreFixed) {
    EXPECT_TRUE((std::is_same<std::underlying_type<ValueType>::type, std::int32_t>::value));
    const struct {
        ValueType type;
        int number;
    } rows[] = {{ValueType::Null, 0},     {ValueType::Bool, 1},     {ValueType::Int, 2},
                {ValueType::Double, 3},   {ValueType::String, 4},   {ValueType::Vector, 5},
                {ValueType::Map, 6},      {ValueType::Struct, 7},   {ValueType::Binary, 8},
                {ValueType::Int64, 9},    {ValueType::DateTime, 10}, {ValueType::TimeSpan, 11},
                {ValueType::Event, 64},   {ValueType::Message, 65}, {ValueType::Alarm, 66},
                {ValueType::Any, 256}};
    for (const auto& row : rows) {
        EXPECT_EQ(static_cast<int>(row.type), row.number);
    }
}

TEST(ValueType, BothSpellingsOfEveryKind) {
    const struct {
        int number;
        const char* capitalised;
        const char* lower_case;
    } rows[] = {{0, "Null", "null"},          {1, "Bool", "bool"},
                {2, "Int", "int"},            {3, "Double", "double"},
                {4, "String", "string"},      {5, "Vector", "vector"},
                {6, "Map", "map"},            {7, "Struct", "struct"},
                {8, "Binary", "binary"},      {9, "Int64", "int64"},
                {10, "DateTime", "date-time"}, {11, "TimeSpan", "timespan"},
                {64, "Event", "event"},       {65, "Message", "message"},
                {66, "Alarm", "alarm"},       {256, "Any", "any"}};
    for (const auto& row : rows) {
        const auto type = static_cast<ValueType>(row.number);
        EXPECT_STREQ(Quorvane::Algorithm::value_type_to_string(type), row.capitalised) << row.number;
        EXPECT_STREQ(Quorvane::get_type_string(type), row.lower_case) << row.number;
    }
}

TEST(ValueType, NumbersThatNameNoKindAreNull) {
    for (int number : {-1, 12, 13, 40, 63, 67, 100, 255, 257, 1000, 2147483647, -2147483647 - 1}) {
        const auto type = static_cast<ValueType>(number);
        EXPECT_STREQ(Quorvane::Algorithm::value_type_to_string(type), "Null") << number;
        EXPECT_STREQ(Quorvane::get_type_string(type), "null") << number;
    }
}

// ---- construction --------------------------------------------------------------------------

TEST(ValueConstruct, NewValueReadsZero) {
    Value value;
    EXPECT_EQ(value.type(), ValueType::Null);
    EXPECT_FALSE(value.isset());
    EXPECT_FALSE(value.get_bool());
    EXPECT_EQ(value.get_int32(), 0);
    EXPECT_EQ(value.get_int64(), 0);
    EXPECT_EQ(value.get_double(), 0.0);
    EXPECT_STREQ(value.get_string(), "");
    EXPECT_EQ(value.get_binary().size, 0u);
    EXPECT_EQ(value.get_binary().bytes, nullptr);
    EXPECT_EQ(value.get_timestamp().nanoseconds(), 0);
    EXPECT_EQ(value.get_timespan().nanoseconds(), 0);
}

TEST(ValueConstruct, EachConstructorSetsItsKind) {
    EXPECT_EQ(Value("x").type(), ValueType::String);
    EXPECT_EQ(Value(true).type(), ValueType::Bool);
    EXPECT_EQ(Value(1).type(), ValueType::Int);
    EXPECT_EQ(Value(1L).type(), ValueType::Int64);
    EXPECT_EQ(Value(1.0).type(), ValueType::Double);
    EXPECT_EQ(Value(Timestamp(5)).type(), ValueType::DateTime);
    EXPECT_EQ(Value(Timespan(5)).type(), ValueType::TimeSpan);
    EXPECT_EQ(Value(bytes_of("ab", 2)).type(), ValueType::Binary);
}

TEST(ValueConstruct, NullTextLeavesNull) {
    const char* none = nullptr;
    Value value(none);
    EXPECT_EQ(value.type(), ValueType::Null);
    EXPECT_FALSE(value.isset());
}

TEST(ValueConstruct, CopyIsDeep) {
    Value original("abc");
    Value copy(original);
    original = "xyz";
    EXPECT_STREQ(copy.get_string(), "abc");
    EXPECT_STREQ(original.get_string(), "xyz");
    EXPECT_NE(copy.get_string(), original.get_string());
}

TEST(ValueConstruct, IsAnObjectAndAForwardIteratorTraitsCarrier) {
    EXPECT_TRUE((std::is_base_of<Quorvane::IObject, Value>::value));
    EXPECT_TRUE((std::is_same<Value::iterator_category, std::forward_iterator_tag>::value));
    EXPECT_TRUE((std::is_same<Value::value_type, Value>::value));
    EXPECT_TRUE((std::is_same<Value::difference_type, long>::value));
    EXPECT_TRUE((std::is_same<Value::pointer, Value*>::value));
    EXPECT_TRUE((std::is_same<Value::reference, Value&>::value));
    EXPECT_TRUE(std::has_virtual_destructor<Value>::value);
}

// ---- writes --------------------------------------------------------------------------------

TEST(ValueSet, NewKindReplacesTheOld) {
    Value value(2.5);
    value.set(3);
    EXPECT_EQ(value.type(), ValueType::Int);
    EXPECT_EQ(value.get_int32(), 3);
    value.set("text");
    EXPECT_EQ(value.type(), ValueType::String);
    value.set(true);
    EXPECT_EQ(value.type(), ValueType::Bool);
    value.set(9L);
    EXPECT_EQ(value.type(), ValueType::Int64);
    value.set(Timestamp(11));
    EXPECT_EQ(value.type(), ValueType::DateTime);
    value.set(Timespan(12));
    EXPECT_EQ(value.type(), ValueType::TimeSpan);
    value.set(bytes_of("q", 1));
    EXPECT_EQ(value.type(), ValueType::Binary);
    value.set(0.5);
    EXPECT_EQ(value.type(), ValueType::Double);
}

TEST(ValueSet, AssignmentOperatorsSetTheirKind) {
    Value value;
    value = "t";
    EXPECT_EQ(value.type(), ValueType::String);
    value = false;
    EXPECT_EQ(value.type(), ValueType::Bool);
    value = 4;
    EXPECT_EQ(value.type(), ValueType::Int);
    value = 4L;
    EXPECT_EQ(value.type(), ValueType::Int64);
    value = 4.0;
    EXPECT_EQ(value.type(), ValueType::Double);
    value = Timestamp(4);
    EXPECT_EQ(value.type(), ValueType::DateTime);
    value = Timespan(4);
    EXPECT_EQ(value.type(), ValueType::TimeSpan);
    value = bytes_of("z", 1);
    EXPECT_EQ(value.type(), ValueType::Binary);
    value = Value(8);
    EXPECT_EQ(value.type(), ValueType::Int);
    EXPECT_EQ(value.get_int32(), 8);
}

TEST(ValueSet, TrueReadsAsDoubleOneButNotAsInt) {
    Value value;
    value.set(true);
    EXPECT_TRUE(value.get_bool());
    EXPECT_EQ(value.get_double(), 1.0);
    EXPECT_EQ(value.get_int32(), 0);
    value.set(false);
    EXPECT_FALSE(value.get_bool());
    EXPECT_EQ(value.get_double(), 0.0);
}

TEST(ValueSet, IntReadsAsDoubleButNotAsInt64) {
    Value value;
    value.set(7);
    EXPECT_EQ(value.get_double(), 7.0);
    EXPECT_EQ(value.get_int64(), 0);
    EXPECT_FALSE(value.get_bool());
}

TEST(ValueSet, LongReadsNeitherAsIntNorAsDouble) {
    Value value;
    value.set(7L);
    EXPECT_EQ(value.get_int64(), 7);
    EXPECT_EQ(value.get_int32(), 0);
    EXPECT_EQ(value.get_double(), 0.0);
}

TEST(ValueSet, DoubleOutsideIntRangeReadsAsMinimum) {
    Value value;
    value.set(3e9);
    EXPECT_EQ(value.get_int32(), -2147483647 - 1);
    value.set(-3e9);
    EXPECT_EQ(value.get_int32(), -2147483647 - 1);
    value.set(-1.9);
    EXPECT_EQ(value.get_int32(), -1);
    value.set(1.9);
    EXPECT_EQ(value.get_int32(), 1);
    value.set(2147483647.9);
    EXPECT_EQ(value.get_int32(), 2147483647);
    value.set(-2147483648.9);
    EXPECT_EQ(value.get_int32(), -2147483647 - 1);
    value.set(2147483648.0);
    EXPECT_EQ(value.get_int32(), -2147483647 - 1);
    value.set(std::nan(""));
    EXPECT_EQ(value.get_int32(), -2147483647 - 1);
    value.set(std::numeric_limits<double>::infinity());
    EXPECT_EQ(value.get_int32(), -2147483647 - 1);
}

TEST(ValueSet, DoubleKeepsNanAndInfinities) {
    Value value(std::nan(""));
    EXPECT_EQ(value.type(), ValueType::Double);
    EXPECT_TRUE(std::isnan(value.get_double()));
    value.set(-std::numeric_limits<double>::infinity());
    EXPECT_EQ(value.get_double(), -std::numeric_limits<double>::infinity());
}

TEST(ValueSet, NullTextLeavesTheIntAndItsNumber) {
    Value value(5);
    const char* none = nullptr;
    value.set(none);
    EXPECT_EQ(value.type(), ValueType::Int);
    EXPECT_EQ(value.get_int32(), 5);
    value = none;
    EXPECT_EQ(value.type(), ValueType::Int);
}

TEST(ValueSet, EmptyTextIsStoredInTheValue) {
    Value value;
    value.set("");
    EXPECT_EQ(value.type(), ValueType::String);
    EXPECT_STREQ(value.get_string(), "");
    // The empty text lives in this value's own storage, not in the static empty text.
    Value other(1);
    EXPECT_NE(value.get_string(), other.get_string());
}

TEST(ValueSet, TextIsCopied) {
    char buffer[] = "abc";
    Value value(buffer);
    buffer[0] = 'z';
    EXPECT_STREQ(value.get_string(), "abc");
    EXPECT_NE(value.get_string(), buffer);
}

TEST(ValueSet, BinaryIsCopiedWithoutTerminator) {
    const char raw[] = {'a', '\0', 'b'};
    Value value(bytes_of(raw, 3));
    const Binary stored = value.get_binary();
    ASSERT_EQ(stored.size, 3u);
    ASSERT_NE(stored.bytes, nullptr);
    EXPECT_NE(static_cast<const void*>(stored.bytes), static_cast<const void*>(raw));
    EXPECT_EQ(std::memcmp(stored.bytes, raw, 3), 0);
}

TEST(ValueSet, BinaryWithNullBytesAndNonZeroSizeChangesNothing) {
    Value value(5);
    value.set(Binary{4, nullptr});
    EXPECT_EQ(value.type(), ValueType::Int);
    EXPECT_EQ(value.get_int32(), 5);
}

TEST(ValueSet, EmptyBinaryEmptiesTheValue) {
    Value value("text");
    value.set(Binary{0, nullptr});
    EXPECT_EQ(value.type(), ValueType::Binary);
    EXPECT_EQ(value.get_binary().size, 0u);
    EXPECT_EQ(value.get_binary().bytes, nullptr);
    Value other(3);
    other.set(bytes_of("x", 0));
    EXPECT_EQ(other.type(), ValueType::Binary);
    EXPECT_EQ(other.get_binary().bytes, nullptr);
}

TEST(ValueSet, TimesStoreTheirNanoseconds) {
    Value value(Timestamp(-123));
    EXPECT_EQ(value.get_int64(), -123);
    EXPECT_EQ(value.get_timestamp().nanoseconds(), -123);
    EXPECT_EQ(value.get_timespan().nanoseconds(), 0);
    value.set(Timespan(456));
    EXPECT_EQ(value.get_int64(), 456);
    EXPECT_EQ(value.get_timespan().nanoseconds(), 456);
    EXPECT_EQ(value.get_timestamp().nanoseconds(), 0);
}

TEST(ValueSet, SwapExchangesAndAnswersTrue) {
    Value left(1);
    Value right("r");
    EXPECT_TRUE(left.swap(right));
    EXPECT_EQ(left.type(), ValueType::String);
    EXPECT_EQ(right.get_int32(), 1);
}

TEST(ValueSet, SelfAssignmentKeepsTheContent) {
    Value value("same");
    const Value& same = value;
    value = same;
    EXPECT_STREQ(value.get_string(), "same");
}

// ---- reads ---------------------------------------------------------------------------------

namespace {

// One value of every kind that can be built from scalars, text, bytes and time.
struct Sample {
    const char* name;
    Value value;
};

std::vector<Sample> samples() {
    std::vector<Sample> all;
    all.push_back({"Null", Value()});
    all.push_back({"Bool", Value(true)});
    all.push_back({"Int", Value(42)});
    all.push_back({"Double", Value(2.75)});
    all.push_back({"String", Value("hello")});
    all.push_back({"Binary", Value(bytes_of("abc", 3))});
    all.push_back({"Int64", Value(1L << 40)});
    all.push_back({"DateTime", Value(Timestamp(1000))});
    all.push_back({"TimeSpan", Value(Timespan(2000))});
    return all;
}

}  // namespace

TEST(ValueRead, EachReadAnswersOnlyItsKinds) {
    for (const Sample& sample : samples()) {
        const std::string kind = sample.name;
        const Value& value = sample.value;
        SCOPED_TRACE(kind);
        EXPECT_EQ(value.get_bool(), kind == "Bool");
        EXPECT_EQ(value.get_int32(), kind == "Int" ? 42 : kind == "Double" ? 2 : 0);
        EXPECT_EQ(value.get_int64(), kind == "Int64"      ? (1L << 40)
                                     : kind == "DateTime" ? 1000
                                     : kind == "TimeSpan" ? 2000
                                                          : 0);
        EXPECT_EQ(value.get_double(), kind == "Bool"     ? 1.0
                                      : kind == "Int"    ? 42.0
                                      : kind == "Double" ? 2.75
                                                         : 0.0);
        const std::string text(value.get_string(), kind == "Binary" ? 3 : std::strlen(value.get_string()));
        EXPECT_EQ(text, kind == "String" ? "hello" : kind == "Binary" ? "abc" : "");
        EXPECT_EQ(value.get_binary().size, kind == "Binary" ? 3u : 0u);
        EXPECT_EQ(value.get_binary().bytes == nullptr, kind != "Binary");
        EXPECT_EQ(value.get_timestamp().nanoseconds(), kind == "DateTime" ? 1000 : 0);
        EXPECT_EQ(value.get_timespan().nanoseconds(), kind == "TimeSpan" ? 2000 : 0);
    }
}

TEST(ValueRead, ConversionOperatorsAreSynonymsOfTheReads) {
    for (const Sample& sample : samples()) {
        const Value& value = sample.value;
        SCOPED_TRACE(sample.name);
        EXPECT_EQ(static_cast<bool>(value), value.get_bool());
        EXPECT_EQ(static_cast<int>(value), value.get_int32());
        EXPECT_EQ(static_cast<long>(value), value.get_int64());
        EXPECT_EQ(static_cast<double>(value), value.get_double());
        EXPECT_EQ(static_cast<const char*>(value), value.get_string());
        EXPECT_EQ(static_cast<Timestamp>(value).nanoseconds(), value.get_timestamp().nanoseconds());
        EXPECT_EQ(static_cast<Timespan>(value).nanoseconds(), value.get_timespan().nanoseconds());
        EXPECT_EQ(static_cast<Binary>(value).size, value.get_binary().size);
        EXPECT_EQ(static_cast<Binary>(value).bytes, value.get_binary().bytes);
    }
}

TEST(ValueRead, StringOfBinaryPointsAtItsBytes) {
    Value value(bytes_of("xyz", 3));
    const char* text = value.get_string();
    EXPECT_EQ(static_cast<const void*>(text), static_cast<const void*>(value.get_binary().bytes));
    EXPECT_EQ(std::memcmp(text, "xyz", 3), 0);
}

TEST(ValueRead, StringOfIntIsTheStaticEmptyText) {
    Value first(1);
    Value second(2.0);
    EXPECT_STREQ(first.get_string(), "");
    EXPECT_EQ(first.get_string(), second.get_string());
}

TEST(ValueRead, EmptyBinaryHasNullBytes) {
    Value value(Binary{0, nullptr});
    EXPECT_EQ(value.get_binary().size, 0u);
    EXPECT_EQ(value.get_binary().bytes, nullptr);
    EXPECT_STREQ(value.get_string(), "");
}

TEST(ValueRead, NonConstBinaryIsWritable) {
    Value value(bytes_of("ab", 2));
    Binary view = value.get_binary();
    view.bytes[0] = 'z';
    EXPECT_EQ(value.get_binary().bytes[0], 'z');
}

TEST(ValueRead, ReadsDoNotChangeTheValue) {
    Value value("12");
    EXPECT_EQ(value.get_int32(), 0);
    EXPECT_EQ(value.get_double(), 0.0);
    EXPECT_EQ(value.type(), ValueType::String);
    EXPECT_STREQ(value.get_string(), "12");
}

// ---- retagging keeps kind and storage apart ---------------------------------------------------

TEST(ValueKind, RetaggedValuesReadThroughBothTests) {
    Value value(2.5);
    value.set_type(ValueType::Int64);
    EXPECT_EQ(value.type(), ValueType::Int64);
    EXPECT_EQ(value.get_int64(), 0);       // the storage is still a double
    EXPECT_EQ(value.get_double(), 2.5);    // the one read that still finds it
    value.set_type(ValueType::DateTime);
    EXPECT_EQ(value.get_timestamp().nanoseconds(), 0);
}

TEST(ValueKind, StepsAmongLongKindsKeepTheNumber) {
    Value value(7L);
    value.set_type(ValueType::TimeSpan);
    EXPECT_EQ(value.get_timespan().nanoseconds(), 7);
    value.set_type(ValueType::DateTime);
    EXPECT_EQ(value.get_timestamp().nanoseconds(), 7);
}

TEST(ValueKind, SetTypeBoolOnFreshValueReadsFalse) {
    Value value;
    value.set_type(ValueType::Bool);
    EXPECT_EQ(value.type(), ValueType::Bool);
    EXPECT_FALSE(value.get_bool());
    Value other;
    other.set_type(ValueType::Int64);
    EXPECT_EQ(other.get_int64(), 0);
}

TEST(ValueKind, StringRetaggedAsBinaryKeepsNoBytesAndViceVersa) {
    Value value("text");
    value.set_type(ValueType::Binary);
    EXPECT_EQ(value.get_binary().size, 0u);
    Value bytes(bytes_of("ab", 2));
    bytes.set_type(ValueType::String);
    EXPECT_STREQ(bytes.get_string(), "");
}

TEST(ValueKind, UnnamedNumbersAreStoredAsTheyAre) {
    Value value(3);
    value.set_type(static_cast<ValueType>(40));
    EXPECT_EQ(static_cast<int>(value.type()), 40);
    EXPECT_TRUE(value.isset());
    EXPECT_EQ(value.get_int32(), 0);
    EXPECT_STREQ(value.get_string(), "");
}

TEST(ValueKind, EveryReadOnEveryKindIsQuiet) {
    // Retag every sample to every kind number: no read may fail or crash.
    const int kinds[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 63, 64, 65, 66, 67, 256, -3};
    for (const Sample& sample : samples()) {
        for (int kind : kinds) {
            Value value(sample.value);
            value.set_type(static_cast<ValueType>(kind));
            (void)value.get_bool();
            (void)value.get_int32();
            (void)value.get_int64();
            (void)value.get_double();
            EXPECT_NE(value.get_string(), nullptr);
            (void)value.get_binary();
            (void)value.get_timestamp();
            (void)value.get_timespan();
            Value copy(value);
            EXPECT_EQ(copy.type(), value.type());
            value.convert(static_cast<ValueType>(kind));
        }
    }
}
