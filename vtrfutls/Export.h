#ifndef VTRFUTLS_EXPORT_H
#define VTRFUTLS_EXPORT_H

/// Marks what `vtrfutls.dll` exports. `VTRFUTLS_BUILD` is set while the library itself is compiled.
#if defined(VTRFUTLS_BUILD)
#define VTRFUTLS_API __declspec(dllexport)
#else
#define VTRFUTLS_API __declspec(dllimport)
#endif

#endif
