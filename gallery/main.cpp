#include "gallery/Arguments.h"
#include "gallery/Output.h"
#include "gallery/PictureMode.h"
#include "gallery/app/MainWindow.h"
#include "gallery/app/Settings.h"
#include "gallery/pages/Pages.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

#include <commctrl.h>
#include <string>

namespace {

/// Where nobody reads what is printed, a window tells it, unless pictures are made by a script.
int Tell(gallery::Stream stream, const std::wstring& text, bool mayAsk, int code) {
    if (!gallery::Print(stream, text) && mayAsk)
        MessageBoxW(/*hWnd=*/nullptr, text.c_str(), gallery::Text("Gallery").c_str(), MB_OK);
    return code;
}

int Fail(const std::wstring& reason, bool mayAsk) {
    return Tell(gallery::Stream::error, L"gallery: " + reason, mayAsk, /*code=*/1);
}

/// "English, German (Deutsch)".
std::wstring LanguageNames() {
    std::wstring names;
    for (const std::string& language : gallery::Languages()) {
        const std::wstring name = gallery::Widen(language.c_str());
        const std::wstring own = gallery::OwnName(language);
        names += (names.empty() ? L"" : L", ") + name + (own == name ? L"" : L" (" + own + L")");
    }
    return names;
}

/// By its name in the table or in the language itself.
bool ChooseNamed(const std::wstring& name) {
    for (const std::string& language : gallery::Languages()) {
        const bool same = lstrcmpiW(name.c_str(), gallery::Widen(language.c_str()).c_str()) == 0 ||
                          lstrcmpiW(name.c_str(), gallery::OwnName(language).c_str()) == 0;
        if (same)
            return gallery::ChooseLanguage(language);
    }
    return false;
}

bool PrepareControls() {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES |
                                                     ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES |
                                                     ICC_PROGRESS_CLASS};
    return InitCommonControlsEx(&classes) != FALSE;
}

/// A key below HKEY_CURRENT_USER for as long as pictures are made: what is remembered neither shows
/// in them nor changes.
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

std::string KeyOf(const gallery::Arguments& arguments) {
    std::string key;
    gallery::Narrow(arguments.registryKey, key, CP_ACP);
    return key;
}

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

int Run(const gallery::Arguments& arguments, gallery::Settings& settings, int showCommand) {
    const bool forPictures = !arguments.pictureFolder.empty();
    gallery::MainWindow window(gallery::AllPages(), settings);
    if (!PrepareControls() || !window.Create())
        return Fail(gallery::Text("NoWindow"), !forPictures);
    const bool opened =
        arguments.document.empty() ? window.ShowRememberedPage() : window.Open(arguments.document);
    if (!forPictures) {
        window.Show(showCommand);
        return RunMessages(window);
    }
    if (!opened)
        return Fail(gallery::Text("NotOpenedForPictures", {arguments.document}), false);
    window.Show(SW_SHOWNORMAL);
    return gallery::MakePictures(window, arguments.pictureFolder) ? 0 : 1;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int showCommand) {
    const gallery::Arguments arguments = gallery::ReadArguments(GetCommandLineW());
    const bool forPictures = !arguments.pictureFolder.empty();
    gallery::OpenLanguages();
    const PassingKey passingKey;
    gallery::Settings settings(forPictures ? passingKey.Name() : KeyOf(arguments));
    const std::string remembered = settings.Text("Language");
    if (!remembered.empty())
        gallery::ChooseLanguage(remembered);
    if (!arguments.language.empty() && !ChooseNamed(arguments.language))
        return Fail(gallery::Text("NoLanguage", {arguments.language, LanguageNames()}),
                    !forPictures);
    if (arguments.mistakeKey != nullptr)
        return Fail(gallery::Text(arguments.mistakeKey, {arguments.mistake}) + L"\r\n" +
                        gallery::Text("Usage"),
                    !forPictures);
    if (arguments.help)
        return Tell(gallery::Stream::output, gallery::Text("Usage"), !forPictures, /*code=*/0);
    return Run(arguments, settings, showCommand);
}
