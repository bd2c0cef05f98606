#pragma once
// Conversions between UTF-8, the wide forms (UTF-16 in char16_t, UTF-32 in wchar_t) and the legacy
// code page Windows-1252, and the test whether bytes are valid UTF-8.
//
// Two families. The working functions in UTF8::no_boost take views and, when reading UTF-8, are
// lenient: every byte that does not convert becomes one replacement character and the good text
// around it survives. The functions in UTF8 take NUL-terminated text (never a null pointer);
// to_u16string and from_u16string there are strict: any bad input gives an empty result.
// No function here throws for bad text.

#include <array>
#include <codecvt>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "helper/crosscompile.h"

namespace Quorvane {
namespace UTF8 {

// The UTF-16 code unit of each Windows-1252 byte, in the low 16 bits, with the flag 0x10000 set.
// The five bytes 0x81, 0x8D, 0x8F, 0x90 and 0x9D have no character and hold 0 (no flag).
extern QUORVANE_API const std::array<std::uint32_t, 256> WINDOWS1252_UNICODE_TABLE;

// The inverse of WINDOWS1252_UNICODE_TABLE: 0x100 | the byte when the code unit has a character
// in Windows-1252, 0 otherwise. Units below 0x80 and from 0xA0 to 0xFF map to themselves; the C1
// controls 0x80 to 0x9F and surrogates do not map.
QUORVANE_API std::uint32_t UTF8_TO_Windows1252_TABLE(char16_t unit);

namespace no_boost {

using UTF8::UTF8_TO_Windows1252_TABLE;
using UTF8::WINDOWS1252_UNICODE_TABLE;

// The lenient engine behind every conversion from UTF-8: converts with the standard library's
// UTF-8 facet `Codecvt` (maximum code point 0x10FFFF, default mode) and writes `replacement` for
// each byte that starts no convertible character, a sequence cut short at the end included.
// Instantiated for std::codecvt_utf8_utf16<char16_t> with char16_t (UTF-16 with surrogates) and
// std::codecvt_utf8<wchar_t> with wchar_t (UTF-32). Builds one facet per call; only an exhausted
// allocator throws. Linear in the input. The facet reads an encoded surrogate (ED A0 80 to
// ED BF BF) as that code unit; UTF8::is_utf8 rejects such text.
template <class Codecvt, class Elem>
QUORVANE_API std::basic_string<Elem> from_utf8_bytes(std::string_view bytes, Elem replacement);

// UTF-8 to UTF-16; each bad byte becomes U+FFFD.
QUORVANE_API std::u16string to_u16string(std::string_view bytes);

// UTF-8 to UTF-32 in wchar_t; each bad byte becomes U+FFFD.
QUORVANE_API std::wstring to_wstring(std::string_view bytes);

// UTF-16 to UTF-8; empty when any unit is bad, a lone surrogate included.
QUORVANE_API std::string from_u16string(std::u16string_view units);

// UTF-32 in wchar_t to UTF-8; empty when any value lies above 0x10FFFF (negative ones included).
// Surrogate values are written in their three-byte form, as the standard facet does.
QUORVANE_API std::string from_wstring(std::wstring_view units);

// Windows-1252 bytes to UTF-8. The five unassigned bytes are dropped without trace; NUL bytes in
// the view are converted like any other.
QUORVANE_API std::string Windows1252_to_UTF8(std::string_view bytes);

// UTF-8 to Windows-1252. Characters the code page lacks, bad bytes among them, are dropped: no
// substitute such as '?' is written.
QUORVANE_API std::string UTF8_to_Windows1252(std::string_view bytes);

}  // namespace no_boost

// Strict UTF-8 to UTF-16: empty on any bad input, a sequence cut short at the end included, and
// on any standard exception.
QUORVANE_API std::u16string to_u16string(const char* text);

// Strict UTF-16 to UTF-8: empty on any bad input, a lone surrogate included, and on any standard
// exception.
QUORVANE_API std::string from_u16string(const char16_t* text);

// As no_boost::to_wstring of the text up to its terminator.
QUORVANE_API std::wstring to_wstring(const char* text);

// As no_boost::from_wstring of the text up to its terminator.
QUORVANE_API std::string from_wstring(const wchar_t* text);

// As no_boost::Windows1252_to_UTF8 of the text up to its terminator.
QUORVANE_API std::string Windows1252_to_UTF8(const char* text);

// As no_boost::Windows1252_to_UTF8 of exactly `length` bytes, NUL bytes included.
QUORVANE_API std::string Windows1252_to_UTF8(const char* text, unsigned long length);

// As no_boost::UTF8_to_Windows1252 of the text up to its terminator. `length` is ignored: the
// conversion stops at the first NUL even when `length` reaches beyond it.
QUORVANE_API std::string UTF8_to_Windows1252(const char* text, unsigned long length);

// Whether the text consists only of the printable ASCII bytes 32 to 126, so that it reads the same
// in Windows-1252 and UTF-8 and no conversion is needed. A tab or a line feed gives false; the
// empty text gives true. One pass, no allocation.
QUORVANE_API bool no_conversion_between_Windows1252_and_UTF8_needed(const char* text);

// Whether the text up to its terminator is valid UTF-8 as RapidJSON's validation defines it
// (no overlong forms, no surrogates, nothing above U+10FFFF). The empty text is valid.
QUORVANE_API bool is_utf8(const char* text);

// As is_utf8 of the bytes taken as text: a NUL byte ends the test, with the verdict on the bytes
// before it.
QUORVANE_API bool is_utf8(const std::vector<unsigned char>& bytes);

// The number of bytes up to the terminator that are not continuation bytes (10xxxxxx): the code
// points of valid UTF-8. Malformed text is counted the same way, not detected.
QUORVANE_API std::size_t count_utf8_codepoints(const char* text);

// Releases an argument array built for a program's entry point: each non-null one of the first
// `count` entries with delete[], then `arguments` itself with delete[]. A null `arguments` is
// ignored. The array and its entries must come from new[] and are owned by the caller until here.
QUORVANE_API void clear_winmain(char** arguments, int count);

}  // namespace UTF8
}  // namespace Quorvane
