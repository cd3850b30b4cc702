#ifndef VTRUTILS_CONTAINERS_MYARRAYLISTINTERNALS_H
#define VTRUTILS_CONTAINERS_MYARRAYLISTINTERNALS_H

#include "utilities/base/ElementBlock.h"
#include "utilities/base/Layout.h"
#include "utilities/containers/MyArrayList.h"

/// What the library itself may do to a list beyond its public functions. Private to the library.
/// One thread at a time.
template <>
struct vtr::Internals<CMyArrayList> {
    static_assert(sizeof(CMyArrayList) == vtr::ByPointer(32, 24));
    VTR_FIELD_AT(CMyArrayList, elements, 8, 4);
    VTR_FIELD_AT(CMyArrayList, growStep, 24, 16);
    VTR_FIELD_AT(CMyArrayList, sorted, 28, 20);

    /// Puts null in the place of the item, wherever it is: neither moves elements nor allocates.
    static void Blank(CMyArrayList& list, const void* item) {
        for (auto& element : ElementBlock(list.elements)) {
            if (element.item == item)
                element.item = nullptr;
        }
    }
};

#endif
