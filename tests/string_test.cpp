#include "helper/algorithm/string.h"

#include <gtest/gtest.h>

#include <cctype>
#include <csignal>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <strings.h>
#include <vector>

using namespace Quorvane::Algorithm;
using Pieces = std::vector<std::string>;

namespace {

std::string byte_string(int byte) {
    return std::string(1, static_cast<char>(byte));
}

// A text of `length` bytes drawn from `alphabet`: a small alphabet makes matches likely.
std::string random_text(std::mt19937& random, const char* alphabet, std::size_t length) {
    const std::size_t size = std::strlen(alphabet);
    std::string text(length, '\0');
    for (char& c : text) {
        c = alphabet[random() % size];
    }
    return text;
}

bool is_default_trim_byte(int byte) {
    return byte == 9 || byte == 10 || byte == 11 || byte == 12 || byte == 13 || byte == 32;
}

std::string trimmed(std::string text) {
    trim(text);
    return text;
}

// A null pointer stops the program; each case runs in a fresh process.
class NullPointer : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

// Splitting done step by step and piece by piece, for comparison with the library.
std::vector<std::string> split_by_steps(const std::string& text, const std::string& delimiter,
                                        std::size_t offset) {
    std::vector<std::string> pieces;
    if (text.empty() || delimiter.empty() || offset > text.size()) {
        return pieces;
    }
    std::size_t pos = offset;
    std::size_t match = text.find(delimiter, pos);
    while (match != std::string::npos) {
        pieces.push_back(text.substr(pos, match - pos));
        pos = match + delimiter.size();
        match = text.find(delimiter, pos);
    }
    pieces.push_back(pos == text.size() ? std::string() : text.substr(pos));
    return pieces;
}

}  // namespace

TEST(CharToDigit, MapsDecimalDigits) {
    for (char c = '0'; c <= '9'; ++c) {
        EXPECT_EQ(char_to_digit(c), c - '0');
    }
}

TEST(CharToDigit, ThrowsForEveryOtherByte) {
    for (int byte = 0; byte < 256; ++byte) {
        if (byte >= '0' && byte <= '9') {
            continue;
        }
        try {
            char_to_digit(static_cast<char>(byte));
            ADD_FAILURE() << "no exception for byte " << byte;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "character is not a digit");
        }
    }
}

TEST(ToVector, CopiesEveryByteWithoutTerminator) {
    EXPECT_TRUE(to_vector("").empty());
    const std::string text("a\0\xff", 3);
    EXPECT_EQ(to_vector(text), (std::vector<unsigned char>{'a', 0, 0xff}));
}

TEST(Join, PutsTheSeparatorBetweenPieces) {
    EXPECT_EQ(join({"a", "", "b"}, "-"), "a--b");
    EXPECT_EQ(join({}, "-"), "");
    EXPECT_EQ(join({"x"}, "-"), "x");
    EXPECT_EQ(join({"", ""}, ", "), ", ");
    EXPECT_EQ(join({"a", "b", "c"}, ""), "abc");
}

TEST(ContainsOnlyDigits, ReadsUpToTheFirstNul) {
    EXPECT_FALSE(contains_only_digits(""));
    EXPECT_TRUE(contains_only_digits("0123456789"));
    EXPECT_FALSE(contains_only_digits("12a"));
    EXPECT_FALSE(contains_only_digits(" 1"));
    EXPECT_FALSE(contains_only_digits("-1"));
    EXPECT_TRUE(contains_only_digits(std::string("\0abc", 4)));
    EXPECT_TRUE(contains_only_digits(std::string("12\0ab", 5)));
}

TEST(CountOccurrences, CountsBytes) {
    EXPECT_EQ(count_occurrences("banana", 'a'), 3U);
    EXPECT_EQ(count_occurrences("", 'a'), 0U);
    EXPECT_EQ(count_occurrences(std::string("a\0b\0", 4), '\0'), 2U);
}

TEST(CountOccurrences, CountsNonOverlappingMatchesFromTheLeft) {
    EXPECT_EQ(count_occurrences("aaaa", std::string("aa")), 2U);
    EXPECT_EQ(count_occurrences("aaa", std::string("aa")), 1U);
    EXPECT_EQ(count_occurrences("abab", std::string("ab")), 2U);
    EXPECT_EQ(count_occurrences("abc", std::string("")), 0U);
    EXPECT_EQ(count_occurrences("", std::string("")), 0U);
    EXPECT_EQ(count_occurrences("ab", std::string("abc")), 0U);
}

