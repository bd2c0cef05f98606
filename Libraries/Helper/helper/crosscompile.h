#pragma once
// Portability and export macros shared by every public header of the library.

// The library is built with hidden visibility; QUORVANE_API marks what an extension or host may
// link against. Consumers see the same attribute, which is harmless on their side.
#define QUORVANE_API __attribute__((visibility("default")))

// Marks a member of an exported class that extensions never call, keeping it out of the export
// table.
#define QUORVANE_HIDDEN __attribute__((visibility("hidden")))
