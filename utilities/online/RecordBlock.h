#ifndef VTRUTILS_ONLINE_RECORDBLOCK_H
#define VTRUTILS_ONLINE_RECORDBLOCK_H

#include "utilities/base/OwnedText.h"
#include "utilities/online/OnlineSoundRepo.h"

/// Blocks of records. That of a whole page is so large that the system takes it back at once and
/// hands out untouched pages the next time, which takes as long as a sixth of the parsing: so one
/// block is kept for the next reply as long as there is a repository. Private to the library.
/// Locked by itself.

namespace vtr {

/// Every repository has one for as long as it lives; the last one frees the block that is kept.
void UseRecordBlocks();
void LeaveRecordBlocks();

/// `count` records of zeros in one block from `malloc`; null when memory runs out.
OwnedChars<_osrSndItem> MakeRecords(std::size_t count);

/// Keeps the block or frees it. Null is nothing.
void GiveRecordsBack(_osrSndItem* records);

} // namespace vtr

#endif
