#ifndef VTRFUTLS_INTERNETDOWNLOAD_H
#define VTRFUTLS_INTERNETDOWNLOAD_H

#include "vtrfutls/Export.h"

/// Downloads one reply at a time into a local file, in the background. It may be used again after a
/// transfer has ended.
/// Thread-safety: locked by itself, but `StartDownload` and the destructor are for one thread.
class VTRFUTLS_API CInternetDownload {
public:
    /// When memory runs out, no transfer ever starts with this object.
    CInternetDownload() noexcept;
    CInternetDownload(const CInternetDownload&) = delete;
    CInternetDownload& operator=(const CInternetDownload&) = delete;

    /// Terminates the transfer. The local file stays.
    ~CInternetDownload();

    /// Asks for `url` in a session, the first member of `MyInternetAccess`, and writes the reply
    /// into `localPath`, which is made, or emptied if it exists. No cache is read or written.
    /// True if the transfer runs in the background; the texts need not stay.
    /// False, with this object as it was, while a transfer runs; for a null session; for a null or
    /// empty text; for a URL that is longer than 2,083 characters or is not one of http or https;
    /// if the local file cannot be opened for writing; and when memory runs out.
    ///
    /// - Characters of the URL outside of 0x21 to 0x7E are sent as "%" and two digits, all others
    /// as
    ///   they are. What follows "#" is not sent.
    /// - Up to 10 redirections are followed, but none from https to anything else.
    /// - A certificate that Windows does not trust, or one for another name, ends the transfer.
    /// - `localPath` is text in the code page for files (FileNames.h). Others may read, rename and
    ///   delete the file while it grows.
    /// - `flags` has no meaning yet: pass 0.
    bool StartDownload(void* session, const char* url, const char* localPath,
                       unsigned flags) noexcept;

    /// True from a good `StartDownload` until the transfer has ended and its file is closed.
    bool IsDownloading() const noexcept;

    /// True if the last transfer ended by itself with status 200 and with as many bytes as the
    /// server announced, or at least one where it announced no length, all of which are in the
    /// closed file. False while it runs, and if nothing was started.
    bool WasSuccessful() const noexcept;

    /// The bytes of the reply that the running or last transfer has written; 0 without one.
    unsigned long long BytesReceived() const noexcept;

    /// The length that the server announced; 0 until then, if it announced none, and without a
    /// transfer.
    unsigned long long TotalBytes() const noexcept;

    /// Ends the transfer, whatever it waits for, and returns when that is done and the file is
    /// closed: within a second. Does nothing if none runs. The file stays, with what has come.
    void TerminateDownload() noexcept;

private:
    void* download; ///< null when memory ran out
};

#endif
