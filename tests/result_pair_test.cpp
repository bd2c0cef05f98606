#include "QuorvaneExtApi.h"

#include "helper/api_helper.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <iomanip>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>

using namespace Quorvane;

namespace {

ErrorValue error(int number) {
    return static_cast<ErrorValue>(number);
}

// How a function hands back a bare code.
ResultPair bare_code() {
    return HMI_E_ENTRY_NOT_FOUND;
}

// How a function hands back a composed result: a temporary builder in the return statement.
ResultPair not_a_vector(ValueType type) {
    return ResultStream(HMI_E_PAGING) << "Sorting needs a vector. Got value of type " << type;
}

ResultPair write_failed(int system_error) {
    errno = system_error;
    return ResultStreamAppendLastError(HMI_E_FILE_WRITE) << "Unable to write file";
}

// Facts that end the process need one of their own.
class ResultPairDeathTest : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

}  // namespace

// ---------------------------------------------------------------------------------------------
// ResultPair
// ---------------------------------------------------------------------------------------------

TEST(ResultPair, IsAnObjectWithVirtualDestructor) {
    EXPECT_TRUE((std::is_base_of<IObject, ResultPair>::value));
    EXPECT_TRUE(std::has_virtual_destructor<ResultPair>::value);
}

TEST(ResultPair, DefaultIsSuccessWithEmptyText) {
    const ResultPair result;
    EXPECT_EQ(result.result(), HMI_E_SUCCESS);
    EXPECT_STREQ(result.text(), "");
    EXPECT_TRUE(result == HMI_E_SUCCESS);
    EXPECT_TRUE(result == error(0));
    EXPECT_FALSE(result != HMI_E_SUCCESS);
}

TEST(ResultPair, CodeAloneHasEmptyText) {
    const ResultPair result(HMI_E_INVALID_TYPE);
    EXPECT_EQ(result.result(), HMI_E_INVALID_TYPE);
    EXPECT_STREQ(result.text(), "");
}

TEST(ResultPair, CodeAndTextAreKept) {
    const ResultPair result(HMI_E_INVALID_PARAMETER, "Header missing.");
    EXPECT_EQ(result.result(), HMI_E_INVALID_PARAMETER);
    EXPECT_STREQ(result.text(), "Header missing.");
}

TEST(ResultPair, CarriesNumbersWithoutARow) {
    const ResultPair result(error(-7000), "x");
    EXPECT_EQ(static_cast<int>(result.result()), -7000);
}

TEST(ResultPair, CopiesTheText) {
    std::string source = "pump";
    const ResultPair result(HMI_E_FAIL, source.c_str());
    source[0] = 'd';
    EXPECT_STREQ(result.text(), "pump");
}

TEST(ResultPair, KeepsBytesAboveAscii) {
    const ResultPair result(HMI_E_FAIL, "\xc3\xa4\xff");
    EXPECT_STREQ(result.text(), "\xc3\xa4\xff");
}

TEST(ResultPair, BareCodeConvertsImplicitly) {
    const ResultPair result = bare_code();
    EXPECT_EQ(result.result(), HMI_E_ENTRY_NOT_FOUND);
    EXPECT_STREQ(result.text(), "");
}

TEST(ResultPair, TextStaysPutWhileTheObjectIsUnchanged) {
    const ResultPair result(HMI_E_FAIL, "kept");
    const char* text = result.text();
    const ResultPair copy(result);
    EXPECT_TRUE(result == copy);
    EXPECT_TRUE(result == HMI_E_FAIL);
    EXPECT_EQ(result.text(), text);
    EXPECT_NE(copy.text(), text);
    EXPECT_STREQ(text, "kept");
}

TEST(ResultPair, KeepsAHugeText) {
    const std::string text(1 << 20, '\x80');
    ResultPair result(HMI_E_REQUEST_TOO_LARGE, text.c_str());
    EXPECT_EQ(std::string(result.text()), text);
    result.set_text(text.c_str());
    EXPECT_EQ(std::string(result.text()), text);
}

