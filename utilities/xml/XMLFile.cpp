#include "utilities/xml/XMLFile.h"

#include "common/WidePath.h"
#include "utilities/base/ByteSearch.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/TextFile.h"
#include "utilities/xml/XMLInternals.h"
#include "utilities/xml/XMLLoader.h"
#include "vtrfutls/Log.h"

#include <climits>
#include <shlwapi.h>

template <>
struct vtr::Internals<CXMLFile> {
    static_assert(sizeof(CXMLFile) == vtr::ByPointer(128, 88));
    VTR_FIELD_AT(CXMLFile, loadCallback, 104, 72);
    VTR_FIELD_AT(CXMLFile, loadUser, 112, 76);
    VTR_FIELD_AT(CXMLFile, bufferLength, 120, 80);
    VTR_FIELD_AT(CXMLFile, shouldDeHTMLifyLoads, 124, 84);
};

namespace {

bool Exists(const char* path) {
    return !vtr::IsEmptyText(path) &&
           PathFileExistsW(vtr::WidePath(path, vtr::CurrentCodePage()).Get()) != FALSE;
}

void LogNoMemory(unsigned fileSize) {
    LogFmtA("Leaving CXMLFile::Open, can't alloc buffer of %u bytes", fileSize + 2);
}

void LogNoText() {
    Log("Leaving CXMLFile::Open, file length < 1");
}

/// False, with the reason logged, when there is nothing to load.
bool ReadFile(const char* path, vtr::FileBytes& file) {
    LogFmtA("Entered CXMLFile::Open, file <%s>", path != nullptr ? path : "");
    if (!Exists(path)) {
        Log("Leaving CXMLFile::Open, blank file name");
        return false;
    }
    switch (file.TryRead(path)) {
    case vtr::FileReading::cannotOpen:
        Log("Leaving CXMLFile::Open, can't open file");
        return false;
    case vtr::FileReading::noMemory:
        LogNoMemory(file.Size());
        return false;
    case vtr::FileReading::cannotRead:
        Log("Leaving CXMLFile::Open, couldn't read from file");
        return false;
    case vtr::FileReading::good:
        break;
    }
    if (file.Size() == 0)
        LogNoText();
    return file.Size() > 0;
}

} // namespace

CXMLFile::CXMLFile() noexcept
    : loadCallback(nullptr), loadUser(nullptr), bufferLength(0), shouldDeHTMLifyLoads(false) {}

void CXMLFile::SetProgressCallback(ProgressCallback callback, void* user) noexcept {
    loadCallback = callback;
    loadUser = user;
}

bool CXMLFile::Open(const char* path) noexcept {
    vtr::FileBytes file;
    if (!ReadFile(path, file))
        return false;
    const vtr::SingleByteText text(file.Data(), file.Size());
    if (!text.Good()) {
        LogNoMemory(file.Size());
        return false;
    }
    // Loading only reads.
    if (LoadFromBuffer(const_cast<char*>(text.Text())))
        return true;
    // The file begins with a zero.
    LogNoText();
    return false;
}

bool CXMLFile::LoadFromBuffer(char* text) noexcept {
    const std::size_t length = text != nullptr ? vtr::TextLength(text) : 0;
    if (length == 0 || length >= INT_MAX)
        return false;
    bufferLength = static_cast<unsigned>(length);
    vtr::XMLNodeInternals::Clear(*this);
    vtr::XMLNodeInternals::SetProgress(*this, loadCallback, loadUser);
    SetFileSize(bufferLength);
    CXMLNode::SetShouldDeHTMLify(shouldDeHTMLifyLoads);
    SetSequenceNumber(0);
    vtr::XMLLoader(*this, std::string_view(text, length)).Run();
    Log("Leaving CXMLFile::Open, normal exit");
    return true;
}
