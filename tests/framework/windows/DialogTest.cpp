#include "TestWindow.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr UINT kChildDialog = 1;
constexpr UINT kModalDialog = 2;
constexpr int kButton = 101;
constexpr int kGroup = 102;
constexpr int kEdit = 103;

/// A child dialog that binds two controls and a text.
class PanelDialog : public CDialog {
public:
    PanelDialog() = default;

    CButton button;
    CStatic group;
    CString text = L"start";
    int exchanges = 0;
    int initialised = 0;
    int changes = 0; ///< EN_CHANGE of the edit
    int clicks = 0;
    int gone = 0;
    bool throwInitialising = false;
    bool bindMissing = false;
    bool refuse = false;
    bool refusesAsEdit = true; // else as a control of any kind

    BOOL OnInitDialog() override {
        ++initialised;
        EXPECT_TRUE(::IsWindow(::GetDlgItem(m_hWnd, kEdit))) << "the controls are there";
        const BOOL result = CDialog::OnInitDialog();
        if (throwInitialising) {
            throw std::runtime_error("thrown by a test");
        }
        return result;
    }
    void PressEnter() { OnOK(); }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        CDialog::DoDataExchange(exchange);
        ++exchanges;
        DDX_Control(exchange, kButton, button);
        DDX_Control(exchange, kGroup, group);
        DDX_Text(exchange, kEdit, text);
        if (bindMissing) {
            DDX_Text(exchange, 999, text);
        }
        if (refuse) {
            refusesAsEdit ? exchange->PrepareEditCtrl(kEdit) : exchange->PrepareCtrl(kEdit);
            exchange->Fail();
        }
    }
    void PostNcDestroy() override { ++gone; }
    afx_msg void OnChange() { ++changes; }
    afx_msg void OnClick() { ++clicks; }
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* window, UINT kind) {
        CDialog::OnCtlColor(dc, window, kind);
        return static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(PanelDialog, CDialog)
    ON_EN_CHANGE(kEdit, &PanelDialog::OnChange)
    ON_BN_CLICKED(kButton, &PanelDialog::OnClick)
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

class ModelessDialog : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(parent.CreateTop(WS_POPUP | WS_VISIBLE)); }

    RecordingWindow parent;
    PanelDialog dialog;
};

TEST_F(ModelessDialog, IsCreatedWithItsParentAndExchangesItsDataFirst) {
    ASSERT_TRUE(dialog.Create(kChildDialog, &parent));
    EXPECT_EQ(dialog.initialised, 1);
    EXPECT_EQ(dialog.exchanges, 1);
    EXPECT_EQ(dialog.GetParent(), &parent);
    EXPECT_EQ(dialog.GetDlgItem(kButton), &dialog.button);
    CString shown;
    dialog.GetDlgItem(kEdit)->GetWindowText(shown);
    EXPECT_EQ(shown, L"start");
    parent.DestroyWindow();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.button.m_hWnd, nullptr);
    EXPECT_EQ(dialog.gone, 1);
}

TEST_F(ModelessDialog, CanBeCreatedAgainAfterItsEnd) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(dialog.Create(kChildDialog, &parent));
        EXPECT_NE(dialog.button.m_hWnd, nullptr);
        EXPECT_TRUE(dialog.DestroyWindow());
    }
    EXPECT_EQ(dialog.gone, 3);
}

TEST_F(ModelessDialog, AMissingTemplateIsAFailure) {
    EXPECT_FALSE(dialog.Create(999U, &parent));
    EXPECT_FALSE(dialog.Create(L"no such template", &parent));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.initialised, 0);
}

TEST_F(ModelessDialog, AnExceptionWhileInitialisingIsAFailure) {
    dialog.throwInitialising = true;
    EXPECT_FALSE(dialog.Create(kChildDialog, &parent));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.gone, 1);
    EXPECT_EQ(::GetWindow(parent, GW_CHILD), nullptr) << "no half-made dialog stays";
}

TEST_F(ModelessDialog, BindingAControlThatDoesNotExistIsAFailure) {
    dialog.bindMissing = true;
    EXPECT_FALSE(dialog.Create(kChildDialog, &parent));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST_F(ModelessDialog, ARefusedValueWhileInitialisingIsAFailure) {
    dialog.refuse = true;
    EXPECT_FALSE(dialog.Create(kChildDialog, &parent));
    EXPECT_EQ(dialog.gone, 1);
}

TEST_F(ModelessDialog, ControlsAreBoundOnceAndTextsEachTime) {
    ASSERT_TRUE(dialog.Create(kChildDialog, &parent));
    const WNDPROC below = *dialog.button.GetSuperWndProcAddr();
    dialog.SetDlgItemText(kEdit, L"typed");
    EXPECT_TRUE(dialog.UpdateData());
    EXPECT_EQ(dialog.text, L"typed");
    dialog.text = L"back";
    EXPECT_TRUE(dialog.UpdateData(FALSE));
    CString shown;
    dialog.GetDlgItem(kEdit)->GetWindowText(shown);
    EXPECT_EQ(shown, L"back");
    EXPECT_EQ(*dialog.button.GetSuperWndProcAddr(), below);
}

TEST_F(ModelessDialog, NotificationsOfItsOwnExchangeReachNoHandler) {
    ASSERT_TRUE(dialog.Create(kChildDialog, &parent));
    EXPECT_EQ(dialog.changes, 0);
    dialog.text = L"exchanged";
    dialog.UpdateData(FALSE);
    EXPECT_EQ(dialog.changes, 0);
    dialog.SetDlgItemText(kEdit, L"by hand");
    EXPECT_EQ(dialog.changes, 1);
}

TEST_F(ModelessDialog, ARefusedValueGetsTheFocus) {
    ASSERT_TRUE(dialog.Create(kChildDialog, &parent));
    dialog.ShowWindow(SW_SHOW);
    ::SetActiveWindow(parent);
    dialog.button.SetFocus();
    dialog.refuse = true;
    dialog.SetDlgItemText(kEdit, L"bad");
    EXPECT_FALSE(dialog.UpdateData());
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog, kEdit));
    EXPECT_EQ(::SendDlgItemMessage(dialog, kEdit, EM_GETSEL, 0, 0), MAKELRESULT(0, 3));
    ::SendDlgItemMessage(dialog, kEdit, EM_SETSEL, 1, 1);
    dialog.refusesAsEdit = false;
    EXPECT_FALSE(dialog.UpdateData());
    EXPECT_EQ(::SendDlgItemMessage(dialog, kEdit, EM_GETSEL, 0, 0), MAKELRESULT(1, 1))
        << "only a field's text is selected";
    dialog.refuse = false;
    EXPECT_TRUE(dialog.UpdateData());
}

