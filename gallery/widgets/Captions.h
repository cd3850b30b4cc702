#ifndef VTRUTILS_GALLERY_WIDGETS_CAPTIONS_H
#define VTRUTILS_GALLERY_WIDGETS_CAPTIONS_H

#include <string>
#include <utility>
#include <vector>
#include <windows.h>

namespace gallery {

/// The controls of a window whose texts are looked up by key. One thread at a time.
class Captions {
public:
    HWND AddButton(HWND parent, const char* key, int id);
    HWND AddLabel(HWND parent, const char* key, int id);
    /// `key` is not copied. Returns the control.
    HWND Add(HWND control, const char* key);

    /// Sets all texts in the language that is chosen now.
    void Update() const;

private:
    std::vector<std::pair<HWND, const char*>> controls;
};

} // namespace gallery

#endif
