#pragma once
// The contract between the example host and the example extension: the one C symbol the host
// looks up after loading the module.

namespace Quorvane {
class IQuorvaneExtHost;
}

extern "C" {
// Called once after loading; hands the host to the library and runs the extension's work.
// Returns 0 on success.
using ExtensionStart = int (*)(Quorvane::IQuorvaneExtHost* host);
int quorvane_extension_start(Quorvane::IQuorvaneExtHost* host);
}

#define QUORVANE_EXTENSION_START_SYMBOL "quorvane_extension_start"
