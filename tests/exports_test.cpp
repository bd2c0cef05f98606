// The export table of the shared object: what extensions and hosts link against, and what the
// library keeps to itself.

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>

namespace {

std::set<std::string> exported_symbols() {
    std::set<std::string> symbols;
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
        if (blank != std::string::npos) {
            symbols.insert(text.substr(blank + 1));
        }
    }
    pclose(pipe);
    return symbols;
}

class ExportTable : public ::testing::Test {
protected:
    static void SetUpTestSuite() { symbols_ = new std::set<std::string>(exported_symbols()); }
    static void TearDownTestSuite() {
        delete symbols_;
        symbols_ = nullptr;
    }
    static bool exported(const std::string& name) { return symbols_->count(name) != 0; }
    static std::set<std::string>* symbols_;
};

std::set<std::string>* ExportTable::symbols_ = nullptr;

}  // namespace

TEST_F(ExportTable, IsReadable) { EXPECT_GT(symbols_->size(), 10u); }

TEST_F(ExportTable, HostLinkFunctionsAreExported) {
    EXPECT_TRUE(exported("_ZN8Quorvane14initialize_apiEPNS_16IQuorvaneExtHostE"));
    EXPECT_TRUE(exported("_ZN8Quorvane4hostEv"));
}

TEST_F(ExportTable, ObjectAllocationOperatorsAreRealExportedFunctions) {
    EXPECT_TRUE(exported("_ZN8Quorvane7IObjectnwEm"));       // operator new(unsigned long)
    EXPECT_TRUE(exported("_ZN8Quorvane7IObjectnwEmPv"));     // operator new(unsigned long, void*)
    EXPECT_TRUE(exported("_ZN8Quorvane7IObjectdlEPv"));      // operator delete(void*)
    EXPECT_TRUE(exported("_ZN8Quorvane7IObjectdlEPvS1_"));   // operator delete(void*, void*)
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
    for (const std::string& symbol : *symbols_) {
        EXPECT_EQ(symbol.find("g_pHost"), std::string::npos) << symbol;
        EXPECT_EQ(symbol.find("g_pExtHost"), std::string::npos) << symbol;
    }
}

TEST_F(ExportTable, SharedEmptyAccessorsAreHidden) {
    for (const std::string& symbol : *symbols_) {
        EXPECT_EQ(symbol.find("EmptyValues"), std::string::npos) << symbol;
        EXPECT_EQ(symbol.find("EmptyIterators"), std::string::npos) << symbol;
    }
}
