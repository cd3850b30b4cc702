#include "utilities/ui/ShortcutReader.h"

#include "common/Handles.h"
#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/ScopedLock.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/info/SystemInfo.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <shlobj.h>

namespace {

constexpr DWORD defaultTimeout = 50;
constexpr DWORD longestTimeout = 0xFFFF;
constexpr DWORD grace = 2000;
constexpr std::size_t shortcutSize = 520;

using Internals = vtr::Internals<CShortcutReader>;

/// The shell's side, for the thread that makes it.
class ShellLinks {
public:
    ShellLinks()
        : started(SUCCEEDED(CoInitializeEx(/*pvReserved=*/nullptr,
                                           COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {
        void* made = nullptr;
        if (!started || FAILED(CoCreateInstance(CLSID_ShellLink, /*pUnkOuter=*/nullptr,
                                                CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made)))
            return;
        link.Reset(static_cast<IShellLinkA*>(made));
        if (SUCCEEDED(link.Get()->QueryInterface(IID_IPersistFile, &made)))
            file.Reset(static_cast<IPersistFile*>(made));
    }
    ShellLinks(const ShellLinks&) = delete;
    ShellLinks& operator=(const ShellLinks&) = delete;
    ~ShellLinks() {
        file.Reset();
        link.Reset();
        if (started)
            CoUninitialize();
    }

    explicit operator bool() const { return static_cast<bool>(file); }

    /// Null when it leads to no path.
    vtr::OwnedText TargetOf(const char* shortcut, DWORD timeout) const {
        const vtr::WidePath path(shortcut, vtr::CurrentCodePage());
        if (*path.Get() == L'\0' || FAILED(file.Get()->Load(path.Get(), STGM_READ)))
            return nullptr;
        // What is not found any more keeps its old path.
        link.Get()->Resolve(/*hwnd=*/nullptr, SLR_NO_UI | (timeout << 16));
        LPITEMIDLIST ids = nullptr;
        if (FAILED(link.Get()->GetIDList(&ids)))
            return nullptr;
        const vtr::TaskMemory<ITEMIDLIST> list(ids);
        wchar_t target[MAX_PATH] = L"";
        if (!list || !SHGetPathFromIDListW(list.Get(), target))
            return nullptr;
        return vtr::NarrowPath(target);
    }

private:
    bool started;
    vtr::ComPointer<IShellLinkA> link;
    vtr::ComPointer<IPersistFile> file;
};

/// Of the NT family since 5.0.
bool HasShellLinks() {
    constexpr int lastWithout = 5;
    return GetWindowsSystemVersion(/*description=*/nullptr) > lastWithout;
}

HANDLE MakeEvent() {
    return CreateEventW(/*lpEventAttributes=*/nullptr, /*bManualReset=*/TRUE,
                        /*bInitialState=*/FALSE, /*lpName=*/nullptr);
}

/// A thread with an apartment has a window, and whoever sends messages to all windows waits for it.
void WaitAndDispatch(HANDLE event) {
    while (MsgWaitForMultipleObjects(1, &event, /*fWaitAll=*/FALSE, INFINITE, QS_ALLINPUT) ==
           WAIT_OBJECT_0 + 1) {
        MSG message;
        while (PeekMessageW(&message, /*hWnd=*/nullptr, 0, 0, PM_REMOVE) != FALSE)
            DispatchMessageW(&message);
    }
}

} // namespace

template <>
struct vtr::Internals<CShortcutReader> {
    /// Lives as long as one of the two uses it.
    struct Shared : TShortcutThreadProps {
        Shared() : ownDone(MakeEvent()), ownRequest(MakeEvent()) {
            done = ownDone.Get();
            request = ownRequest.Get();
        }

        KernelHandle ownDone;
        KernelHandle ownRequest;
        std::atomic<int> users{2};
        HMODULE library = nullptr; ///< kept loaded by the thread
    };

    /// What the thread keeps of a request, whose caller may go away.
    struct Job {
        char shortcut[shortcutSize] = "";
        DWORD timeout = 0;
    };

    static bool Start(CShortcutReader& reader);
    static void GiveUp(Shared* shared);
    static DWORD WINAPI Run(void* shared) noexcept;
    static void Serve(Shared& shared);
    static bool Take(Shared& shared, Job& job);
    static void Answer(Shared& shared, const char* target);
};

bool Internals::Start(CShortcutReader& reader) {
    auto* shared = new (std::nothrow) Shared;
    if (shared == nullptr)
        return false;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&Internals::Run), &shared->library);
    if (shared->ownDone && shared->ownRequest && shared->library != nullptr)
        reader.worker = CreateThread(/*lpThreadAttributes=*/nullptr, /*dwStackSize=*/0,
                                     &Internals::Run, shared, /*dwCreationFlags=*/0,
                                     /*lpThreadId=*/nullptr);
    if (reader.worker == nullptr) {
        if (shared->library != nullptr)
            FreeLibrary(shared->library);
        delete shared;
        return false;
    }
    reader.props = shared;
    return true;
}

void Internals::GiveUp(Shared* shared) {
    if (--shared->users == 0)
        delete shared;
}

DWORD WINAPI Internals::Run(void* parameter) noexcept {
    auto* shared = static_cast<Shared*>(parameter);
    const HMODULE library = shared->library;
    Serve(*shared);
    GiveUp(shared);
    FreeLibraryAndExitThread(library, /*dwExitCode=*/0);
}

void Internals::Serve(Shared& shared) {
    const ShellLinks links;
    Job job;
    while (links && Take(shared, job))
        Answer(shared, links.TargetOf(job.shortcut, job.timeout).get());
}

/// Waits for the next request; false when there is none any more.
bool Internals::Take(Shared& shared, Job& job) {
    WaitAndDispatch(shared.request);
    const ScopedLock lock(shared.lock);
    ResetEvent(shared.request);
    if (!StoreWhole(shared.shortcut, job.shortcut))
        job.shortcut[0] = '\0';
    job.timeout = shared.timeout;
    return !shared.abort;
}

void Internals::Answer(Shared& shared, const char* target) {
    const ScopedLock lock(shared.lock);
    if (shared.target != nullptr && target != nullptr)
        StoreCut(target, shared.target, static_cast<unsigned>(shared.targetSize));
    shared.busy = false;
    SetEvent(shared.done);
}

CShortcutReader::CShortcutReader() noexcept : props(nullptr), worker(nullptr) {
    if (HasShellLinks())
        Internals::Start(*this);
}

CShortcutReader::~CShortcutReader() {
    if (props == nullptr)
        return;
    const vtr::KernelHandle thread(worker);
    RequestAbort();
    SetEvent(props->request);
    if (!ThreadBusy())
        WaitForSingleObject(thread.Get(), grace);
    Internals::GiveUp(static_cast<Internals::Shared*>(props));
}

bool CShortcutReader::GetShortcutTarget(const char* shortcut, char* target, int size,
                                        unsigned timeoutMs) noexcept {
    if (shortcut == nullptr || target == nullptr || size < 1)
        return false;
    target[0] = '\0';
    if (props == nullptr)
        return false;
    const vtr::ScopedLock oneCaller(callers);
    const DWORD timeout =
        timeoutMs == 0 ? defaultTimeout : std::min<DWORD>(timeoutMs, longestTimeout);
    {
        const vtr::ScopedLock lock(props->lock);
        if (props->abort || props->busy)
            return false;
        props->timeout = timeout;
        props->shortcut = shortcut;
        props->target = target;
        props->targetSize = size;
        props->busy = true;
        ResetEvent(props->done);
        SetEvent(props->request);
    }
    // The thread ends by itself where it cannot use the shell.
    const HANDLE ends[] = {props->done, worker};
    const DWORD end = WaitForMultipleObjects(2, ends, /*bWaitAll=*/FALSE, timeout + grace);

    const vtr::ScopedLock lock(props->lock);
    props->shortcut = nullptr;
    props->target = nullptr;
    if (end == WAIT_OBJECT_0 + 1)
        props->busy = false;
    return target[0] != '\0';
}

void CShortcutReader::RequestAbort() noexcept {
    if (props == nullptr)
        return;
    const vtr::ScopedLock lock(props->lock);
    props->abort = true;
}

bool CShortcutReader::AbortRequested() const noexcept {
    if (props == nullptr)
        return false;
    const vtr::ScopedLock lock(props->lock);
    return props->abort;
}

bool CShortcutReader::ThreadBusy() const noexcept {
    if (props == nullptr)
        return false;
    const vtr::ScopedLock lock(props->lock);
    return props->busy;
}
