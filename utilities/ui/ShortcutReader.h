#ifndef VTRUTILS_UI_SHORTCUTREADER_H
#define VTRUTILS_UI_SHORTCUTREADER_H

#include "utilities/Export.h"
#include "utilities/system/locks/Lock.h"

#include <windows.h>

/// What a reader and its thread tell each other. The texts are the caller's, and null once it waits
/// no longer. Thread-safety: one thread at a time: the one that holds its lock.
struct TShortcutThreadProps {
    const char* shortcut = nullptr; ///< what is asked
    char* target = nullptr;         ///< where the answer belongs
    int targetSize = 0;             ///< in bytes
    HANDLE done = nullptr;          ///< a manual-reset event
    HANDLE request = nullptr;       ///< a manual-reset event
    DWORD timeout = 50;             ///< in milliseconds
    bool abort = false;             ///< the thread is to end
    bool busy = false;              ///< from a request until the thread is back from the shell
    CLock lock;                     ///< held by whoever reads or writes these
};

/// Finds where shortcuts (".lnk" files) lead. A thread of its own asks the shell; it begins with
/// the reader and ends with it. On Windows before 5.0, and where no thread can be made, nothing is
/// found.
///
/// The shell may take longer than it is given, on a server that does not answer even for ever. A
/// caller waits two seconds beyond the time-out at most and then goes on without an answer. Until
/// the shell has come back, the reader finds nothing, without waiting. If the reader is destroyed
/// before that, the thread is left to itself: it keeps the library loaded, and ends when the shell
/// lets it.
/// Thread-safety: locked by itself: shortcuts are read one at a time.
class VTRUTILS_API CShortcutReader {
public:
    CShortcutReader() noexcept;
    CShortcutReader(const CShortcutReader&) = delete;
    CShortcutReader& operator=(const CShortcutReader&) = delete;
    /// Requires: no thread is inside the reader.
    ~CShortcutReader();

    /// Writes the path that the shortcut leads to, whether or not there is something, cut to `size`
    /// - 1 bytes. The shell searches for what was moved no longer than the time-out, at most 65,535
    /// ms; 0 means 50 ms. False, with "", if it leads to no path, if it cannot be read or does not
    /// fit 519 bytes, and after `RequestAbort`. False, with nothing written, for null and a size
    /// below 1.
    bool GetShortcutTarget(const char* shortcut, char* target, int size,
                           unsigned timeoutMs) noexcept;

    /// No shortcut is begun from now on.
    void RequestAbort() noexcept;
    bool AbortRequested() const noexcept;

    /// Whether the shell is being asked.
    bool ThreadBusy() const noexcept;

private:
    friend struct vtr::Internals<CShortcutReader>;

    TShortcutThreadProps* props; ///< shared with the thread; null when there is no thread
    HANDLE worker;
    CLock callers; ///< held by the one whose shortcut is read
};

#endif
