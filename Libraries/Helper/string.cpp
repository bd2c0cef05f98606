#include "helper/algorithm/string.h"

#include <boost/algorithm/string/find.hpp>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <stdexcept>
#include <strings.h>

namespace Quorvane::Algorithm {

namespace {

// Tab, line feed, vertical tab, form feed, carriage return and blank, as bits of a mask: the test
// must not depend on the locale, and bytes above 127 are never white space here.
constexpr std::uint64_t white_space_mask = (std::uint64_t{1} << 9) | (std::uint64_t{1} << 10) |
                                           (std::uint64_t{1} << 11) | (std::uint64_t{1} << 12) |
                                           (std::uint64_t{1} << 13) | (std::uint64_t{1} << 32);

bool is_trim_space(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 64 && ((white_space_mask >> byte) & 1U) != 0;
}

// A caller's set, needle or text must exist; a null pointer is a programming error that stops
// the program rather than letting it run on with undefined behaviour.
const char* required(const char* pointer) {
    if (pointer == nullptr) {
        std::abort();
    }
    return pointer;
}

void cut_left(std::string& text, std::size_t first_kept) {
    text.erase(0, std::min(first_kept, text.size()));
}

void cut_right(std::string& text, std::size_t last_kept) {
    text.erase(last_kept == std::string::npos ? 0 : last_kept + 1);
}

// Cuts the text at a found position; a miss leaves it alone.
bool cut_at(std::string& text, std::size_t pos) {
    if (pos == std::string::npos) {
        return false;
    }
    text.erase(pos);
    return true;
}

template <class Transform>
std::string transform_bytes(std::string text, Transform transform) {
    for (char& c : text) {
        c = static_cast<char>(transform(static_cast<unsigned char>(c)));
    }
    return text;
}

}  // namespace

int char_to_digit(char c) {
    if (c < '0' || c > '9') {
        throw std::runtime_error("character is not a digit");
    }
    return c - '0';
}

std::vector<unsigned char> to_vector(const std::string& text) {
    return std::vector<unsigned char>(text.begin(), text.end());
}

std::string join(const std::vector<std::string>& pieces, const std::string& separator) {
    if (pieces.empty()) {
        return {};
    }
    std::size_t size = separator.size() * (pieces.size() - 1);
    for (const std::string& piece : pieces) {
        size += piece.size();
    }
    std::string result;
    result.reserve(size);
    result += pieces.front();
    for (auto piece = pieces.begin() + 1; piece != pieces.end(); ++piece) {
        result += separator;
        result += *piece;
    }
    return result;
}

bool contains_only_digits(const std::string& text) {
    if (text.empty()) {
        return false;
    }
    for (const char* c = text.c_str(); *c != '\0'; ++c) {
        if (*c < '0' || *c > '9') {
            return false;
        }
    }
    return true;
}

std::size_t count_occurrences(const std::string& text, char c) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

std::size_t count_occurrences(const std::string& text, const std::string& needle) {
    if (needle.empty()) {
        return 0;
    }
    std::size_t count = 0;
    for (std::size_t pos = text.find(needle); pos != std::string::npos;
         pos = text.find(needle, pos + needle.size())) {
        ++count;
    }
    return count;
}

void ltrim(std::string& text) {
    cut_left(text, static_cast<std::size_t>(
                       std::find_if_not(text.begin(), text.end(), is_trim_space) - text.begin()));
}

void rtrim(std::string& text) {
    const auto last = std::find_if_not(text.rbegin(), text.rend(), is_trim_space);
    text.erase(static_cast<std::size_t>(text.rend() - last));
}

void trim(std::string& text) {
    rtrim(text);
    ltrim(text);
}

void ltrim(std::string& text, const char* set) {
    cut_left(text, text.find_first_not_of(required(set)));
}

void rtrim(std::string& text, const char* set) {
    cut_right(text, text.find_last_not_of(required(set)));
}

void trim(std::string& text, const char* set) {
    rtrim(text, set);
    ltrim(text, set);
}

std::string trim_result(std::string text) {
    trim(text);
    return text;
}

std::string trim_result(std::string text, const char* set) {
    trim(text, set);
    return text;
}

bool replace(std::string& text, const std::string& from, const std::string& to) {
    if (text.empty()) {
        return false;
    }
    const std::size_t pos = text.find(from);
    if (pos == std::string::npos) {
        return false;
    }
    text.replace(pos, from.size(), to);
    return true;
}

bool replace(std::string& text, char from, char to) {
    const std::size_t pos = text.find(from);
    if (pos == std::string::npos) {
        return false;
    }
    text[pos] = to;
    return true;
}

void replace_all(std::string& text, const std::string& from, const std::string& to) {
    if (text.empty() || from.empty()) {
        return;
    }
    std::size_t match = text.find(from);
    if (match == std::string::npos) {
        return;
    }
    // The search resumes behind each inserted text, which is the same as matching left to right in
    // the original text; building the result once keeps this linear.
    std::string result;
    result.reserve(text.size());
    std::size_t pos = 0;
    do {
        result.append(text, pos, match - pos);
        result += to;
        pos = match + from.size();
        match = text.find(from, pos);
    } while (match != std::string::npos);
    result.append(text, pos, std::string::npos);
    text.swap(result);
}

void replace_all(std::string& text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
}

void remove_all(std::string& text, const std::string& needle) {
    if (needle.empty()) {
        return;
    }
    std::size_t match = text.find(needle);
    if (match == std::string::npos) {
        return;
    }
    // Searching again at the place of each removal sees only what followed the match, so this is
    // left-to-right matching in the original text, compacted in place in one pass.
    std::size_t write = 0;
    std::size_t read = 0;
    const auto keep_up_to = [&](std::size_t stop) {
        std::char_traits<char>::move(&text[write], text.data() + read, stop - read);
        write += stop - read;
    };
    do {
        keep_up_to(match);
        read = match + needle.size();
        match = text.find(needle, read);
    } while (match != std::string::npos);
    keep_up_to(text.size());
    text.resize(write);
}

void remove_all(std::string& text, char c) {
    text.erase(std::remove(text.begin(), text.end(), c), text.end());
}

bool remove_start(std::string& text, const std::string& prefix) {
    if (!starts_with(text, prefix)) {
        return false;
    }
    text.erase(0, prefix.size());
    return true;
}

std::string remove_start_copy(const std::string& text, const std::string& prefix) {
    std::string copy = text;
    remove_start(copy, prefix);
    return copy;
}

bool remove_end(std::string& text, const std::string& suffix) {
    if (!ends_with(text, suffix)) {
        return false;
    }
    text.erase(text.size() - suffix.size());
    return true;
}

std::string remove_end_copy(const std::string& text, const std::string& suffix) {
    std::string copy = text;
    remove_end(copy, suffix);
    return copy;
}

bool erase_from(std::string& text, const std::string& needle) {
    return cut_at(text, text.find(needle));
}

bool erase_from(std::string& text, char c) {
    return cut_at(text, text.find(c));
}

bool starts_with(const std::string& text, const std::string& needle) {
    return needle.size() <= text.size() && text.compare(0, needle.size(), needle) == 0;
}

bool ends_with(const std::string& text, const std::string& needle) {
    return needle.size() <= text.size() &&
           text.compare(text.size() - needle.size(), needle.size(), needle) == 0;
}

bool starts_with(const std::string& text, char c) {
    return !text.empty() && text.front() == c;
}

bool ends_with(const std::string& text, char c) {
    return !text.empty() && text.back() == c;
}

bool contains(const std::string& text, const std::string& needle, unsigned long offset) {
    return offset <= text.size() && text.find(needle, offset) != std::string::npos;
}

bool contains(const std::string& text, const char* needle, unsigned long offset) {
    const char* const checked = required(needle);
    return offset <= text.size() && text.find(checked, offset) != std::string::npos;
}

bool contains(const std::string& text, char c, unsigned long offset) {
    return text.find(c, offset) != std::string::npos;
}

bool contains(const char* text, char c) {
    const char* const checked = required(text);
    return c != '\0' && std::strchr(checked, c) != nullptr;
}

bool icontains(const std::string& text, const std::string& needle) {
    return !needle.empty() && !boost::algorithm::ifind_first(text, needle, std::locale()).empty();
}

bool iequals(const char* a, const char* b) {
    return strcasecmp(a, b) == 0;
}

bool iequals(const std::string& a, const char* b) {
    return strcasecmp(a.c_str(), b) == 0;
}

bool istarts_with(const std::string& text, const std::string& needle) {
    // strncasecmp over the needle's length stops at a NUL in either text exactly as strcasecmp of
    // the cut prefix would, without copying the prefix.
    return needle.size() <= text.size() &&
           strncasecmp(text.c_str(), needle.c_str(), needle.size()) == 0;
}

bool equals(const char* a, const char* b) {
    return std::strcmp(a, b) == 0;
}

bool empty(const char* text) {
    return *text == '\0';
}

std::string to_upper(std::string text) {
    return transform_bytes(std::move(text), [](unsigned char c) { return std::toupper(c); });
}

std::string to_lower(std::string text) {
    return transform_bytes(std::move(text), [](unsigned char c) { return std::tolower(c); });
}

void split(std::vector<std::string>& out, const std::string& text, const std::string& delimiter,
           unsigned long offset) {
    if (text.empty() || delimiter.empty() || offset > text.size()) {
        return;
    }
    std::size_t pos = offset;
    for (std::size_t match = text.find(delimiter, pos); match != std::string::npos;
         match = text.find(delimiter, pos)) {
        out.emplace_back(text, pos, match - pos);
        pos = match + delimiter.size();
    }
    out.emplace_back(text, pos, std::string::npos);
}

std::vector<std::string> split(const std::string& text, const std::string& delimiter,
                               unsigned long offset) {
    std::vector<std::string> pieces;
    split(pieces, text, delimiter, offset);
    return pieces;
}

std::string escape_for_lua_gsub(const std::string& text) {
    std::string escaped = text;
    replace_all(escaped, "%", "%%");
    replace_all(escaped, "\"", "\\\"");
    return escaped;
}

void simplify_whitespace_not_between_quotation_marks(std::string& text) {
    bool quoted = false;
    std::size_t backslashes = 0;
    std::size_t write = 0;
    for (const char c : text) {
        if (!quoted && std::isspace(static_cast<unsigned char>(c)) != 0) {
            backslashes = 0;
            continue;
        }
        text[write++] = c;
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        // An escaped quotation mark is an ordinary byte of the text.
        if (c == '"' && backslashes % 2 == 0) {
            quoted = !quoted;
        }
        backslashes = 0;
    }
    text.resize(write);
}

}  // namespace Quorvane::Algorithm
