#include "gallery/pages/promo/StepList.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

#include <algorithm>
#include <set>
#include <utility>

namespace gallery {

namespace {

/// Line breaks and tabs, as scripts write them, become blanks.
std::wstring InOneLine(std::wstring text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == L'\\' && (text[i + 1] == L'n' || text[i + 1] == L't'))
            text.replace(i, 2, L" ");
    }
    return text;
}

} // namespace

void StepList::AddColumns() {
    list.AddColumn("OnStageColumn");
    list.AddColumn("ScriptStep");
    list.AddColumn("StepText");
}

std::wstring StepList::Cell(int row, int column) const {
    const ScriptStep& step = steps[static_cast<std::size_t>(row)];
    if (column == 0)
        return row == marked ? L"> " + std::to_wstring(text) : L"";
    if (column == 1)
        return Widen(step.script.c_str()) + L"." + std::to_wstring(step.number);
    return step.target.empty() ? InOneLine(Widen(step.text.c_str()))
                               : Text("StepGoesTo", {Widen(step.target.c_str())});
}

void StepList::SetSteps(std::vector<ScriptStep> newSteps) {
    steps = std::move(newSteps);
    marked = -1;
    list.SetRows(static_cast<int>(steps.size()));
    list.RedrawRows();
}

int StepList::Scripts() const {
    std::set<std::wstring> names;
    for (const ScriptStep& step : steps)
        names.insert(LowerCase(Widen(step.script.c_str())));
    return static_cast<int>(names.size());
}

void StepList::Mark(const ScriptPosition& at) {
    const std::wstring script = LowerCase(Widen(at.script.c_str()));
    const auto found = std::find_if(steps.begin(), steps.end(), [&](const ScriptStep& step) {
        return step.number == at.step && LowerCase(Widen(step.script.c_str())) == script;
    });
    marked = found != steps.end() ? static_cast<int>(found - steps.begin()) : -1;
    text = at.text;
    list.RedrawRows();
    if (GetFocus() != list.Handle())
        list.Select(marked);
}

std::wstring StepList::SelectedSection() const {
    return list.Selected() >= 0 ? Cell(list.Selected(), 1) : L"";
}

void StepList::SetWidths(const Look& look, int width) {
    const int padding = look.Pixels(20);
    const int mark = look.TextWidth(Text("OnStageColumn")) + padding;
    std::wstring longest;
    for (int row = 0; row < static_cast<int>(steps.size()); ++row)
        longest = std::max(longest, Cell(row, 1), [](const std::wstring& a, const std::wstring& b) {
            return a.size() < b.size();
        });
    int name = std::max(look.TextWidth(Text("ScriptStep")), look.TextWidth(longest));
    name = std::min(name + padding, width / 2);
    list.SetColumnWidth(0, mark);
    list.SetColumnWidth(1, name);
    list.SetColumnWidth(2, ListView::RoomForColumns(width) - mark - name);
}

} // namespace gallery