TEST(Trim, RemovesTheSixWhiteSpaceBytesOnly) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(trimmed(byte_string(byte)).empty(), is_default_trim_byte(byte)) << byte;
    }
}

TEST(Trim, EachFormWorksOnItsEnds) {
    std::string left = " \t\n\v\f\rx \r\n";
    ltrim(left);
    EXPECT_EQ(left, "x \r\n");
    std::string right = " \t x \v\f\r\n ";
    rtrim(right);
    EXPECT_EQ(right, " \t x");
    std::string both = "\r\n x y \t";
    trim(both);
    EXPECT_EQ(both, "x y");
}

TEST(Trim, BlanksOnlyGiveTheEmptyString) {
    EXPECT_EQ(trimmed("    "), "");
    EXPECT_EQ(trimmed(""), "");
    std::string left = " \t ";
    ltrim(left);
    EXPECT_EQ(left, "");
    std::string right = " \t ";
    rtrim(right);
    EXPECT_EQ(right, "");
}

TEST(Trim, NeverTrimsBytesAbove127OrNul) {
    EXPECT_EQ(trimmed("\xa0x\xa0"), "\xa0x\xa0");
    EXPECT_EQ(trimmed("\x85 x \x85"), "\x85 x \x85");
    EXPECT_EQ(trimmed(std::string(" \0 ", 3)), std::string("\0", 1));
}

TEST(TrimWithSet, TrimsTheGivenBytes) {
    std::string both = "xxaxbxx";
    trim(both, "x");
    EXPECT_EQ(both, "axb");
    std::string left = "abcba";
    ltrim(left, "ab");
    EXPECT_EQ(left, "cba");
    std::string right = "abcba";
    rtrim(right, "ab");
    EXPECT_EQ(right, "abc");
    std::string all = "abab";
    trim(all, "ab");
    EXPECT_EQ(all, "");
    std::string blanks = "  x  ";
    trim(blanks, "\t");
    EXPECT_EQ(blanks, "  x  ");
}

TEST(TrimWithSet, EmptySetRemovesNothing) {
    for (auto form : {+[](std::string& s) { ltrim(s, ""); }, +[](std::string& s) { rtrim(s, ""); },
                      +[](std::string& s) { trim(s, ""); }}) {
        std::string text = "  x  ";
        form(text);
        EXPECT_EQ(text, "  x  ");
    }
}

