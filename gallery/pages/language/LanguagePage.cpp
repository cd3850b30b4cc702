#include "gallery/pages/language/LanguagePage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"
#include "utilities/text/language/LanguageStrings.h"

#include <algorithm>
#include <iterator>

namespace gallery {

namespace {

constexpr const char* languageTitles[] = {"LanguageName", "StringFile", "CharacterSet", "CodePage"};
constexpr const char* textTitles[] = {"Key", "TextColumn", "Source", "Kept"};

/// "German - Deutsch": as the table names it, and as the language does.
std::wstring NameOf(const std::string& language) {
    const std::wstring name = Widen(language.c_str());
    const std::wstring own = OwnName(language);
    return own == name ? name : name + L" - " + own;
}

class LanguagePage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(languages.Handle()); }
    bool Offers(int command) const override { return command == ID_FIND || Page::Offers(command); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    bool MakeLists();
    void Retext() override;
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;

    std::wstring LanguageCell(int row, int column) const;
    std::wstring TextCell(int row, int column) const;

    void Use();
    void LookUpKey();
    void Add(const std::string& key);

    std::vector<std::string> names;
    std::vector<std::string> keys;
    std::vector<FoundText> texts; ///< of each key

    HWND languagesLabel = nullptr;
    ListView languages;
    HWND use = nullptr;
    HWND keyLabel = nullptr;
    HWND keyText = nullptr;
    HWND lookUp = nullptr;
    ListView found;
    HWND note = nullptr;
};

bool LanguagePage::MakeControls() {
    names = Languages();
    languagesLabel = AddLabel("LanguagesLabel", ID_LANGUAGE_LABEL);
    if (!MakeLists())
        return false;
    note = AddCaption(MakeWrappedText(Handle(), ID_LANGUAGE_NOTE), "KeptNote");
    languages.SetRows(static_cast<int>(names.size()));
    const auto chosen = std::find(names.begin(), names.end(), ChosenLanguage());
    if (chosen != names.end())
        languages.Select(static_cast<int>(chosen - names.begin()));
    return note != nullptr;
}

bool LanguagePage::MakeLists() {
    const auto languageCell = [this](int row, int column) { return LanguageCell(row, column); };
    if (!AddList(languages, "Languages", ID_LANGUAGE_LIST, ListView::Titles::shown, languageCell))
        return false;
    for (const char* title : languageTitles)
        languages.AddColumn(title);
    use = AddButton("UseLanguage", ID_LANGUAGE_USE, "UseLanguageTip");
    keyLabel = AddLabel("KeyLabel", ID_LANGUAGE_KEY_LABEL);
    keyText = MakeEdit(Handle(), ID_LANGUAGE_KEY);
    lookUp = AddButton("LookUp", ID_LANGUAGE_LOOK_UP, "LookUpTip");
    const auto textCell = [this](int row, int column) { return TextCell(row, column); };
    if (!AddList(found, "Texts", ID_LANGUAGE_TEXTS, ListView::Titles::shown, textCell))
        return false;
    for (const char* title : textTitles)
        found.AddColumn(title);
    return true;
}

std::wstring LanguagePage::LanguageCell(int row, int column) const {
    std::string name = names[static_cast<std::size_t>(row)];
    char path[MAX_PATH] = "";
    switch (column) {
    case 0:
        return name == ChosenLanguage() ? Text("InUse", {NameOf(name)}) : NameOf(name);
    case 1:
        GetStringFileFromLanguage(name.data(), static_cast<StringFileFields>(2), path,
                                  /*useDefault=*/false);
        return Widen(path);
    case 2:
        return std::to_wstring(GetCharsetFromLanguage(name.data()));
    default:
        return std::to_wstring(GetCodePageFromLanguage(name.data()));
    }
}

std::wstring LanguagePage::TextCell(int row, int column) const {
    constexpr const char* sources[] = {"FromLanguage", "FromBackup", "FromKey"};
    const FoundText& text = texts[static_cast<std::size_t>(row)];
    switch (column) {
    case 0:
        return Widen(keys[static_cast<std::size_t>(row)].c_str());
    case 1:
        return text.text;
    case 2:
        return Text(sources[static_cast<std::size_t>(text.source)]);
    default:
        return text.kept;
    }
}

void LanguagePage::Retext() {
    // What the library keeps is in the code page of the language that it was read in.
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const FoundText now = LookUp(keys[i]);
        texts[i].text = now.text;
        texts[i].source = now.source;
    }
    Tell(L"");
}

void LanguagePage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/9);
    page.AlignButtons({use, lookUp});
    page.Put(End::top, {.field = languagesLabel, .buttons = {use}});
    const int listHeight =
        std::min(height / 3, (static_cast<int>(names.size()) + 1) * Sizes().Row() + page.Gap());
    page.Places().Put(languages.Handle(), 0, page.Top(), width, listHeight);
    page.Skip(listHeight + page.Gap());
    page.Put(End::top, {.label = keyLabel, .field = keyText, .buttons = {lookUp}});
    page.PutText(Rows::End::bottom, note);
    page.Places().Put(found.Handle(), 0, page.Top(), width, page.Room());
    languages.FitColumns(Sizes(), width, /*stretched=*/1);
    found.FitColumns(Sizes(), width, /*stretched=*/1);
}

void LanguagePage::Noticed(const NMHDR& header) {
    if (header.hwndFrom == languages.Handle() && ListView::DoubleClicked(header))
        Use();
}

void LanguagePage::Command(int id, int) {
    switch (id) {
    case ID_LANGUAGE_USE:
        return Use();
    case ID_FIND:
        return FocusAndSelect(keyText);
    case ID_LANGUAGE_LOOK_UP:
        return LookUpKey();
    case IDOK:
        if (GetFocus() == languages.Handle())
            Use();
        else if (GetFocus() == keyText)
            LookUpKey();
        return;
    default:
        return;
    }
}

void LanguagePage::Use() {
    const int row = languages.Selected();
    if (row < 0)
        return;
    const std::string name = names[static_cast<std::size_t>(row)];
    if (!ChooseLanguage(name)) {
        return Warn(Text("NoStringFile", {Widen(name.c_str())}));
    }
    Host().LanguageChanged();
    Tell(Text("LanguageUsed", {OwnName(name), std::to_wstring(GetCurrentCodePage())}));
}

void LanguagePage::LookUpKey() {
    std::string key;
    if (!Narrow(TextOf(keyText), key) || key.empty() || key.size() >= 256) {
        Warn(Text("TypeTextKey"));
    } else {
        Add(key);
        Tell(texts.front().text);
    }
    FocusAndSelect(keyText);
}

/// The newest look-up stands on top.
void LanguagePage::Add(const std::string& key) {
    keys.insert(keys.begin(), key);
    texts.insert(texts.begin(), LookUp(key));
    found.SetRows(static_cast<int>(keys.size()));
    Rearrange();
}

/// A text of each source.
bool LanguagePage::ShowExample() {
    for (const char* key : {"NoSuchKey", "EnglishOnly", "Save", "ValueLabel"})
        Add(key);
    SetText(keyText, L"Save");
    return !names.empty();
}

} // namespace

std::unique_ptr<Page> MakeLanguagePage() {
    return std::make_unique<LanguagePage>();
}

} // namespace gallery
