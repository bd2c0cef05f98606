#pragma once
// Hexadecimal text for bytes: lower-case when written, either case when read.

#include <string>
#include <vector>

#include "helper/crosscompile.h"

namespace Quorvane {
namespace Algorithm {

// Combines two hexadecimal digits of either case into `out`, high nibble first, and gives true.
// `out` is set to 0 first; a bad `high` gives false with `out` at 0, a bad `low` gives false with
// `out` holding the high nibble alone (shifted into place). Any char value is accepted.
QUORVANE_API bool byte_from_hex(char high, char low, unsigned char& out);

// Two lower-case digits per byte, high nibble first; an empty vector gives an empty string.
// One allocation.
QUORVANE_API std::string hex(const std::vector<unsigned char>& bytes);

// The two lower-case digits of one byte, as in "0a".
QUORVANE_API std::string hex(unsigned char byte);

// Reads pairs of hexadecimal digits of either case into bytes. A text of odd length reads as if a
// "0" followed it, so "abc" gives 0xAB 0xC0; an empty text gives an empty vector.
// Throws std::runtime_error("invalid characters in hex string") at the first character that is no
// hexadecimal digit, NUL bytes included.
QUORVANE_API std::vector<unsigned char> decode_hex(const std::string& text);

}  // namespace Algorithm
}  // namespace Quorvane
