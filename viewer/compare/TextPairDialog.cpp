#include "compare/TextPairDialog.h"

#include "compare/TextPairPane.h"
#include "package/Sentence.h"
#include "prompts/TaskPrompt.h"
#include "prompts/WorkPrompt.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/Dialog.h"
#include "window/DisabledWindow.h"

#include <array>
#include <memory>
#include <optional>

namespace viewer {

namespace {

constexpr int kEdge = 8; // at 96 dots per inch, as the other
constexpr int kLeastWidth = 540;

class TextPairDialog : public Dialog {
public:
    TextPairDialog(const TextPair& texts, const std::wstring& name, const ComparedPackages& packages)
        : m_texts(std::make_shared<TextPair>(texts)), m_name(name), m_packages(packages) {}

    // Returns once the user has closed the window.
    void Run(HWND owner, bool isPlain) {
        m_isPlain = isPlain;
        if (!Create(IDD_TEXTS, owner)) {
            return;
        }
        {
            const DisabledWindow disabled(owner);
            ShowWindow(Handle(), SW_SHOW);
            PassMessages();
        }
        DestroyWindow(Handle());
    }

private:
    void PassMessages() {
        const HACCEL keys = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_TEXTS));
        MSG message = {};
        while (!m_isClosed && GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (!TranslateAcceleratorW(Handle(), keys, &message) && !IsDialogMessageW(Handle(), &message)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
        if (!m_isClosed) {
            PostQuitMessage(static_cast<int>(message.wParam)); // for the main window
        }
    }

    bool OnInit() override {
        SetWindowTextW(Handle(), Text(IDS_TEXTS_TITLE, {m_name}).c_str());
        SetItemText(IDC_TEXTS_PLAIN, Text(IDS_WITH_NOISE));
        SetItemText(IDC_TEXTS_PREVIOUS, Text(IDS_PREVIOUS));
        SetItemText(IDC_TEXTS_NEXT, Text(IDS_NEXT));
        SetItemText(IDCANCEL, Text(IDS_CLOSE));
        CheckDlgButton(Handle(), IDC_TEXTS_PLAIN, m_isPlain ? BST_CHECKED : BST_UNCHECKED);
        ShowWindow(Item(IDC_TEXTS_PLAIN), m_texts->kind == TextKind::GCode ? SW_SHOW : SW_HIDE);
        m_pane.Create(Handle(), IDC_TEXTS_PANE, m_packages.beforeTitle, m_packages.afterTitle);
        SetWindowPos(m_pane.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        PlaceOver(GetWindow(GetWindow(Handle(), GW_OWNER), GW_OWNER));
        ShowArranged();
        SetFocus(m_pane.Before().Handle());
        return false;
    }

    void OnDpiChanged(UINT, UINT after) override { m_pane.ChangeDpi(after); }

    // As large as the main window.
    void PlaceOver(HWND frame) const {
        RECT area = {};
        GetWindowRect(frame, &area);
        const int width = std::max<int>(area.right - area.left, m_pane.Scale(kLeastWidth));
        SetWindowPos(Handle(), nullptr, area.left, area.top, width, area.bottom - area.top, SWP_NOZORDER);
        Arrange();
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_SIZE:
            Arrange();
            return true;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {m_pane.Scale(kLeastWidth),
                                                                     m_pane.Scale(kLeastWidth / 2)};
            return true;
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
            m_isPlain = IsDlgButtonChecked(Handle(), IDC_TEXTS_PLAIN) == BST_CHECKED;
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
        if (WaitForWork(Handle(), Text(IDS_COMPARING, {m_name}), arrange)) {
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
        SetItemText(IDC_TEXTS_STATE, state);
        for (const int button : {IDC_TEXTS_PREVIOUS, IDC_TEXTS_NEXT}) {
            EnableWindow(Item(button), count > 0);
        }
    }

    // Below the texts stand the box, if there is one, and then the state with the buttons at the right.
    void Arrange() const {
        RECT area = {};
        GetClientRect(Handle(), &area);
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
        SetWindowPos(Item(control), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }

    [[nodiscard]] RECT RectOf(int control) const {
        RECT area = {};
        GetClientRect(Item(control), &area);
        return area;
    }
    [[nodiscard]] int WidthOf(int control) const { return RectOf(control).right; }
    [[nodiscard]] int HeightOf(int control) const { return RectOf(control).bottom; }

    std::shared_ptr<const TextPair> m_texts; // shared with the thread that arranges them
    std::wstring m_name;
    const ComparedPackages& m_packages;
    TextPairPane m_pane;
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
