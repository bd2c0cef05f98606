#pragma once
// Helpers shared by the tests of sessions, contexts, listeners, commands and command groups.

#include <gtest/gtest.h>
#include <link.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace request_test {

// Reports a failed expectation of a child process on its error stream, where the death test
// shows it.
inline bool check(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "failed: %s\n", what);
    }
    return condition;
}

inline bool same_text(const char* actual, const char* expected) {
    if (std::strcmp(actual, expected) != 0) {
        std::fprintf(stderr, "got \"%s\", expected \"%s\"\n", actual, expected);
        return false;
    }
    return true;
}

// Scenarios that change process-wide state (the host link, or a shared empty object) run in a
// process of their own, so that nothing leaks into other tests. A scenario answers whether all
// its expectations held.
class ScenarioDeathTest : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static void run(const std::function<bool()>& scenario) {
        EXPECT_EXIT(std::exit(scenario() ? 0 : 1), ::testing::ExitedWithCode(0), "");
    }
};

// The position of a virtual operation in its class's table of operations, read from a pointer
// to it; host and extension call such operations by this position. Under the Itanium C++ ABI
// (g++ and clang++ on this platform) the pointer holds one plus the byte offset of the slot.
// -1 for an operation that is not virtual.
template <typename Member>
long slot_of(Member member) {
    static_assert(sizeof(Member) == 2 * sizeof(std::uintptr_t), "Itanium member pointer");
    std::uintptr_t words[2];
    std::memcpy(words, &member, sizeof words);
    if ((words[0] & 1u) == 0) {
        return -1;
    }
    return static_cast<long>((words[0] - 1) / sizeof(void*));
}

// Texts of random bytes 1 to 255 (a text argument ends at its first NUL), up to `max_length`
// long, the same for the same seed.
inline std::vector<std::string> random_texts(unsigned seed, int count, int max_length) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> byte(1, 255);
    std::uniform_int_distribution<int> length(0, max_length);
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        std::string text(static_cast<std::size_t>(length(random)), '\0');
        for (char& c : text) {
            c = static_cast<char>(byte(random));
        }
        texts.push_back(text);
    }
    return texts;
}

// The symbols the library's file defines, with their offsets in it: the export table alone
// (`dynamic`), or the full symbol table, which every unstripped build keeps and which also names
// what the library keeps to itself. Empty if `nm` cannot read the file.
inline std::map<std::string, std::uintptr_t> library_symbols(bool dynamic) {
    std::map<std::string, std::uintptr_t> symbols;
    const std::string command =
        std::string(dynamic ? "nm -D" : "nm") + " --defined-only " + QUORVANE_LIBRARY_FILE;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return symbols;
    }
    char line[4096];
    while (std::fgets(line, sizeof line, pipe) != nullptr) {
        char address[64];
        char kind[8];
        char name[4096];
        if (std::sscanf(line, "%63s %7s %4095s", address, kind, name) == 3) {
            symbols[name] = std::strtoull(address, nullptr, 16);
        }
    }
    pclose(pipe);
    return symbols;
}

inline int find_library_base(dl_phdr_info* info, std::size_t, void* base) {
    if (info->dlpi_name != nullptr && std::strstr(info->dlpi_name, "libQuorvaneExt") != nullptr) {
        *static_cast<std::uintptr_t*>(base) = info->dlpi_addr;
        return 1;
    }
    return 0;
}

// Where a symbol of the library's full table lives in this process, for looking at what the
// library keeps to itself (its shared empty objects and their one-time guards). Null when the
// library is not loaded or the table does not name the symbol.
inline void* library_address(const char* symbol) {
    std::uintptr_t base = 0;
    if (dl_iterate_phdr(find_library_base, &base) == 0) {
        return nullptr;
    }
    static const std::map<std::string, std::uintptr_t> symbols = library_symbols(false);
    const auto found = symbols.find(symbol);
    if (found == symbols.end() || found->second == 0) {
        return nullptr;
    }
    return reinterpret_cast<void*>(base + found->second);
}

}  // namespace request_test
