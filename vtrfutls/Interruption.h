#ifndef VTRFUTLS_INTERRUPTION_H
#define VTRFUTLS_INTERRUPTION_H

#include <windows.h>

/// How a thread that waits inside WinINet is made to return. On Windows, closing the handle that it
/// waits with is enough. Wine's WinINet goes on waiting at its socket, so there the wait itself is
/// cancelled, which works for sockets that are not made for overlapped calls. Private to this
/// library.

namespace vtr {

/// While it lives, what this thread waits for at sockets that it makes can be cancelled. One thread
/// at a time.
class InterruptibleSockets {
public:
    InterruptibleSockets();
    InterruptibleSockets(const InterruptibleSockets&) = delete;
    InterruptibleSockets& operator=(const InterruptibleSockets&) = delete;
    ~InterruptibleSockets();

private:
    bool started = false;
};

/// Cancels what the thread waits for, again and again, until it ends. False if it still runs after
/// `milliseconds`: while the address of a server is looked up, nothing can be cancelled.
bool InterruptUntilEnd(HANDLE thread, DWORD milliseconds);

} // namespace vtr

#endif
