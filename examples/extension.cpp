// The example extension: receives the host, shows the scalar kinds of a Value, and serves
// requests on a small plant model whose symbols it keeps in a Value tree.

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "QuorvaneExtApi.h"
#include "extension_entry.h"
#include "helper/algorithm/number.h"
#include "helper/algorithm/string.h"
#include "helper/api_helper.h"

using namespace Quorvane;

namespace {

void report(const char* label, const Value& value) {
    std::printf("  %-10s kind %-9s (%s)\n", label, Algorithm::value_type_to_string(value.type()),
                get_type_string(value.type()));
}

void show_scalar_kinds() {
    Value flag(true);
    Value count(42);
    Value big(9007199254740993L);
    Value ratio(0.25);
    Value text("pump 7 running");
    Value started(Timestamp::now());
    Value uptime(Timespan(90L * 1000000000L));
    unsigned char raw[] = {0xde, 0xad, 0xbe, 0xef};
    Value blob(Binary{sizeof raw, raw});

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
    std::printf("  %-10s reads %lu bytes\n", "",
                static_cast<unsigned long>(blob.get_binary().size));
}

// Whether a write would leave the symbol as it is. The plant holds only these three kinds.
bool same_content(const Value& a, const Value& b) {
    if (a.type() != b.type()) {
        return false;
    }
    switch (a.type()) {
        case ValueType::Int:
            return a.get_int32() == b.get_int32();
        case ValueType::Double:
            return Algorithm::compare_double(a.get_double(), b.get_double());
        case ValueType::String:
            return std::strcmp(a.get_string(), b.get_string()) == 0;
        default:
            return false;
    }
}

// The plant: devices with their symbols, addressed by paths such as "Pump7::Speed". It serves
// requests and is told when the host stops.
class Plant : public IQuorvaneRequestListener, public IQuorvaneShutdownListener {
public:
    Plant() {
        Value pump;
        pump.insert("Speed", Value(1200));
        pump.insert("Mode", Value("auto"));
        Value tank;
        tank.insert("Level", Value(73.5));
        Value valve;
        valve.insert("Position", Value(40));
        symbols_.insert("Pump7", pump);
        symbols_.insert("Tank1", tank);
        symbols_.insert("Valve3", valve);
    }

    ResultPair on_request(const Context& context, CommandGroup& commands) override {
        // Reading the language asks the host once; the answer stays cached in the caller's
        // session, so the host sees no second read when it asks the same session later.
        std::printf("extension: request for \"%s\" from user %s, session language \"%s\"\n",
                    context.domain(), context.session().user(), context.session().locale());
        unsigned failures = 0;
        for (VectorIterator<Command> it = commands.begin_vector(); it != commands.end_vector();
             ++it) {
            if (answer(*it) != HMI_E_SUCCESS) {
                ++failures;
            }
        }
        if (failures == 0) {
            return ResultPair();
        }
        return ResultStream(HMI_E_FAIL)
               << failures << " of " << commands.size() << " commands failed";
    }

    void on_shutdown(ErrorValue reason) override {
        std::printf("extension: host stops (%s)\n", get_error_string_pretty(reason).c_str());
    }

private:
    // The node of `path` in the plant, or the shared empty value (isset() false) for a path that
    // leads nowhere: every step of a miss is quiet.
    Value& find(const char* path) {
        Value* node = &symbols_;
        for (const std::string& step : Algorithm::split(path, "::")) {
            node = &(*node)[step.c_str()];
        }
        return *node;
    }

    ErrorValue answer(Command& command) {
        command.set_processed_start();
        // The device register behind the symbol, from the host's mapping "register:<number>".
        std::string mapping = command.mapping();
        Algorithm::remove_start(mapping, "register:");
        command.set_extension_result(Algorithm::as_uint32(mapping));

        const ResultPair outcome = apply(command);
        if (outcome != HMI_E_SUCCESS) {
            // A new result marks the command changed by itself.
            command.mapper()->set_result(outcome.result());
            command.set_result_string(outcome.text());
        }
        command.set_processed_end();
        return outcome.result();
    }

    ResultPair apply(Command& command) {
        Value& symbol = find(command.path());
        if (!symbol.isset()) {
            return ResultStream(HMI_E_INVALID_SYMBOL) << "no symbol at " << command.path();
        }
        const Value& wanted = command.write_value();
        ResultPair outcome;
        if (!wanted.isset()) {
            // A read always brings the client news.
            command.set_changed(true);
        } else if (wanted.type() != symbol.type()) {
            outcome = ResultStream(HMI_E_INVALID_TYPE)
                      << command.path() << " holds " << symbol.type() << ", got " << wanted.type();
        } else {
            // Writing what is already there is no change the client needs to hear about.
            command.set_changed(!same_content(symbol, wanted));
            symbol = wanted;
        }
        command.set_read_value(symbol);
        return outcome;
    }

    Value symbols_;
};

Plant g_plant;

}  // namespace

extern "C" __attribute__((visibility("default"))) int quorvane_extension_start(
    IQuorvaneExtHost* host) {
    initialize_api(host);
    if (Quorvane::host() != host) {
        std::printf("extension: the library did not keep the host\n");
        return 1;
    }
    std::printf("extension: linked to its host\n");
    show_scalar_kinds();
    return 0;
}

extern "C" __attribute__((visibility("default"))) IQuorvaneListener* quorvane_extension_listener(
    int index) {
    switch (index) {
        case 0:
            return static_cast<IQuorvaneRequestListener*>(&g_plant);
        case 1:
            return static_cast<IQuorvaneShutdownListener*>(&g_plant);
        default:
            return nullptr;
    }
}
