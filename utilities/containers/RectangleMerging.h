#ifndef VTRUTILS_CONTAINERS_RECTANGLEMERGING_H
#define VTRUTILS_CONTAINERS_RECTANGLEMERGING_H

#include "utilities/containers/RectangleGeometry.h"

/// How fewer rectangles are made of many that do not overlap. The order of what comes out is part
/// of the result: it is that of looking, after each change, through all pairs from the start, at
/// the first rectangle with all others from the last on, and so forth. Private to the library. One
/// thread at a time.

namespace vtr {

/// Cuts rectangles that lie side by side, with a whole edge on one vertical line, at each other's
/// top and bottom edges, until these go across. Lower parts are appended. False when memory runs
/// out.
bool AlignEdges(RectangleRun& rectangles);

/// Puts adjacent rectangles together until none are left. False when memory runs out.
bool MergeAdjacent(RectangleRun& rectangles);

} // namespace vtr

#endif
