#include "helper/utf8_helper.h"

#include <codecvt>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <iconv.h>

#include <gtest/gtest.h>

namespace {

namespace UTF8 = Quorvane::UTF8;
namespace no_boost = Quorvane::UTF8::no_boost;

// The 32 characters of Windows-1252 between 0x7F and 0xA0 from the published code page chart;
// 0 where the chart has no character.
constexpr char16_t chart_80_to_9f[32] = {
    u'\u20AC', 0,         u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0,         u'\u017D', 0,
    0,         u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', 0,         u'\u017E', u'\u0178',
};

// The character of a Windows-1252 byte in the chart, or 0 for the five unassigned bytes.
char16_t chart(int byte) {
    return byte >= 0x80 && byte < 0xA0 ? chart_80_to_9f[byte - 0x80] : static_cast<char16_t>(byte);
}

bool unassigned(int byte) {
    return byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
}

// UTF-8 of one code point, written out by hand for the tests.
std::string utf8_of(char32_t code_point) {
    std::string bytes;
    if (code_point < 0x80) {
        bytes += static_cast<char>(code_point);
    } else if (code_point < 0x800) {
        bytes += static_cast<char>(0xC0 | code_point >> 6);
        bytes += static_cast<char>(0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        bytes += static_cast<char>(0xE0 | code_point >> 12);
        bytes += static_cast<char>(0x80 | (code_point >> 6 & 0x3F));
        bytes += static_cast<char>(0x80 | (code_point & 0x3F));
    } else {
        bytes += static_cast<char>(0xF0 | code_point >> 18);
        bytes += static_cast<char>(0x80 | (code_point >> 12 & 0x3F));
        bytes += static_cast<char>(0x80 | (code_point >> 6 & 0x3F));
        bytes += static_cast<char>(0x80 | (code_point & 0x3F));
    }
    return bytes;
}

// The C library's converter as the independent reference for the code page.
class Iconv {
public:
    Iconv(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
    ~Iconv() {
        if (opened()) {
            iconv_close(descriptor_);
        }
    }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    bool opened() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

    // False when the input has no conversion.
    bool convert(const std::string& input, std::string& output) {
        iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
        std::string in = input;
        char buffer[64];
        char* in_next = in.data();
        std::size_t in_left = in.size();
        char* out_next = buffer;
        std::size_t out_left = sizeof buffer;
        if (iconv(descriptor_, &in_next, &in_left, &out_next, &out_left) ==
            static_cast<std::size_t>(-1)) {
            return false;
        }
        output.assign(buffer, out_next);
        return true;
    }

private:
    iconv_t descriptor_;
};

// A small validator after RFC 3629, independent of the one under test: shortest forms only, no
// surrogates, nothing above U+10FFFF, up to the first NUL.
bool reference_is_utf8(const std::string& text) {
    const std::size_t length = std::strlen(text.c_str());
    std::size_t i = 0;
    while (i < length) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t size = 0;
        char32_t code_point = 0;
        char32_t smallest = 0;
        if (lead < 0x80) {
            ++i;
            continue;
        } else if ((lead & 0xE0) == 0xC0) {
            size = 2, code_point = lead & 0x1F, smallest = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            size = 3, code_point = lead & 0x0F, smallest = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            size = 4, code_point = lead & 0x07, smallest = 0x10000;
        } else {
            return false;
        }
        if (i + size > length) {
            return false;
        }
        for (std::size_t k = 1; k < size; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) {
                return false;
            }
            code_point = code_point << 6 | (next & 0x3F);
        }
        if (code_point < smallest || code_point > 0x10FFFF ||
            (code_point >= 0xD800 && code_point <= 0xDFFF)) {
            return false;
        }
        i += size;
    }
    return true;
}

// --- Tables ---------------------------------------------------------------------------------

TEST(Windows1252Table, EveryByteMatchesTheChart) {
    ASSERT_EQ(UTF8::WINDOWS1252_UNICODE_TABLE.size(), 256u);
    for (int byte = 0; byte < 256; ++byte) {
        const std::uint32_t expected = unassigned(byte) ? 0 : 0x10000u | chart(byte);
        EXPECT_EQ(UTF8::WINDOWS1252_UNICODE_TABLE[byte], expected) << std::hex << byte;
    }
}

TEST(Windows1252Table, TheFiveUnassignedBytesAreTheOnlyHoles) {
    int holes = 0;
    for (int byte = 0; byte < 256; ++byte) {
        if ((UTF8::WINDOWS1252_UNICODE_TABLE[byte] & 0x10000) == 0) {
            EXPECT_TRUE(unassigned(byte)) << std::hex << byte;
            EXPECT_EQ(UTF8::WINDOWS1252_UNICODE_TABLE[byte], 0u);
            ++holes;
        }
    }
    EXPECT_EQ(holes, 5);
}

TEST(Windows1252Table, ReachableUnderTheWorkingNamespace) {
    EXPECT_EQ(no_boost::WINDOWS1252_UNICODE_TABLE[0x80], 0x120ACu);
    EXPECT_EQ(no_boost::UTF8_TO_Windows1252_TABLE(u'\u20AC'), 0x180u);
}

TEST(Windows1252InverseTable, EveryCodeUnitMapsBackToItsByteOrNowhere) {
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        std::uint32_t expected = 0;
        for (int byte = 0; byte < 256; ++byte) {
            if (!unassigned(byte) && chart(byte) == unit && !(unit >= 0x80 && unit < 0xA0)) {
                expected = 0x100u | static_cast<std::uint32_t>(byte);
            }
        }
        ASSERT_EQ(UTF8::UTF8_TO_Windows1252_TABLE(static_cast<char16_t>(unit)), expected)
            << std::hex << unit;
    }
}

