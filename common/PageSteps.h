#ifndef VTR_COMMON_PAGESTEPS_H
#define VTR_COMMON_PAGESTEPS_H

#include <cstddef>
#include <windows.h>

namespace vtr {

/// Steps over text in a code page of the system's, 0 for its ANSI code page, so that the second
/// byte of a character is never taken for a character of its own. A lead byte without a trail byte
/// after it counts as one character. Private to the two libraries. Immutable and safe.
class PageSteps {
public:
    explicit PageSteps(unsigned codePage) {
        if (!GetCPInfo(codePage, &info) || info.MaxCharSize != 2)
            info.LeadByte[0] = 0;
        if (codePage == CP_ACP)
            codePage = GetACP();
        firstTrail = codePage == johab ? 0x31 : 0x40;
    }

    /// True when some characters have two bytes.
    bool Multibyte() const { return info.LeadByte[0] != 0; }

    /// 1 or 2 bytes at a terminated text; 1 at its end.
    std::size_t Length(const char* text) const {
        return IsLead(static_cast<BYTE>(text[0])) && static_cast<BYTE>(text[1]) >= firstTrail ? 2
                                                                                              : 1;
    }

private:
    bool IsLead(BYTE byte) const {
        // Pairs of first and last byte, up to a pair of zeros.
        for (const BYTE* range = info.LeadByte; byte >= 0x80 && range[0] != 0; range += 2) {
            if (byte >= range[0] && byte <= range[1])
                return true;
        }
        return false;
    }

    static constexpr unsigned johab = 1361;
    CPINFO info{};
    BYTE firstTrail;
};

} // namespace vtr

#endif
