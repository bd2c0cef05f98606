#include "helper/algorithm/memory.h"

#include <array>
#include <cstring>
#include <utility>

#include <gtest/gtest.h>

namespace {

using Quorvane::Algorithm::hmi_memcpy_s;
using Quorvane::Algorithm::hmi_memset_s;
using Quorvane::Algorithm::memory_compare;
using Quorvane::Algorithm::secure_zero_memory;

constexpr unsigned long top_bit = ~(~0UL >> 1);

using Buffer = std::array<unsigned char, 8>;

constexpr Buffer pattern = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr Buffer untouched = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};

TEST(HmiMemsetS, FillsExactlyCountBytesWhenTheyFit) {
    Buffer buffer = untouched;
    EXPECT_TRUE(hmi_memset_s(buffer.data(), buffer.size(), 0x41, 3));
    EXPECT_EQ(buffer, (Buffer{0x41, 0x41, 0x41, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}));
}

TEST(HmiMemsetS, CountEqualToDestinationSizeFillsAllAndSucceeds) {
    Buffer buffer = untouched;
    EXPECT_TRUE(hmi_memset_s(buffer.data(), buffer.size(), 0, buffer.size()));
    EXPECT_EQ(buffer, Buffer{});
}

TEST(HmiMemsetS, CountAboveDestinationSizeFillsTheDestinationAndReportsFalse) {
    std::array<unsigned char, 10> buffer;
    buffer.fill(0xEE);
    EXPECT_FALSE(hmi_memset_s(buffer.data(), 6, 0x7F, 9));
    for (std::size_t i = 0; i < buffer.size(); ++i) {
        EXPECT_EQ(buffer[i], i < 6 ? 0x7F : 0xEE) << "byte " << i;
    }
}

TEST(HmiMemsetS, ValueIsTruncatedToAByte) {
    Buffer buffer = untouched;
    EXPECT_TRUE(hmi_memset_s(buffer.data(), buffer.size(), 0x1AB, 1));
    EXPECT_EQ(buffer[0], 0xAB);
}

TEST(HmiMemsetS, NullDestinationIsRefused) {
    EXPECT_FALSE(hmi_memset_s(nullptr, 8, 0, 0));
    EXPECT_FALSE(hmi_memset_s(nullptr, 0, 0, 0));
}

TEST(HmiMemsetS, DestinationSizeWithTopBitIsRefusedWithoutWriting) {
    Buffer buffer = untouched;
    EXPECT_FALSE(hmi_memset_s(buffer.data(), top_bit, 0, 1));
    EXPECT_FALSE(hmi_memset_s(buffer.data(), static_cast<unsigned long>(-1L), 0, 1));
    EXPECT_EQ(buffer, untouched);
}

TEST(HmiMemsetS, CountWithTopBitFillsTheDestinationAndReportsFalse) {
    Buffer buffer = untouched;
    EXPECT_FALSE(hmi_memset_s(buffer.data(), buffer.size(), 0, top_bit));
    EXPECT_EQ(buffer, Buffer{});
}

TEST(HmiMemsetS, ZeroCountSucceedsWithoutWriting) {
    Buffer buffer = untouched;
    EXPECT_TRUE(hmi_memset_s(buffer.data(), buffer.size(), 0, 0));
    EXPECT_TRUE(hmi_memset_s(buffer.data(), 0, 0, 0));
    EXPECT_EQ(buffer, untouched);
}

TEST(HmiMemcpyS, CountEqualToDestinationSizeCopiesEverything) {
    Buffer destination = untouched;
    EXPECT_TRUE(
        hmi_memcpy_s(destination.data(), destination.size(), pattern.data(), pattern.size()));
    EXPECT_EQ(destination, pattern);
}

TEST(HmiMemcpyS, OneByteMoreThanTheDestinationCopiesNothing) {
    std::array<unsigned char, 9> source = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    Buffer destination = untouched;
    EXPECT_FALSE(hmi_memcpy_s(destination.data(), destination.size(), source.data(), 9));
    EXPECT_EQ(destination, untouched);
}

TEST(HmiMemcpyS, CopiesOnlyCountBytes) {
    Buffer destination = untouched;
    EXPECT_TRUE(hmi_memcpy_s(destination.data(), destination.size(), pattern.data(), 3));
    EXPECT_EQ(destination, (Buffer{1, 2, 3, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}));
}

TEST(HmiMemcpyS, ZeroCountSucceeds) {
    Buffer destination = untouched;
    EXPECT_TRUE(hmi_memcpy_s(destination.data(), destination.size(), pattern.data(), 0));
    EXPECT_TRUE(hmi_memcpy_s(destination.data(), 0, pattern.data(), 0));
    EXPECT_EQ(destination, untouched);
}

TEST(HmiMemcpyS, NullPointersAreRefused) {
    Buffer destination = untouched;
    EXPECT_FALSE(hmi_memcpy_s(nullptr, 8, pattern.data(), 1));
    EXPECT_FALSE(hmi_memcpy_s(destination.data(), destination.size(), nullptr, 1));
    EXPECT_FALSE(hmi_memcpy_s(destination.data(), destination.size(), nullptr, 0));
    EXPECT_FALSE(hmi_memcpy_s(nullptr, 0, nullptr, 0));
    EXPECT_EQ(destination, untouched);
}

