// The example host: implements the host interfaces from the public header alone, loads an
// extension module, hands itself over, and sends the extension one request.

#include <dlfcn.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "QuorvaneExtApi.h"
#include "extension_entry.h"
#include "helper/algorithm/number.h"
#include "helper/api_helper.h"

using namespace Quorvane;

namespace {

// One object implements both faces, as the library expects: IQuorvaneExtHost is what it hands
// back to extensions, IDataProvider is where it reads the default language.
class ExampleHost : public IQuorvaneExtHost, public IDataProvider {
public:
    Value get_value(const char* name, const char* domain, bool) override {
        ++configuration_reads_;
        if (std::strcmp(name, "DEFAULTLOCALE") == 0 && std::strcmp(domain, "Quorvane") == 0) {
            return Value("de");
        }
        return Value();
    }

    int configuration_reads() const { return configuration_reads_; }

private:
    int configuration_reads_ = 0;
};

// One command as a client asked for it.
struct Order {
    const char* name;
    const char* path;
    const char* device;
    const char* mapping;
    Value write;
};

// Fills a command through the host's face: what an extension reads but never sets.
Command command_for(const Order& order) {
    Command command(order.name);
    ICommandMapper* mapper = command.mapper();
    mapper->set_path(order.path);
    mapper->set_symbol_name(order.device);
    mapper->set_mapping(order.mapping);
    mapper->set_domain("Plant");
    // Only what the extension reports during this request counts as a change.
    mapper->set_flags(INTERNAL_COMMAND_DEFAULT_MARK);
    command.set_write_value(order.write);
    return command;
}

CommandGroup build_request() {
    const Order orders[] = {
        {"pump speed", "Pump7::Speed", "Pump7", "register:40001", Value(1450)},
        {"pump mode", "Pump7::Mode", "Pump7", "register:40002", Value("auto")},
        {"tank level", "Tank1::Level", "Tank1", "register:30001", Value()},
        {"valve position", "Valve3::Position", "Valve3", "register:40010", Value("open")},
        {"line counter", "Line2::Counter", "Line2", "register:30100", Value()},
    };
    CommandGroup request("Plant");
    request.reserve(sizeof orders / sizeof orders[0]);
    for (const Order& order : orders) {
        request.insert(request.end_vector(), command_for(order));
    }
    return request;
}

std::string text_of(const Value& value) {
    switch (value.type()) {
        case ValueType::Int:
            return Algorithm::to_string(value.get_int32());
        case ValueType::Double:
            return Algorithm::to_string(value.get_double(), 3, true);
        case ValueType::String:
            return value.get_string();
        default:
            return "-";
    }
}

// Microseconds between the command's two processing marks, which come from the monotonic clock.
std::string time_taken(const Command& command) {
    const long nanoseconds =
        command.processed_end().nanoseconds() - command.processed_start().nanoseconds();
    return Algorithm::to_string(nanoseconds / 1000.0, 1, false) + " us";
}

void print_outcome(const CommandGroup& request) {
    std::printf("  %-15s %-17s %-18s %-10s %-8s %s\n", "command", "path", "result", "read value",
                "changed", "time");
    for (unsigned long i = 0; i < request.size(); ++i) {
        const Command& command = request[i];
        std::printf("  %-15s %-17s %-18s %-10s %-8s %s\n", command.name(), command.path(),
                    get_error_string_pretty(command.result()).c_str(),
                    text_of(command.read_value()).c_str(), command.changed() ? "yes" : "no",
                    time_taken(command).c_str());
    }
    for (ConstVectorIterator<Command> it = request.begin_vector(); it != request.end_vector();
         ++it) {
        if (it->result() != HMI_E_SUCCESS) {
            std::printf("  %s: %s (register %u)\n", it->name(), it->result_string(),
                        it->extension_result());
        }
    }
}

// Hands the request to the extension's request listener, found by its family.
int send_request(void* module, const ExampleHost& host) {
    auto listener_at =
        reinterpret_cast<ExtensionListener>(dlsym(module, QUORVANE_EXTENSION_LISTENER_SYMBOL));
    if (listener_at == nullptr) {
        std::fprintf(stderr, "the extension offers no listeners: %s\n", dlerror());
        return 1;
    }
    IQuorvaneRequestListener* requests = nullptr;
    IQuorvaneShutdownListener* shutdown = nullptr;
    for (int i = 0; IQuorvaneListener* listener = listener_at(i); ++i) {
        std::printf("host: listener %d serves %s\n", i,
                    listener_type_to_string(listener->type()).c_str());
        if (listener->type() == ListenerType::Request) {
            requests = static_cast<IQuorvaneRequestListener*>(listener);
        } else if (listener->type() == ListenerType::Shutdown) {
            shutdown = static_cast<IQuorvaneShutdownListener*>(listener);
        }
    }
    if (requests == nullptr) {
        std::fprintf(stderr, "the extension serves no requests\n");
        return 1;
    }

    // The client: a session with an id and a user but no language of its own.
    Context context("Plant");
    context.session().set_id("4711");
    context.session().set_user("operator");
    context.set_request_type(REQUEST_TYPE_DEFAULT);
    CommandGroup request = build_request();

    std::printf("host: request of %lu commands to \"%s\" for session %s\n", request.size(),
                context.domain(), context.session().id());
    const ResultPair answer = requests->on_request(context, request);
    std::printf("host: the extension answered: %s%s%s\n",
                get_error_string_pretty(answer.result()).c_str(), *answer.text() ? ", " : "",
                answer.text());
    print_outcome(request);
    std::printf("host: session language \"%s\" (configuration read %d time(s))\n",
                context.session().locale(), host.configuration_reads());

    if (shutdown != nullptr) {
        shutdown->on_shutdown(HMI_E_SHUTDOWN);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <extension module>\n", argv[0]);
        return 2;
    }
    void* module = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        std::fprintf(stderr, "cannot load %s: %s\n", argv[1], dlerror());
        return 1;
    }
    auto start = reinterpret_cast<ExtensionStart>(dlsym(module, QUORVANE_EXTENSION_START_SYMBOL));
    if (start == nullptr) {
        std::fprintf(stderr, "%s has no entry point: %s\n", argv[1], dlerror());
        dlclose(module);
        return 1;
    }

    ExampleHost host;
    std::printf("host: loaded %s\n", argv[1]);
    int result = start(&host);
    std::printf("host: extension started with %d\n", result);
    if (result == 0) {
        result = send_request(module, host);
    }
    dlclose(module);
    return result;
}
