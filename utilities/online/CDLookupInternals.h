#ifndef VTRUTILS_ONLINE_CDLOOKUPINTERNALS_H
#define VTRUTILS_ONLINE_CDLOOKUPINTERNALS_H

#include "utilities/base/Layout.h"
#include "utilities/online/CDLookup.h"

namespace vtr {

/// Private to the library. One thread at a time.
template <>
struct Internals<CDLookup> {
    static_assert(sizeof(CDLookup) == vtr::ByPointer(296, 176));
    VTR_FIELD_AT(CDLookup, artists, 8, 4);
    VTR_FIELD_AT(CDLookup, albums, 96, 56);
    VTR_FIELD_AT(CDLookup, songs, 184, 108);
    VTR_FIELD_AT(CDLookup, requestType, 272, 160);
    VTR_FIELD_AT(CDLookup, error, 276, 164);
    VTR_FIELD_AT(CDLookup, searchComplete, 277, 165);
    VTR_FIELD_AT(CDLookup, results, 280, 168);
    VTR_FIELD_AT(CDLookup, resultCount, 288, 172);

    /// The one that a search of this type fills.
    static CMyList& ListOf(CDLookup& lookup, _cdRequestType type);

    /// Frees the records of a list and empties it.
    static void Erase(CMyList& list);
};

} // namespace vtr

#endif
