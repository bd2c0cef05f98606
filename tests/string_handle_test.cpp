#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "operator_traits.h"

#include <string>
#include <type_traits>

using Quorvane::String;

TEST(String, DefaultIsEmptyAndSet) {
    String text;
    EXPECT_STREQ(text.name(), "");
    EXPECT_TRUE(text.isset());
}

TEST(String, EmptyTextIsSet) {
    EXPECT_TRUE(String("").isset());
}

TEST(String, CopiesTheText) {
    std::string source = "pump";
    String text(source.c_str());
    source[0] = 'd';
    EXPECT_STREQ(text.name(), "pump");
}

TEST(String, CopyIsDeep) {
    String original("a");
    String copy(original);
    original.set_name("b");
    EXPECT_STREQ(copy.name(), "a");
    EXPECT_STREQ(original.name(), "b");
}

TEST(String, AssignmentTakesTheValue) {
    String text("a");
    text = String("b");
    EXPECT_STREQ(text.name(), "b");
    const String& same = text;
    text = same;
    EXPECT_STREQ(text.name(), "b");
}

TEST(String, SwapExchangesAndAnswersTrue) {
    String left("left");
    String right("right");
    EXPECT_TRUE(left.swap(right));
    EXPECT_STREQ(left.name(), "right");
    EXPECT_STREQ(right.name(), "left");
}

TEST(String, KeepsEmbeddedBytesAboveAscii) {
    String text("\xc3\xa4\xff");
    EXPECT_STREQ(text.name(), "\xc3\xa4\xff");
}

TEST(String, IsAnObjectWithVirtualDestructor) {
    EXPECT_TRUE((std::is_base_of<Quorvane::IObject, String>::value));
    EXPECT_TRUE(std::has_virtual_destructor<String>::value);
}

TEST(String, HeapStorageGoesThroughTheLibrary) {
    String* text = new String("heap");
    EXPECT_STREQ(text->name(), "heap");
    delete text;
    alignas(String) unsigned char storage[sizeof(String)];
    String* placed = new (storage) String("placed");
    EXPECT_EQ(static_cast<void*>(placed), static_cast<void*>(storage));
    EXPECT_STREQ(placed->name(), "placed");
    placed->~String();
}

TEST(String, SetNameReplacesTheWholeText) {
    String text("a longer text");
    text.set_name("b");
    EXPECT_STREQ(text.name(), "b");
    text.set_name("");
    EXPECT_STREQ(text.name(), "");
    EXPECT_TRUE(text.isset());
}

TEST(String, TextMayComeFromTheStringItself) {
    String text("a text long enough to live outside any small-buffer storage");
    text.set_name(text.name());
    EXPECT_STREQ(text.name(), "a text long enough to live outside any small-buffer storage");
    text.set_name(text.name() + 2);
    EXPECT_STREQ(text.name(), "text long enough to live outside any small-buffer storage");
}

TEST(String, StopsAtTheFirstNulAndKeepsEveryOtherByte) {
    std::string every_byte;
    for (int byte = 1; byte < 256; ++byte) {
        every_byte += static_cast<char>(byte);
    }
    String text(every_byte.c_str());
    EXPECT_EQ(std::string(text.name()), every_byte);
    String cut(std::string("ab\0cd", 5).c_str());
    EXPECT_STREQ(cut.name(), "ab");
    const std::string long_text(1 << 20, 'x');
    text.set_name(long_text.c_str());
    EXPECT_EQ(std::string(text.name()), long_text);
}

TEST(String, SwappedStringsStayIndependent) {
    String left("left");
    String right("right");
    left.swap(right);
    left.set_name("changed");
    EXPECT_STREQ(right.name(), "left");
    right = left;
    left.set_name("again");
    EXPECT_STREQ(right.name(), "changed");
}

TEST(String, HasNoComparisonOperators) {
    EXPECT_FALSE((operator_traits::HasEquality<String, String>::value));
    EXPECT_FALSE(operator_traits::HasOrdering<String>::value);
}
