#pragma once
// Private to the library: not part of the API.

#include "QuorvaneExtApi.h"

namespace Quorvane {

// The host seen through IDataProvider, set by initialize_api; null while there is no host or the
// host does not implement it. Read only by the session's language look-up. Hidden from the
// export table: extensions reach the host through host().
extern IDataProvider* g_pHost;

}  // namespace Quorvane
