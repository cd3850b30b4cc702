#include "gallery/app/Document.h"

#include "gallery/text/Text.h"

namespace gallery {

bool Document::Load(const std::wstring& path) {
    const std::wstring absolute = AbsolutePath(path);
    std::string narrow;
    if (!Narrow(absolute, narrow) || !Read(narrow))
        return false;
    fileName = absolute;
    changed = false;
    return true;
}

bool Document::SaveAs(const std::wstring& path) {
    return SaveTo(AbsolutePath(path));
}

bool Document::SaveTo(const std::wstring& path) {
    std::string narrow;
    if (!Loaded() || !Narrow(path, narrow) || !Write(narrow))
        return false;
    fileName = path;
    changed = false;
    return true;
}

} // namespace gallery
