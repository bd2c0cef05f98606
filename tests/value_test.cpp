#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "request_test_support.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>
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

Value retagged(Value value, ValueType type) {
    value.set_type(type);
    return value;
}

Value retagged(Value value, int number) {
    return retagged(std::move(value), static_cast<ValueType>(number));
}

// A Vector of one element and a Struct of one key.
Value one_element() {
    Value vector;
    vector << Value(1);
    return vector;
}

Value one_key() {
    Value keyed;
    keyed.insert("k", Value(1));
    return keyed;
}

// The bytes in the storage of a value, whatever its kind: an Any keeps its storage when it is
// retagged to Binary, which then shows the bytes with their count.
std::string stored_bytes(const Value& value) {
    Value view = retagged(retagged(value, ValueType::Any), ValueType::Binary);
    const Binary bytes = view.get_binary();
    return bytes.size == 0 ? std::string()
                           : std::string(reinterpret_cast<const char*>(bytes.bytes), bytes.size);
}

// Bytes with every NUL written out, so that expected texts read as one line.
std::string shown(const std::string& bytes) {
    std::string text;
    for (char byte : bytes) {
        text += byte == '\0' ? std::string("\\0") : std::string(1, byte);
    }
    return text;
}

}  // namespace

// ---- kinds and their names ----------------------------------------------------------------

