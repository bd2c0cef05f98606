// The export table of the shared object: what extensions and hosts link against, and what the
// library keeps to itself.

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <string>

namespace {

// Every defined dynamic symbol with the type letter nm gives it: 'T' for a function in the text
// section, 'W' for a weak (inline) one, 'V' for a weak object.
std::map<std::string, char> exported_symbols() {
    std::map<std::string, char> symbols;
    const std::string command = std::string("nm -D --defined-only ") + QUORVANE_LIBRARY_FILE;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return symbols;
    }
    char line[4096];
    while (std::fgets(line, sizeof line, pipe) != nullptr) {
        std::string text(line);
        while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
            text.pop_back();
        }
        const auto blank = text.rfind(' ');
        if (blank != std::string::npos && blank >= 2) {
            symbols[text.substr(blank + 1)] = text[blank - 1];
        }
    }
    pclose(pipe);
    return symbols;
}

class ExportTable : public ::testing::Test {
protected:
    static void SetUpTestSuite() { symbols_ = new std::map<std::string, char>(exported_symbols()); }
    static void TearDownTestSuite() {
        delete symbols_;
        symbols_ = nullptr;
    }
    static bool exported(const std::string& name) { return symbols_->count(name) != 0; }
    // A function the library defines itself: strong and in its text section, not an inline copy
    // that each module would carry on its own.
    static bool exported_function(const std::string& name) {
        const auto found = symbols_->find(name);
        return found != symbols_->end() && found->second == 'T';
    }
    static std::map<std::string, char>* symbols_;
};

std::map<std::string, char>* ExportTable::symbols_ = nullptr;

}  // namespace

TEST_F(ExportTable, IsReadable) {
    EXPECT_GT(symbols_->size(), 10u);
}

TEST_F(ExportTable, HostLinkFunctionsAreExported) {
    EXPECT_TRUE(exported_function("_ZN8Quorvane14initialize_apiEPNS_16IQuorvaneExtHostE"));
    EXPECT_TRUE(exported_function("_ZN8Quorvane4hostEv"));
}

TEST_F(ExportTable, ObjectAllocationOperatorsAreRealExportedFunctions) {
    EXPECT_TRUE(exported_function("_ZN8Quorvane7IObjectnwEm"));      // new(unsigned long)
    EXPECT_TRUE(exported_function("_ZN8Quorvane7IObjectnwEmPv"));    // new(unsigned long, void*)
    EXPECT_TRUE(exported_function("_ZN8Quorvane7IObjectdlEPv"));     // delete(void*)
    EXPECT_TRUE(exported_function("_ZN8Quorvane7IObjectdlEPvS1_"));  // delete(void*, void*)
    EXPECT_TRUE(exported_function("_ZN8Quorvane7IObjectD2Ev"));      // the virtual destructor
}

TEST_F(ExportTable, HostInterfaceTypeRecordIsExported) {
    EXPECT_TRUE(exported("_ZTIN8Quorvane16IQuorvaneExtHostE"));
}

TEST_F(ExportTable, DataProviderTypeRecordIsHidden) {
    EXPECT_FALSE(exported("_ZTIN8Quorvane13IDataProviderE"));
    EXPECT_FALSE(exported("_ZTSN8Quorvane13IDataProviderE"));
    EXPECT_FALSE(exported("_ZTVN8Quorvane13IDataProviderE"));
}

TEST_F(ExportTable, HostPointersAreHidden) {
    EXPECT_FALSE(exported("_ZN8Quorvane7g_pHostE"));
    for (const auto& symbol : *symbols_) {
        EXPECT_EQ(symbol.first.find("g_pHost"), std::string::npos) << symbol.first;
        EXPECT_EQ(symbol.first.find("g_pExtHost"), std::string::npos) << symbol.first;
    }
}

TEST_F(ExportTable, SharedEmptyAccessorsAreHidden) {
    for (const auto& symbol : *symbols_) {
        EXPECT_EQ(symbol.first.find("EmptyValues"), std::string::npos) << symbol.first;
        EXPECT_EQ(symbol.first.find("EmptyIterators"), std::string::npos) << symbol.first;
    }
}
