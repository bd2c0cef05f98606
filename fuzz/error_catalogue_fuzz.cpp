// The error catalogue: every 32-bit number and every path text is answered, and the composed
// texts are built from the plain ones as the header describes.

#include "helper/api_helper.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>

#include "fuzz_check.h"

namespace {

bool ends_with(const std::string& text, const std::string& tail) {
    return text.size() >= tail.size() &&
           text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto value = static_cast<Quorvane::ErrorValue>(input.ConsumeIntegral<std::int32_t>());
    const auto details =
        static_cast<Quorvane::ErrorMessageDetails>(input.ConsumeIntegral<std::int32_t>());
    const int code = input.ConsumeIntegral<int>();
    const std::string path = input.ConsumeRemainingBytesAsString();

    const Quorvane::String name = Quorvane::get_error_string(value);
    const std::string symbol = name.name();
    FUZZ_CHECK(!symbol.empty());
    const std::string text = Quorvane::get_error_string_pretty(value);
    FUZZ_CHECK(!text.empty());
    FUZZ_CHECK(Quorvane::get_error_string_pretty(value, Quorvane::ErrorMessageDetails::None) ==
               text);
    FUZZ_CHECK(
        Quorvane::get_error_string_pretty(value, Quorvane::ErrorMessageDetails::SymbolicName) ==
        text + " (HMI_E_" + symbol + ")");
    const std::string with_details = Quorvane::get_error_string_pretty(value, details);
    if (details != Quorvane::ErrorMessageDetails::SymbolicName) {
        FUZZ_CHECK(with_details == text);
    }
    const std::string with_path = Quorvane::get_error_string_with_path_pretty(value, path);
    FUZZ_CHECK(with_path == (path.empty() ? text : text + " [Path: '" + path + "']"));
    FUZZ_CHECK(ends_with(with_path, path.empty() ? text : "']"));

    const int exit_code = Quorvane::error_value_to_exit_code(value);
    FUZZ_CHECK(exit_code >= 0);
    const Quorvane::ErrorValue back = Quorvane::exit_code_to_error_value(code);
    if (code < 0 || code > 19) {
        FUZZ_CHECK(back == Quorvane::exit_code_to_error_value(-1));
    }
    // No row is named ERROR: that name marks a number outside the catalogue, which ends a process
    // with the code of its block, or with 5 outside the four blocks that have one.
    if (symbol == "ERROR") {
        FUZZ_CHECK(exit_code == 5 || (exit_code >= 11 && exit_code <= 14));
        FUZZ_CHECK(text == std::to_string(static_cast<std::int32_t>(value)));
    }
    return 0;
}
