// The popup without a mouse and through a screen reader.
#include "PopupFixture.h"

#include <oleacc.h>

namespace {

class MXOVPopupAccessTest : public PopupFixture {
protected:
    void SetUp() override { ASSERT_HRESULT_SUCCEEDED(OleInitialize(nullptr)); }
    void TearDown() override {
        MXOVPopupDlg::CloseOf(m_owner);
        OleUninitialize();
    }

    /// The name that a screen reader announces for a control.
    std::wstring SpokenName(int id) const {
        IAccessible* accessible = nullptr;
        if (FAILED(AccessibleObjectFromWindow(Item(id), static_cast<DWORD>(OBJID_CLIENT),
                                              __uuidof(IAccessible),
                                              reinterpret_cast<void**>(&accessible)))) {
            return L"no object";
        }
        VARIANT self = {};
        self.vt = VT_I4;
        self.lVal = CHILDID_SELF;
        BSTR name = nullptr;
        accessible->get_accName(self, &name);
        accessible->Release();
        std::wstring text = name ? name : L"";
        SysFreeString(name);
        return text;
    }

    /// The controls that Tab stops at, in its order.
    std::vector<int> TabOrder() const {
        std::vector<int> order;
        HWND item = GetNextDlgTabItem(Popup(), nullptr, FALSE);
        const HWND first = item;
        do {
            order.push_back(GetDlgCtrlID(item));
            item = GetNextDlgTabItem(Popup(), item, FALSE);
        } while (item && item != first);
        return order;
    }

    LONG Top(int id) const {
        RECT rect = {};
        GetWindowRect(Item(id), &rect);
        return rect.top;
    }
};

} // namespace

TEST_F(MXOVPopupAccessTest, LabelsNameTheirFields) {
    Show(DocumentCategory::PartAssembly);
    EXPECT_EQ(SpokenName(IDC_DOCUMENT_PATH), Text(IDC_PATH_LABEL));
    EXPECT_EQ(SpokenName(IDC_DESCRIPTION), Text(IDC_DESCRIPTION_LABEL));
    EXPECT_EQ(SpokenName(IDC_BROWSE), L"...");
}

TEST_F(MXOVPopupAccessTest, EveryFieldStandsRightAfterItsLabel) {
    Show(DocumentCategory::PartAssembly);
    const int pairs[][2] = {{IDC_NAME_LABEL, IDC_DOCUMENT_NAME},
                            {IDC_PATH_LABEL, IDC_DOCUMENT_PATH},
                            {IDC_SIZE_LABEL, IDC_DOCUMENT_SIZE},
                            {IDC_DESCRIPTION_LABEL, IDC_DESCRIPTION},
                            {IDC_HISTORY_BOX, IDC_HISTORY}};
    for (const auto& [label, field] : pairs) {
        EXPECT_EQ(GetWindow(Item(label), GW_HWNDNEXT), Item(field)) << label;
    }
}

TEST_F(MXOVPopupAccessTest, TabFollowsTheEye) {
    Show(DocumentCategory::PartAssembly);
    const std::vector<int> order = TabOrder();
    EXPECT_EQ(order, (std::vector<int>{IDC_HISTORY, IDC_DOCUMENT_PATH, IDC_BROWSE, IDC_DESCRIPTION}));
    for (std::size_t i = 1; i < order.size(); ++i) {
        EXPECT_LE(Top(order[i - 1]), Top(order[i]));
    }
}

TEST_F(MXOVPopupAccessTest, TabLeavesOutWhatIsOff) {
    Show(DocumentCategory::GCode);
    EXPECT_EQ(TabOrder(), (std::vector<int>{IDC_HISTORY, IDC_DESCRIPTION}));
    MXOVPopupDlg::CloseOf(m_owner);
    Show(DocumentCategory::PartAssembly, 0, false);
    EXPECT_EQ(TabOrder(), std::vector<int>{IDC_HISTORY});
}

TEST_F(MXOVPopupAccessTest, EnterAndEscapeOnAnyControlDoNothing) {
    Show(DocumentCategory::PartAssembly);
    for (const int id : {IDC_HISTORY, IDC_DOCUMENT_PATH}) {
        SetFocus(Item(id));
        for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
            PostMessageW(Item(id), WM_KEYDOWN, key, 1);
            HandleMessages();
            ASSERT_TRUE(Popup());
            EXPECT_TRUE(IsWindowVisible(Popup()));
        }
    }
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "");
    EXPECT_EQ(m_owner.updates + m_owner.strangeCommands, 0);
    EXPECT_EQ(Text(IDC_DESCRIPTION), L"The part");
}
