#ifndef VTRUTILS_TESTS_SUPPORT_SYMBOLICLINK_H
#define VTRUTILS_TESTS_SUPPORT_SYMBOLICLINK_H

#include <string>

/// A link in an existing folder, removed again. `folder` ends with a backslash; the target is a
/// file or folder in it that need not exist. Throws when it cannot be made.
class SymbolicLink {
public:
    SymbolicLink(std::string folder, std::string link, const std::string& target);
    SymbolicLink(const SymbolicLink&) = delete;
    SymbolicLink& operator=(const SymbolicLink&) = delete;
    ~SymbolicLink();

private:
    std::string folder;
    std::string link;
};

#endif
