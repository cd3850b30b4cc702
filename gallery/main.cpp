#include "gallery/Arguments.h"
#include "gallery/PictureMode.h"
#include "gallery/app/MainWindow.h"
#include "gallery/pages/Pages.h"
#include "gallery/text/Language.h"

#include <commctrl.h>
#include <cstdio>
#include <string>

namespace {

int Fail(const char* reason) {
    std::fprintf(stderr, "gallery: %s\n", reason);
    return 1;
}

bool PrepareControls() {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES |
                                                     ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
    return InitCommonControlsEx(&classes) != FALSE;
}

/// A key below HKEY_CURRENT_USER for as long as pictures are made: the user's list of files stays.
class PassingKey {
public:
    PassingKey()
        : name("Software\\vtrutils gallery pictures " + std::to_string(GetCurrentProcessId())) {}
    PassingKey(const PassingKey&) = delete;
    PassingKey& operator=(const PassingKey&) = delete;
    ~PassingKey() { RegDeleteKeyA(HKEY_CURRENT_USER, name.c_str()); }
    const std::string& Name() const { return name; }

private:
    std::string name;
};

int RunMessages(gallery::MainWindow& window) {
    MSG message;
    while (GetMessageW(&message, /*hWnd=*/nullptr, 0, 0) > 0) {
        window.WatchInput(message);
        if (!window.TakeKey(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int showCommand) {
    const gallery::Arguments arguments = gallery::ReadArguments();
    if (!arguments.mistake.empty())
        return Fail(arguments.mistake.c_str());
    gallery::OpenLanguages();
    if (!arguments.language.empty() && !gallery::ChooseLanguage(arguments.language))
        return Fail(("no language " + arguments.language).c_str());
    const bool forPictures = !arguments.pictureFolder.empty();
    const PassingKey passingKey;
    gallery::MainWindow window(gallery::AllPages());
    if (!PrepareControls() ||
        !window.Create(forPictures ? passingKey.Name() : arguments.registryKey))
        return Fail("the window could not be made");
    const bool opened = window.Open(arguments.document);
    if (!forPictures) {
        window.Show(showCommand);
        return RunMessages(window);
    }
    if (!opened) {
        std::fprintf(stderr, "gallery: could not open %ls\n", arguments.document.c_str());
        return 1;
    }
    window.Show(SW_SHOWNORMAL);
    return gallery::MakePictures(window, arguments.pictureFolder) ? 0 : 1;
}
