#include "helper/linux.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <ctime>
#include <random>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>

namespace {

struct CalendarRow {
    long seconds;
    int year;   // full year, not years since 1900
    int month;  // 1 to 12
    int day;
    int hour;
    int minute;
    int second;
    int weekday;      // 0 is Sunday
    int day_of_year;  // 0 is the first of January
};

TEST(GmtimeS, BreaksSecondsIntoUtcCalendarFields) {
    const CalendarRow rows[] = {
        {0L, 1970, 1, 1, 0, 0, 0, 4, 0},
        {-1L, 1969, 12, 31, 23, 59, 59, 3, 364},
        {951782400L, 2000, 2, 29, 0, 0, 0, 2, 59},
        {1234567890L, 2009, 2, 13, 23, 31, 30, 5, 43},
        {2147483647L, 2038, 1, 19, 3, 14, 7, 2, 18},
        {4102444799L, 2099, 12, 31, 23, 59, 59, 4, 364},
    };
    for (const CalendarRow& row : rows) {
        std::tm fields{};
        ASSERT_EQ(gmtime_s(&fields, &row.seconds), 0) << row.seconds;
        EXPECT_EQ(fields.tm_year + 1900, row.year) << row.seconds;
        EXPECT_EQ(fields.tm_mon + 1, row.month) << row.seconds;
        EXPECT_EQ(fields.tm_mday, row.day) << row.seconds;
        EXPECT_EQ(fields.tm_hour, row.hour) << row.seconds;
        EXPECT_EQ(fields.tm_min, row.minute) << row.seconds;
        EXPECT_EQ(fields.tm_sec, row.second) << row.seconds;
        EXPECT_EQ(fields.tm_wday, row.weekday) << row.seconds;
        EXPECT_EQ(fields.tm_yday, row.day_of_year) << row.seconds;
        EXPECT_EQ(fields.tm_isdst, 0) << row.seconds;
    }
}

TEST(GmtimeS, YearBeyondTheCalendarGivesOne) {
    std::tm fields{};
    const long largest = LONG_MAX;
    const long smallest = LONG_MIN;
    EXPECT_EQ(gmtime_s(&fields, &largest), 1);
    EXPECT_EQ(gmtime_s(&fields, &smallest), 1);
}

class FopenS : public ::testing::Test {
protected:
    void SetUp() override {
        char name[] = "/tmp/linux_s_test_XXXXXX";
        const int descriptor = mkstemp(name);
        ASSERT_NE(descriptor, -1);
        ASSERT_EQ(write(descriptor, "abc", 3), 3);
        close(descriptor);
        path_ = name;
    }
    void TearDown() override { std::remove(path_.c_str()); }

    std::string path_;
};

TEST_F(FopenS, OpensAnExistingFileAndGivesZero) {
    std::FILE* file = nullptr;
    ASSERT_EQ(fopen_s(&file, path_.c_str(), "rb"), 0);
    ASSERT_NE(file, nullptr);
    char content[4] = {};
    EXPECT_EQ(std::fread(content, 1, 3, file), 3u);
    EXPECT_STREQ(content, "abc");
    std::fclose(file);
}

TEST_F(FopenS, WriteModeReplacesTheContent) {
    std::FILE* file = nullptr;
    ASSERT_EQ(fopen_s(&file, path_.c_str(), "w"), 0);
    ASSERT_NE(file, nullptr);
    EXPECT_GE(std::fputs("xyz!", file), 0);
    std::fclose(file);

    ASSERT_EQ(fopen_s(&file, path_.c_str(), "r"), 0);
    char content[8] = {};
    EXPECT_EQ(std::fread(content, 1, sizeof content - 1, file), 4u);
    EXPECT_STREQ(content, "xyz!");
    std::fclose(file);
}

TEST(FopenSMissing, MissingFileGivesErrnoAndStoresNull) {
    std::FILE* file = reinterpret_cast<std::FILE*>(&file);
    EXPECT_EQ(fopen_s(&file, "/nonexistent-directory/file", "r"), ENOENT);
    EXPECT_EQ(file, nullptr);
}

TEST(FopenSMissing, InvalidModeGivesEinval) {
    std::FILE* file = nullptr;
    EXPECT_EQ(fopen_s(&file, "/tmp", "invalid"), EINVAL);
    EXPECT_EQ(file, nullptr);
}

// Random bytes as path or mode: the call answers 0 or an errno and never crashes. Paths are opened
// for reading only, and random modes go to a directory that does not exist, so nothing is created.
TEST(FopenSRobustness, RandomPathsAndModesAreSurvived) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> length(0, 12);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(static_cast<std::size_t>(length(random)), '\0');
        for (char& c : bytes) {
            c = static_cast<char>(random() % 255 + 1);
        }
        std::FILE* file = nullptr;
        const int path_result = fopen_s(&file, bytes.c_str(), "r");
        EXPECT_EQ(path_result == 0, file != nullptr);
        if (file != nullptr) {
            std::fclose(file);
        }
        const int mode_result = fopen_s(&file, "/nonexistent-directory/file", bytes.c_str());
        EXPECT_NE(mode_result, 0);
        EXPECT_EQ(file, nullptr);
    }
}

}  // namespace
