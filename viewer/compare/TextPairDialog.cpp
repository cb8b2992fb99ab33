#include "compare/TextPairDialog.h"

#include "compare/TextPairPane.h"
#include "package/Sentence.h"
#include "prompts/TaskPrompt.h"
#include "prompts/WorkPrompt.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/DisabledWindow.h"

#include <array>
#include <memory>
#include <optional>

namespace viewer {

namespace {

constexpr int kEdge = 8; // at 96 dots per inch, as the other
constexpr int kLeastWidth = 540;

class TextPairDialog {
public:
    TextPairDialog(const TextPair& texts, const std::wstring& name, const ComparedPackages& packages)
        : m_texts(std::make_shared<TextPair>(texts)), m_name(name), m_packages(packages) {}

    // Returns once the user has closed the window.
    void Run(HWND owner, bool isPlain) {
        m_isPlain = isPlain;
        m_dialog = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_TEXTS), owner,
                                      Procedure, reinterpret_cast<LPARAM>(this));
        if (m_dialog) {
            const DisabledWindow disabled(owner);
            ShowWindow(m_dialog, SW_SHOW);
            PassMessages();
        }
        DestroyWindow(m_dialog);
    }

private:
    void PassMessages() {
        const HACCEL keys = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_TEXTS));
        MSG message = {};
        while (!m_isClosed && GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (!TranslateAcceleratorW(m_dialog, keys, &message) && !IsDialogMessageW(m_dialog, &message)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
        if (!m_isClosed) {
            PostQuitMessage(static_cast<int>(message.wParam)); // for the main window
        }
    }

    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        try {
            if (message == WM_INITDIALOG) {
                SetWindowLongPtrW(dialog, DWLP_USER, lParam);
                reinterpret_cast<TextPairDialog*>(lParam)->OnInit(dialog);
                return FALSE; // the focus is set
            }
            auto* self = reinterpret_cast<TextPairDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
            return self && self->OnMessage(message, wParam, lParam);
        } catch (...) {
            return TRUE; // out of memory: the window stays as it is
        }
    }

    void OnInit(HWND dialog) {
        m_dialog = dialog;
        ShowFocusInDialog(dialog);
        SetWindowTextW(dialog, Text(IDS_TEXTS_TITLE, {m_name}).c_str());
        SetDlgItemTextW(dialog, IDC_TEXTS_PLAIN, Text(IDS_WITH_NOISE).c_str());
        SetDlgItemTextW(dialog, IDC_TEXTS_PREVIOUS, Text(IDS_PREVIOUS).c_str());
        SetDlgItemTextW(dialog, IDC_TEXTS_NEXT, Text(IDS_NEXT).c_str());
        SetDlgItemTextW(dialog, IDCANCEL, Text(IDS_CLOSE).c_str());
        CheckDlgButton(dialog, IDC_TEXTS_PLAIN, m_isPlain ? BST_CHECKED : BST_UNCHECKED);
        ShowWindow(GetDlgItem(dialog, IDC_TEXTS_PLAIN), m_texts->kind == TextKind::GCode ? SW_SHOW : SW_HIDE);
        m_pane.Create(dialog, IDC_TEXTS_PANE, m_packages.beforeTitle, m_packages.afterTitle);
        SetWindowPos(m_pane.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        PlaceOver(GetWindow(GetWindow(dialog, GW_OWNER), GW_OWNER));
        ShowArranged();
        SetFocus(m_pane.Before().Handle());
    }

    // As large as the main window.
    void PlaceOver(HWND frame) const {
        RECT area = {};
        GetWindowRect(frame, &area);
        const int width = std::max<int>(area.right - area.left, m_pane.Scale(kLeastWidth));
        SetWindowPos(m_dialog, nullptr, area.left, area.top, width, area.bottom - area.top, SWP_NOZORDER);
        Arrange();
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
        case WM_SIZE:
            Arrange();
            return true;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {m_pane.Scale(kLeastWidth),
                                                                     m_pane.Scale(kLeastWidth / 2)};
            return true;
        case WM_DPICHANGED: // the system scales everything else
            m_pane.ChangeDpi(HIWORD(wParam));
            return false;
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam));
        default:
            return false;
        }
    }

    bool OnCommand(int command) {
        switch (command) {
        case IDC_TEXTS_NEXT:
            m_pane.ShowNext();
            ShowState();
            return true;
        case IDC_TEXTS_PREVIOUS:
            m_pane.ShowPrevious();
            ShowState();
            return true;
        case IDC_TEXTS_PLAIN:
            m_isPlain = IsDlgButtonChecked(m_dialog, IDC_TEXTS_PLAIN) == BST_CHECKED;
            ShowArranged();
            return true;
        case IDCANCEL:
            m_isClosed = true;
            return true;
        default:
            return false;
        }
    }

    void ShowArranged() {
        const auto columns = std::make_shared<TextColumns>();
        const auto arrange = [columns, texts = m_texts, isPlain = m_isPlain](WorkProgress&) {
            *columns = ArrangeTexts(*texts, isPlain);
        };
        if (WaitForWork(m_dialog, Text(IDS_COMPARING, {m_name}), arrange)) {
            m_pane.Show(std::move(*columns));
        }
        ShowState();
    }

    void ShowState() const {
        const std::size_t count = m_pane.DifferenceCount();
        const std::wstring state =
            count == 0
                ? Text(IDS_SAME_TEXTS)
                : Text(IDS_DIFFERENCE_OF, {std::to_wstring(m_pane.Current() + 1), std::to_wstring(count)});
        SetDlgItemTextW(m_dialog, IDC_TEXTS_STATE, state.c_str());
        for (const int button : {IDC_TEXTS_PREVIOUS, IDC_TEXTS_NEXT}) {
            EnableWindow(GetDlgItem(m_dialog, button), count > 0);
        }
    }

    // Below the texts stand the box, if there is one, and then the state with the buttons at the right.
    void Arrange() const {
        RECT area = {};
        GetClientRect(m_dialog, &area);
        InflateRect(&area, -m_pane.Scale(kEdge), -m_pane.Scale(kEdge));
        const int height = HeightOf(IDCANCEL);
        LONG top = area.bottom - height;
        Move(IDC_TEXTS_STATE, area.left, top + (height - HeightOf(IDC_TEXTS_STATE)) / 2);
        LONG right = area.right;
        for (const int button : {IDCANCEL, IDC_TEXTS_NEXT, IDC_TEXTS_PREVIOUS}) {
            right -= WidthOf(button);
            Move(button, right, top);
            right -= m_pane.Scale(kEdge);
        }
        if (m_texts->kind == TextKind::GCode) {
            top -= HeightOf(IDC_TEXTS_PLAIN) + m_pane.Scale(kEdge);
            Move(IDC_TEXTS_PLAIN, area.left, top);
        }
        MoveWindow(m_pane.Handle(), area.left, area.top, area.right - area.left,
                   top - m_pane.Scale(kEdge) - area.top, TRUE);
    }

    void Move(int control, LONG left, LONG top) const {
        SetWindowPos(GetDlgItem(m_dialog, control), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }

    [[nodiscard]] RECT RectOf(int control) const {
        RECT area = {};
        GetClientRect(GetDlgItem(m_dialog, control), &area);
        return area;
    }
    [[nodiscard]] int WidthOf(int control) const { return RectOf(control).right; }
    [[nodiscard]] int HeightOf(int control) const { return RectOf(control).bottom; }

    std::shared_ptr<const TextPair> m_texts; // shared with the thread that arranges them
    std::wstring m_name;
    const ComparedPackages& m_packages;
    TextPairPane m_pane;
    HWND m_dialog = nullptr;
    bool m_isPlain = false;
    bool m_isClosed = false;
};

} // namespace

void ShowTextPair(HWND owner, const ComparedPackages& packages, const DifferenceLine& line, bool isPlain) {
    const auto report = std::make_shared<TextPairReport>();
    const auto read = [report, packages, line](WorkProgress&) { *report = ReadTextPair(packages, line); };
    if (!WaitForWork(owner, Text(IDS_COMPARING, {line.name}), read)) {
        return;
    }
    if (!report->result.ok) {
        ShowTaskPrompt(owner, Text(IDS_CANNOT_COMPARE, {line.name, Sentence(report->result.message)}), {},
                       {Text(IDS_CLOSE)}, TD_ERROR_ICON);
        return;
    }
    TextPairDialog(report->texts, line.name, packages).Run(owner, isPlain);
}

} // namespace viewer