TEST(Windows1252InverseTable, C1ControlsDoNotMap) {
    for (char16_t unit = 0x80; unit < 0xA0; ++unit) {
        EXPECT_EQ(UTF8::UTF8_TO_Windows1252_TABLE(unit), 0u) << std::hex << unit;
    }
}

TEST(Windows1252InverseTable, InvertsTheForwardTable) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::uint32_t entry = UTF8::WINDOWS1252_UNICODE_TABLE[byte];
        if ((entry & 0x10000) != 0) {
            EXPECT_EQ(UTF8::UTF8_TO_Windows1252_TABLE(static_cast<char16_t>(entry & 0xFFFF)),
                      0x100u | static_cast<std::uint32_t>(byte))
                << std::hex << byte;
        }
    }
}

// --- Windows-1252 conversions ---------------------------------------------------------------

TEST(Windows1252ToUtf8, EuroSignByteGivesThreeBytes) {
    EXPECT_EQ(UTF8::Windows1252_to_UTF8("\x80"), "\xE2\x82\xAC");
    EXPECT_EQ(no_boost::Windows1252_to_UTF8("\x80"), "\xE2\x82\xAC");
}

TEST(Windows1252ToUtf8, UnassignedByteIsDroppedWithoutTrace) {
    EXPECT_EQ(UTF8::Windows1252_to_UTF8("\x81"), "");
    EXPECT_EQ(UTF8::Windows1252_to_UTF8("a\x81\x8D\x8F\x90\x9D"
                                        "b"),
              "ab");
}

TEST(Windows1252ToUtf8, EveryByteAgreesWithIconv) {
    Iconv reference("UTF-8", "CP1252");
    ASSERT_TRUE(reference.opened());
    for (int byte = 0; byte < 256; ++byte) {
        const std::string input(1, static_cast<char>(byte));
        std::string expected;
        if (!reference.convert(input, expected)) {
            EXPECT_TRUE(unassigned(byte)) << std::hex << byte;
            expected.clear();
        }
        EXPECT_EQ(no_boost::Windows1252_to_UTF8(input), expected) << std::hex << byte;
        EXPECT_EQ(UTF8::Windows1252_to_UTF8(input.c_str(), 1), expected) << std::hex << byte;
    }
}

TEST(Windows1252ToUtf8, EveryAssignedByteIsTheUtf8OfItsChartCharacter) {
    for (int byte = 1; byte < 256; ++byte) {
        const char text[] = {static_cast<char>(byte), '\0'};
        const std::string expected = unassigned(byte) ? "" : utf8_of(chart(byte));
        EXPECT_EQ(UTF8::Windows1252_to_UTF8(text), expected) << std::hex << byte;
    }
}

