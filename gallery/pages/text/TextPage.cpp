#include "gallery/pages/text/TextPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/text/TextModel.h"
#include "gallery/text/Language.h"
#include "gallery/widgets/Browser.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>

namespace gallery {

namespace {

class TextPage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { FocusAndSelect(text); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    HWND MakeNumber(int id, const wchar_t* value) const;
    std::wstring Cell(int row, int column) const;
    /// The texts are in another code page.
    void Retext() override { ShowResults(); }
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;

    void ShowResults();
    void ShowResult();
    void OpenFirst();

    MadeTexts made{};

    HWND textLabel = nullptr;
    HWND text = nullptr;
    HWND lengthLabel = nullptr;
    HWND length = nullptr;
    HWND sizeLabel = nullptr;
    HWND size = nullptr;
    HWND resultsLabel = nullptr;
    ListView results;
    HWND resultLabel = nullptr;
    HWND result = nullptr;
    HWND addressLabel = nullptr;
    Link address;
    HWND openAddress = nullptr;
};

bool TextPage::MakeControls() {
    const HWND page = Handle();
    textLabel = AddLabel("TypedText", ID_TEXT_LABEL);
    text = MakeEdit(page, ID_TEXT);
    lengthLabel = AddLabel("TypedLength", ID_TEXT_LENGTH_LABEL);
    length = MakeNumber(ID_TEXT_LENGTH, L"3723004");
    sizeLabel = AddLabel("TypedSize", ID_TEXT_SIZE_LABEL);
    size = MakeNumber(ID_TEXT_SIZE, L"1572864");
    addressLabel = AddLabel("FirstAddress", ID_TEXT_ADDRESS_LABEL);
    if (!AddLink(address, ID_TEXT_ADDRESS_LINK, "OpenAddressTip"))
        return false;
    openAddress = AddButton("OpenAddress", ID_TEXT_ADDRESS, "OpenAddressTip");
    resultsLabel = AddLabel("TextResultsLabel", ID_TEXT_RESULTS_LABEL);
    const auto cell = [this](int row, int column) { return Cell(row, column); };
    if (!AddList(results, "TextResults", ID_TEXT_RESULTS, ListView::Titles::shown, cell))
        return false;
    results.AddColumn("Function");
    results.AddColumn("TextResult");
    resultLabel = AddLabel("WholeResult", ID_TEXT_RESULT_LABEL);
    result = MakeReader(page, ID_TEXT_RESULT);
    SetText(text, L"&quot;Rope &amp; Anchor&quot;:\\nsee www.tidewrack.example or "
                  L"ida@tidewrack.example");
    return result != nullptr;
}

HWND TextPage::MakeNumber(int id, const wchar_t* value) const {
    const HWND edit = MakeControl(Handle(), WC_EDITW, value,
                                  WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL | ES_NUMBER, id);
    SendMessageW(edit, EM_SETLIMITTEXT, /*longest=*/10, 0);
    return edit;
}

std::wstring TextPage::Cell(int row, int column) const {
    const MadeText& one = made.rows[static_cast<std::size_t>(row)];
    if (column == 0)
        return one.callKey != nullptr ? Text(one.callKey, {one.function}) : one.function;
    std::wstring line = one.result;
    std::replace(line.begin(), line.end(), L'\r', L' ');
    return line;
}

void TextPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/14);
    const int labels = std::max({Sizes().TextWidth(textLabel), Sizes().TextWidth(lengthLabel),
                                 Sizes().TextWidth(addressLabel), Sizes().TextWidth(resultLabel)});
    page.Put(End::top, {.label = textLabel, .field = text, .labelWidth = labels});
    page.Put(End::top, {.label = lengthLabel, .field = length, .labelWidth = labels}, 50,
             {.label = sizeLabel, .field = size});
    page.Put(End::top, {.label = addressLabel,
                        .buttons = {openAddress},
                        .labelWidth = labels,
                        .link = address.Handle()});
    page.Put(End::top, {.field = resultsLabel});
    // All functions, where that leaves room for a few lines of the result.
    const int line = Sizes().Line() + Sizes().Pixels(6);
    const int rows = static_cast<int>(made.rows.size());
    const int listHeight =
        std::min(page.Room() - 4 * Sizes().Line(), (rows + 1) * line + Sizes().Pixels(10));
    const int resultTop = page.Top() + listHeight + page.Gap();
    page.Places().Put(results.Handle(), 0, page.Top(), width, listHeight);
    page.Places().Put(resultLabel, 0, resultTop, labels, Sizes().Row());
    page.Places().Put(result, labels + page.Gap(), resultTop, width - labels - page.Gap(),
                      page.Top() + page.Room() - resultTop);
    results.FitColumns(Sizes(), width, /*stretched=*/1);
}

void TextPage::Noticed(const NMHDR& header) {
    if (header.hwndFrom == results.Handle() && ListView::SelectionMoved(header))
        ShowResult();
}

void TextPage::Command(int id, int notification) {
    if (id == ID_TEXT_ADDRESS || id == ID_TEXT_ADDRESS_LINK)
        return OpenFirst();
    if (notification == EN_CHANGE && (id == ID_TEXT || id == ID_TEXT_LENGTH || id == ID_TEXT_SIZE))
        ShowResults();
}

void TextPage::ShowResults() {
    made = TextsMadeOf({TextOf(text), TextOf(length), TextOf(size)});
    if (results.Selected() < 0)
        results.SetRows(static_cast<int>(made.rows.size()));
    results.RedrawRows();
    ShowResult();
    address.Set(made.address);
    EnableWindow(openAddress, !made.address.empty());
    if (!made.textFits)
        return TellState(Text("ValueNotNarrow"), Tone::error);
    if (!made.numbersFit)
        return TellState(Text("NumbersNotPossible"), Tone::error);
    TellState(Text("OffensiveWords", {Text(made.offends ? "Yes" : "No")}));
}

void TextPage::OpenFirst() {
    if (!made.address.empty() && !OpenAddress(made.address, Handle())) {
        Warn(Text("AddressNotOpened", {made.address}));
    }
}

/// In full, with its line breaks, which are a carriage return each.
void TextPage::ShowResult() {
    std::wstring lines;
    const auto row = static_cast<std::size_t>(std::max(results.Selected(), 0));
    for (const wchar_t character : made.rows[row].result)
        lines += character == L'\r' ? L"\r\n" : std::wstring(1, character);
    SetText(result, lines);
}

/// The functions that change the text most.
bool TextPage::ShowExample() {
    results.Select(1);
    TakeFocus();
    return made.textFits;
}

} // namespace

std::unique_ptr<Page> MakeTextPage() {
    return std::make_unique<TextPage>();
}

} // namespace gallery
