// Timestamp and Timespan: handles around one heap cell holding signed 64-bit nanoseconds.

#include <time.h>

#include <cstdint>
#include <utility>

#include "QuorvaneExtApi.h"

namespace Quorvane {
namespace {

constexpr long kNanosecondsPerSecond = 1000000000;
constexpr long kNanosecondsPerMillisecond = 1000000;
constexpr long kWallClockResolution = 100;
// File-time ticks of 100 ns from 1601-01-01T00:00:00Z to the Unix epoch.
constexpr long kFileTimeTicksAtEpoch = 116444736000000000;

long read_clock(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<long>(now.tv_sec) * kNanosecondsPerSecond + now.tv_nsec;
}

// Products that leave the 64-bit range wrap instead of being undefined.
long wrapping_multiply(long a, long b) {
    return static_cast<long>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

}  // namespace

Timestamp::Timestamp() : count_(new long(0)) {}

Timestamp::Timestamp(long nanoseconds) : count_(new long(nanoseconds)) {}

Timestamp::Timestamp(const Timestamp& other) : count_(new long(*other.count_)) {}

Timestamp& Timestamp::operator=(Timestamp other) {
    std::swap(count_, other.count_);
    return *this;
}

Timestamp::~Timestamp() {
    delete count_;
    count_ = nullptr;
}

Timestamp Timestamp::now() {
    return Timestamp(read_clock(CLOCK_REALTIME) / kWallClockResolution * kWallClockResolution);
}

Timestamp Timestamp::steady_now() {
    return Timestamp(read_clock(CLOCK_MONOTONIC));
}

Timestamp Timestamp::from_unix_time(int seconds) {
    return Timestamp(static_cast<long>(seconds) * kNanosecondsPerSecond);
}

Timestamp Timestamp::from_file_time(long ticks) {
    if (ticks <= kFileTimeTicksAtEpoch) {
        return Timestamp(0);
    }
    return Timestamp(wrapping_multiply(ticks - kFileTimeTicksAtEpoch, kWallClockResolution));
}

Timestamp Timestamp::from_milliseconds(long milliseconds) {
    return Timestamp(wrapping_multiply(milliseconds, kNanosecondsPerMillisecond));
}

long Timestamp::seconds() const {
    return *count_ / kNanosecondsPerSecond;
}

long Timestamp::milliseconds() const {
    return *count_ / kNanosecondsPerMillisecond;
}

long Timestamp::nanoseconds() const {
    return *count_;
}

bool Timestamp::operator==(const Timestamp& other) const {
    return *count_ == *other.count_;
}

bool Timestamp::operator!=(const Timestamp& other) const {
    return *count_ != *other.count_;
}

Timespan::Timespan() : count_(new long(0)) {}

Timespan::Timespan(long nanoseconds) : count_(new long(nanoseconds)) {}

Timespan::Timespan(const Timespan& other) : count_(new long(*other.count_)) {}

Timespan& Timespan::operator=(Timespan other) {
    std::swap(count_, other.count_);
    return *this;
}

Timespan::~Timespan() {
    delete count_;
    count_ = nullptr;
}

long Timespan::seconds() const {
    return *count_ / kNanosecondsPerSecond;
}

long Timespan::milliseconds() const {
    return *count_ / kNanosecondsPerMillisecond;
}

long Timespan::nanoseconds() const {
    return *count_;
}

bool Timespan::operator==(const Timespan& other) const {
    return *count_ == *other.count_;
}

bool Timespan::operator!=(const Timespan& other) const {
    return *count_ != *other.count_;
}

}  // namespace Quorvane
