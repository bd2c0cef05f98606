#include "helper/base64.h"

#include <algorithm>
#include <cstring>
#include <list>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "boost_base64_peer.h"

namespace {

namespace Base64 = Quorvane::Base64;
using Quorvane::is_base64;
using Quorvane::is_base64_int64;
using Bytes = std::vector<unsigned char>;

Bytes bytes_of(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

Bytes random_bytes(std::mt19937& random, std::size_t length) {
    std::uniform_int_distribution<int> byte(0, 255);
    Bytes bytes(length);
    for (unsigned char& b : bytes) {
        b = static_cast<unsigned char>(byte(random));
    }
    return bytes;
}

struct Rfc4648Row {
    const char* plain;
    const char* encoded;
};

// The test vectors of RFC 4648, section 10.
constexpr Rfc4648Row rfc4648[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
};

TEST(Base64Encode, Rfc4648Vectors) {
    for (const Rfc4648Row& row : rfc4648) {
        EXPECT_EQ(Base64::encode(bytes_of(row.plain)), row.encoded) << row.plain;
    }
}

TEST(Base64Decode, Rfc4648Vectors) {
    for (const Rfc4648Row& row : rfc4648) {
        EXPECT_EQ(Base64::decode(row.encoded), bytes_of(row.plain)) << row.encoded;
    }
}

TEST(Base64Encode, IteratorFormEncodesTheRange) {
    const Bytes bytes = bytes_of("foobar");
    EXPECT_EQ(Base64::encode(bytes.begin(), bytes.end()), "Zm9vYmFy");
    EXPECT_EQ(Base64::encode(bytes.cbegin() + 1, bytes.cend()), "b29iYXI=");
    EXPECT_EQ(Base64::encode(bytes.data(), bytes.data() + 2), "Zm8=");
    EXPECT_EQ(Base64::encode(bytes.end(), bytes.end()), "");
}

TEST(Base64Encode, IteratorFormAcceptsListsAndCharsAbove127) {
    const std::list<unsigned char> list = {0xFB, 0xFF, 0xBF};
    EXPECT_EQ(Base64::encode(list.begin(), list.end()), "+/+/");
    const std::string chars = "\xFB\xFF\xBF\xFF";
    EXPECT_EQ(Base64::encode(chars.begin(), chars.end()), "+/+//w==");
}

TEST(Base64Encode, EveryByteValueAlone) {
    for (int byte = 0; byte < 256; ++byte) {
        const Bytes one = {static_cast<unsigned char>(byte)};
        EXPECT_EQ(Base64::encode(one), boost_base64_peer::encode(one)) << byte;
        EXPECT_EQ(Base64::decode(Base64::encode(one)), one) << byte;
    }
}

TEST(Base64Encode, MatchesBoostAndRoundTripsOnRandomBytes) {
    std::mt19937 random(4648);
    for (std::size_t length = 0; length < 200; ++length) {
        const Bytes bytes = random_bytes(random, length);
        const std::string text = Base64::encode(bytes);
        ASSERT_EQ(text.size(), (length + 2) / 3 * 4);
        ASSERT_EQ(text, boost_base64_peer::encode(bytes));
        ASSERT_TRUE(is_base64(text.c_str())) << text;
        ASSERT_EQ(Base64::decode(text), bytes);
        ASSERT_EQ(boost_base64_peer::decode(text), bytes);
    }
}

TEST(Base64Decode, MatchesBoostOnRandomWellFormedText) {
    // Includes texts whose last character carries bits that no encoder sets.
    const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::mt19937 random(99);
    std::uniform_int_distribution<int> pick(0, 63);
    std::uniform_int_distribution<int> groups(0, 20);
    for (int round = 0; round < 2000; ++round) {
        std::string text(static_cast<std::size_t>(groups(random)) * 4, 'A');
        for (char& c : text) {
            c = alphabet[pick(random)];
        }
        const int padding = text.empty() ? 0 : round % 3;
        std::fill(text.end() - padding, text.end(), '=');
        ASSERT_TRUE(is_base64(text.c_str())) << text;
        ASSERT_EQ(Base64::decode(text), boost_base64_peer::decode(text)) << text;
    }
}

TEST(Base64Decode, LengthNoMultipleOfFourGivesEmpty) {
    for (const char* text : {"abc", "a", "Zg=", "Zm9vY", "Zm9vYg=", "Zm9vYg==="}) {
        EXPECT_EQ(Base64::decode(text), Bytes{}) << text;
    }
    EXPECT_EQ(Base64::decode(""), Bytes{});
}

TEST(Base64Decode, OnePaddedGroupGivesOneByte) {
    EXPECT_EQ(Base64::decode("Zg=="), Bytes{'f'});
}

TEST(Base64Decode, PaddingIsCountedFromTheLastTwoCharacters) {
    // "=" only second last still counts as one; inner '=' read as sextet 0.
    EXPECT_EQ(Base64::decode("Zg=a"), (Bytes{0x66, 0x00}));
    EXPECT_EQ(Base64::decode("Zm=v"), (Bytes{0x66, 0x60}));
    EXPECT_EQ(Base64::decode("Z=9v"), (Bytes{0x64, 0x0F, 0x6F}));
    EXPECT_EQ(Base64::decode("A==="), Bytes{0x00});
    EXPECT_EQ(Base64::decode("===="), Bytes{0x00});
    EXPECT_EQ(Base64::decode("Zg==Zm8="), (Bytes{0x66, 0x00, 0x00, 0x66, 0x6F}));
}

TEST(Base64Decode, CharactersOutsideTheAlphabetReadAsZero) {
    EXPECT_EQ(Base64::decode("!!!!"), (Bytes{0, 0, 0}));
    EXPECT_EQ(Base64::decode("\xFF\xFF\xFF\xFF"), (Bytes{0, 0, 0}));
    EXPECT_EQ(Base64::decode(std::string(4, '\0')), (Bytes{0, 0, 0}));
    EXPECT_EQ(Base64::decode("Zm9\x80"), (Bytes{0x66, 0x6F, 0x40}));
    EXPECT_EQ(Base64::decode("Z-_v"), Base64::decode("ZAAv"));
}

TEST(Base64Decode, EverySextetOfTheAlphabet) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t sextet = 0; sextet < alphabet.size(); ++sextet) {
        const std::string text = std::string("AAA") + alphabet[sextet];
        EXPECT_EQ(Base64::decode(text), (Bytes{0, 0, static_cast<unsigned char>(sextet)})) << text;
    }
}

