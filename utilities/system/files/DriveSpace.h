#ifndef VTRUTILS_SYSTEM_FILES_DRIVESPACE_H
#define VTRUTILS_SYSTEM_FILES_DRIVESPACE_H

namespace vtr {

/// The free kilobytes of a drive counted in clusters, as old systems do; below 0 when they cannot
/// be told. Private to the library. Immutable and safe.
double FreeKilobytesInClusters(const wchar_t* root);

} // namespace vtr

#endif
