#pragma once
// The contract between the example host and the example extension: the C symbols the host looks
// up after loading the module.

namespace Quorvane {
class IQuorvaneExtHost;
class IQuorvaneListener;
}  // namespace Quorvane

extern "C" {
// Called once after loading; hands the host to the library and prepares the extension's work.
// Returns 0 on success.
using ExtensionStart = int (*)(Quorvane::IQuorvaneExtHost* host);
int quorvane_extension_start(Quorvane::IQuorvaneExtHost* host);

// The extension's listeners, one per index from 0 on, and null past the last. Each lives until
// the module is unloaded; the host reads its type() to learn which interface it may cast it to.
using ExtensionListener = Quorvane::IQuorvaneListener* (*)(int index);
Quorvane::IQuorvaneListener* quorvane_extension_listener(int index);
}

#define QUORVANE_EXTENSION_START_SYMBOL "quorvane_extension_start"
#define QUORVANE_EXTENSION_LISTENER_SYMBOL "quorvane_extension_listener"
