#ifndef VTRUTILS_SYSTEM_INFO_WINDOWSVERSION_H
#define VTRUTILS_SYSTEM_INFO_WINDOWSVERSION_H

#include <windows.h>

/// What a version record means, without a call into the system. Private to the library. Immutable
/// and safe.

namespace vtr {

/// The codes of `GetWindowsSystemVersion`.
enum WindowsCode {
    codeWindows95,
    codeWindows95Osr2,
    codeWindows98,
    codeWindows98Se,
    codeWindowsMe,
    codeWindowsNt,
    codeWindows2000,
    codeWindowsXp,
    codeUnknown,
    codeVista,
    codeWindows7,
    codeWindows8,
    codeWindows10,
    codeWindows11
};

/// How the counters of a system are read.
enum class SystemClass { nt4, nt5, windows9x, unknown };

/// No description is longer, its terminator included.
constexpr int descriptionSize = 256;

/// The code of the record. Writes name and details into `description` unless that is null.
/// `productType` names the edition of an NT version without a code ("WINNT", "LANMANNT",
/// "SERVERNT"); null and any other text name none.
int DescribeWindows(const OSVERSIONINFOA& record, const char* productType, char* description);

/// Whether the description of the record depends on the product type.
bool NeedsProductType(const OSVERSIONINFOA& record);

/// Null is a record that could not be read.
SystemClass ClassOfSystem(const OSVERSIONINFOA* record);

} // namespace vtr

#endif