TEST_F(ResultPairDeathTest, NullTextEndsTheProcess) {
    const char* missing = nullptr;
    EXPECT_DEATH({ ResultPair result(HMI_E_FAIL, missing); }, "");
}

TEST(ResultPair, CopyIsDeep) {
    ResultPair original(HMI_E_FAIL, "a");
    const ResultPair copy(original);
    original.set_text("b");
    original.set_result(HMI_E_SERVER);
    EXPECT_EQ(copy.result(), HMI_E_FAIL);
    EXPECT_STREQ(copy.text(), "a");
    EXPECT_STREQ(original.text(), "b");
}

TEST(ResultPair, AssignmentTakesTheValue) {
    ResultPair result(HMI_E_FAIL, "a");
    result = ResultPair(HMI_E_SCHEMA, "b");
    EXPECT_EQ(result.result(), HMI_E_SCHEMA);
    EXPECT_STREQ(result.text(), "b");
    const ResultPair& same = result;
    result = same;
    EXPECT_EQ(result.result(), HMI_E_SCHEMA);
    EXPECT_STREQ(result.text(), "b");
    result = HMI_E_SUCCESS;
    EXPECT_EQ(result.result(), HMI_E_SUCCESS);
    EXPECT_STREQ(result.text(), "");
}

TEST(ResultPair, SwapExchangesAndAnswersTrue) {
    ResultPair left(HMI_E_FAIL, "left");
    ResultPair right(HMI_E_SERVER, "right");
    EXPECT_TRUE(left.swap(right));
    EXPECT_EQ(left.result(), HMI_E_SERVER);
    EXPECT_STREQ(left.text(), "right");
    EXPECT_EQ(right.result(), HMI_E_FAIL);
    EXPECT_STREQ(right.text(), "left");
    EXPECT_TRUE(left.swap(left));
    EXPECT_STREQ(left.text(), "right");
}

TEST(ResultPair, SetResultKeepsTheText) {
    ResultPair result(HMI_E_FAIL, "kept");
    result.set_result(HMI_E_UNEXPECTED);
    EXPECT_EQ(result.result(), HMI_E_UNEXPECTED);
    EXPECT_STREQ(result.text(), "kept");
}

TEST(ResultPair, SetTextKeepsTheCode) {
    ResultPair result(HMI_E_FAIL, "old");
    result.set_text("new");
    EXPECT_EQ(result.result(), HMI_E_FAIL);
    EXPECT_STREQ(result.text(), "new");
    result.set_text("");
    EXPECT_STREQ(result.text(), "");
}

TEST(ResultPair, HeapStorageGoesThroughTheLibrary) {
    ResultPair* result = new ResultPair(HMI_E_FAIL, "heap");
    EXPECT_STREQ(result->text(), "heap");
    delete result;
    alignas(ResultPair) unsigned char storage[sizeof(ResultPair)];
    ResultPair* placed = new (storage) ResultPair(HMI_E_FAIL, "placed");
    EXPECT_EQ(static_cast<void*>(placed), static_cast<void*>(storage));
    EXPECT_STREQ(placed->text(), "placed");
    placed->~ResultPair();
}

// ---------------------------------------------------------------------------------------------
// Comparison
// ---------------------------------------------------------------------------------------------

TEST(ResultPairCompare, AgainstACodeTheTextIsIgnored) {
    for (const char* text : {"", "x", "Entry not found", "\xff"}) {
        const ResultPair result(HMI_E_ENTRY_NOT_FOUND, text);
        EXPECT_TRUE(result == HMI_E_ENTRY_NOT_FOUND) << text;
        EXPECT_FALSE(result != HMI_E_ENTRY_NOT_FOUND) << text;
        EXPECT_FALSE(result == HMI_E_SUCCESS) << text;
        EXPECT_TRUE(result != HMI_E_SUCCESS) << text;
    }
}

