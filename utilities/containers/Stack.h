#ifndef VTRUTILS_CONTAINERS_STACK_H
#define VTRUTILS_CONTAINERS_STACK_H

#include "utilities/Export.h"
#include "utilities/system/locks/Lock.h"

/// A list of item pointers that come out in the order in which they were pushed, first in, first
/// out, whatever the name says. Items are never dereferenced or freed.
/// Thread-safety: locked by itself.
class VTRUTILS_API CStack {
public:
    CStack() noexcept;
    CStack(const CStack&) = delete;
    CStack& operator=(const CStack&) = delete;
    /// Requires: no other thread is at the stack.
    virtual ~CStack();

    /// Null may be pushed. Does nothing if memory runs out.
    virtual void Push(void* item);

    /// The item pushed first; null when there is none.
    virtual void* Pop();

    /// Calls `Pop` until it returns null, and then sets the count to 0. So a null item ends it
    /// early: what was pushed after that item stays, and is not counted.
    virtual void ClearStack();

    /// How many items there are.
    virtual int NumNodes();

private:
    friend struct vtr::Internals<CStack>;
    struct Node;

    CLock lock;
    Node* head;
    int count;
    Node* tail; ///< null when empty
};

#endif
