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
    // Most often it has ended already.
    if (WaitForSingleObject(thread, 0) == WAIT_OBJECT_0)
        return true;
    // Once is not enough: a thread that was on its way to a wait, or tries again after the failure
    // of one, waits anew. Waits may take longer than they are asked to, so the clock counts.
    const ULONGLONG begun = GetTickCount64();
    do {
        if (cancelSynchronousIo.Get() != nullptr)
            cancelSynchronousIo.Get()(thread);
        if (WaitForSingleObject(thread, step) == WAIT_OBJECT_0)
            return true;
    } while (GetTickCount64() - begun < milliseconds);
    return false;
}

} // namespace vtr
