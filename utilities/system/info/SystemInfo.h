#ifndef VTRUTILS_SYSTEM_INFO_SYSTEMINFO_H
#define VTRUTILS_SYSTEM_INFO_SYSTEMINFO_H

#include "utilities/Export.h"

/// Which Windows a program runs on, and what of it is in use.
///
/// Windows tells a program its true version only if the manifest of the program names that version;
/// others are told an older one: Windows 8 (6.2) on 8.1, 10 and 11. A host that wants the truth has
/// in its manifest
///
///     <compatibility xmlns="urn:schemas-microsoft-com:compatibility.v1"><application>
///       <supportedOS Id="{e2011457-1546-43c5-a5fe-008deee3d3f0}"/> <!-- Vista -->
///       <supportedOS Id="{35138b9a-5d96-4fbd-8e2d-a2440225f93a}"/> <!-- 7 -->
///       <supportedOS Id="{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}"/> <!-- 8 -->
///       <supportedOS Id="{1f676c76-80e1-4239-95bb-83d0f6d0da78}"/> <!-- 8.1 -->
///       <supportedOS Id="{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"/> <!-- 10 and 11 -->
///     </application></compatibility>
///
/// Thread-safety: immutable and safe.

/// Which Windows this is. The order of the codes is fixed: above 4 are the systems of the NT
/// family.
///
/// | code | system             | code | system            | code | system          |
/// |------|--------------------|------|-------------------|------|-----------------|
/// | 0    | Windows 95         | 5    | NT 4 or earlier   | 10   | Windows 7       |
/// | 1    | Windows 95 OSR2    | 6    | Windows 2000      | 11   | Windows 8, 8.1  |
/// | 2    | Windows 98         | 7    | Windows XP        | 12   | Windows 10      |
/// | 3    | Windows 98 SE      | 8    | any other, 5.2    | 13   | Windows 11      |
/// | 4    | Millennium Edition | 9    | Windows Vista     |      |                 |
///
/// Writes to `description`, unless it is null, at most 255 characters and a terminator: the name
/// ("Microsoft Windows 7 "), and on the NT family service pack and build ("Service Pack 1 (Build
/// 7601)\n"), for NT 4 or earlier with "version 4.0 " before them. Code 8 has no name; on the NT
/// family "Professional ", "Server " or "Advanced Server " stands there if the registry tells the
/// edition. If Windows does not tell its version, the code is 8 and the description empty.
VTRUTILS_API int GetWindowsSystemVersion(char* description);

/// True on the NT family, whose functions for wide text are its own: the code is above 4.
VTRUTILS_API bool OSIsNativeUnicode();

/// False for a code below 7, which had no themes. Otherwise true, unless the user chose best
/// performance in the visual effects.
VTRUTILS_API bool SystemUsesXPThemes();

/// True if the desktop is composed. False where Windows does not have `DwmIsCompositionEnabled`,
/// and where it fails. Logs the call and its result.
VTRUTILS_API bool SystemUsesAeroThemes();

/// The nominal clock of the first processor in MHz; 0 where the registry does not have it.
VTRUTILS_API unsigned CPUSpeed();

/// True if drive C: is a fixed disk and has "program files\intel\intel application
/// accelerator\intelata.exe" with version information of any kind: a disk driver that is known for
/// trouble.
VTRUTILS_API bool BadIntelAppAcceleratorInstalled();

#endif