TEST_F(ModelessDialog, ControlsAskItForTheirColours) {
    ASSERT_TRUE(dialog.Create(kChildDialog, &parent));
    dialog.ShowWindow(SW_SHOW);
    dialog.UpdateWindow();
    CClientDC dc(&dialog);
    EXPECT_EQ(dc.GetPixel(150, 5), RGB(255, 255, 255)) << "beside the controls";
}

// As documented: a modeless dialog overrides the handlers.
TEST_F(ModelessDialog, EnterAndEscapeHideIt) {
    ASSERT_TRUE(dialog.Create(kChildDialog, &parent));
    dialog.ShowWindow(SW_SHOW);
    dialog.PressEnter();
    EXPECT_FALSE(dialog.IsWindowVisible());
    dialog.ShowWindow(SW_SHOW);
    dialog.SendMessage(WM_COMMAND, IDCANCEL);
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_TRUE(::IsWindow(dialog.m_hWnd));
}

TEST_F(ModelessDialog, TakesATemplateInMemory) {
    struct alignas(4) {
        DLGTEMPLATE header = {WS_CHILD, 0, 0, 0, 0, 50, 40};
        WORD menuClassTitle[3] = {};
    } memory;
    class Bare : public CDialog {
    public:
        Bare() = default;
    } bare;
    ASSERT_TRUE(bare.CreateIndirect(&memory.header, &parent));
    EXPECT_EQ(bare.GetParent(), &parent);
    EXPECT_FALSE(Bare().CreateIndirect(nullptr, &parent));
}

/// Ends itself by a message posted to it.
class QuestionDialog : public CDialog {
public:
    explicit QuestionDialog(WPARAM answer, CWnd* parent = nullptr)
        : CDialog(kModalDialog, parent), m_answer(answer) {}
    explicit QuestionDialog(LPCTSTR name) : CDialog(name), m_answer(IDOK) {}

    CString text = L"start";
    bool throwInitialising = false;
    bool refuseData = false;
    bool parentEnabled = true;

    BOOL OnInitDialog() override {
        const BOOL filled = CDialog::OnInitDialog();
        EXPECT_EQ(refuseData, !filled);
        if (throwInitialising) {
            throw std::runtime_error("thrown by a test");
        }
        SetDlgItemText(kEdit, L"answered");
        PostMessage(WM_COMMAND, m_answer);
        return TRUE;
    }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Text(exchange, kEdit, text);
        if (refuseData) {
            exchange->Fail();
        }
    }
    void OnOK() override {
        parentEnabled = ::IsWindowEnabled(::GetWindow(m_hWnd, GW_OWNER));
        CDialog::OnOK();
    }

private:
    WPARAM m_answer;
};

TEST(ModalDialog, ReturnsHowItEndedAndTakesTheDataOnOk) {
    RecordingWindow parent;
    ASSERT_TRUE(parent.CreateTop(WS_POPUP | WS_VISIBLE));
    QuestionDialog yes(IDOK, &parent);
    EXPECT_EQ(yes.DoModal(), IDOK);
    EXPECT_EQ(yes.text, L"answered");
    EXPECT_FALSE(yes.parentEnabled);
    EXPECT_TRUE(parent.IsWindowEnabled());
    EXPECT_EQ(yes.m_hWnd, nullptr);

    QuestionDialog no(IDCANCEL, &parent);
    EXPECT_EQ(no.DoModal(), IDCANCEL);
    EXPECT_EQ(no.text, L"start");
    EXPECT_EQ(no.DoModal(), IDCANCEL) << "it can run again";
}

TEST(ModalDialog, FailsAsMinusOne) {
    QuestionDialog failing(IDOK);
    failing.throwInitialising = true;
    EXPECT_EQ(failing.DoModal(), -1);
    EXPECT_EQ(failing.m_hWnd, nullptr);
    QuestionDialog unfilled(WPARAM{0xFFFF}); // which no button has
    unfilled.refuseData = true;
    EXPECT_EQ(unfilled.DoModal(), -1);
    QuestionDialog missing(L"no such template");
    EXPECT_EQ(missing.DoModal(), -1);
}

} // namespace
