#include "helper/utf8_helper.h"

#include <algorithm>
#include <cwchar>
#include <exception>
#include <locale>

#include "rapidjson/encodings.h"
#include "rapidjson/stream.h"

namespace Quorvane {
namespace UTF8 {

namespace {

using Utf16Facet = std::codecvt_utf8_utf16<char16_t>;
using Utf32Facet = std::codecvt_utf8<wchar_t>;

constexpr char16_t replacement_character = u'\uFFFD';

// Flag of a Windows-1252 table entry that has a character.
constexpr std::uint32_t has_character = 0x10000;
// Flag of a code unit that has a Windows-1252 byte.
constexpr std::uint32_t has_byte = 0x100;

// Bytes 0x80 to 0x9F: where Latin-1 has the C1 controls, Windows-1252 puts 27 printable
// characters; 0 marks the five bytes it leaves unassigned. All other bytes are Latin-1.
constexpr char16_t printable_in_c1_range[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 0x80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,       // 0x88
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 0x90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,  // 0x98
};

constexpr bool in_c1_range(std::uint32_t value) {
    return value >= 0x80 && value < 0xA0;
}

constexpr std::array<std::uint32_t, 256> make_windows1252_table() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        if (!in_c1_range(byte)) {
            table[byte] = has_character | byte;
        } else if (const char16_t unit = printable_in_c1_range[byte - 0x80]; unit != 0) {
            table[byte] = has_character | unit;
        }
    }
    return table;
}

// The outcome of one run of a facet: how it ended, how many input elements it consumed and how
// many output elements it wrote.
struct Run {
    std::codecvt_base::result result;
    std::size_t consumed;
    std::size_t written;
};

// Reads UTF-8 from [first, last) into `out`, which must have room for last - first units: no
// UTF-8 sequence yields more units than it has bytes.
template <class Codecvt, class Elem>
Run decode_run(const Codecvt& facet, const char* first, const char* last, Elem* out) {
    std::mbstate_t state{};
    const char* from_next = first;
    Elem* to_next = out;
    const auto result = facet.in(state, first, last, from_next, out, out + (last - first), to_next);
    return {result, static_cast<std::size_t>(from_next - first),
            static_cast<std::size_t>(to_next - out)};
}

// Strict conversion to UTF-8: every unit must convert, or the answer is empty.
template <class Codecvt, class Elem>
std::string encode_strict(std::basic_string_view<Elem> units) {
    if (units.empty()) {
        return {};
    }
    try {
        // Four bytes per unit always suffice: a surrogate pair, two units, needs four bytes.
        std::string bytes(units.size() * 4, '\0');
        const Codecvt facet;
        std::mbstate_t state{};
        const Elem* from_next = units.data();
        char* to_next = bytes.data();
        const Elem* const end = units.data() + units.size();
        // The UTF-16 facet reports success when it stops in front of a high surrogate that ends
        // the text, waiting for its partner; a lone surrogate is bad input wherever it stands.
        if (facet.out(state, units.data(), end, from_next, bytes.data(),
                      bytes.data() + bytes.size(), to_next) != std::codecvt_base::ok ||
            from_next != end) {
            return {};
        }
        bytes.resize(static_cast<std::size_t>(to_next - bytes.data()));
        return bytes;
    } catch (const std::exception&) {
        return {};
    }
}

// A string stream that stays on the terminator. The validator takes the continuation bytes of a
// sequence without looking at them first; a sequence cut short by the NUL must fail on the NUL
// instead of reading past the end of the text.
struct TerminatedStream : rapidjson::GenericStringStream<rapidjson::UTF8<char>> {
    using GenericStringStream::GenericStringStream;
    Ch Take() { return *src_ == '\0' ? '\0' : *src_++; }
};

// The validator copies each code point it accepts to an output stream; only its verdict matters
// here, so the copy is discarded. RapidJSON's own string buffer would allocate for nothing, and
// in this RapidJSON version its first write offsets a null pointer, which the
// undefined-behaviour checks of the sanitizer build reject.
struct DiscardingStream {
    using Ch = char;
    void Put(Ch) {}
};

}  // namespace

const std::array<std::uint32_t, 256> WINDOWS1252_UNICODE_TABLE = make_windows1252_table();

std::uint32_t UTF8_TO_Windows1252_TABLE(char16_t unit) {
    if (unit < 0x100) {
        return in_c1_range(unit) ? 0 : has_byte | unit;
    }
    for (std::uint32_t byte = 0x80; byte < 0xA0; ++byte) {
        if (WINDOWS1252_UNICODE_TABLE[byte] == (has_character | unit)) {
            return has_byte | byte;
        }
    }
    return 0;
}

