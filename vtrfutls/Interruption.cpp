#include <winsock2.h> // before windows.h

#include "vtrfutls/Interruption.h"

#include "common/DynamicFunction.h"

#include <mswsock.h>

namespace {

constexpr DWORD step = 1; // millisecond: a wait for a fast server is short

vtr::DynamicFunction<decltype(CancelSynchronousIo)> cancelSynchronousIo("kernel32.dll",
                                                                        "CancelSynchronousIo");
vtr::DynamicFunction<const char*()> wineVersion("ntdll.dll", "wine_get_version");

} // namespace

namespace vtr {

InterruptibleSockets::InterruptibleSockets() {
    if (wineVersion.Get() == nullptr)
        return;
    WSADATA data;
    started = WSAStartup(MAKEWORD(2, 2), &data) == 0;
    const int kind = SO_SYNCHRONOUS_NONALERT;
    if (started)
        setsockopt(INVALID_SOCKET, SOL_SOCKET, SO_OPENTYPE, reinterpret_cast<const char*>(&kind),
                   sizeof kind);
}

InterruptibleSockets::~InterruptibleSockets() {
    if (started)
        WSACleanup();
}

bool InterruptUntilEnd(HANDLE thread, DWORD milliseconds) {
    // Once is not enough: a thread that was on its way to a wait, or tries again after the failure
    // of one, waits anew.
    // Most often it has ended already.
    if (WaitForSingleObject(thread, 0) == WAIT_OBJECT_0)
        return true;
    for (DWORD waited = 0; waited < milliseconds; waited += step) {
        if (cancelSynchronousIo.Get() != nullptr)
            cancelSynchronousIo.Get()(thread);
        if (WaitForSingleObject(thread, step) == WAIT_OBJECT_0)
            return true;
    }
    return false;
}

} // namespace vtr
