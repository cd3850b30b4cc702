#ifndef VTRUTILS_SYSTEM_INFO_PERFORMANCEDATA_H
#define VTRUTILS_SYSTEM_INFO_PERFORMANCEDATA_H

#include "utilities/system/info/PerformanceBlock.h"

namespace vtr {

/// Asks the registry for the data of one object. The block lies in a buffer of the process and is
/// valid up to the next call; it is empty when the query fails, when memory runs out, and for an
/// answer of more than 64 MB. Private to the library. One thread at a time in the process.
PerformanceBlock QueryPerformanceData(DWORD object);

} // namespace vtr

#endif
