#include "vtrfutls/InternetAccess.h"

#include "vtrfutls/InternetHandle.h"

#include <cstddef>

MyInternetAccess::MyInternetAccess(const char* agentName, bool throughProxy) noexcept
    : session(InternetOpenA(agentName != nullptr ? agentName : "vtrfutls",
                            throughProxy ? INTERNET_OPEN_TYPE_PRECONFIG : INTERNET_OPEN_TYPE_DIRECT,
                            /*lpszProxy=*/nullptr, /*lpszProxyBypass=*/nullptr, /*dwFlags=*/0)) {
    static_assert(offsetof(MyInternetAccess, session) == 0);
}

MyInternetAccess::~MyInternetAccess() {
    const vtr::InternetHandle toClose(session);
}

bool MyInternetAccess::IsOpen() const noexcept {
    return session != nullptr;
}

bool IsInternetConnectionAvailable() noexcept {
    DWORD kind = 0;
    return InternetGetConnectedState(&kind, /*dwReserved=*/0) != FALSE;
}
