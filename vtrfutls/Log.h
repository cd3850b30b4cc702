#ifndef VTRFUTLS_LOG_H
#define VTRFUTLS_LOG_H

#include "vtrfutls/Export.h"

/// The diagnostic log of the whole family: off until a host names a file or registers a sink.
/// Thread-safety: locked by itself.

/// Receives one line, without a line end. `line` is valid during the call only. Calls come one at a
/// time, on the thread that logged; a line that the sink itself logs is dropped.
using LogSink = void (*)(const char* line, void* context);

/// Registers the sink; null removes it. After the return the old sink is not called again, unless
/// the call came from that sink.
VTRFUTLS_API void SetLogSink(LogSink sink, void* context);

/// From now on, appends every line, with date, time and thread, to this file, which is created if
/// it is missing. Null or "" closes it. False, with no log file in use, when it cannot be opened.
/// Several processes may share a log file.
VTRFUTLS_API bool SetLogFile(const char* path);

/// True while there is a file or a sink: a caller need not make costly lines otherwise.
VTRFUTLS_API bool LoggingNow();

/// Logs one line; line breaks in the text become spaces. Null is ignored.
VTRFUTLS_API void Log(const char* text);

/// The same, formatted as `printf` does. Texts of any length are logged whole; when memory runs out
/// the line is cut to 1,023 bytes. A line that cannot be formatted is dropped.
#if defined(__clang__)
__attribute__((format(printf, 1, 2)))
#elif defined(__GNUC__)
__attribute__((format(gnu_printf, 1, 2)))
#endif
VTRFUTLS_API void
LogFmtA(const char* format, ...);

#endif
