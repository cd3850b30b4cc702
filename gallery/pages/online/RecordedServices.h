#ifndef VTRUTILS_GALLERY_PAGES_ONLINE_RECORDEDSERVICES_H
#define VTRUTILS_GALLERY_PAGES_ONLINE_RECORDEDSERVICES_H

#include <functional>
#include <string>

namespace gallery {

/// The server with recorded replies that scripts/recorded-services offers while pictures are made;
/// "" when there is none, so that a picture never depends on the network. Immutable and safe.
std::wstring RecordedServices();

/// Handles the thread's messages until the condition holds. False when it does not within 20 s. One
/// thread at a time.
bool HandleMessagesUntil(const std::function<bool()>& condition);

} // namespace gallery

#endif
