#ifndef VTRUTILS_TESTS_SUPPORT_RECORDEDSERVICES_H
#define VTRUTILS_TESTS_SUPPORT_RECORDEDSERVICES_H

#include <string>
#include <string_view>

/// The recorded online services (scripts/recorded-services), which run beside test programs that
/// are declared with SERVICES.

/// "localhost:40001" for "plain", "tls" and the other ports. Fails the test if there is none.
std::string ServiceAddress(const std::string& port);

/// What the control request, such as "requests" or "fault/cut", answers. With a body it is a POST.
/// Fails the test if the status is not 200.
std::string ServiceControl(const std::string& command, std::string_view body = {});

/// While it lives, this user trusts the authority of the run.
class TrustedAuthority {
public:
    TrustedAuthority();
    TrustedAuthority(const TrustedAuthority&) = delete;
    TrustedAuthority& operator=(const TrustedAuthority&) = delete;
    ~TrustedAuthority();

private:
    const void* certificate = nullptr;
};

#endif
