#pragma once
// Padded Base64 with the standard alphabet (with '+' and '/') and no line breaks: the form in
// which binary values and 64-bit numbers travel as text between host, extensions and clients.

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "helper/crosscompile.h"

namespace Quorvane {
namespace Base64 {

namespace detail {

// The 64 characters of the alphabet, indexed by sextet.
inline constexpr char cvt[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The number of '=' that end the text, indexed by the input length modulo 3.
inline constexpr int mod[] = {0, 2, 1};

template <class It>
unsigned long take_byte(It& it) {
    return static_cast<unsigned char>(*it++);
}

// Writes the four characters of a 24-bit group.
inline void put_group(char* out, unsigned long group) {
    out[0] = cvt[group >> 18 & 0x3F];
    out[1] = cvt[group >> 12 & 0x3F];
    out[2] = cvt[group >> 6 & 0x3F];
    out[3] = cvt[group & 0x3F];
}

}  // namespace detail

// Encodes the bytes in [first, last) (forward iterators whose values are bytes; char values are
// taken as unsigned). The text has (n + 2) / 3 * 4 characters, padded with '='; no input gives an
// empty text. One allocation, no other failure.
template <class ForwardIt>
std::string encode(ForwardIt first, ForwardIt last) {
    const auto n = static_cast<std::size_t>(std::distance(first, last));
    std::string text((n + 2) / 3 * 4, '\0');
    char* out = &text[0];
    std::size_t remaining = n;
    for (; remaining >= 3; remaining -= 3, out += 4) {
        unsigned long group = detail::take_byte(first) << 16;
        group |= detail::take_byte(first) << 8;
        group |= detail::take_byte(first);
        detail::put_group(out, group);
    }
    if (remaining > 0) {
        // The missing bytes of the last group count as zero; '=' then replaces the characters
        // that stand for them alone.
        unsigned long group = detail::take_byte(first) << 16;
        if (remaining == 2) {
            group |= detail::take_byte(first) << 8;
        }
        detail::put_group(out, group);
        std::fill(text.end() - detail::mod[n % 3], text.end(), '=');
    }
    return text;
}

// Encodes all bytes of the vector, as the iterator form.
QUORVANE_API std::string encode(const std::vector<unsigned char>& bytes);

// Decodes a text that is_base64 has accepted; nothing is validated. A text that is empty or whose
// length is no multiple of 4 gives an empty vector, indistinguishable from empty input. Any byte
// outside the alphabet, '=' and bytes above 127 included, reads as sextet 0. The result has
// length / 4 * 3 bytes less one for each '=' among the last two characters (at most two). One
// allocation.
QUORVANE_API std::vector<unsigned char> decode(const std::string& text);

}  // namespace Base64

// Whether `text` has the shape of padded Base64: alphabet characters, then '=' padding matching
// their count modulo 4 ("=" after 3, "==" after 2), then the end. The empty text passes. After a
// count of 1 modulo 4, exactly "===" is accepted, so "A===" passes although no encoder writes it.
// `text` must not be null.
QUORVANE_API bool is_base64(const char* text);

// Whether `text` has 12 characters and passes is_base64: the shape of an encoded 64-bit number.
// Twelve alphabet characters without padding pass as well. `text` must not be null; at most 13
// characters are read.
QUORVANE_API bool is_base64_int64(const char* text);

}  // namespace Quorvane
