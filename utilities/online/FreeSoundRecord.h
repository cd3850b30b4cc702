#ifndef VTRUTILS_ONLINE_FREESOUNDRECORD_H
#define VTRUTILS_ONLINE_FREESOUNDRECORD_H

#include "utilities/online/OnlineSoundRepo.h"

namespace vtr {

/// Fills a zeroed record from one result of a reply, whatever that is. Logs a licence that it does
/// not know. Private to the library. Immutable and safe.
void ReadSound(const Json::Value& result, _osrSndItem& record);

} // namespace vtr

#endif