TEST(ResultPairCompare, AgainstAPairTheTextCounts) {
    const ResultPair a(HMI_E_FAIL, "a");
    const ResultPair b(HMI_E_FAIL, "b");
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(a == ResultPair(HMI_E_FAIL, "a"));
    EXPECT_FALSE(a != ResultPair(HMI_E_FAIL, "a"));
}

TEST(ResultPairCompare, NumbersWithoutARowCompareByValue) {
    const ResultPair unnamed(error(-7000), "x");
    EXPECT_TRUE(unnamed == error(-7000));
    EXPECT_TRUE(unnamed != error(7000));
    EXPECT_TRUE(unnamed == ResultPair(error(-7000), "x"));
    EXPECT_TRUE(unnamed != ResultPair(error(7000), "x"));
}

TEST(ResultPairCompare, AgainstAPairTheCodeCounts) {
    const ResultPair fail(HMI_E_FAIL, "same");
    const ResultPair server(HMI_E_SERVER, "same");
    EXPECT_FALSE(fail == server);
    EXPECT_TRUE(fail != server);
}

TEST(ResultPairCompare, TextsAreComparedByteForByte) {
    EXPECT_FALSE(ResultPair(HMI_E_FAIL, "a") == ResultPair(HMI_E_FAIL, "A"));
    EXPECT_FALSE(ResultPair(HMI_E_FAIL, "a") == ResultPair(HMI_E_FAIL, "a "));
    EXPECT_FALSE(ResultPair(HMI_E_FAIL, "") == ResultPair(HMI_E_FAIL, " "));
    EXPECT_TRUE(ResultPair(HMI_E_FAIL, "") == ResultPair(HMI_E_FAIL));
    EXPECT_TRUE(ResultPair() == ResultPair(HMI_E_SUCCESS, ""));
}

// ---------------------------------------------------------------------------------------------
// ResultStream
// ---------------------------------------------------------------------------------------------

TEST(ResultStream, NothingWrittenGivesTheCodeAndEmptyText) {
    const ResultPair result = ResultStream(HMI_E_INVALID_TYPE);
    EXPECT_EQ(result.result(), HMI_E_INVALID_TYPE);
    EXPECT_STREQ(result.text(), "");
}

TEST(ResultStream, AppendsWhatATextStreamWrites) {
    const std::string tail = " end";
    const ResultPair result = ResultStream(HMI_E_FAIL)
                              << "n=" << 42 << ' ' << -7L << ' ' << 2.5 << ' ' << true << tail;
    EXPECT_STREQ(result.text(), "n=42 -7 2.5 1 end");
}

TEST(ResultStream, TakesManipulators) {
    const ResultPair result = ResultStream(HMI_E_FAIL)
                              << std::hex << 255 << std::dec << ' ' << 255 << std::endl;
    EXPECT_STREQ(result.text(), "ff 255\n");
}

TEST(ResultStream, WritesAKindByName) {
    const ResultPair result = ResultStream(HMI_E_FAIL) << ValueType::Map;
    EXPECT_STREQ(result.text(), "Map");
    const ResultPair six = ResultStream(HMI_E_FAIL) << static_cast<ValueType>(6);
    EXPECT_STREQ(six.text(), "Map");
}

TEST(ResultStream, WritesEveryKindByItsCapitalisedName) {
    const struct {
        ValueType type;
        const char* name;
    } table[] = {
        {ValueType::Null, "Null"},         {ValueType::Bool, "Bool"},
        {ValueType::Int, "Int"},           {ValueType::Double, "Double"},
        {ValueType::String, "String"},     {ValueType::Vector, "Vector"},
        {ValueType::Map, "Map"},           {ValueType::Struct, "Struct"},
        {ValueType::Binary, "Binary"},     {ValueType::Int64, "Int64"},
        {ValueType::DateTime, "DateTime"}, {ValueType::TimeSpan, "TimeSpan"},
        {ValueType::Event, "Event"},       {ValueType::Message, "Message"},
        {ValueType::Alarm, "Alarm"},       {ValueType::Any, "Any"},
    };
    for (const auto& row : table) {
        const ResultPair result = ResultStream(HMI_E_FAIL) << row.type;
        EXPECT_STREQ(result.text(), row.name);
    }
    const ResultPair unnamed = ResultStream(HMI_E_FAIL) << static_cast<ValueType>(12);
    EXPECT_STREQ(unnamed.text(), "Null");
}

