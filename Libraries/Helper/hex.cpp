#include "helper/algorithm/hex.h"

#include <stdexcept>

namespace Quorvane {
namespace Algorithm {

namespace {

constexpr char digits[] = "0123456789abcdef";

// The value of one hexadecimal digit, or -1. Spelled out rather than through isxdigit so that the
// answer never depends on the global locale.
int nibble(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    return -1;
}

void append_hex(std::string& text, unsigned char byte) {
    text.push_back(digits[byte >> 4]);
    text.push_back(digits[byte & 0x0F]);
}

}  // namespace

bool byte_from_hex(char high, char low, unsigned char& out) {
    out = 0;
    const int high_value = nibble(high);
    if (high_value < 0) {
        return false;
    }
    out = static_cast<unsigned char>(high_value << 4);
    const int low_value = nibble(low);
    if (low_value < 0) {
        return false;
    }
    out = static_cast<unsigned char>(out | low_value);
    return true;
}

std::string hex(const std::vector<unsigned char>& bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const unsigned char byte : bytes) {
        append_hex(text, byte);
    }
    return text;
}

std::string hex(unsigned char byte) {
    std::string text;
    append_hex(text, byte);
    return text;
}

std::vector<unsigned char> decode_hex(const std::string& text) {
    std::vector<unsigned char> bytes;
    bytes.reserve((text.size() + 1) / 2);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const char low = i + 1 < text.size() ? text[i + 1] : '0';
        unsigned char byte = 0;
        if (!byte_from_hex(text[i], low, byte)) {
            throw std::runtime_error("invalid characters in hex string");
        }
        bytes.push_back(byte);
    }
    return bytes;
}

}  // namespace Algorithm
}  // namespace Quorvane