struct ShapeRow {
    const char* text;
    bool base64;
};

TEST(IsBase64, PaddingMustMatchTheCountModuloFour) {
    const ShapeRow rows[] = {
        {"", true},       {"Zg==", true},     {"A===", true},      {"Zm8=", true},
        {"Zm9v", true},   {"+/+/", true},     {"Zm9vYg==", true},  {"AB", false},
        {"ABC", false},   {"ABCD===", false}, {"A", false},        {"Zg=", false},
        {"Zg=a", false},  {"Z g=", false},    {"Zg===", false},    {"Zm9v=", false},
        {"=", false},     {"==", false},      {"===", false},      {"====", false},
        {"A====", false}, {"A==", false},     {"ab=c", false},     {"Zm9v\n", false},
        {" Zm9v", false}, {"Z-_v", false},    {"\xC3\xA9", false}, {"Zm8=Zm8=", false},
        {"A===x", false}, {"Zg==x", false},   {"Zm8=A", false},    {"Zm9v==", false},
        {"Zm9=v", false}, {"ABCDE===", true}, {"ABCDEF==", true},  {"ABCDEFG=", true},
    };
    for (const ShapeRow& row : rows) {
        EXPECT_EQ(is_base64(row.text), row.base64) << '"' << row.text << '"';
    }
}

TEST(IsBase64, StopsAtTheTerminator) {
    const std::string text("Zg==\0junk", 9);
    EXPECT_TRUE(is_base64(text.c_str()));
}

TEST(IsBase64, AlphabetIsLettersDigitsPlusAndSlash) {
    for (int byte = 1; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool member =
            std::strchr("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/", c) !=
            nullptr;
        const std::string padded = std::string(1, c) + "===";
        const std::string full = std::string(4, c);
        EXPECT_EQ(is_base64(padded.c_str()), member) << byte;
        EXPECT_EQ(is_base64(full.c_str()), member) << byte;
    }
}

TEST(IsBase64Int64, TwelveCharactersOfBase64Shape) {
    const ShapeRow rows[] = {
        {"AAAAAAAAAAA=", true},  {"AAAAAAAAAAAA", true},   {"AAAAAAAAAA==", true},
        {"AAAAAAAAA===", true},  {"Zg==", false},          {"", false},
        {"AAAAAAAAAAA", false},  {"AAAAAAAAAAAAA", false}, {"AAAAAAAAAAAAAAAA", false},
        {"AAAAAAAAAAA!", false}, {"AAAAAAAAAA=A", false},  {"AAAAAAAAAAAAAAA=", false},
        {"AAAAAAAA====", false},
    };
    for (const ShapeRow& row : rows) {
        EXPECT_EQ(is_base64_int64(row.text), row.base64) << '"' << row.text << '"';
    }
}

TEST(IsBase64Int64, EightEncodedBytesPass) {
    std::mt19937 random(64);
    for (int round = 0; round < 100; ++round) {
        EXPECT_TRUE(is_base64_int64(Base64::encode(random_bytes(random, 8)).c_str()));
    }
}

// Random bytes of random length through every text-taking function: no crash, no read beyond
// the text, and decode keeps its length rule.
TEST(Base64Robustness, RandomBytesAreSurvived) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> length(0, 40);
    std::uniform_int_distribution<int> pick(0, 70);
    const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/====";
    for (int round = 0; round < 20000; ++round) {
        std::string text(static_cast<std::size_t>(length(random)), '\0');
        for (char& c : text) {
            const int choice = pick(random);
            c = choice < 68 ? alphabet[choice] : static_cast<char>(random());
        }
        const Bytes decoded = Base64::decode(text);
        if (text.empty() || text.size() % 4 != 0) {
            ASSERT_TRUE(decoded.empty());
        } else {
            const std::size_t padding = text.back() == '=' && text[text.size() - 2] == '='   ? 2
                                        : text.back() == '=' || text[text.size() - 2] == '=' ? 1
                                                                                             : 0;
            ASSERT_EQ(decoded.size(), text.size() / 4 * 3 - padding);
        }
        const bool shape = is_base64(text.c_str());
        const std::size_t visible = std::strlen(text.c_str());
        ASSERT_EQ(is_base64_int64(text.c_str()), visible == 12 && shape);
    }
}

}  // namespace
