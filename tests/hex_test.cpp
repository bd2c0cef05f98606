#include "helper/algorithm/hex.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Quorvane::Algorithm::byte_from_hex;
using Quorvane::Algorithm::decode_hex;
using Quorvane::Algorithm::hex;
using Bytes = std::vector<unsigned char>;

// What the C library prints for the byte, the reference for the lower-case form.
std::string printf_hex(const Bytes& bytes) {
    std::string text;
    for (const unsigned char byte : bytes) {
        char pair[3];
        std::snprintf(pair, sizeof pair, "%02x", byte);
        text += pair;
    }
    return text;
}

bool is_hex_digit(char c) {
    return c != '\0' && std::strchr("0123456789abcdefABCDEF", c) != nullptr;
}

// Expects decode_hex to throw exactly the documented error.
void expect_invalid(const std::string& text) {
    try {
        decode_hex(text);
        ADD_FAILURE() << "no exception for \"" << text << "\"";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "invalid characters in hex string") << text;
    }
}

TEST(ByteFromHex, EveryPairOfCharsAgreesWithStrtoul) {
    for (int high = -128; high < 128; ++high) {
        for (int low = -128; low < 128; ++low) {
            const char h = static_cast<char>(high);
            const char l = static_cast<char>(low);
            unsigned char out = 0x55;
            const bool ok = byte_from_hex(h, l, out);
            const char pair[] = {h, l, '\0'};
            if (is_hex_digit(h) && is_hex_digit(l)) {
                ASSERT_TRUE(ok) << high << " " << low;
                ASSERT_EQ(out, std::strtoul(pair, nullptr, 16)) << high << " " << low;
            } else if (is_hex_digit(h)) {
                ASSERT_FALSE(ok) << high << " " << low;
                ASSERT_EQ(out, std::strtoul(pair, nullptr, 16) << 4) << high << " " << low;
            } else {
                ASSERT_FALSE(ok) << high << " " << low;
                ASSERT_EQ(out, 0) << high << " " << low;
            }
        }
    }
}

TEST(ByteFromHex, BadHighSetsOutToZero) {
    unsigned char out = 0xFF;
    EXPECT_FALSE(byte_from_hex('g', 'a', out));
    EXPECT_EQ(out, 0);
}

TEST(ByteFromHex, BadLowKeepsTheHighNibble) {
    unsigned char out = 0xFF;
    EXPECT_FALSE(byte_from_hex('A', 'x', out));
    EXPECT_EQ(out, 0xA0);
    EXPECT_FALSE(byte_from_hex('7', '\0', out));
    EXPECT_EQ(out, 0x70);
}

TEST(ByteFromHex, EitherCaseCombinesHighNibbleFirst) {
    unsigned char out = 0;
    EXPECT_TRUE(byte_from_hex('a', 'B', out));
    EXPECT_EQ(out, 0xAB);
    EXPECT_TRUE(byte_from_hex('F', 'f', out));
    EXPECT_EQ(out, 0xFF);
    EXPECT_TRUE(byte_from_hex('0', '0', out));
    EXPECT_EQ(out, 0x00);
}

TEST(Hex, ByteABIsLowerCaseAb) {
    EXPECT_EQ(hex(static_cast<unsigned char>(0xAB)), "ab");
}

TEST(Hex, EverySingleByteMatchesPrintf) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto value = static_cast<unsigned char>(byte);
        EXPECT_EQ(hex(value), printf_hex({value})) << byte;
        EXPECT_EQ(hex(Bytes{value}), printf_hex({value})) << byte;
    }
}

TEST(Hex, EmptyVectorGivesEmptyText) {
    EXPECT_EQ(hex(Bytes{}), "");
}

TEST(Hex, VectorKeepsByteOrder) {
    EXPECT_EQ(hex(Bytes{0x00, 0x01, 0x7F, 0x80, 0xFE, 0xFF}), "00017f80feff");
}

TEST(Hex, RandomVectorsMatchPrintf) {
    std::mt19937 random(20240611);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> length(0, 64);
    for (int round = 0; round < 500; ++round) {
        Bytes bytes(static_cast<std::size_t>(length(random)));
        for (unsigned char& b : bytes) {
            b = static_cast<unsigned char>(byte(random));
        }
        ASSERT_EQ(hex(bytes), printf_hex(bytes));
    }
}

TEST(DecodeHex, EitherCaseGivesTheSameBytes) {
    EXPECT_EQ(decode_hex("AB"), decode_hex("ab"));
    EXPECT_EQ(decode_hex("ab"), Bytes{0xAB});
    EXPECT_EQ(decode_hex("aB09Ff"), (Bytes{0xAB, 0x09, 0xFF}));
}

TEST(DecodeHex, EmptyTextGivesNoBytes) {
    EXPECT_EQ(decode_hex(""), Bytes{});
}

TEST(DecodeHex, OddLengthReadsAsIfAZeroFollowed) {
    EXPECT_EQ(decode_hex("abc"), (Bytes{0xAB, 0xC0}));
    EXPECT_EQ(decode_hex("a"), Bytes{0xA0});
    EXPECT_EQ(decode_hex("0"), Bytes{0x00});
}

TEST(DecodeHex, NonDigitsThrowTheDocumentedText) {
    const std::string rows[] = {"xy",
                                "0g",
                                "g0",
                                "ab!",
                                "abx",
                                " a",
                                "a ",
                                "0x12",
                                "-1",
                                "+1",
                                "\xC3\xA9",
                                std::string("a\0", 2),
                                std::string("\0\0", 2)};
    for (const std::string& text : rows) {
        expect_invalid(text);
    }
}

TEST(DecodeHex, RoundTripsEveryByte) {
    Bytes all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<unsigned char>(byte));
    }
    EXPECT_EQ(decode_hex(hex(all)), all);
    EXPECT_EQ(decode_hex(printf_hex(all)), all);
}

// Random bytes, valid hex of random case among them, must decode or throw the documented error,
// never anything else.
TEST(DecodeHex, SurvivesRandomBytes) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> length(0, 33);
    const char hex_digits[] = "0123456789abcdefABCDEF";
    for (int round = 0; round < 20000; ++round) {
        std::string text(static_cast<std::size_t>(length(random)), '\0');
        const bool only_digits = round % 2 == 0;
        for (char& c : text) {
            c = only_digits ? hex_digits[byte(random) % 22] : static_cast<char>(byte(random));
        }
        bool valid = true;
        for (const char c : text) {
            valid = valid && is_hex_digit(c);
        }
        if (valid) {
            const Bytes bytes = decode_hex(text);
            ASSERT_EQ(bytes.size(), (text.size() + 1) / 2);
            std::string padded = text + (text.size() % 2 != 0 ? "0" : "");
            for (char& c : padded) {
                c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            }
            ASSERT_EQ(hex(bytes), padded);
        } else {
            EXPECT_THROW(decode_hex(text), std::runtime_error);
        }
    }
}

}  // namespace