TEST(HmiMemcpyS, SizesWithTopBitAreRefused) {
    Buffer destination = untouched;
    EXPECT_FALSE(hmi_memcpy_s(destination.data(), top_bit, pattern.data(), 1));
    EXPECT_FALSE(
        hmi_memcpy_s(destination.data(), static_cast<unsigned long>(-1L), pattern.data(), 1));
    EXPECT_FALSE(hmi_memcpy_s(destination.data(), top_bit, pattern.data(), top_bit));
    EXPECT_EQ(destination, untouched);
}

TEST(HmiMemcpyS, SameAreaIsRefused) {
    Buffer buffer = pattern;
    EXPECT_FALSE(hmi_memcpy_s(buffer.data(), buffer.size(), buffer.data(), 4));
    EXPECT_EQ(buffer, pattern);
}

TEST(HmiMemcpyS, DestinationStartingInsideTheSourceBytesIsRefused) {
    std::array<unsigned char, 16> buffer = {};
    EXPECT_FALSE(hmi_memcpy_s(buffer.data() + 3, 4, buffer.data(), 4));
    EXPECT_EQ(buffer, (std::array<unsigned char, 16>{}));
}

TEST(HmiMemcpyS, DestinationJustPastTheSourceBytesIsAccepted) {
    std::array<unsigned char, 16> buffer = {1, 2, 3, 4};
    EXPECT_TRUE(hmi_memcpy_s(buffer.data() + 4, 4, buffer.data(), 4));
    EXPECT_EQ(buffer, (std::array<unsigned char, 16>{1, 2, 3, 4, 1, 2, 3, 4}));
}

TEST(HmiMemcpyS, SourceInsideTheWholeDestinationIsRefusedEvenBeyondTheBytesWritten) {
    // Only 2 bytes would be written, but the source lies within the 8 bytes the destination owns.
    std::array<unsigned char, 16> buffer = {0, 0, 0, 0, 0, 0, 9, 9};
    EXPECT_FALSE(hmi_memcpy_s(buffer.data(), 8, buffer.data() + 6, 2));
    EXPECT_EQ(buffer, (std::array<unsigned char, 16>{0, 0, 0, 0, 0, 0, 9, 9}));
}

TEST(HmiMemcpyS, SourceJustPastTheDestinationIsAccepted) {
    std::array<unsigned char, 16> buffer = {0, 0, 0, 0, 5, 6};
    EXPECT_TRUE(hmi_memcpy_s(buffer.data(), 4, buffer.data() + 4, 2));
    EXPECT_EQ(buffer, (std::array<unsigned char, 16>{5, 6, 0, 0, 5, 6}));
}

TEST(SecureZeroMemory, ZeroesEveryByte) {
    Buffer buffer = pattern;
    secure_zero_memory(buffer.data(), buffer.size());
    EXPECT_EQ(buffer, Buffer{});
}

TEST(SecureZeroMemory, ZeroesOnlyTheGivenBytes) {
    Buffer buffer = pattern;
    secure_zero_memory(buffer.data() + 2, 3);
    EXPECT_EQ(buffer, (Buffer{1, 2, 0, 0, 0, 6, 7, 8}));
}

TEST(SecureZeroMemory, SizeZeroWritesNothing) {
    Buffer buffer = pattern;
    secure_zero_memory(buffer.data(), 0);
    secure_zero_memory(nullptr, 0);
    EXPECT_EQ(buffer, pattern);
}

TEST(MemoryCompare, EqualAreasGiveZeroAndZero) {
    const Buffer other = pattern;
    EXPECT_EQ(memory_compare(pattern.data(), other.data(), pattern.size()), std::make_pair(0UL, 0));
}

TEST(MemoryCompare, SizeZeroGivesZeroAndZero) {
    EXPECT_EQ(memory_compare(pattern.data(), untouched.data(), 0), std::make_pair(0UL, 0));
}

TEST(MemoryCompare, FirstDifferenceGivesItsIndexAndTheByteDifference) {
    const Buffer larger = {1, 2, 3, 9, 5, 6, 7, 0};
    EXPECT_EQ(memory_compare(larger.data(), pattern.data(), 8), std::make_pair(3UL, 5));
    EXPECT_EQ(memory_compare(pattern.data(), larger.data(), 8), std::make_pair(3UL, -5));
}

TEST(MemoryCompare, DifferenceAtTheFirstByteHasIndexZero) {
    const Buffer other = {0, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(memory_compare(pattern.data(), other.data(), 8), std::make_pair(0UL, 1));
}

TEST(MemoryCompare, BytesCompareAsUnsigned) {
    const unsigned char high[] = {0xFF};
    const unsigned char low[] = {0x01};
    EXPECT_EQ(memory_compare(high, low, 1), std::make_pair(0UL, 254));
    EXPECT_EQ(memory_compare(low, high, 1), std::make_pair(0UL, -254));
}

TEST(MemoryCompare, DifferenceBeyondSizeIsNotSeen) {
    const Buffer other = {1, 2, 3, 4, 0, 0, 0, 0};
    EXPECT_EQ(memory_compare(pattern.data(), other.data(), 4), std::make_pair(0UL, 0));
    EXPECT_EQ(memory_compare(pattern.data(), other.data(), 5), std::make_pair(4UL, 5));
}

}  // namespace