TEST(Windows1252ToUtf8, LengthFormKeepsNulBytes) {
    const char text[] = {'a', '\0', '\x80', 'b'};
    EXPECT_EQ(UTF8::Windows1252_to_UTF8(text, 4), std::string("a\0\xE2\x82\xAC"
                                                              "b",
                                                              6));
    EXPECT_EQ(UTF8::Windows1252_to_UTF8(text), "a");
    EXPECT_EQ(UTF8::Windows1252_to_UTF8(text, 0), "");
}

TEST(Windows1252ToUtf8, WholeCodePageInOneText) {
    std::string all;
    std::string expected;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
        if (!unassigned(byte)) {
            expected += utf8_of(chart(byte));
        }
    }
    EXPECT_EQ(no_boost::Windows1252_to_UTF8(all), expected);
    EXPECT_EQ(UTF8::Windows1252_to_UTF8(all.c_str(), 256), expected);
}

TEST(Utf8ToWindows1252, EuroSignGivesByte80) {
    EXPECT_EQ(UTF8::UTF8_to_Windows1252("\xE2\x82\xAC", 3), "\x80");
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("\xE2\x82\xAC"), "\x80");
}

TEST(Utf8ToWindows1252, CharactersOutsideTheCodePageAreDropped) {
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("\xC2\x85"), "");  // U+0085, a C1 control
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("\xC4\x80"), "");  // U+0100
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("a\xF0\x9F\x98\x80"
                                            "b"),
              "ab");                                               // U+1F600
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("\xE2\x82\xAD"), "");  // U+20AD
}

TEST(Utf8ToWindows1252, BadBytesAreDroppedNotSubstituted) {
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("a\xFF"
                                            "b"),
              "ab");
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("a\xE2\x82"), "a");
    EXPECT_EQ(no_boost::UTF8_to_Windows1252("\xEF\xBF\xBD"), "");  // an encoded U+FFFD as well
}

TEST(Utf8ToWindows1252, LengthFormStopsAtTheFirstNul) {
    const char text[] = {'a', '\0', 'b', '\0'};
    EXPECT_EQ(UTF8::UTF8_to_Windows1252(text, 3), "a");
    EXPECT_EQ(UTF8::UTF8_to_Windows1252("abc", 1), "abc");
    EXPECT_EQ(UTF8::UTF8_to_Windows1252("abc", 0), "abc");
    EXPECT_EQ(no_boost::UTF8_to_Windows1252(std::string_view(text, 3)), std::string("a\0b", 3));
}

TEST(Utf8ToWindows1252, EveryBasicPlaneCharacterAgreesWithIconv) {
    Iconv reference("CP1252", "UTF-8");
    ASSERT_TRUE(reference.opened());
    for (char32_t code_point = 1; code_point <= 0xFFFF; ++code_point) {
        if (code_point >= 0xD800 && code_point <= 0xDFFF) {
            continue;
        }
        const std::string input = utf8_of(code_point);
        std::string expected;
        if (!reference.convert(input, expected)) {
            expected.clear();
        }
        ASSERT_EQ(no_boost::UTF8_to_Windows1252(input), expected)
            << std::hex << static_cast<std::uint32_t>(code_point);
    }
}

TEST(Utf8ToWindows1252, RoundTripsEveryAssignedByte) {
    for (int byte = 1; byte < 256; ++byte) {
        if (unassigned(byte)) {
            continue;
        }
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(no_boost::UTF8_to_Windows1252(no_boost::Windows1252_to_UTF8(text)), text)
            << std::hex << byte;
    }
}

TEST(NoConversionNeeded, PrintableAsciiOnly) {
    EXPECT_TRUE(UTF8::no_conversion_between_Windows1252_and_UTF8_needed("abc"));
    EXPECT_TRUE(UTF8::no_conversion_between_Windows1252_and_UTF8_needed(""));
    EXPECT_TRUE(UTF8::no_conversion_between_Windows1252_and_UTF8_needed(" ~ 09 AZ !\"#"));
    EXPECT_FALSE(UTF8::no_conversion_between_Windows1252_and_UTF8_needed("a\tb"));
    EXPECT_FALSE(UTF8::no_conversion_between_Windows1252_and_UTF8_needed("a\n"));
    EXPECT_FALSE(UTF8::no_conversion_between_Windows1252_and_UTF8_needed("\xC3\xA9"));
}

