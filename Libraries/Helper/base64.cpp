#include "helper/base64.h"

#include <array>
#include <cstring>

namespace Quorvane {
namespace Base64 {

namespace {

using detail::cvt;

// The sextet of each alphabet character; every other byte, '=' among them, reads as 0 so that
// decoding never needs a branch. Indexed by the byte taken as unsigned.
constexpr std::array<signed char, 256> make_dec() {
    std::array<signed char, 256> table{};
    for (int sextet = 0; sextet < 64; ++sextet) {
        table[static_cast<unsigned char>(cvt[sextet])] = static_cast<signed char>(sextet);
    }
    return table;
}

constexpr std::array<signed char, 256> dec = make_dec();

unsigned long sextet(char c) {
    return static_cast<unsigned long>(dec[static_cast<unsigned char>(c)]);
}

// A byte belongs to the alphabet exactly when encoding its sextet gives it back; every other
// byte has sextet 0, whose character is 'A'.
bool in_alphabet(char c) {
    return cvt[sextet(c)] == c;
}

}  // namespace

std::string encode(const std::vector<unsigned char>& bytes) {
    return encode(bytes.begin(), bytes.end());
}

std::vector<unsigned char> decode(const std::string& text) {
    const std::size_t length = text.size();
    if (length == 0 || length % 4 != 0) {
        return {};
    }
    std::size_t padding = 0;
    if (text[length - 1] == '=' && text[length - 2] == '=') {
        padding = 2;
    } else if (text[length - 1] == '=' || text[length - 2] == '=') {
        padding = 1;
    }
    std::vector<unsigned char> bytes(length / 4 * 3 - padding);
    std::size_t out = 0;
    for (std::size_t in = 0; in < length; in += 4) {
        const unsigned long group = sextet(text[in]) << 18 | sextet(text[in + 1]) << 12 |
                                    sextet(text[in + 2]) << 6 | sextet(text[in + 3]);
        for (int shift = 16; shift >= 0 && out < bytes.size(); shift -= 8) {
            bytes[out++] = static_cast<unsigned char>(group >> shift);
        }
    }
    return bytes;
}

}  // namespace Base64

bool is_base64(const char* text) {
    std::size_t count = 0;
    while (Base64::in_alphabet(text[count])) {
        ++count;
    }
    // Only the padding that completes the last group of four may follow, and then the end.
    static constexpr const char* padding[] = {"", "===", "==", "="};
    return std::strcmp(text + count, padding[count % 4]) == 0;
}

bool is_base64_int64(const char* text) {
    return strnlen(text, 13) == 12 && is_base64(text);
}

}  // namespace Quorvane
