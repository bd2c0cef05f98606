#include "QuorvaneExtApi.h"

#include <gtest/gtest.h>

#include "operator_traits.h"

#include <time.h>

#include <type_traits>

using operator_traits::HasEquality;
using operator_traits::HasOrdering;
using operator_traits::HasSum;
using operator_traits::HasSwap;
using Quorvane::Timespan;
using Quorvane::Timestamp;

TEST(Timestamp, DefaultAndZeroAndEpochFileTimeAreEqual) {
    EXPECT_TRUE(Timestamp() == Timestamp(0));
    EXPECT_TRUE(Timestamp::from_file_time(116444736000000000) == Timestamp());
    EXPECT_TRUE(Timestamp::from_file_time(116444736000000000) == Timestamp(0));
    EXPECT_FALSE(Timestamp() != Timestamp(0));
}

TEST(Timestamp, FileTimeOneTickAfterEpochIsHundredNanoseconds) {
    EXPECT_EQ(Timestamp::from_file_time(116444736000000001).nanoseconds(), 100);
}

TEST(Timestamp, FileTimeAtOrBeforeEpochCollapsesToZero) {
    EXPECT_EQ(Timestamp::from_file_time(0).nanoseconds(), 0);
    EXPECT_EQ(Timestamp::from_file_time(-5).nanoseconds(), 0);
    EXPECT_EQ(Timestamp::from_file_time(116444735999999999).nanoseconds(), 0);
    EXPECT_EQ(Timestamp::from_file_time(-9223372036854775807L - 1).nanoseconds(), 0);
}

TEST(Timestamp, FileTimeWrapsAboveTheRange) {
    // The last tick count that fits, and the first that wraps around.
    EXPECT_EQ(Timestamp::from_file_time(208678456368547758).nanoseconds(), 9223372036854775800);
    EXPECT_EQ(Timestamp::from_file_time(208678456368547759).nanoseconds(),
              static_cast<long>(9223372036854775900UL));
}

TEST(Timestamp, UnixTimeIsSignedSeconds) {
    EXPECT_EQ(Timestamp::from_unix_time(-1).nanoseconds(), -1000000000);
    EXPECT_EQ(Timestamp::from_unix_time(-1).seconds(), -1);
    EXPECT_EQ(Timestamp::from_unix_time(1).nanoseconds(), 1000000000);
    EXPECT_EQ(Timestamp::from_unix_time(2147483647).nanoseconds(), 2147483647000000000);
    EXPECT_EQ(Timestamp::from_unix_time(-2147483647 - 1).nanoseconds(), -2147483648000000000);
}

TEST(Timestamp, FileTimeWrapsModuloTwoToTheSixtyFourth) {
    EXPECT_EQ(Timestamp::from_file_time(9223372036854775807L).nanoseconds(), 6802270473709551516L);
}

TEST(Timestamp, MillisecondsMultiplyAndWrap) {
    EXPECT_EQ(Timestamp::from_milliseconds(1500).nanoseconds(), 1500000000);
    EXPECT_EQ(Timestamp::from_milliseconds(-2).nanoseconds(), -2000000);
    EXPECT_EQ(Timestamp::from_milliseconds(0).nanoseconds(), 0);
    EXPECT_EQ(Timestamp::from_milliseconds(9223372036855).nanoseconds(),
              static_cast<long>(9223372036855UL * 1000000UL));
    EXPECT_EQ(Timestamp::from_milliseconds(-9223372036855).nanoseconds(), 9223372036854551616L);
    EXPECT_EQ(Timestamp::from_milliseconds(9223372036854775807L).nanoseconds(), -1000000);
    EXPECT_EQ(Timestamp::from_milliseconds(-9223372036854775807L - 1).nanoseconds(), 0);
}

TEST(Timestamp, NowIsTruncatedToHundredNanoseconds) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(Timestamp::now().nanoseconds() % 100, 0);
    }
    // A sane wall clock: after 2020-01-01.
    EXPECT_GT(Timestamp::now().seconds(), 1577836800);
}

namespace {

long clock_nanoseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * 1000000000L + now.tv_nsec;
}

}  // namespace

