#pragma once
// The byte-string toolbox: in-place edits that report whether they found anything, splitting and
// joining, and comparisons. Strings are bytes; nothing here knows of UTF-8, and any byte, NUL
// included, is allowed in a std::string argument. Answers on empty arguments differ from function
// to function on purpose and are stated with each. Only char_to_digit throws. A null const char*
// is a precondition violation; the trim family and contains stop the program on it.

#include "helper/crosscompile.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Quorvane::Algorithm {

// 0 to 9 for '0' to '9'. Throws std::runtime_error "character is not a digit" for anything else.
QUORVANE_API int char_to_digit(char c);

// The string's bytes, without a terminator; empty for an empty string.
QUORVANE_API std::vector<unsigned char> to_vector(const std::string& text);

// The pieces with the separator between them; empty for no pieces. One allocation.
QUORVANE_API std::string join(const std::vector<std::string>& pieces, const std::string& separator);

// Whether every byte up to the first NUL is '0' to '9'. False for the empty string, but true for
// one that starts with a NUL byte.
QUORVANE_API bool contains_only_digits(const std::string& text);

// Number of such bytes.
QUORVANE_API std::size_t count_occurrences(const std::string& text, char c);
// Non-overlapping matches counted from the left; 0 for an empty needle.
QUORVANE_API std::size_t count_occurrences(const std::string& text, const std::string& needle);

// Trim white space: tab, line feed, vertical tab, form feed, carriage return and blank, regardless
// of any locale; bytes above 127 are never trimmed.
QUORVANE_API void ltrim(std::string& text);
QUORVANE_API void rtrim(std::string& text);
QUORVANE_API void trim(std::string& text);
// Trim the bytes of `set` instead; an empty set removes nothing, a null set aborts.
QUORVANE_API void ltrim(std::string& text, const char* set);
QUORVANE_API void rtrim(std::string& text, const char* set);
QUORVANE_API void trim(std::string& text, const char* set);
// trim on a copy.
QUORVANE_API std::string trim_result(std::string text);
QUORVANE_API std::string trim_result(std::string text, const char* set);

// Replaces the first occurrence of `from` and reports whether there was one. An empty text gives
// false; an empty `from` matches at the front of a non-empty text, so `to` is inserted there.
QUORVANE_API bool replace(std::string& text, const std::string& from, const std::string& to);
// Replaces the first such byte only; false if there is none.
QUORVANE_API bool replace(std::string& text, char from, char to);
// Replaces every occurrence, left to right. The search goes on behind the inserted text, so `to`
// may contain `from`. An empty text or `from` changes nothing. Linear in the text's length.
QUORVANE_API void replace_all(std::string& text, const std::string& from, const std::string& to);
QUORVANE_API void replace_all(std::string& text, char from, char to);

// Removes every occurrence, left to right; text brought together by a removal is not searched
// across the joint, so removing "ab" from "aabb" leaves "ab". An empty needle changes nothing.
QUORVANE_API void remove_all(std::string& text, const std::string& needle);
// Removes every such byte, keeping the order of the rest.
QUORVANE_API void remove_all(std::string& text, char c);

// Removes the prefix if it is there and reports it; an empty prefix is always there.
QUORVANE_API bool remove_start(std::string& text, const std::string& prefix);
QUORVANE_API std::string remove_start_copy(const std::string& text, const std::string& prefix);
// Removes the suffix if it is there and reports it; an empty suffix is always there.
QUORVANE_API bool remove_end(std::string& text, const std::string& suffix);
QUORVANE_API std::string remove_end_copy(const std::string& text, const std::string& suffix);

// Cuts the text at the first occurrence, needle included, and reports whether there was one. An
// empty needle is found at 0: the text is emptied and the answer is true.
QUORVANE_API bool erase_from(std::string& text, const std::string& needle);
QUORVANE_API bool erase_from(std::string& text, char c);

// True for an empty needle, false for one longer than the text.
QUORVANE_API bool starts_with(const std::string& text, const std::string& needle);
QUORVANE_API bool ends_with(const std::string& text, const std::string& needle);
// False for an empty text.
QUORVANE_API bool starts_with(const std::string& text, char c);
QUORVANE_API bool ends_with(const std::string& text, char c);

// Whether the needle occurs at or behind `offset`. False for an offset beyond the end of the text;
// an empty needle is found at any offset up to the end. A null needle aborts.
QUORVANE_API bool contains(const std::string& text, const std::string& needle,
                           unsigned long offset = 0);
QUORVANE_API bool contains(const std::string& text, const char* needle, unsigned long offset = 0);
QUORVANE_API bool contains(const std::string& text, char c, unsigned long offset = 0);
// Scans up to the terminator; searching for NUL gives false. A null text aborts.
QUORVANE_API bool contains(const char* text, char c);

// Case-insensitive search under the default std::locale. An empty needle gives false, unlike
// contains.
QUORVANE_API bool icontains(const std::string& text, const std::string& needle);

// Whether strcasecmp finds them equal: case-insensitive in the process locale, up to the first NUL.
QUORVANE_API bool iequals(const char* a, const char* b);
QUORVANE_API bool iequals(const std::string& a, const char* b);
// Whether the text's first needle-length bytes equal the needle by strcasecmp; false if the
// needle is longer than the text.
QUORVANE_API bool istarts_with(const std::string& text, const std::string& needle);
// Whether strcmp finds them equal.
QUORVANE_API bool equals(const char* a, const char* b);
// Whether the first byte is NUL.
QUORVANE_API bool empty(const char* text);

// Each byte through the C library's toupper or tolower, in the process locale.
QUORVANE_API std::string to_upper(std::string text);
QUORVANE_API std::string to_lower(std::string text);

// Appends the pieces of `text` from `offset` on, cut at each occurrence of the whole string
// `delimiter`, to `out`, which is not cleared. Empty pieces are kept, including one behind a
// trailing delimiter ("a,b," gives three pieces). An empty text or delimiter, or an offset beyond
// the end, adds nothing; an offset at the end adds one empty piece.
QUORVANE_API void split(std::vector<std::string>& out, const std::string& text,
                        const std::string& delimiter, unsigned long offset = 0);
QUORVANE_API std::vector<std::string> split(const std::string& text, const std::string& delimiter,
                                            unsigned long offset = 0);

// Makes a text a literal replacement for Lua's string.gsub: every '%' becomes "%%", then every
// '"' becomes a backslash and '"'.
QUORVANE_API std::string escape_for_lua_gsub(const std::string& text);

// Deletes (does not merely reduce) every byte for which isspace holds, except between quotation
// marks. A '"' behind an odd number of backslashes does not open or close a quotation; an
// unclosed quotation runs to the end. One pass, in place.
QUORVANE_API void simplify_whitespace_not_between_quotation_marks(std::string& text);

}  // namespace Quorvane::Algorithm
