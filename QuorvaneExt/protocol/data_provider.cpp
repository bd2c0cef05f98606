#include "protocol/data_provider.h"

namespace Quorvane {

IDataProvider* g_pHost = nullptr;

}  // namespace Quorvane