TEST(Timestamp, NowReadsTheWallClock) {
    const long before = clock_nanoseconds(CLOCK_REALTIME) / 100 * 100;
    const long now = Timestamp::now().nanoseconds();
    const long after = clock_nanoseconds(CLOCK_REALTIME);
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

TEST(Timestamp, SteadyNowReadsTheMonotonicClock) {
    const long before = clock_nanoseconds(CLOCK_MONOTONIC);
    const long first = Timestamp::steady_now().nanoseconds();
    const long second = Timestamp::steady_now().nanoseconds();
    const long after = clock_nanoseconds(CLOCK_MONOTONIC);
    EXPECT_LE(before, first);
    EXPECT_LE(first, second);
    EXPECT_LE(second, after);
}

TEST(Timestamp, SecondsAndMillisecondsTruncateTowardZero) {
    EXPECT_EQ(Timestamp(1999999999).seconds(), 1);
    EXPECT_EQ(Timestamp(1999999999).milliseconds(), 1999);
    EXPECT_EQ(Timestamp(-1).seconds(), 0);
    EXPECT_EQ(Timestamp(-1500000000).seconds(), -1);
    EXPECT_EQ(Timestamp(-1500000000).milliseconds(), -1500);
    EXPECT_EQ(Timestamp(-1999999).milliseconds(), -1);
}

TEST(Timestamp, CopyIsIndependent) {
    Timestamp original(42);
    Timestamp copy(original);
    original = Timestamp(7);
    EXPECT_EQ(copy.nanoseconds(), 42);
    EXPECT_EQ(original.nanoseconds(), 7);
}

TEST(Timestamp, SelfAssignmentKeepsTheCount) {
    Timestamp time(5);
    const Timestamp& same = time;
    time = same;
    EXPECT_EQ(time.nanoseconds(), 5);
}

TEST(Timespan, DefaultIsZero) {
    EXPECT_EQ(Timespan().nanoseconds(), 0);
    EXPECT_TRUE(Timespan() == Timespan(0));
    EXPECT_TRUE(Timespan(1) != Timespan(2));
}

TEST(Timespan, MillisecondsTruncate) {
    EXPECT_EQ(Timespan(1500000).milliseconds(), 1);
    EXPECT_EQ(Timespan(-1500000).milliseconds(), -1);
    EXPECT_EQ(Timespan(2500000000).seconds(), 2);
    EXPECT_EQ(Timespan(-2500000000).seconds(), -2);
}

TEST(Timespan, CopyAndAssignment) {
    Timespan span(9);
    Timespan copy(span);
    span = Timespan(3);
    EXPECT_EQ(copy.nanoseconds(), 9);
    EXPECT_EQ(span.nanoseconds(), 3);
}

// The two classes stay apart: no comparison between a point in time and a duration exists.
TEST(Timespan, IsNotComparableWithTimestamp) {
    EXPECT_FALSE((std::is_same<Timestamp, Timespan>::value));
    EXPECT_FALSE((HasEquality<Timestamp, Timespan>::value));
    EXPECT_FALSE((HasEquality<Timespan, Timestamp>::value));
    EXPECT_TRUE((HasEquality<Timestamp, Timestamp>::value));
    EXPECT_TRUE((HasEquality<Timespan, Timespan>::value));
}

TEST(Timestamp, NeitherClassHasSwapOrderingOrArithmetic) {
    EXPECT_FALSE(HasSwap<Timestamp>::value);
    EXPECT_FALSE(HasSwap<Timespan>::value);
    EXPECT_FALSE(HasOrdering<Timestamp>::value);
    EXPECT_FALSE(HasOrdering<Timespan>::value);
    EXPECT_FALSE(HasSum<Timestamp>::value);
    EXPECT_FALSE(HasSum<Timespan>::value);
    // The checks do see what exists.
    EXPECT_TRUE(HasSwap<Quorvane::String>::value);
}

TEST(Timespan, CountsAreTakenAsGivenAcrossTheWholeRange) {
    const struct {
        long count;
        long seconds;
        long milliseconds;
    } rows[] = {
        {-9223372036854775807L - 1, -9223372036, -9223372036854},
        {-1999999999, -1, -1999},
        {-1, 0, 0},
        {0, 0, 0},
        {999999, 0, 0},
        {1000000000, 1, 1000},
        {9223372036854775807L, 9223372036, 9223372036854},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.count);
        EXPECT_EQ(Timespan(row.count).nanoseconds(), row.count);
        EXPECT_EQ(Timespan(row.count).seconds(), row.seconds);
        EXPECT_EQ(Timespan(row.count).milliseconds(), row.milliseconds);
        EXPECT_EQ(Timestamp(row.count).nanoseconds(), row.count);
        EXPECT_EQ(Timestamp(row.count).seconds(), row.seconds);
        EXPECT_EQ(Timestamp(row.count).milliseconds(), row.milliseconds);
    }
}

TEST(Timestamp, IsOutsideTheObjectFamily) {
    EXPECT_FALSE((std::is_base_of<Quorvane::IObject, Timestamp>::value));
    EXPECT_FALSE((std::is_base_of<Quorvane::IObject, Timespan>::value));
    EXPECT_TRUE(std::has_virtual_destructor<Timestamp>::value);
    EXPECT_TRUE(std::has_virtual_destructor<Timespan>::value);
}
