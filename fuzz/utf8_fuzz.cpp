// UTF-8, UTF-16, UTF-32 and Windows-1252: the lenient and the strict converters on arbitrary
// bytes and code units, with the round trips the header promises for valid text.

#include "helper/utf8_helper.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz_check.h"

namespace UTF8 = Quorvane::UTF8;

namespace {

// Strict and lenient readers agree on valid text, and writing it back gives the same bytes.
void check_utf8_text(const std::string& bytes) {
    const std::string text(bytes.c_str());  // up to the first NUL, as the C forms see it
    const bool valid = UTF8::is_utf8(text.c_str());
    FUZZ_CHECK(UTF8::is_utf8(std::vector<unsigned char>(bytes.begin(), bytes.end())) == valid);
    const std::size_t points = UTF8::count_utf8_codepoints(text.c_str());
    FUZZ_CHECK(points <= text.size());

    const std::u16string lenient16 = UTF8::no_boost::to_u16string(bytes);
    const std::wstring lenient32 = UTF8::no_boost::to_wstring(bytes);
    const std::u16string strict16 = UTF8::to_u16string(text.c_str());
    const std::wstring wide = UTF8::to_wstring(text.c_str());
    if (valid) {
        FUZZ_CHECK(wide.size() == points);
        FUZZ_CHECK(UTF8::from_wstring(wide.c_str()) == text);
        FUZZ_CHECK(text.empty() || !strict16.empty());
        FUZZ_CHECK(UTF8::from_u16string(strict16.c_str()) == text);
        FUZZ_CHECK(UTF8::no_boost::from_u16string(strict16) == text);
        FUZZ_CHECK(strict16 == UTF8::no_boost::to_u16string(text));
    }
    (void)UTF8::no_boost::from_u16string(lenient16);
    (void)UTF8::no_boost::from_wstring(lenient32);

    const std::string legacy = UTF8::no_boost::UTF8_to_Windows1252(bytes);
    FUZZ_CHECK(legacy.size() <= bytes.size());
    FUZZ_CHECK(UTF8::UTF8_to_Windows1252(bytes.c_str(), bytes.size()) ==
               UTF8::no_boost::UTF8_to_Windows1252(text));
    FUZZ_CHECK(UTF8::no_conversion_between_Windows1252_and_UTF8_needed(text.c_str()) ==
               (text.find_first_not_of(" !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTU"
                                       "VWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~") ==
                std::string::npos));
}

// Every byte of the code page that has a character survives the trip through UTF-8.
void check_windows1252(const std::string& bytes) {
    const std::string utf8 = UTF8::no_boost::Windows1252_to_UTF8(bytes);
    FUZZ_CHECK(UTF8::is_utf8(std::string(utf8.c_str()).c_str()));
    std::string kept;
    for (const char c : bytes) {
        if (UTF8::WINDOWS1252_UNICODE_TABLE[static_cast<unsigned char>(c)] != 0) {
            kept += c;
        }
    }
    FUZZ_CHECK(UTF8::no_boost::UTF8_to_Windows1252(utf8) == kept);
    FUZZ_CHECK(UTF8::Windows1252_to_UTF8(bytes.c_str(), bytes.size()) == utf8);
    FUZZ_CHECK(UTF8::Windows1252_to_UTF8(bytes.c_str()) ==
               UTF8::no_boost::Windows1252_to_UTF8(std::string(bytes.c_str())));
    for (const char c : bytes) {
        const std::uint32_t unit = UTF8::WINDOWS1252_UNICODE_TABLE[static_cast<unsigned char>(c)];
        if (unit != 0) {
            FUZZ_CHECK(UTF8::UTF8_TO_Windows1252_TABLE(static_cast<char16_t>(unit & 0xFFFF)) ==
                       (0x100u | static_cast<unsigned char>(c)));
        }
    }
}

// Arbitrary code units, lone surrogates and values beyond Unicode included.
void check_units(FuzzedDataProvider& input) {
    std::u16string units16;
    std::wstring units32;
    const auto count = input.ConsumeIntegralInRange<std::size_t>(0, 64);
    for (std::size_t i = 0; i < count && input.remaining_bytes() > 0; ++i) {
        units16 += static_cast<char16_t>(input.ConsumeIntegral<std::uint16_t>());
        units32 += static_cast<wchar_t>(input.ConsumeIntegral<std::int32_t>());
    }
    const std::string from16 = UTF8::no_boost::from_u16string(units16);
    if (!from16.empty()) {
        FUZZ_CHECK(UTF8::is_utf8(from16.c_str()) || from16.find('\0') != std::string::npos);
        FUZZ_CHECK(UTF8::no_boost::to_u16string(from16) == units16);
    }
    (void)UTF8::from_u16string(units16.c_str());
    (void)UTF8::from_wstring(units32.c_str());
    for (const char16_t unit : units16) {
        (void)UTF8::UTF8_TO_Windows1252_TABLE(unit);
    }

    // Every value up to 0x10FFFF, surrogates included, is written and read back as itself.
    bool in_range = true;
    for (const wchar_t unit : units32) {
        in_range = in_range && unit >= 0 && unit <= 0x10FFFF;
    }
    const std::string from32 = UTF8::no_boost::from_wstring(units32);
    if (in_range) {
        FUZZ_CHECK(UTF8::no_boost::to_wstring(from32) == units32);
    } else {
        FUZZ_CHECK(from32.empty());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    check_utf8_text(bytes);
    check_windows1252(bytes);
    FuzzedDataProvider input(data, size);
    check_units(input);
    return 0;
}
