// Base64 and hexadecimal text: arbitrary bytes encode and decode back unchanged, and arbitrary
// text is judged and decoded without reading outside it.

#include "helper/base64.h"
#include "helper/algorithm/hex.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cctype>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz_check.h"

namespace {

bool is_hex_digit(char c) {
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

void check_base64(const std::string& text, const std::vector<unsigned char>& bytes) {
    const std::string encoded = Quorvane::Base64::encode(bytes);
    FUZZ_CHECK(encoded.size() == (bytes.size() + 2) / 3 * 4);
    FUZZ_CHECK(Quorvane::Base64::encode(bytes.begin(), bytes.end()) == encoded);
    FUZZ_CHECK(Quorvane::is_base64(encoded.c_str()));
    FUZZ_CHECK(Quorvane::Base64::decode(encoded) == bytes);
    if (bytes.size() == 9) {
        FUZZ_CHECK(Quorvane::is_base64_int64(encoded.c_str()));
    }

    // Any text decodes to the size the header states, valid Base64 or not.
    const auto decoded = Quorvane::Base64::decode(text);
    if (text.empty() || text.size() % 4 != 0) {
        FUZZ_CHECK(decoded.empty());
    } else {
        std::size_t padding = 0;
        padding += text[text.size() - 1] == '=';
        padding += text[text.size() - 2] == '=';
        FUZZ_CHECK(decoded.size() == text.size() / 4 * 3 - padding);
    }
    const bool shaped = Quorvane::is_base64(text.c_str());
    // Padding completes every group, so an accepted text fills whole groups of four.
    if (shaped) {
        FUZZ_CHECK(std::strlen(text.c_str()) % 4 == 0);
    }
    const bool int64_shaped = Quorvane::is_base64_int64(text.c_str());
    if (int64_shaped) {
        FUZZ_CHECK(std::strlen(text.c_str()) == 12 && shaped);
    }
}

void check_hex(const std::string& text, const std::vector<unsigned char>& bytes) {
    const std::string written = Quorvane::Algorithm::hex(bytes);
    FUZZ_CHECK(written.size() == 2 * bytes.size());
    FUZZ_CHECK(Quorvane::Algorithm::decode_hex(written) == bytes);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        FUZZ_CHECK(Quorvane::Algorithm::hex(bytes[i]) == written.substr(2 * i, 2));
        unsigned char byte = 0;
        FUZZ_CHECK(Quorvane::Algorithm::byte_from_hex(written[2 * i], written[2 * i + 1], byte));
        FUZZ_CHECK(byte == bytes[i]);
    }

    bool all_digits = true;
    for (const char c : text) {
        all_digits = all_digits && is_hex_digit(c);
    }
    try {
        const auto decoded = Quorvane::Algorithm::decode_hex(text);
        FUZZ_CHECK(all_digits);
        FUZZ_CHECK(decoded.size() == (text.size() + 1) / 2);
    } catch (const std::runtime_error& error) {
        FUZZ_CHECK(!all_digits);
        FUZZ_CHECK(std::string(error.what()) == "invalid characters in hex string");
    }
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        unsigned char byte = 0xFF;
        const bool good = Quorvane::Algorithm::byte_from_hex(text[i], text[i + 1], byte);
        FUZZ_CHECK(good == (is_hex_digit(text[i]) && is_hex_digit(text[i + 1])));
        if (!is_hex_digit(text[i])) {
            FUZZ_CHECK(byte == 0);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::vector<unsigned char> bytes(data, data + size);
    check_base64(text, bytes);
    check_hex(text, bytes);
    return 0;
}
