// The example host: implements the host interfaces from the public header alone, loads an
// extension module and hands itself over.

#include <dlfcn.h>

#include <cstdio>
#include <cstring>

#include "QuorvaneExtApi.h"
#include "extension_entry.h"

namespace {

// One object implements both faces, as the library expects: IQuorvaneExtHost is what it hands
// back to extensions, IDataProvider is where it reads the default language.
class ExampleHost : public Quorvane::IQuorvaneExtHost, public Quorvane::IDataProvider {
public:
    Quorvane::Value get_value(const char* name, const char* domain, bool) override {
        ++configuration_reads_;
        if (std::strcmp(name, "DEFAULTLOCALE") == 0 && std::strcmp(domain, "Quorvane") == 0) {
            return Quorvane::Value("de");
        }
        return Quorvane::Value();
    }

    int configuration_reads() const { return configuration_reads_; }

private:
    int configuration_reads_ = 0;
};

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
    const int result = start(&host);
    std::printf("host: extension finished with %d; it read the configuration %d time(s)\n", result,
                host.configuration_reads());
    dlclose(module);
    return result;
}