TEST_F(NullPointer, TrimSetStopsTheProgram) {
    std::string text = "x";
    std::string empty;
    EXPECT_EXIT(trim(text, nullptr), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(ltrim(text, nullptr), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(rtrim(text, nullptr), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(trim(empty, nullptr), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(trim_result("x", nullptr), ::testing::KilledBySignal(SIGABRT), "");
}

TEST(TrimWithSet, TrimsBytesAbove127WhenTheSetHasThem) {
    EXPECT_EQ(trim_result("\xa0\xa0x y\xa0", "\xa0"), "x y");
    EXPECT_EQ(trim_result("\xff \xfe", "\xfe\xff"), " ");
    EXPECT_EQ(trim_result(" \t x \t ", " "), "\t x \t");
}

TEST(TrimResult, TrimsACopy) {
    const std::string text = "  a b \n";
    EXPECT_EQ(trim_result(text), "a b");
    EXPECT_EQ(text, "  a b \n");
    EXPECT_EQ(trim_result("--a--", "-"), "a");
    EXPECT_EQ(trim_result("--a--", ""), "--a--");
}

TEST(Replace, EmptyTextGivesFalseEvenForEmptyFrom) {
    std::string text;
    EXPECT_FALSE(replace(text, "", "to"));
    EXPECT_EQ(text, "");
    EXPECT_FALSE(replace(text, "a", "b"));
}

TEST(Replace, EmptyFromInsertsAtTheFront) {
    std::string text = "x";
    EXPECT_TRUE(replace(text, "", "to"));
    EXPECT_EQ(text, "tox");
}

TEST(Replace, ReplacesTheFirstOccurrenceOnly) {
    std::string text = "hello";
    EXPECT_TRUE(replace(text, "l", "LL"));
    EXPECT_EQ(text, "heLLlo");
    EXPECT_FALSE(replace(text, "z", "y"));
    EXPECT_EQ(text, "heLLlo");
    EXPECT_TRUE(replace(text, "he", ""));
    EXPECT_EQ(text, "LLlo");
}

TEST(Replace, CharReplacesTheFirstByteOnly) {
    std::string text = "aaa";
    EXPECT_TRUE(replace(text, 'a', 'b'));
    EXPECT_EQ(text, "baa");
    EXPECT_FALSE(replace(text, 'z', 'y'));
    EXPECT_EQ(text, "baa");
    std::string empty;
    EXPECT_FALSE(replace(empty, 'a', 'b'));
}

TEST(ReplaceAll, ResumesBehindTheInsertedText) {
    std::string text = "aa";
    replace_all(text, "a", "aa");
    EXPECT_EQ(text, "aaaa");
    std::string nested = "ab";
    replace_all(nested, "a", "xa");
    EXPECT_EQ(nested, "xab");
}

TEST(ReplaceAll, ReplacesEveryOccurrenceLeftToRight) {
    std::string text = "abcabc";
    replace_all(text, "bc", "");
    EXPECT_EQ(text, "aa");
    std::string overlapping = "aaa";
    replace_all(overlapping, "aa", "b");
    EXPECT_EQ(overlapping, "ba");
    std::string none = "abc";
    replace_all(none, "x", "y");
    EXPECT_EQ(none, "abc");
    std::string nul(std::string("a\0b\0", 4));
    replace_all(nul, std::string("\0", 1), "_");
    EXPECT_EQ(nul, "a_b_");
}

TEST(ReplaceAll, EmptyTextOrFromDoesNothing) {
    std::string empty;
    replace_all(empty, "", "x");
    EXPECT_EQ(empty, "");
    std::string text = "abc";
    replace_all(text, "", "x");
    EXPECT_EQ(text, "abc");
}

TEST(ReplaceAll, CharReplacesEveryByte) {
    std::string text = "a.b.c";
    replace_all(text, '.', '/');
    EXPECT_EQ(text, "a/b/c");
}

TEST(RemoveAll, NeverReachesBackInFrontOfARemoval) {
    std::string text = "aabb";
    remove_all(text, "ab");
    EXPECT_EQ(text, "ab");
}

TEST(RemoveAll, RemovesEveryOccurrence) {
    const struct {
        const char* text;
        const char* needle;
        const char* expected;
    } rows[] = {
        {"abcabc", "b", "acac"},  {"xxxx", "xx", ""},     {"aaa", "aa", "a"},
        {"abc", "", "abc"},       {"abc", "x", "abc"},    {"", "x", ""},
        {"aabcbc", "abc", "abc"}, {"a--b--", "--", "ab"},
    };
    for (const auto& row : rows) {
        std::string text = row.text;
        remove_all(text, std::string(row.needle));
        EXPECT_EQ(text, row.expected) << row.text << " / " << row.needle;
    }
}

// The edits resume by the stated rule, one step at a time; the library builds the same result in
// one pass.
TEST(RemoveAll, AgreesWithRepeatedEraseFromTheSamePosition) {
    std::mt19937 random(31337);
    for (int i = 0; i < 3000; ++i) {
        std::string text = random_text(random, "ab", random() % 16);
        const std::string needle = random_text(random, "ab", random() % 3 + 1);
        std::string expected = text;
        for (std::size_t pos = expected.find(needle); pos != std::string::npos;
             pos = expected.find(needle, pos)) {
            expected.erase(pos, needle.size());
        }
        remove_all(text, needle);
        ASSERT_EQ(text, expected) << needle;
    }
}

TEST(ReplaceAll, AgreesWithReplacingAndResumingBehindTheInsertion) {
    std::mt19937 random(4711);
    for (int i = 0; i < 3000; ++i) {
        std::string text = random_text(random, "ab", random() % 16 + 1);
        const std::string from = random_text(random, "ab", random() % 3 + 1);
        const std::string to = random_text(random, "ab", random() % 4);
        std::string expected = text;
        for (std::size_t pos = expected.find(from); pos != std::string::npos;
             pos = expected.find(from, pos + to.size())) {
            expected.replace(pos, from.size(), to);
        }
        replace_all(text, from, to);
        ASSERT_EQ(text, expected) << from << " -> " << to;
    }
}

TEST(RemoveAll, CharKeepsTheOrderOfTheRest) {
    std::string text = ".a.b..c.";
    remove_all(text, '.');
    EXPECT_EQ(text, "abc");
    std::string nul("a\0b", 3);
    remove_all(nul, '\0');
    EXPECT_EQ(nul, "ab");
}

TEST(RemoveStart, RemovesAPrefixThatIsThere) {
    std::string text = "prefix-x";
    EXPECT_TRUE(remove_start(text, "prefix-"));
    EXPECT_EQ(text, "x");
    EXPECT_FALSE(remove_start(text, "y"));
    EXPECT_FALSE(remove_start(text, "xx"));
    EXPECT_EQ(text, "x");
    EXPECT_TRUE(remove_start(text, ""));
    EXPECT_EQ(text, "x");
    EXPECT_EQ(remove_start_copy("abc", "ab"), "c");
    EXPECT_EQ(remove_start_copy("abc", "b"), "abc");
}

TEST(RemoveEnd, RemovesASuffixThatIsThere) {
    std::string text = "file.txt";
    EXPECT_TRUE(remove_end(text, ".txt"));
    EXPECT_EQ(text, "file");
    EXPECT_FALSE(remove_end(text, ".txt"));
    EXPECT_FALSE(remove_end(text, "longer-file"));
    EXPECT_EQ(text, "file");
    EXPECT_EQ(remove_end_copy("abc", "bc"), "a");
    EXPECT_EQ(remove_end_copy("abc", "b"), "abc");
    EXPECT_TRUE(remove_end(text, ""));
    EXPECT_EQ(text, "file");
    EXPECT_EQ(remove_end_copy("abc", ""), "abc");
    std::string whole = "abc";
    EXPECT_TRUE(remove_end(whole, "abc"));
    EXPECT_EQ(whole, "");
}

TEST(EraseFrom, CutsAtTheFirstOccurrenceNeedleIncluded) {
    std::string text = "key=value=x";
    EXPECT_TRUE(erase_from(text, "="));
    EXPECT_EQ(text, "key");
    EXPECT_FALSE(erase_from(text, "="));
    EXPECT_EQ(text, "key");
    std::string chars = "a.b.c";
    EXPECT_TRUE(erase_from(chars, '.'));
    EXPECT_EQ(chars, "a");
    EXPECT_FALSE(erase_from(chars, '.'));
}

TEST(EraseFrom, EmptyNeedleEmptiesTheText) {
    std::string text = "abc";
    EXPECT_TRUE(erase_from(text, ""));
    EXPECT_EQ(text, "");
    std::string empty;
    EXPECT_TRUE(erase_from(empty, ""));
}

TEST(StartsWith, StringForms) {
    EXPECT_TRUE(starts_with("abc", "ab"));
    EXPECT_TRUE(starts_with("abc", ""));
    EXPECT_TRUE(starts_with("", ""));
    EXPECT_FALSE(starts_with("ab", "abc"));
    EXPECT_FALSE(starts_with("abc", "b"));
    EXPECT_TRUE(ends_with("abc", "bc"));
    EXPECT_TRUE(ends_with("abc", ""));
    EXPECT_FALSE(ends_with("bc", "abc"));
    EXPECT_FALSE(ends_with("abc", "b"));
}

TEST(StartsWith, CharFormsAreFalseForAnEmptyText) {
    EXPECT_FALSE(starts_with("", 'a'));
    EXPECT_FALSE(ends_with("", 'a'));
    EXPECT_FALSE(starts_with("", '\0'));
    EXPECT_TRUE(starts_with("abc", 'a'));
    EXPECT_FALSE(starts_with("abc", 'c'));
    EXPECT_TRUE(ends_with("abc", 'c'));
    EXPECT_FALSE(ends_with("abc", 'a'));
}

TEST(Contains, StatedExamples) {
    EXPECT_TRUE(contains("abc", "", 3));
    EXPECT_FALSE(contains("abc", "", 4));
    EXPECT_TRUE(contains("abc", "c", 2));
}

TEST(Contains, StringAndPointerNeedlesAgree) {
    const struct {
        const char* text;
        const char* needle;
        unsigned long offset;
        bool expected;
    } rows[] = {
        {"abc", "", 0, true},    {"abc", "", 3, true},      {"abc", "", 4, false},
        {"abc", "c", 2, true},   {"abc", "a", 1, false},    {"abc", "bc", 1, true},
        {"abc", "bc", 2, false}, {"abc", "abcd", 0, false}, {"", "", 0, true},
        {"", "", 1, false},      {"abc", "x", 0, false},    {"abc", "c", 100, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(contains(std::string(row.text), std::string(row.needle), row.offset),
                  row.expected)
            << row.text << " / " << row.needle << " / " << row.offset;
        EXPECT_EQ(contains(std::string(row.text), row.needle, row.offset), row.expected)
            << row.text << " / " << row.needle << " / " << row.offset;
    }
}

TEST(Contains, CharAtOrBehindTheOffset) {
    EXPECT_TRUE(contains("abc", 'c', 2));
    EXPECT_FALSE(contains("abc", 'a', 1));
    EXPECT_FALSE(contains("abc", 'c', 3));
    EXPECT_FALSE(contains("abc", 'c', 100));
    EXPECT_TRUE(contains(std::string("a\0b", 3), '\0', 0));
}

TEST(Contains, PointerTextScansToTheTerminator) {
    const char* text = "abc";
    EXPECT_TRUE(contains(text, 'b'));
    EXPECT_FALSE(contains(text, 'x'));
    EXPECT_FALSE(contains(text, '\0'));
    EXPECT_FALSE(contains("", 'a'));
    EXPECT_FALSE(contains("", '\0'));
}

TEST_F(NullPointer, ContainsStopsTheProgram) {
    const char* null = nullptr;
    EXPECT_EXIT(contains(std::string("abc"), null, 0), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(contains(std::string("abc"), null, 10), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(contains(std::string(), null, 0), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(contains(null, 'a'), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(contains(null, '\0'), ::testing::KilledBySignal(SIGABRT), "");
}

TEST(Contains, AgreesWithASearchFromTheOffset) {
    std::mt19937 random(2718);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = random_text(random, "ab", random() % 8);
        const std::string needle = random_text(random, "ab", random() % 3);
        const unsigned long offset = random() % 10;
        bool expected = false;
        for (std::size_t pos = offset; pos + needle.size() <= text.size(); ++pos) {
            expected = expected || text.compare(pos, needle.size(), needle) == 0;
        }
        ASSERT_EQ(contains(text, needle, offset), expected)
            << text << " / " << needle << " / " << offset;
        ASSERT_EQ(contains(text, needle.c_str(), offset), expected) << text << " / " << needle;
        const bool byte_expected =
            offset < text.size() && text.find('b', offset) != std::string::npos;
        ASSERT_EQ(contains(text, 'b', offset), byte_expected) << text << " / " << offset;
    }
}

TEST(Icontains, SearchesWithoutRegardToCase) {
    EXPECT_FALSE(icontains("abc", ""));
    EXPECT_FALSE(icontains("", ""));
    EXPECT_TRUE(icontains("Hello World", "WORLD"));
    EXPECT_TRUE(icontains("Hello World", "o w"));
    EXPECT_FALSE(icontains("abc", "abcd"));
    EXPECT_FALSE(icontains("", "a"));
    EXPECT_TRUE(icontains(std::string("a\0B", 3), std::string("\0b", 2)));
}

TEST(Iequals, IsStrcasecmpGivingZero) {
    const std::vector<std::pair<const char*, const char*>> pairs = {
        {"HeLLo", "hello"}, {"a", "b"}, {"", ""}, {"abc", "ab"}, {"[", "{"}, {"\xc4", "\xe4"}};
    for (const auto& [a, b] : pairs) {
        EXPECT_EQ(iequals(a, b), strcasecmp(a, b) == 0) << a << " / " << b;
        EXPECT_EQ(iequals(std::string(a), b), strcasecmp(a, b) == 0) << a << " / " << b;
    }
    EXPECT_TRUE(iequals("HeLLo", "hello"));
    EXPECT_TRUE(iequals(std::string("abc\0x", 5), "ABC"));
}

TEST(IstartsWith, ComparesThePrefixWithoutRegardToCase) {
    EXPECT_TRUE(istarts_with("HTTP/1.1", "http"));
    EXPECT_TRUE(istarts_with("abc", ""));
    EXPECT_TRUE(istarts_with("", ""));
    EXPECT_FALSE(istarts_with("ht", "http"));
    EXPECT_FALSE(istarts_with("HTTPS", "httpx"));
    EXPECT_TRUE(istarts_with(std::string("a\0x", 3), std::string("A\0y", 3)));
}

TEST(Equals, IsStrcmpGivingZero) {
    EXPECT_TRUE(equals("abc", "abc"));
    EXPECT_FALSE(equals("abc", "ABC"));
    EXPECT_TRUE(equals("", ""));
    EXPECT_FALSE(equals("a", ""));
    EXPECT_TRUE(equals("ab\0c", "ab\0d"));
}

TEST(CaseInsensitiveComparisons, AgreeWithTheCLibraryOnRandomTexts) {
    std::mt19937 random(1618);
    for (int i = 0; i < 3000; ++i) {
        const std::string a = random_text(random, "aAbB[{\xc4\xe4", random() % 5);
        const std::string b = random_text(random, "aAbB[{\xc4\xe4", random() % 5);
        ASSERT_EQ(iequals(a.c_str(), b.c_str()), strcasecmp(a.c_str(), b.c_str()) == 0) << a << b;
        ASSERT_EQ(iequals(a, b.c_str()), strcasecmp(a.c_str(), b.c_str()) == 0) << a << b;
        ASSERT_EQ(equals(a.c_str(), b.c_str()), std::strcmp(a.c_str(), b.c_str()) == 0) << a << b;
        const bool starts =
            b.size() <= a.size() && strcasecmp(a.substr(0, b.size()).c_str(), b.c_str()) == 0;
        ASSERT_EQ(istarts_with(a, b), starts) << a << " / " << b;
    }
}

TEST(Empty, LooksAtTheFirstByte) {
    EXPECT_TRUE(empty(""));
    EXPECT_FALSE(empty("a"));
    EXPECT_TRUE(empty("\0a"));
}

TEST(ToUpperToLower, GoEachByteThroughTheCLibrary) {
    std::string all(256, '\0');
    for (int byte = 0; byte < 256; ++byte) {
        all[static_cast<std::size_t>(byte)] = static_cast<char>(byte);
    }
    const std::string upper = to_upper(all);
    const std::string lower = to_lower(all);
    ASSERT_EQ(upper.size(), 256U);
    ASSERT_EQ(lower.size(), 256U);
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(static_cast<unsigned char>(upper[static_cast<std::size_t>(byte)]),
                  static_cast<unsigned char>(std::toupper(byte)))
            << byte;
        EXPECT_EQ(static_cast<unsigned char>(lower[static_cast<std::size_t>(byte)]),
                  static_cast<unsigned char>(std::tolower(byte)))
            << byte;
    }
    EXPECT_EQ(to_upper("abc-Z"), "ABC-Z");
    EXPECT_EQ(to_lower("ABC-z"), "abc-z");
}

TEST(Split, StatedExamples) {
    EXPECT_EQ(split("", ",", 0), Pieces{});
    EXPECT_EQ(split("a", "", 0), Pieces{});
    EXPECT_EQ(split("a", ",", 0), (Pieces{"a"}));
    EXPECT_EQ(split(",", ",", 0), (Pieces{"", ""}));
    EXPECT_EQ(split("a,b", ",", 2), (Pieces{"b"}));
    EXPECT_EQ(split("a,b,", ",", 0), (Pieces{"a", "b", ""}));
    EXPECT_EQ(split(",a", ",", 0), (Pieces{"", "a"}));
}

TEST(Split, KeepsEmptyPiecesBetweenAdjacentDelimiters) {
    EXPECT_EQ(split("a,,b", ",", 0), (Pieces{"a", "", "b"}));
    EXPECT_EQ(split(",,", ",", 0), (Pieces{"", "", ""}));
}

TEST(Split, DelimiterIsAWholeString) {
    EXPECT_EQ(split("a::b::c", "::", 0), (Pieces{"a", "b", "c"}));
    EXPECT_EQ(split("a:b", "::", 0), (Pieces{"a:b"}));
    EXPECT_EQ(split("a:::b", "::", 0), (Pieces{"a", ":b"}));
}

TEST(Split, OffsetDropsTheTextInFrontOfIt) {
    EXPECT_EQ(split("a,b,c", ",", 1), (Pieces{"", "b", "c"}));
    EXPECT_EQ(split("abc", ",", 3), (Pieces{""}));
    EXPECT_EQ(split("abc", ",", 4), Pieces{});
    EXPECT_EQ(split("a,b", ",", 3), (Pieces{""}));
}

TEST(Split, DefaultOffsetIsTheStart) {
    EXPECT_EQ(split("a=b", "="), (Pieces{"a", "b"}));
}

TEST(Split, AgreesWithAStepByStepReference) {
    std::mt19937 random(1414);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = random_text(random, "a,;", random() % 10);
        const std::string delimiter = random_text(random, ",;", random() % 3);
        const unsigned long offset = random() % 12;
        ASSERT_EQ(split(text, delimiter, offset), split_by_steps(text, delimiter, offset))
            << text << " / " << delimiter << " / " << offset;
    }
}

TEST(Split, AppendsWithoutClearing) {
    Pieces out = {"kept"};
    split(out, "x;y", ";", 0);
    EXPECT_EQ(out, (Pieces{"kept", "x", "y"}));
    split(out, "", ";", 0);
    EXPECT_EQ(out, (Pieces{"kept", "x", "y"}));
}

TEST(StringAlgorithms, LongTextsStayLinear) {
    const std::string text(1 << 20, 'a');
    std::string replaced = text;
    replace_all(replaced, "a", "bb");
    EXPECT_EQ(replaced, std::string(2 << 20, 'b'));
    std::string removed = text + "b";
    remove_all(removed, "a");
    EXPECT_EQ(removed, "b");
    EXPECT_EQ(split(text, "a").size(), (1U << 20) + 1);
    EXPECT_EQ(count_occurrences(text, std::string("aa")), 1U << 19);
    std::string spaced(1 << 20, ' ');
    simplify_whitespace_not_between_quotation_marks(spaced);
    EXPECT_EQ(spaced, "");
}

TEST(EscapeForLuaGsub, DoublesPercentAndEscapesQuotes) {
    EXPECT_EQ(escape_for_lua_gsub("100%\"x"), "100%%\\\"x");
    EXPECT_EQ(escape_for_lua_gsub("%%"), "%%%%");
    EXPECT_EQ(escape_for_lua_gsub("\"\""), "\\\"\\\"");
    EXPECT_EQ(escape_for_lua_gsub("a\\b'c"), "a\\b'c");
    EXPECT_EQ(escape_for_lua_gsub(""), "");
}

TEST(SimplifyWhitespace, StatedExample) {
    std::string text = "a \"b c\"  d";
    simplify_whitespace_not_between_quotation_marks(text);
    EXPECT_EQ(text, "a\"b c\"d");
}

TEST(SimplifyWhitespace, DeletesEveryIsspaceByteOutsideQuotes) {
    for (int byte = 0; byte < 256; ++byte) {
        std::string text = "x" + byte_string(byte) + "y";
        simplify_whitespace_not_between_quotation_marks(text);
        const bool space = std::isspace(byte) != 0;
        EXPECT_EQ(text, space ? "xy" : "x" + byte_string(byte) + "y") << byte;
    }
}

TEST(SimplifyWhitespace, KeepsEverythingBetweenQuotes) {
    std::string text = "\" \t\n\r\v\f \" ";
    simplify_whitespace_not_between_quotation_marks(text);
    EXPECT_EQ(text, "\" \t\n\r\v\f \"");
}

TEST(SimplifyWhitespace, EscapedQuoteDoesNotEndAQuotation) {
    std::string text = "\"a \\\" b\" c";
    simplify_whitespace_not_between_quotation_marks(text);
    EXPECT_EQ(text, "\"a \\\" b\"c");
}

TEST(SimplifyWhitespace, EscapedBackslashLetsTheQuoteCount) {
    std::string text = "\"a \\\\\" b";
    simplify_whitespace_not_between_quotation_marks(text);
    EXPECT_EQ(text, "\"a \\\\\"b");
}

TEST(SimplifyWhitespace, BackslashesCountOutsideQuotesToo) {
    std::string escaped = "\\\" a b";
    simplify_whitespace_not_between_quotation_marks(escaped);
    EXPECT_EQ(escaped, "\\\"ab");
    std::string doubled = "\\\\\" a b";
    simplify_whitespace_not_between_quotation_marks(doubled);
    EXPECT_EQ(doubled, "\\\\\" a b");
}

TEST(SimplifyWhitespace, WhiteSpaceResetsTheBackslashCount) {
    std::string text = "\\ \" a\" b";
    simplify_whitespace_not_between_quotation_marks(text);
    EXPECT_EQ(text, "\\\" a\"b");
}

TEST(SimplifyWhitespace, UnclosedQuotationRunsToTheEnd) {
    std::string text = "x \"a b";
    simplify_whitespace_not_between_quotation_marks(text);
    EXPECT_EQ(text, "x\"a b");
    std::string empty;
    simplify_whitespace_not_between_quotation_marks(empty);
    EXPECT_EQ(empty, "");
}

TEST(StringAlgorithms, SurviveRandomBytes) {
    std::mt19937 random(8675309);
    const auto random_text = [&random](std::size_t max_length) {
        std::string text(random() % (max_length + 1), '\0');
        for (char& c : text) {
            // A small alphabet makes matches likely; the rest covers every byte.
            c = random() % 2 == 0 ? "ab \"\\,%\t"[random() % 8] : static_cast<char>(random());
        }
        return text;
    };
    for (int i = 0; i < 2000; ++i) {
        const std::string text = random_text(48);
        const std::string needle = random_text(3);
        const std::string other = random_text(4);
        const std::string set = random_text(3);
        const char byte = static_cast<char>(random());
        const unsigned long offset = random() % 64;

        std::string copy = text;
        ltrim(copy);
        rtrim(copy);
        copy = text;
        trim(copy);
        ASSERT_EQ(copy, trim_result(text));
        ltrim(copy, set.c_str());
        rtrim(copy, set.c_str());
        trim(copy, set.c_str());
        (void)trim_result(text, set.c_str());

        copy = text;
        (void)replace(copy, needle, other);
        copy = text;
        (void)replace(copy, byte, 'x');
        copy = text;
        replace_all(copy, needle, other);
        copy = text;
        replace_all(copy, byte, 'x');
        copy = text;
        remove_all(copy, needle);
        copy = text;
        remove_all(copy, byte);
        copy = text;
        (void)remove_start(copy, needle);
        copy = text;
        (void)remove_end(copy, needle);
        (void)remove_start_copy(text, needle);
        (void)remove_end_copy(text, needle);
        copy = text;
        (void)erase_from(copy, needle);
        copy = text;
        (void)erase_from(copy, byte);

        (void)to_vector(text);
        (void)join({text, needle, other}, needle);
        (void)contains_only_digits(text);
        (void)count_occurrences(text, byte);
        (void)count_occurrences(text, needle);
        (void)starts_with(text, needle);
        (void)ends_with(text, needle);
        (void)starts_with(text, byte);
        (void)ends_with(text, byte);
        (void)contains(text, needle, offset);
        (void)contains(text, needle.c_str(), offset);
        (void)contains(text, byte, offset);
        (void)contains(text.c_str(), byte);
        (void)icontains(text, needle);
        (void)iequals(text.c_str(), needle.c_str());
        (void)iequals(text, needle.c_str());
        (void)istarts_with(text, needle);
        (void)equals(text.c_str(), needle.c_str());
        (void)empty(text.c_str());
        (void)to_upper(text);
        (void)to_lower(text);
        (void)split(text, needle, offset);
        (void)escape_for_lua_gsub(text);
        copy = text;
        simplify_whitespace_not_between_quotation_marks(copy);
        ASSERT_LE(copy.size(), text.size());
    }
}
