#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

using Quorvane::String;

TEST(String, DefaultIsEmptyAndSet) {
    String text;
    EXPECT_STREQ(text.name(), "");
    EXPECT_TRUE(text.isset());
}

TEST(String, EmptyTextIsSet) { EXPECT_TRUE(String("").isset()); }

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