TEST(ResultStream, WritesAnOutcomeAsItsNumber) {
    const ResultPair result = ResultStream(HMI_E_FAIL) << HMI_E_INVALID_PARAMETER;
    EXPECT_STREQ(result.text(), "269");
}

TEST(ResultStream, ComposesInAReturnStatement) {
    const ResultPair result = not_a_vector(ValueType::Struct);
    EXPECT_EQ(result.result(), HMI_E_PAGING);
    EXPECT_STREQ(result.text(), "Sorting needs a vector. Got value of type Struct");
}

TEST(ResultStream, InsertionAnswersTheBuilderItself) {
    ResultStream stream(HMI_E_FAIL);
    EXPECT_EQ(&(stream << "a"), &stream);
    EXPECT_EQ(&(stream << ValueType::Int), &stream);
    EXPECT_EQ(&(stream << std::endl), &stream);
    ResultStreamAppendLastError appending(HMI_E_FAIL);
    EXPECT_EQ(&(appending << "a"), &appending);
    EXPECT_EQ(&(appending << ValueType::Int), &appending);
    EXPECT_EQ(&(appending << std::endl), &appending);
}

TEST(ResultStream, TextEndsAtAnEmbeddedNul) {
    const std::string text("a\0b", 3);
    const ResultPair streamed = ResultStream(HMI_E_FAIL) << text;
    EXPECT_STREQ(streamed.text(), "a");
    errno = 2;
    const ResultPair appended = ResultStreamAppendLastError(HMI_E_FAIL) << text;
    EXPECT_STREQ(appended.text(), "a");
    std::ostringstream stream;
    stream << text;
    EXPECT_STREQ(result_from_stream_last_error(HMI_E_FAIL, stream).text(), "a");
}

TEST(ResultStream, ConversionLeavesTheBuilderUnchanged) {
    ResultStream stream(HMI_E_SCHEMA);
    stream << "first";
    const ResultPair once = stream;
    const ResultPair twice = stream;
    EXPECT_TRUE(once == twice);
    EXPECT_STREQ(twice.text(), "first");
    stream << " second";
    const ResultPair later = stream;
    EXPECT_EQ(later.result(), HMI_E_SCHEMA);
    EXPECT_STREQ(later.text(), "first second");
}

TEST(ResultStream, IgnoresErrno) {
    errno = 2;
    const ResultPair result = ResultStream(HMI_E_FILE_WRITE) << "Unable to write file";
    EXPECT_STREQ(result.text(), "Unable to write file");
}

TEST(ResultStream, HasNoVirtualOperations) {
    EXPECT_FALSE(std::is_polymorphic<ResultStream>::value);
    EXPECT_FALSE(std::is_polymorphic<ResultStreamAppendLastError>::value);
}

// ---------------------------------------------------------------------------------------------
// ResultStreamAppendLastError
// ---------------------------------------------------------------------------------------------

TEST(ResultStreamAppendLastError, NothingWrittenGivesColonAndErrno) {
    errno = 2;
    const ResultPair result = ResultStreamAppendLastError(HMI_E_FILESYSTEM);
    EXPECT_EQ(result.result(), HMI_E_FILESYSTEM);
    EXPECT_STREQ(result.text(), ": 2");
}

TEST(ResultStreamAppendLastError, AppendsColonBlankAndErrnoToTheText) {
    const ResultPair result = write_failed(28);
    EXPECT_EQ(result.result(), HMI_E_FILE_WRITE);
    EXPECT_STREQ(result.text(), "Unable to write file: 28");
}