TEST(NoConversionNeeded, EveryByteAloneAndAfterText) {
    for (int byte = 1; byte < 256; ++byte) {
        const bool printable = byte >= 32 && byte <= 126;
        const char alone[] = {static_cast<char>(byte), '\0'};
        const char after[] = {'a', 'b', static_cast<char>(byte), 'c', '\0'};
        EXPECT_EQ(UTF8::no_conversion_between_Windows1252_and_UTF8_needed(alone), printable)
            << byte;
        EXPECT_EQ(UTF8::no_conversion_between_Windows1252_and_UTF8_needed(after), printable)
            << byte;
    }
}

// --- UTF-8 and the wide forms ---------------------------------------------------------------

TEST(LenientToU16string, BadByteBecomesOneReplacement) {
    EXPECT_EQ(no_boost::to_u16string("a\xFF"
                                     "b"),
              u"a\uFFFDb");
}

TEST(LenientToU16string, SequenceCutShortAtTheEndGivesOneReplacementPerByte) {
    EXPECT_EQ(no_boost::to_u16string("a\xE2\x82"), u"a\uFFFD\uFFFD");
    EXPECT_EQ(no_boost::to_u16string("\xF0\x9F\x98"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(no_boost::to_u16string("\xC3"), u"\uFFFD");
}

TEST(LenientToU16string, RunOfBadBytesGivesOneReplacementPerByte) {
    EXPECT_EQ(no_boost::to_u16string("x\x80\x80\xFE\xFFy"), u"x\uFFFD\uFFFD\uFFFD\uFFFDy");
    EXPECT_EQ(no_boost::to_u16string("\xC0\x80"), u"\uFFFD\uFFFD");  // overlong NUL
    EXPECT_EQ(no_boost::to_u16string("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");  // 0x110000
    EXPECT_EQ(no_boost::to_u16string("\xE2\x41\x41"), u"\uFFFDAA");
}

TEST(LenientToU16string, EveryByteAboveAsciiAloneIsReplaced) {
    for (int byte = 0x80; byte < 256; ++byte) {
        EXPECT_EQ(no_boost::to_u16string(std::string(1, static_cast<char>(byte))), u"\uFFFD")
            << byte;
    }
}

TEST(LenientToU16string, GoodTextSurvivesIncludingSurrogatePairsAndNul) {
    EXPECT_EQ(no_boost::to_u16string(""), u"");
    EXPECT_EQ(no_boost::to_u16string("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
              u"\u00E9\u20AC\U0001F600");
    EXPECT_EQ(no_boost::to_u16string(std::string_view("a\0b", 3)), std::u16string(u"a\0b", 3));
    EXPECT_EQ(no_boost::to_u16string("\xEF\xBB\xBFx"), u"\uFEFFx");  // a byte order mark is kept
}

TEST(LenientToU16string, SequenceBrokenByGoodTextGivesOneReplacementPerByte) {
    EXPECT_EQ(no_boost::to_u16string("\xF0\x9F\x98"
                                     "A"),
              u"\uFFFD\uFFFD\uFFFDA");
    EXPECT_EQ(no_boost::to_u16string("\xE2\x82"
                                     "b\xC3\xA9"),
              u"\uFFFD\uFFFDb\u00E9");
    EXPECT_EQ(no_boost::to_u16string("\xC3\xA9\xC3\xC3\xA9"), u"\u00E9\uFFFD\u00E9");
    EXPECT_EQ(no_boost::to_wstring("\xF0\x9F\x98\xF0\x9F\x98\x80"),
              std::wstring(L"\uFFFD\uFFFD\uFFFD") + static_cast<wchar_t>(0x1F600));
}

TEST(LenientToU16string, LongRunOfBadBytesKeepsTheTextAroundIt) {
    const std::string bytes = "a" + std::string(1 << 16, '\xFF') + "\xC3\xA9";
    const std::u16string units = no_boost::to_u16string(bytes);
    EXPECT_EQ(units, u"a" + std::u16string(1 << 16, u'\uFFFD') + u"\u00E9");
    EXPECT_EQ(no_boost::UTF8_to_Windows1252(bytes), "a\xE9");
}

TEST(LenientToWstring, ConvertsToUtf32WithReplacements) {
    EXPECT_EQ(no_boost::to_wstring("a\xFF"
                                   "b"),
              L"a\uFFFDb");
    EXPECT_EQ(no_boost::to_wstring("\xF0\x9F\x98\x80"), std::wstring(1, 0x1F600));
    EXPECT_EQ(no_boost::to_wstring("a\xE2\x82"), L"a\uFFFD\uFFFD");
    EXPECT_EQ(UTF8::to_wstring("\xC3\xA9\xFF"), L"\u00E9\uFFFD");
    EXPECT_EQ(UTF8::to_wstring(""), L"");
}

TEST(FromUtf8Bytes, UsesTheGivenReplacement) {
    using Utf16 = std::codecvt_utf8_utf16<char16_t>;
    using Utf32 = std::codecvt_utf8<wchar_t>;
    EXPECT_EQ((no_boost::from_utf8_bytes<Utf16, char16_t>("a\xFF\xFE", u'?')), u"a??");
    EXPECT_EQ((no_boost::from_utf8_bytes<Utf32, wchar_t>("\xE2\x82\xAC\x80", L'#')), L"\u20AC#");
    EXPECT_EQ((no_boost::from_utf8_bytes<Utf16, char16_t>("", u'?')), u"");
}

TEST(StrictToU16string, AnyBadInputGivesEmpty) {
    EXPECT_EQ(UTF8::to_u16string("a\xFF"
                                 "b"),
              u"");
    EXPECT_EQ(UTF8::to_u16string("a\xE2\x82"), u"");
    EXPECT_EQ(UTF8::to_u16string("\xC0\x80"), u"");
    EXPECT_EQ(UTF8::to_u16string("\xF4\x90\x80\x80"), u"");
}

TEST(StrictToU16string, GoodTextConverts) {
    EXPECT_EQ(UTF8::to_u16string(""), u"");
    EXPECT_EQ(UTF8::to_u16string("abc"), u"abc");
    EXPECT_EQ(UTF8::to_u16string("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
              u"\u00E9\u20AC\U0001F600");
}

TEST(StrictFromU16string, LoneSurrogateGivesEmpty) {
    const std::u16string high(1, 0xD800);
    const std::u16string low(1, 0xDC00);
    EXPECT_EQ(no_boost::from_u16string(high), "");
    EXPECT_EQ(no_boost::from_u16string(low), "");
    EXPECT_EQ(no_boost::from_u16string(u"a" + high + u"b"), "");
    EXPECT_EQ(no_boost::from_u16string(low + high), "");
    EXPECT_EQ(UTF8::from_u16string(high.c_str()), "");
    EXPECT_EQ(UTF8::from_u16string((u"ok" + low).c_str()), "");
}

TEST(StrictFromU16string, HighSurrogateEndingTheTextGivesEmpty) {
    // The partner of a final high surrogate never comes, so it is as lone as any other.
    const std::u16string high(1, 0xD83D);
    EXPECT_EQ(no_boost::from_u16string(u"a" + high), "");
    EXPECT_EQ(no_boost::from_u16string(u"\U0001F600" + high), "");
    EXPECT_EQ(UTF8::from_u16string((u"abc" + high).c_str()), "");
    EXPECT_EQ(no_boost::from_u16string(high + std::u16string(1, 0xDE00)), "\xF0\x9F\x98\x80");
}

TEST(StrictFromU16string, GoodTextConverts) {
    EXPECT_EQ(no_boost::from_u16string(u""), "");
    EXPECT_EQ(no_boost::from_u16string(u"\u00E9\u20AC\U0001F600"),
              "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(no_boost::from_u16string(std::u16string(u"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(UTF8::from_u16string(u"a\0b"), "a");
    EXPECT_EQ(UTF8::from_u16string(u"\uFFFF"), "\xEF\xBF\xBF");
}

TEST(StrictFromWstring, ValuesBeyondTheLastCodePointGiveEmpty) {
    EXPECT_EQ(no_boost::from_wstring(std::wstring(1, 0x110000)), "");
    EXPECT_EQ(no_boost::from_wstring(L"a" + std::wstring(1, static_cast<wchar_t>(-1))), "");
    EXPECT_EQ(no_boost::from_wstring(std::wstring(1, 0x10FFFF)), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(no_boost::from_wstring(L"\u00E9\U0001F600"), "\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(UTF8::from_wstring(L"a\u20AC"), "a\xE2\x82\xAC");
    EXPECT_EQ(UTF8::from_wstring(L""), "");
}

TEST(Utf8RoundTrip, EveryCodePointThroughUtf16AndUtf32) {
    for (char32_t code_point = 1; code_point <= 0x10FFFF;
         code_point += code_point < 0x10000 ? 1 : 97) {
        if (code_point >= 0xD800 && code_point <= 0xDFFF) {
            continue;
        }
        const std::string bytes = utf8_of(code_point);
        const std::u16string units = UTF8::to_u16string(bytes.c_str());
        ASSERT_EQ(units.size(), code_point < 0x10000 ? 1u : 2u) << std::hex << code_point;
        ASSERT_EQ(no_boost::to_u16string(bytes), units);
        ASSERT_EQ(no_boost::from_u16string(units), bytes);
        const std::wstring wide = UTF8::to_wstring(bytes.c_str());
        ASSERT_EQ(wide, std::wstring(1, static_cast<wchar_t>(code_point)));
        ASSERT_EQ(UTF8::from_wstring(wide.c_str()), bytes);
    }
}

TEST(TerminatedForms, StopAtTheFirstNul) {
    const char bytes[] = {'a', '\0', '\xFF', '\0'};
    EXPECT_EQ(UTF8::to_u16string(bytes), u"a");
    EXPECT_EQ(UTF8::to_wstring(bytes), L"a");
    EXPECT_EQ(UTF8::Windows1252_to_UTF8(bytes), "a");
    EXPECT_TRUE(UTF8::is_utf8(bytes));
    EXPECT_EQ(UTF8::count_utf8_codepoints(bytes), 1u);
    const char tab_after_nul[] = {'a', '\0', '\t', '\0'};
    EXPECT_TRUE(UTF8::no_conversion_between_Windows1252_and_UTF8_needed(tab_after_nul));
    const char16_t units[] = {u'a', u'\0', 0xD800, u'\0'};
    EXPECT_EQ(UTF8::from_u16string(units), "a");
    const wchar_t wide[] = {L'a', L'\0', 0x110000, L'\0'};
    EXPECT_EQ(UTF8::from_wstring(wide), "a");
}

// --- Validation and counting ----------------------------------------------------------------

TEST(IsUtf8, EmptyTextIsValidAndLoneC0IsNot) {
    EXPECT_TRUE(UTF8::is_utf8(""));
    EXPECT_FALSE(UTF8::is_utf8("\xC0"));
    EXPECT_TRUE(UTF8::is_utf8(std::vector<unsigned char>{}));
}

TEST(IsUtf8, KnownForms) {
    struct Row {
        const char* text;
        bool valid;
    };
    const Row rows[] = {
        {"abc", true},
        {"\xC3\xA9", true},
        {"\xE2\x82\xAC", true},
        {"\xF0\x9F\x98\x80", true},
        {"\xF4\x8F\xBF\xBF", true},
        {"\xEF\xBB\xBF", true},
        {"\xC0\x80", false},
        {"\xC1\xBF", false},
        {"\xE0\x9F\xBF", false},
        {"\xED\xA0\x80", false},
        {"\xF0\x8F\xBF\xBF", false},
        {"\xF4\x90\x80\x80", false},
        {"\xF5\x80\x80\x80", false},
        {"\x80", false},
        {"\xFF", false},
        {"a\xE2\x82", false},
        {"\xE2", false},
        {"\xF0\x9F", false},
        {"\xE2\x28\xA1", false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(UTF8::is_utf8(row.text), row.valid) << row.text;
    }
}

TEST(IsUtf8, SequenceCutShortByTheTerminatorIsNotReadPast) {
    // Heap buffers of exact size, so that the sanitizer build sees any read beyond the NUL.
    for (const char* text : {"\xE2", "\xE2\x82", "\xF0", "\xF0\x9F\x98", "\xF4\x8F", "\xED"}) {
        const std::size_t size = std::strlen(text) + 1;
        const std::unique_ptr<char[]> exact(new char[size]);
        std::memcpy(exact.get(), text, size);
        EXPECT_FALSE(UTF8::is_utf8(exact.get())) << text;
    }
}

TEST(IsUtf8, VectorFormStopsAtNulWithTheVerdictSoFar) {
    EXPECT_TRUE(UTF8::is_utf8(std::vector<unsigned char>{'a', 0, 0xFF}));
    EXPECT_FALSE(UTF8::is_utf8(std::vector<unsigned char>{0xFF, 0, 'a'}));
    EXPECT_TRUE(UTF8::is_utf8(std::vector<unsigned char>{0xE2, 0x82, 0xAC}));
    EXPECT_FALSE(UTF8::is_utf8(std::vector<unsigned char>{0xE2, 0x82}));
    EXPECT_FALSE(UTF8::is_utf8(std::vector<unsigned char>{0xE2, 0x82, 0, 0xAC}));
}

TEST(IsUtf8, EveryOneAndTwoByteTextAgreesWithTheReference) {
    for (int first = 1; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(UTF8::is_utf8(one.c_str()), reference_is_utf8(one)) << first;
        for (int second = 1; second < 256; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(UTF8::is_utf8(two.c_str()), reference_is_utf8(two)) << first << " " << second;
        }
    }
}

TEST(IsUtf8, ThreeAndFourByteLeadsAgreeWithTheReference) {
    for (int lead :
         {0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xF8, 0xFF}) {
        for (int second = 0x70; second < 0xD0; ++second) {
            for (int third : {0x41, 0x7F, 0x80, 0xBF, 0xC0}) {
                for (int fourth : {-1, 0x80, 0xBF, 0x30}) {
                    std::string text = {static_cast<char>(lead), static_cast<char>(second),
                                        static_cast<char>(third)};
                    if (fourth >= 0) {
                        text += static_cast<char>(fourth);
                    }
                    ASSERT_EQ(UTF8::is_utf8(text.c_str()), reference_is_utf8(text))
                        << lead << " " << second << " " << third << " " << fourth;
                }
            }
        }
    }
}

TEST(IsUtf8, RandomTextAgreesWithTheReference) {
    std::mt19937 random(3629);
    std::uniform_int_distribution<int> length(0, 24);
    std::uniform_int_distribution<int> code_point(1, 0x10FFFF);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        const int pieces = length(random);
        for (int i = 0; i < pieces; ++i) {
            const int choice = static_cast<int>(random() % 4);
            if (choice == 0) {
                text += static_cast<char>(random() % 255 + 1);
            } else {
                const auto value = static_cast<char32_t>(code_point(random));
                if (value < 0xD800 || value > 0xDFFF) {
                    text += utf8_of(value);
                }
            }
        }
        ASSERT_EQ(UTF8::is_utf8(text.c_str()), reference_is_utf8(text));
        ASSERT_EQ(UTF8::is_utf8(std::vector<unsigned char>(text.begin(), text.end())),
                  reference_is_utf8(text));
        if (reference_is_utf8(text)) {
            ASSERT_EQ(no_boost::to_u16string(text), UTF8::to_u16string(text.c_str()));
            ASSERT_EQ(UTF8::from_u16string(UTF8::to_u16string(text.c_str()).c_str()), text);
            ASSERT_EQ(UTF8::from_wstring(UTF8::to_wstring(text.c_str()).c_str()), text);
        }
    }
}

TEST(CountUtf8Codepoints, CountsBytesThatAreNoContinuation) {
    EXPECT_EQ(UTF8::count_utf8_codepoints("\xE2\x82\xAC"), 1u);
    EXPECT_EQ(UTF8::count_utf8_codepoints(""), 0u);
    EXPECT_EQ(UTF8::count_utf8_codepoints("abc"), 3u);
    EXPECT_EQ(UTF8::count_utf8_codepoints("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), 4u);
}

TEST(CountUtf8Codepoints, MalformedTextIsCountedNotDetected) {
    EXPECT_EQ(UTF8::count_utf8_codepoints("\x80\x80\x80"), 0u);
    EXPECT_EQ(UTF8::count_utf8_codepoints("\xFF\xFE"), 2u);
    EXPECT_EQ(UTF8::count_utf8_codepoints("\xE2\x82"), 1u);
    EXPECT_EQ(UTF8::count_utf8_codepoints("ab\0cd"), 2u);
}

TEST(CountUtf8Codepoints, EveryByteValue) {
    for (int byte = 1; byte < 256; ++byte) {
        const char text[] = {static_cast<char>(byte), '\0'};
        EXPECT_EQ(UTF8::count_utf8_codepoints(text), byte >= 0x80 && byte < 0xC0 ? 0u : 1u) << byte;
    }
}

// --- Argument arrays ------------------------------------------------------------------------

char* heap_copy(const char* text) {
    char* copy = new char[std::strlen(text) + 1];
    std::strcpy(copy, text);
    return copy;
}

// Leaks or mismatched releases show up under the sanitizer build.
TEST(ClearWinmain, ReleasesEntriesAndTheArray) {
    char** arguments = new char* [3] { heap_copy("program"), heap_copy("-v"), heap_copy("x") };
    UTF8::clear_winmain(arguments, 3);
}

TEST(ClearWinmain, SkipsNullEntries) {
    char** arguments = new char* [3] { heap_copy("program"), nullptr, heap_copy("x") };
    UTF8::clear_winmain(arguments, 3);
}

TEST(ClearWinmain, ZeroCountReleasesOnlyTheArray) {
    char** arguments = new char* [1] { nullptr };
    UTF8::clear_winmain(arguments, 0);
}

TEST(ClearWinmain, NullArrayIsIgnored) {
    UTF8::clear_winmain(nullptr, 0);
    UTF8::clear_winmain(nullptr, 5);
}

// --- Robustness -----------------------------------------------------------------------------

// Random bytes of random length through every text-taking function: no crash, no read beyond the
// text (the sanitizer build checks), and the documented invariants hold.
TEST(Utf8HelperRobustness, RandomBytesAreSurvived) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> length(0, 24);
    const char pieces[] = "\x80\xBF\xC0\xC2\xE0\xE2\xED\xEF\xF0\xF4\xF8\xFF\x82\xAC\x9F\x98";
    for (int round = 0; round < 5000; ++round) {
        std::string bytes(static_cast<std::size_t>(length(random)), '\0');
        for (char& c : bytes) {
            c = random() % 3 == 0 ? pieces[random() % (sizeof pieces - 1)]
                                  : static_cast<char>(random());
        }
        const std::u16string lenient = no_boost::to_u16string(bytes);
        ASSERT_LE(lenient.size(), bytes.size());
        ASSERT_LE(no_boost::to_wstring(bytes).size(), bytes.size());
        ASSERT_LE(no_boost::UTF8_to_Windows1252(bytes).size(), bytes.size());
        const std::string utf8 = no_boost::Windows1252_to_UTF8(bytes);
        ASSERT_TRUE(reference_is_utf8(utf8) || utf8.find('\0') != std::string::npos);
        ASSERT_EQ(UTF8::Windows1252_to_UTF8(bytes.data(), bytes.size()), utf8);
        no_boost::from_u16string(lenient);

        const char* text = bytes.c_str();
        const std::u16string strict = UTF8::to_u16string(text);
        ASSERT_TRUE(strict.empty() || strict == no_boost::to_u16string(text));
        UTF8::to_wstring(text);
        UTF8::Windows1252_to_UTF8(text);
        UTF8::UTF8_to_Windows1252(text, bytes.size());
        UTF8::no_conversion_between_Windows1252_and_UTF8_needed(text);
        ASSERT_EQ(UTF8::is_utf8(text), reference_is_utf8(bytes));
        UTF8::is_utf8(std::vector<unsigned char>(bytes.begin(), bytes.end()));
        ASSERT_LE(UTF8::count_utf8_codepoints(text), bytes.size());

        std::u16string units(bytes.size() / 2, u'\0');
        std::memcpy(units.data(), bytes.data(), units.size() * 2);
        no_boost::from_u16string(units);
        UTF8::from_u16string(units.c_str());
        std::wstring wide(bytes.size() / 4, L'\0');
        std::memcpy(wide.data(), bytes.data(), wide.size() * 4);
        no_boost::from_wstring(wide);
        UTF8::from_wstring(wide.c_str());
    }
}

}  // namespace
