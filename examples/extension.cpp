// The example extension: receives the host, checks the link, and builds and reads values of
// every scalar kind.

#include <cstdio>

#include "QuorvaneExtApi.h"
#include "extension_entry.h"

namespace {

void report(const char* label, const Quorvane::Value& value) {
    std::printf("  %-10s kind %-9s (%s)\n", label, Quorvane::Algorithm::value_type_to_string(value.type()),
                Quorvane::get_type_string(value.type()));
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int quorvane_extension_start(
    Quorvane::IQuorvaneExtHost* host) {
    Quorvane::initialize_api(host);
    if (Quorvane::host() != host) {
        std::printf("extension: the library did not keep the host\n");
        return 1;
    }
    std::printf("extension: linked to its host\n");

    Quorvane::Value flag(true);
    Quorvane::Value count(42);
    Quorvane::Value big(9007199254740993L);
    Quorvane::Value ratio(0.25);
    Quorvane::Value text("pump 7 running");
    Quorvane::Value started(Quorvane::Timestamp::now());
    Quorvane::Value uptime(Quorvane::Timespan(90L * 1000000000L));
    unsigned char raw[] = {0xde, 0xad, 0xbe, 0xef};
    Quorvane::Value blob(Quorvane::Binary{sizeof raw, raw});

    std::printf("extension: values\n");
    report("flag", flag);
    std::printf("  %-10s reads %s\n", "", flag.get_bool() ? "true" : "false");
    report("count", count);
    std::printf("  %-10s reads %d, and as Int64 %ld (an Int is no Int64)\n", "", count.get_int32(),
                count.get_int64());
    report("big", big);
    std::printf("  %-10s reads %ld\n", "", big.get_int64());
    report("ratio", ratio);
    std::printf("  %-10s reads %g\n", "", ratio.get_double());
    report("text", text);
    std::printf("  %-10s reads \"%s\"\n", "", text.get_string());
    report("started", started);
    std::printf("  %-10s reads %ld s since the epoch\n", "", started.get_timestamp().seconds());
    report("uptime", uptime);
    std::printf("  %-10s reads %ld s\n", "", uptime.get_timespan().seconds());
    report("blob", blob);
    std::printf("  %-10s reads %lu bytes\n", "", static_cast<unsigned long>(blob.get_binary().size));
    return 0;
}