namespace no_boost {

template <class Codecvt, class Elem>
std::basic_string<Elem> from_utf8_bytes(std::string_view bytes, Elem replacement) {
    std::basic_string<Elem> text;
    if (bytes.empty()) {
        return text;
    }
    const Codecvt facet;
    // Every byte yields at most one unit (a four-byte sequence yields a surrogate pair), and a
    // replacement stands for one byte, so the text never outgrows the input.
    text.resize(bytes.size());
    Elem* const out = text.data();
    std::size_t written = 0;
    const char* next = bytes.data();
    const char* const end = next + bytes.size();
    while (next != end) {
        // Whatever converts before a failure or an incomplete last sequence is kept.
        Run run = decode_run(facet, next, end, out + written);
        if (run.consumed == 0) {
            // The very first bytes do not convert: try the longest prefix a character can have,
            // then shorter ones; when not even one byte converts, it is replaced and skipped.
            std::size_t length = std::min<std::size_t>(4, static_cast<std::size_t>(end - next));
            for (; length > 0; --length) {
                run = decode_run(facet, next, next + length, out + written);
                if (run.result != std::codecvt_base::error && run.consumed > 0) {
                    break;
                }
            }
            if (length == 0) {
                out[written] = replacement;
                run = {std::codecvt_base::ok, 1, 1};
            }
        }
        written += run.written;
        next += run.consumed;
    }
    text.resize(written);
    return text;
}

template std::u16string from_utf8_bytes<Utf16Facet, char16_t>(std::string_view, char16_t);
template std::wstring from_utf8_bytes<Utf32Facet, wchar_t>(std::string_view, wchar_t);

std::u16string to_u16string(std::string_view bytes) {
    return from_utf8_bytes<Utf16Facet>(bytes, replacement_character);
}

std::wstring to_wstring(std::string_view bytes) {
    return from_utf8_bytes<Utf32Facet>(bytes, static_cast<wchar_t>(replacement_character));
}

std::string from_u16string(std::u16string_view units) {
    return encode_strict<Utf16Facet>(units);
}

std::string from_wstring(std::wstring_view units) {
    return encode_strict<Utf32Facet>(units);
}

std::string Windows1252_to_UTF8(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size());
    for (const char byte : bytes) {
        const std::uint32_t entry = WINDOWS1252_UNICODE_TABLE[static_cast<unsigned char>(byte)];
        if ((entry & has_character) != 0) {
            units.push_back(static_cast<char16_t>(entry & 0xFFFF));
        }
    }
    return from_u16string(units);
}

std::string UTF8_to_Windows1252(std::string_view bytes) {
    const std::u16string units = to_u16string(bytes);
    std::string text;
    text.reserve(units.size());
    for (const char16_t unit : units) {
        const std::uint32_t mapped = UTF8_TO_Windows1252_TABLE(unit);
        if ((mapped & has_byte) != 0) {
            text.push_back(static_cast<char>(mapped & 0xFF));
        }
    }
    return text;
}

}  // namespace no_boost

std::u16string to_u16string(const char* text) {
    try {
        const std::string_view bytes(text);
        std::u16string units(bytes.size(), u'\0');
        const Run run =
            decode_run(Utf16Facet(), bytes.data(), bytes.data() + bytes.size(), units.data());
        if (run.result != std::codecvt_base::ok) {
            return {};
        }
        units.resize(run.written);
        return units;
    } catch (const std::exception&) {
        return {};
    }
}

std::string from_u16string(const char16_t* text) {
    return no_boost::from_u16string(text);
}

std::wstring to_wstring(const char* text) {
    return no_boost::to_wstring(text);
}

std::string from_wstring(const wchar_t* text) {
    return no_boost::from_wstring(text);
}

std::string Windows1252_to_UTF8(const char* text) {
    return no_boost::Windows1252_to_UTF8(text);
}

std::string Windows1252_to_UTF8(const char* text, unsigned long length) {
    return no_boost::Windows1252_to_UTF8(std::string_view(text, length));
}

std::string UTF8_to_Windows1252(const char* text, unsigned long /*length*/) {
    return no_boost::UTF8_to_Windows1252(text);
}

bool no_conversion_between_Windows1252_and_UTF8_needed(const char* text) {
    for (; *text != '\0'; ++text) {
        const auto byte = static_cast<unsigned char>(*text);
        if (byte < 32 || byte > 126) {
            return false;
        }
    }
    return true;
}

bool is_utf8(const char* text) {
    TerminatedStream input(text);
    DiscardingStream copy;
    while (input.Peek() != '\0') {
        if (!rapidjson::UTF8<char>::Validate(input, copy)) {
            return false;
        }
    }
    return true;
}

bool is_utf8(const std::vector<unsigned char>& bytes) {
    const std::string text(bytes.begin(), bytes.end());
    return is_utf8(text.c_str());
}

std::size_t count_utf8_codepoints(const char* text) {
    std::size_t count = 0;
    for (; *text != '\0'; ++text) {
        if ((static_cast<unsigned char>(*text) & 0xC0) != 0x80) {
            ++count;
        }
    }
    return count;
}

void clear_winmain(char** arguments, int count) {
    if (arguments == nullptr) {
        return;
    }
    for (int i = 0; i < count; ++i) {
        delete[] arguments[i];
    }
    delete[] arguments;
}

}  // namespace UTF8
}  // namespace Quorvane
