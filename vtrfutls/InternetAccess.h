#ifndef VTRFUTLS_INTERNETACCESS_H
#define VTRFUTLS_INTERNETACCESS_H

#include "vtrfutls/Export.h"

/// A session of WinINet, in which transfers run. It never shows a window and asks no user anything.
/// Thread-safety: immutable and safe.
class VTRFUTLS_API MyInternetAccess {
public:
    /// Opens the session without touching the network. `agentName`, text in the system's ANSI code
    /// page, is what servers see as the name of the program; null is "vtrfutls". Transfers go
    /// through the proxy that is set for the user in Windows, or through none.
    explicit MyInternetAccess(const char* agentName, bool throughProxy = true) noexcept;
    MyInternetAccess(const MyInternetAccess&) = delete;
    MyInternetAccess& operator=(const MyInternetAccess&) = delete;

    /// Requires: no transfer runs in the session.
    ~MyInternetAccess();

    /// False if Windows gave no session: transfers in it do not start.
    bool IsOpen() const noexcept;

private:
    void* session; ///< the first member: hosts read the handle from here; null if it is not open
};

/// Whether Windows knows of a connection to a network. True promises no server, and the network is
/// not asked.
VTRFUTLS_API bool IsInternetConnectionAvailable() noexcept;

#endif
