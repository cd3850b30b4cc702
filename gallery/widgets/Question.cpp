#include "gallery/widgets/Question.h"

#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Look.h"

#include <algorithm>
#include <commctrl.h>
#include <vector>

namespace gallery {

namespace {

constexpr int questionId = 1;
constexpr int fieldId = 3;

/// One question while it is asked.
class QuestionDialog {
public:
    QuestionDialog(const std::wstring& newQuestion, std::initializer_list<Answer> newAnswers,
                   int newUsual, int newWhenClosed)
        : question(newQuestion), answers(newAnswers), usual(newUsual), whenClosed(newWhenClosed) {}

    void AskFor(std::wstring& text) { typed = &text; }
    int Run(HWND owner);

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;
    void Fill(HWND window);
    void Arrange(HWND window, HWND label, HWND field, const std::vector<HWND>& buttons) const;
    void Take(HWND window, int id);
    bool IsAnswer(int id) const {
        return std::any_of(answers.begin(), answers.end(),
                           [id](const Answer& answer) { return answer.id == id; });
    }

    std::wstring question;
    std::vector<Answer> answers;
    int usual;
    int whenClosed;
    std::wstring* typed = nullptr;
    HWND owner = nullptr;
    Look look;
};

int QuestionDialog::Run(HWND newOwner) {
    owner = newOwner;
    // An empty template: menu, class and title have no text.
    struct {
        DLGTEMPLATE dialog;
        WORD texts[3];
    } empty{};
    empty.dialog.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    const INT_PTR answer = DialogBoxIndirectParamW(GetModuleHandleW(nullptr), &empty.dialog, owner,
                                                   Procedure, reinterpret_cast<LPARAM>(this));
    return answer > 0 ? static_cast<int>(answer) : whenClosed;
}

INT_PTR CALLBACK QuestionDialog::Procedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<QuestionDialog*>(lParam)->Fill(window);
        return FALSE;
    }
    auto* self = reinterpret_cast<QuestionDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr || message != WM_COMMAND)
        return FALSE;
    self->Take(window, LOWORD(wParam));
    return TRUE;
}

void QuestionDialog::Take(HWND window, int id) {
    if (id == IDCANCEL && !IsAnswer(id))
        id = whenClosed;
    if (!IsAnswer(id))
        return;
    if (typed != nullptr && id == IDOK)
        *typed = TextOf(GetDlgItem(window, fieldId));
    EndDialog(window, id);
}

void QuestionDialog::Fill(HWND window) {
    SetWindowTextW(window, Text("Gallery").c_str());
    look.SetCharset(Charset());
    look.Update(owner);
    const HWND label = MakeControl(window, WC_STATICW, question.c_str(),
                                   SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL, questionId);
    const HWND field = typed != nullptr ? MakeEdit(window, fieldId) : nullptr;
    std::vector<HWND> buttons;
    HWND first = nullptr;
    for (const Answer& answer : answers) {
        const HWND button = MakeButton(window, Text(answer.key).c_str(), answer.id);
        if (answer.id == usual) {
            SendMessageW(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, /*redraw=*/FALSE);
            SendMessageW(window, DM_SETDEFID, static_cast<WPARAM>(answer.id), 0);
            first = button;
        }
        buttons.push_back(button);
    }
    SetFontOfChildren(window, look.Font());
    Arrange(window, label, field, buttons);
    if (field != nullptr) {
        SetText(field, *typed);
        FocusAndSelect(field);
    } else {
        SetFocus(first);
    }
}

void QuestionDialog::Arrange(HWND window, HWND label, HWND field,
                             const std::vector<HWND>& buttons) const {
    const int gap = look.Pixels(12);
    int row = gap;
    for (const HWND button : buttons)
        row += look.ButtonWidth(button) + gap;
    RECT text{0, 0, std::max(row - 2 * gap, look.Pixels(420)), 0};
    const vtr::MemoryDc dc(CreateCompatibleDC(nullptr));
    {
        const vtr::SelectedObject font(dc.Get(), look.Font());
        DrawTextW(dc.Get(), question.c_str(), -1, &text,
                  DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX);
    }
    const int width = std::max<int>(row, text.right + 2 * gap);
    int y = gap;
    MoveWindow(label, gap, y, width - 2 * gap, text.bottom, /*bRepaint=*/FALSE);
    y += text.bottom + gap;
    if (field != nullptr) {
        MoveWindow(field, gap, y, width - 2 * gap, look.Field(), /*bRepaint=*/FALSE);
        y += look.Field() + gap;
    }
    int x = width - row + gap;
    for (const HWND button : buttons) {
        MoveWindow(button, x, y, look.ButtonWidth(button), look.Row(), /*bRepaint=*/FALSE);
        x += look.ButtonWidth(button) + gap;
    }
    RECT frame{0, 0, width, y + look.Row() + gap};
    AdjustWindowRect(&frame, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)),
                     /*bMenu=*/FALSE);
    RECT place{};
    GetWindowRect(owner, &place);
    const int frameWidth = frame.right - frame.left;
    const int frameHeight = frame.bottom - frame.top;
    SetWindowPos(window, /*hWndInsertAfter=*/nullptr,
                 std::max(0, static_cast<int>(place.left + place.right - frameWidth) / 2),
                 std::max(0, static_cast<int>(place.top + place.bottom - frameHeight) / 2),
                 frameWidth, frameHeight, SWP_NOZORDER);
}

} // namespace

KeptFocus::KeptFocus(HWND newOwner) : owner(GetAncestor(newOwner, GA_ROOT)), focus(GetFocus()) {}

KeptFocus::~KeptFocus() {
    if (owner == nullptr || !IsWindow(owner))
        return;
    SetForegroundWindow(owner);
    if (focus != nullptr && IsWindow(focus) && IsChild(owner, focus))
        SetFocus(focus);
}

int Ask(HWND owner, const std::wstring& question, std::initializer_list<Answer> answers, int usual,
        int whenClosed) {
    const KeptFocus kept(owner);
    return QuestionDialog(question, answers, usual, whenClosed).Run(kept.Owner());
}

bool AskForText(HWND owner, const std::wstring& question, std::wstring& text) {
    const KeptFocus kept(owner);
    QuestionDialog dialog(question, {{IDOK, "AnswerOk"}, {IDCANCEL, "AnswerCancel"}}, IDOK,
                          IDCANCEL);
    dialog.AskFor(text);
    return dialog.Run(kept.Owner()) == IDOK;
}

} // namespace gallery