TEST(ResultStreamAppendLastError, WritesErrnoAsSignedDecimal) {
    EXPECT_STREQ(write_failed(0).text(), "Unable to write file: 0");
    EXPECT_STREQ(write_failed(-5).text(), "Unable to write file: -5");
    EXPECT_STREQ(write_failed(12345).text(), "Unable to write file: 12345");
}

TEST(ResultStreamAppendLastError, ReadsErrnoWhenConverted) {
    errno = 1;
    ResultStreamAppendLastError stream(HMI_E_FILE_LOCK);
    stream << "locked";
    errno = 11;
    const ResultPair first = stream;
    EXPECT_STREQ(first.text(), "locked: 11");
    errno = 13;
    const ResultPair second = stream;
    EXPECT_STREQ(second.text(), "locked: 13");
}

TEST(ResultStreamAppendLastError, WritesAKindByName) {
    errno = 2;
    const ResultPair result = ResultStreamAppendLastError(HMI_E_FAIL) << ValueType::Map;
    EXPECT_STREQ(result.text(), "Map: 2");
}

TEST(ResultStreamAppendLastError, UsesTheErrnoOfTheConvertingThread) {
    errno = 2;
    ResultStreamAppendLastError stream(HMI_E_FAIL);
    std::string seen;
    std::thread other([&] {
        errno = 5;
        seen = ResultPair(stream).text();
    });
    other.join();
    EXPECT_EQ(seen, ": 5");
    EXPECT_STREQ(ResultPair(stream).text(), ": 2");
}

// ---------------------------------------------------------------------------------------------
// result_from_stream_last_error
// ---------------------------------------------------------------------------------------------

TEST(ResultFromStreamLastError, EmptyStreamGivesEmptyTextWhateverErrnoIs) {
    for (const int system_error : {0, 2, 28}) {
        errno = system_error;
        const std::ostringstream stream;
        const ResultPair result = result_from_stream_last_error(HMI_E_FILE_WRITE, stream);
        EXPECT_EQ(result.result(), HMI_E_FILE_WRITE);
        EXPECT_STREQ(result.text(), "");
    }
}

TEST(ResultFromStreamLastError, AppendsNothing) {
    errno = 2;
    std::ostringstream stream;
    stream << "Unable to write file";
    EXPECT_STREQ(result_from_stream_last_error(HMI_E_FILE_WRITE, stream).text(),
                 "Unable to write file");
}

TEST(ResultFromStreamLastError, TakesAReadWriteStreamToo) {
    errno = 2;
    std::stringstream stream;
    stream << "read " << 3;
    const ResultPair result = result_from_stream_last_error(HMI_E_DECODE, stream);
    EXPECT_EQ(result.result(), HMI_E_DECODE);
    EXPECT_STREQ(result.text(), "read 3");
}

// ---------------------------------------------------------------------------------------------
// Robustness
// ---------------------------------------------------------------------------------------------

TEST(ResultPair, SurvivesRandomBytes) {
    std::mt19937 generator(7719);
    std::uniform_int_distribution<int> byte(1, 255);
    std::uniform_int_distribution<int> length(0, 64);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int i = length(generator); i > 0; --i) {
            text.push_back(static_cast<char>(byte(generator)));
        }
        ResultPair pair(HMI_E_FAIL, text.c_str());
        EXPECT_EQ(std::string(pair.text()), text);
        pair.set_text(text.c_str());
        EXPECT_TRUE(pair == ResultPair(HMI_E_FAIL, text.c_str()));
        const ResultPair streamed = ResultStream(HMI_E_FAIL) << text;
        EXPECT_TRUE(streamed == pair);
        errno = 2;
        const ResultPair appended = ResultStreamAppendLastError(HMI_E_FAIL) << text;
        EXPECT_EQ(std::string(appended.text()), text + ": 2");
        std::ostringstream stream;
        stream << text;
        EXPECT_TRUE(result_from_stream_last_error(HMI_E_FAIL, stream) == pair);
    }
}