TEST(ValueType, NumbersAreFixed) {
    EXPECT_TRUE((std::is_same<std::underlying_type<ValueType>::type, std::int32_t>::value));
    const struct {
        ValueType type;
        int number;
    } rows[] = {{ValueType::Null, 0},   {ValueType::Bool, 1},      {ValueType::Int, 2},
                {ValueType::Double, 3}, {ValueType::String, 4},    {ValueType::Vector, 5},
                {ValueType::Map, 6},    {ValueType::Struct, 7},    {ValueType::Binary, 8},
                {ValueType::Int64, 9},  {ValueType::DateTime, 10}, {ValueType::TimeSpan, 11},
                {ValueType::Event, 64}, {ValueType::Message, 65},  {ValueType::Alarm, 66},
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
    } rows[] = {
        {0, "Null", "null"},     {1, "Bool", "bool"},           {2, "Int", "int"},
        {3, "Double", "double"}, {4, "String", "string"},       {5, "Vector", "vector"},
        {6, "Map", "map"},       {7, "Struct", "struct"},       {8, "Binary", "binary"},
        {9, "Int64", "int64"},   {10, "DateTime", "date-time"}, {11, "TimeSpan", "timespan"},
        {64, "Event", "event"},  {65, "Message", "message"},    {66, "Alarm", "alarm"},
        {256, "Any", "any"}};
    for (const auto& row : rows) {
        const auto type = static_cast<ValueType>(row.number);
        EXPECT_STREQ(Quorvane::Algorithm::value_type_to_string(type), row.capitalised)
            << row.number;
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

TEST(ValueSet, TextAndBytesMayComeFromTheValueItself) {
    Value text("a text long enough to live outside any small-buffer storage");
    text.set(text.get_string());
    EXPECT_STREQ(text.get_string(), "a text long enough to live outside any small-buffer storage");
    text = text.get_string();
    EXPECT_STREQ(text.get_string(), "a text long enough to live outside any small-buffer storage");
    Value bytes(bytes_of("a\0c", 3));
    bytes.set(bytes.get_binary());
    EXPECT_EQ(stored_bytes(bytes), std::string("a\0c", 3));
    bytes = bytes.get_binary();
    EXPECT_EQ(stored_bytes(bytes), std::string("a\0c", 3));
}

TEST(ValueSet, BinaryWithoutBytesChangesNothingThroughEveryPath) {
    Value built(Binary{2, nullptr});
    EXPECT_EQ(built.type(), ValueType::Null);
    Value assigned("keep");
    assigned = Binary{2, nullptr};
    EXPECT_EQ(assigned.type(), ValueType::String);
    EXPECT_STREQ(assigned.get_string(), "keep");
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

// Every read of `value` that answers something other than the zero of its type, in one line.
// get_string answers exactly when the storage holds bytes; its text is shown up to their count,
// because bytes carry no terminator.
std::string reads_of(const Value& value) {
    std::ostringstream reads;
    if (value.get_bool()) {
        reads << " bool";
    }
    if (value.get_int32() != 0) {
        reads << " int32=" << value.get_int32();
    }
    if (value.get_int64() != 0) {
        reads << " int64=" << value.get_int64();
    }
    if (value.get_double() != 0.0) {
        reads << " double=" << value.get_double();
    }
    const std::string bytes = stored_bytes(value);
    if (bytes.empty()) {
        EXPECT_STREQ(value.get_string(), "");
    } else {
        reads << " text=" << shown(std::string(value.get_string(), bytes.size()));
    }
    if (value.get_binary().size != 0) {
        reads << " binary=" << value.get_binary().size;
    }
    if (value.get_timestamp().nanoseconds() != 0) {
        reads << " timestamp=" << value.get_timestamp().nanoseconds();
    }
    if (value.get_timespan().nanoseconds() != 0) {
        reads << " timespan=" << value.get_timespan().nanoseconds();
    }
    return reads.str().empty() ? std::string() : reads.str().substr(1);
}

struct ReadRow {
    const char* name;
    Value value;
    const char* reads;
};

// Every kind over its own content, then kinds over a storage that does not fit them.
std::vector<ReadRow> read_rows() {
    return {
        {"Null", Value(), ""},
        {"Bool true", Value(true), "bool double=1"},
        {"Bool false", Value(false), ""},
        {"Int", Value(42), "int32=42 double=42"},
        {"Int negative", Value(-7), "int32=-7 double=-7"},
        {"Int 1", Value(1), "int32=1 double=1"},
        {"Double", Value(2.75), "int32=2 double=2.75"},
        {"Double negative", Value(-2.75), "int32=-2 double=-2.75"},
        {"String", Value("hello"), "text=hello\\0"},
        {"String of digits", Value("12"), "text=12\\0"},
        {"String empty", Value(""), "text=\\0"},
        {"Binary", Value(bytes_of("a\0c", 3)), "text=a\\0c binary=3"},
        {"Binary empty", Value(Binary{}), ""},
        {"Int64", Value(1L << 40), "int64=1099511627776"},
        {"Int64 negative", Value(-5L), "int64=-5"},
        {"DateTime", Value(Timestamp(-1000)), "int64=-1000 timestamp=-1000"},
        {"TimeSpan", Value(Timespan(2000)), "int64=2000 timespan=2000"},
        {"Vector", one_element(), ""},
        {"Map", retagged(one_key(), ValueType::Map), ""},
        {"Struct", one_key(), ""},
        {"Event", retagged(Value(), ValueType::Event), ""},
        {"Message", retagged(Value(), ValueType::Message), ""},
        {"Alarm", retagged(Value(), ValueType::Alarm), ""},
        {"Any over a double", retagged(Value(2.75), ValueType::Any), ""},
        {"Any over a text", retagged(Value("hi"), ValueType::Any), "text=hi\\0"},
        {"Any over a long", retagged(Value(5L), ValueType::Any), ""},
        {"Any over a vector", retagged(one_element(), ValueType::Any), ""},
        {"12 over a double", retagged(Value(2.75), 12), ""},
        {"63 over a text", retagged(Value("hi"), 63), "text=hi\\0"},
        {"67 over a long", retagged(Value(5L), 67), ""},
        {"-1 over bytes", retagged(Value(bytes_of("xy", 2)), -1), "text=xy"},
        {"Bool over 2.75", retagged(Value(2.75), ValueType::Bool), "double=2.75"},
        {"Bool over Int 1", retagged(Value(1), ValueType::Bool), "bool double=1"},
        {"Bool over a long 1", retagged(Value(1L), ValueType::Bool), ""},
        {"Bool over a text", retagged(Value("true"), ValueType::Bool), "text=true\\0"},
        {"Double over true", retagged(Value(true), ValueType::Double), "int32=1 double=1"},
        {"Double over a long", retagged(Value(5L), ValueType::Double), ""},
        {"Double over a text", retagged(Value("2.5"), ValueType::Double), "text=2.5\\0"},
        {"Int64 over a double", retagged(Value(2.5), ValueType::Int64), "double=2.5"},
        {"Int64 over bytes", retagged(Value(bytes_of("ab", 2)), ValueType::Int64), "text=ab"},
        {"DateTime over a double", retagged(Value(2.5), ValueType::DateTime), ""},
        {"DateTime over a span", retagged(Value(Timespan(7)), ValueType::DateTime),
         "int64=7 timestamp=7"},
        {"TimeSpan over Int64", retagged(Value(7L), ValueType::TimeSpan), "int64=7 timespan=7"},
        {"TimeSpan over a text", retagged(Value("PT1S"), ValueType::TimeSpan), "text=PT1S\\0"},
        {"Int over 3e9", retagged(Value(3e9), ValueType::Int), "int32=-2147483648 double=3e+09"},
        {"String without bytes", retagged(Value(5), ValueType::String), ""},
        {"Binary over a text", retagged(retagged(Value("hi"), ValueType::Any), ValueType::Binary),
         "text=hi\\0 binary=3"},
    };
}

}  // namespace

TEST(ValueRead, EveryReadOnEveryKindAndStorage) {
    for (const ReadRow& row : read_rows()) {
        EXPECT_EQ(reads_of(row.value), row.reads) << row.name;
    }
}

TEST(ValueRead, BinaryViewPointsAtTheStoredBytesOrIsNull) {
    for (const ReadRow& row : read_rows()) {
        SCOPED_TRACE(row.name);
        Value writable(row.value);
        const Value& value = writable;
        for (const Binary view : {value.get_binary(), writable.get_binary()}) {
            if (view.size == 0) {
                EXPECT_EQ(view.bytes, nullptr);
            } else {
                EXPECT_EQ(static_cast<const void*>(view.bytes),
                          static_cast<const void*>(value.get_string()));
            }
        }
    }
}

TEST(ValueRead, ConversionOperatorsAreSynonymsOfTheReads) {
    for (const ReadRow& row : read_rows()) {
        const Value& value = row.value;
        SCOPED_TRACE(row.name);
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

TEST(ValueRead, ReadsLeaveKindAndStorageAlone) {
    for (const ReadRow& row : read_rows()) {
        Value value(row.value);
        const ValueType kind = value.type();
        const char* text = value.get_string();
        reads_of(value);
        EXPECT_EQ(value.type(), kind) << row.name;
        EXPECT_EQ(value.get_string(), text) << row.name;
    }
}

TEST(ValueRead, StringOfIntIsTheStaticEmptyText) {
    Value first(1);
    Value second(2.0);
    EXPECT_STREQ(first.get_string(), "");
    EXPECT_EQ(first.get_string(), second.get_string());
}

TEST(ValueRead, NonConstBinaryIsWritable) {
    Value value(bytes_of("ab", 2));
    Binary view = value.get_binary();
    view.bytes[0] = 'z';
    EXPECT_EQ(value.get_binary().bytes[0], 'z');
}

// ---- kind changes ------------------------------------------------------------------------

namespace {

// What the storage of a value holds, told apart by reads alone: a retag to Any shows a
// container, bytes show as in stored_bytes, and a retag to Int64 shows a long or a double.
// Zero numbers, empty bytes and the objects all read as "nothing".
std::string storage_of(const Value& value) {
    const Value any = retagged(value, ValueType::Any);
    if (const Quorvane::Map<Value>* map = any.get_map()) {
        return "map " + std::to_string(map->size());
    }
    if (const Quorvane::Vector<Value>* vector = any.get_vector()) {
        return "vector " + std::to_string(vector->size());
    }
    const std::string bytes = stored_bytes(value);
    if (!bytes.empty()) {
        return "bytes " + shown(bytes);
    }
    const Value number = retagged(value, ValueType::Int64);
    std::ostringstream text;
    if (number.get_int64() != 0) {
        text << "long " << number.get_int64();
    } else if (number.get_double() != 0.0) {
        text << "double " << number.get_double();
    } else {
        text << "nothing";
    }
    return text.str();
}

struct Source {
    const char* name;
    Value value;
};

// Every kind with content that its storage shows, and Any and unnamed numbers over each storage.
std::vector<Source> sources() {
    return {
        {"Null", Value()},
        {"Bool", Value(true)},
        {"Int", Value(7)},
        {"Double", Value(-1.5)},
        {"String", Value("5")},
        {"Binary", Value(bytes_of("abc", 3))},
        {"Int64", Value(9L)},
        {"DateTime", Value(Timestamp(11))},
        {"TimeSpan", Value(Timespan(13))},
        {"Vector", one_element()},
        {"Map", retagged(one_key(), ValueType::Map)},
        {"Struct", one_key()},
        {"Event", retagged(Value(), ValueType::Event)},
        {"Message", retagged(Value(), ValueType::Message)},
        {"Alarm", retagged(Value(), ValueType::Alarm)},
        {"Any over a double", retagged(Value(-1.5), ValueType::Any)},
        {"Any over a text", retagged(Value("5"), ValueType::Any)},
        {"Any over bytes", retagged(Value(bytes_of("abc", 3)), ValueType::Any)},
        {"Any over a long", retagged(Value(9L), ValueType::Any)},
        {"Any over a vector", retagged(one_element(), ValueType::Any)},
        {"Any over a map", retagged(one_key(), ValueType::Any)},
        {"12 over a double", retagged(Value(-1.5), 12)},
        {"300 over a text", retagged(Value("5"), 300)},
    };
}

// The storage after set_type: `otherwise` for every source not in `exceptions`, whose storage
// is named there (null: it stays as it was). A null `otherwise` is a pure retag.
struct SetTypeRow {
    int target;
    const char* otherwise;
    std::vector<std::pair<std::string, const char*>> exceptions;
};

const std::vector<SetTypeRow>& set_type_rows() {
    static const std::vector<SetTypeRow> rows = {
        {0, "nothing", {}},
        {1, nullptr, {}},
        {2, "nothing", {{"Int", nullptr}, {"Double", "double -2"}}},
        {3, nullptr, {}},
        {4, "nothing", {{"String", nullptr}}},
        {5, "vector 0", {{"Vector", nullptr}, {"Any over a vector", nullptr}}},
        {6, "map 0", {{"Map", nullptr}, {"Struct", nullptr}, {"Any over a map", nullptr}}},
        {7, "map 0", {{"Map", nullptr}, {"Struct", nullptr}, {"Any over a map", nullptr}}},
        {8,
         "nothing",
         {{"Binary", nullptr}, {"Any over a text", nullptr}, {"Any over bytes", nullptr}}},
        {9, nullptr, {}},
        {10, nullptr, {}},
        {11, nullptr, {}},
        {64, "nothing", {}},
        {65, "nothing", {}},
        {66, "nothing", {}},
        {256, nullptr, {}},
        {12, nullptr, {}},
        {63, nullptr, {}},
        {67, nullptr, {}},
        {255, nullptr, {}},
        {257, nullptr, {}},
        {-1, nullptr, {}},
    };
    return rows;
}

std::string expected_storage(const SetTypeRow& row, const Source& source) {
    const char* storage = row.otherwise;
    for (const auto& exception : row.exceptions) {
        if (exception.first == source.name) {
            storage = exception.second;
        }
    }
    return storage == nullptr ? storage_of(source.value) : storage;
}

}  // namespace

TEST(ValueSetType, FollowsItsTableForEverySourceAndTarget) {
    for (const SetTypeRow& row : set_type_rows()) {
        const auto target = static_cast<ValueType>(row.target);
        for (const Source& source : sources()) {
            SCOPED_TRACE(std::string(source.name) + " to " + std::to_string(row.target));
            Value value(source.value);
            EXPECT_EQ(&value.set_type(target), &value);
            EXPECT_EQ(value.type(), target);
            EXPECT_EQ(storage_of(value), expected_storage(row, source));
        }
    }
}

TEST(ValueSetType, IntFloorsADoubleAndStartsEveryOtherKindFromZero) {
    Value number(-1.5);
    number.set_type(ValueType::Int);
    EXPECT_EQ(number.get_int32(), -2);
    EXPECT_EQ(number.get_double(), -2.0);
    Value text("5");
    text.set_type(ValueType::Int);
    EXPECT_EQ(text.get_int32(), 0);
    EXPECT_STREQ(text.get_string(), "");
}

TEST(ValueSetType, NewBoolReadsFalseAndNewInt64ReadsZero) {
    Value flag;
    flag.set_type(ValueType::Bool);
    EXPECT_EQ(flag.type(), ValueType::Bool);
    EXPECT_FALSE(flag.get_bool());
    Value number;
    number.set_type(ValueType::Int64);
    EXPECT_EQ(number.get_int64(), 0);
}

TEST(ValueSetType, StringKeepsItsTextButBinaryLosesItsBytes) {
    Value text("keep");
    text.set_type(ValueType::String);
    EXPECT_STREQ(text.get_string(), "keep");
    Value bytes(bytes_of("ab", 2));
    bytes.set_type(ValueType::String);
    EXPECT_STREQ(bytes.get_string(), "");
    EXPECT_EQ(bytes.size(), 0u);
    Value string("text");
    string.set_type(ValueType::Binary);
    EXPECT_EQ(string.get_binary().size, 0u);
}

TEST(ValueConvert, NullEmptiesEveryKind) {
    for (const Source& source : sources()) {
        SCOPED_TRACE(source.name);
        Value value(source.value);
        EXPECT_EQ(&value.convert(ValueType::Null), &value);
        EXPECT_EQ(value.type(), ValueType::Null);
        EXPECT_EQ(storage_of(value), "nothing");
        EXPECT_EQ(reads_of(value), "");
    }
}

TEST(ValueConvert, EveryTargetIsQuietOnEverySource) {
    for (const SetTypeRow& row : set_type_rows()) {
        for (const Source& source : sources()) {
            Value value(source.value);
            EXPECT_EQ(&value.convert(static_cast<ValueType>(row.target)), &value);
            reads_of(value);
            const Value copy(value);
            EXPECT_EQ(copy.type(), value.type());
        }
    }
}

// ---- robustness ---------------------------------------------------------------------------

TEST(ValueRobustness, RandomWritesRetagsAndReadsStayQuietAndCopiesStayFaithful) {
    std::mt19937 random(20240917u);
    const std::vector<std::string> texts = request_test::random_texts(7u, 64, 48);
    std::vector<Value> values(4);
    auto any_of = [&random](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    for (int step = 0; step < 20000; ++step) {
        Value& value = values[any_of(values.size())];
        const Value& other = values[any_of(values.size())];
        const std::string& text = texts[any_of(texts.size())];
        const auto kind =
            static_cast<ValueType>(set_type_rows()[any_of(set_type_rows().size())].target);
        switch (any_of(12)) {
            case 0:
                value.set(text.c_str());
                break;
            case 1:
                value.set(bytes_of(text.data(), text.size()));
                break;
            case 2:
                value = static_cast<int>(random());
                break;
            case 3:
                value = static_cast<long>(random()) << 20;
                break;
            case 4:
                value =
                    std::ldexp(static_cast<double>(random()), static_cast<int>(any_of(80)) - 40);
                break;
            case 5:
                value = Timestamp(static_cast<long>(random()));
                break;
            case 6:
                value.set_type(kind);
                break;
            case 7:
                value.convert(kind);
                break;
            case 8:
                value = other;
                break;
            case 9:
                value.swap(values[any_of(values.size())]);
                break;
            case 10:
                // Only a String is sure to end in a NUL; the bytes of a Binary do not.
                if (value.type() == ValueType::String) {
                    value.set(value.get_string());
                }
                break;
            default:
                value = value.get_binary();
                break;
        }
        ASSERT_NE(value.get_string(), nullptr);
        const Value copy(value);
        ASSERT_EQ(copy.type(), value.type());
        ASSERT_EQ(reads_of(copy), reads_of(value)) << step;
    }
}
