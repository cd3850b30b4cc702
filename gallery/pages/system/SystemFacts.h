#ifndef VTRUTILS_GALLERY_PAGES_SYSTEM_SYSTEMFACTS_H
#define VTRUTILS_GALLERY_PAGES_SYSTEM_SYSTEMFACTS_H

#include <string>
#include <vector>

namespace gallery {

/// A property of the system and its value, in the language that is chosen when it is asked for.
struct SystemFact {
    const char* nameKey;
    std::wstring value;
};

/// Always the same properties in the same order. One thread at a time.
std::vector<SystemFact> SystemFacts();

/// What `SystemFacts` counts.
int Processors();

} // namespace gallery

#endif
