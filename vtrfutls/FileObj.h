#ifndef VTRFUTLS_FILEOBJ_H
#define VTRFUTLS_FILEOBJ_H

#include "vtrfutls/Export.h"
#include "vtrfutls/InternetAccess.h"
#include "vtrfutls/InternetDownload.h"
#include "vtrfutls/RefObj.h"

/// A local file that is filled from the internet in the background and can then be read. The file
/// stays on the disc until its owner deletes it, after `Close`.
/// Thread-safety: one thread at a time, but `IsDownloading`, `BytesReceived` and `TotalBytes` may
/// be called on any thread.
class VTRFUTLS_API CFileObj : public CRefObj {
public:
    CFileObj() noexcept;

    /// As `Close`.
    ~CFileObj() override;

    /// Begins to download `url` into `localPath`, as `CInternetDownload::StartDownload` does.
    /// Closes what is open before that, as `Close` does; its file stays.
    /// Nonzero if the transfer runs: the object is then open. 0, with the object closed, for a null
    /// `access`, for all that `StartDownload` refuses, and when memory runs out.
    int OpenFromInternet(MyInternetAccess* access, const char* url, const char* localPath) noexcept;

    /// True while the transfer runs.
    bool IsDownloading() const noexcept;

    /// True once the whole reply is in the closed local file, until it is discarded or the object
    /// closed.
    bool DownloadWasSuccessful() const noexcept;

    /// As those of `CInternetDownload`.
    unsigned long long BytesReceived() const noexcept;
    unsigned long long TotalBytes() const noexcept;

    /// Ends the transfer within a second, whether it has come to its end or not. The object stays
    /// open. To `discard` lets go of the reply: nonzero if the object is open, and afterwards
    /// neither this object nor the transfer has the file open. Otherwise the finished reply is
    /// taken over: nonzero if the download was successful and the file is open for reading, at its
    /// start the first time and where it was at later calls. 0 in all other cases.
    int CompleteDownload(bool discard) noexcept;

    /// True from a good `OpenFromInternet` until `Close`, also after the transfer failed.
    bool IsOpen() const noexcept;

    /// Ends a transfer that runs, within a second, and closes the file. `LocalPath` stays. Does
    /// nothing if the object is closed.
    void Close() noexcept;

    /// The length of the file that was taken over; -1 without one.
    long long Size() const noexcept;

    /// Reads up to `count` bytes from where the last call ended. The number of bytes read, which is
    /// less than `count` only at the end of the file, and 0 there. -1 for a failure, for a null
    /// buffer or a negative count, and without a file that was taken over.
    int Read(void* buffer, int count) noexcept;

    /// The local path of the last good `OpenFromInternet`, valid until the next call of it; ""
    /// before that.
    const char* LocalPath() const noexcept;

private:
    CInternetDownload download;
    void* file; ///< open for reading, or null
    char* path;
    bool open;
    bool discarded;
};

/// Releases the object and stores null. Does nothing for null and for a pointer to null.
VTRFUTLS_API void DeleteRefObject(CFileObj** object) noexcept;

#endif
