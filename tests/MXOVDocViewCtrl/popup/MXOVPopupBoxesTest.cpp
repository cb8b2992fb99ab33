// The popup's group boxes, and what its painting leaves to be painted.
#include "PopupFixture.h"

#include "EraseCount.h"

using namespace docview;

namespace {

class MXOVPopupBoxesTest : public PopupFixture {
protected:
    /// Presses and releases the left button in the header of a box.
    void ClickHeader(int box) const {
        SendMessageW(Item(box), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
        SendMessageW(Item(box), WM_LBUTTONUP, 0, MAKELPARAM(10, 10));
    }
    bool IsShown(int id) const { return (GetWindowLongPtrW(Item(id), GWL_STYLE) & WS_VISIBLE) != 0; }
    LONG Height(int id) const {
        RECT rect = {};
        GetWindowRect(Item(id), &rect);
        return rect.bottom - rect.top;
    }
};

} // namespace

TEST_F(MXOVPopupBoxesTest, AllThreeFoldWithTheirContents) {
    constexpr LONG kFolded = 30; // pixels
    Show(DocumentCategory::PartAssembly);
    const std::pair<int, std::vector<int>> boxes[] = {
        {1048, {IDC_PREVIEW, IDC_PREVIEW_STATUS}},
        {1047, {IDC_HISTORY}},
        {1030, {IDC_DOCUMENT_NAME, IDC_DOCUMENT_PATH, IDC_BROWSE, IDC_DOCUMENT_SIZE, IDC_DESCRIPTION}}};
    for (const auto& [box, contents] : boxes) {
        const LONG height = Height(box);
        ASSERT_GT(height, kFolded);
        ClickHeader(box);
        EXPECT_EQ(Height(box), kFolded) << box;
        for (const int id : contents) {
            EXPECT_FALSE(IsShown(id)) << id;
        }
        ClickHeader(box);
        EXPECT_EQ(Height(box), height) << box;
        for (const int id : contents) {
            EXPECT_TRUE(IsShown(id)) << id;
        }
    }
}

TEST_F(MXOVPopupBoxesTest, PaintingThePopupInvalidatesTheHistory) {
    Show(DocumentCategory::PartAssembly);
    RedrawWindow(Popup(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    ValidateRect(Item(IDC_HISTORY), nullptr);
    RedrawWindow(Popup(), nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
    SendMessageW(Popup(), WM_PAINT, 0, 0);
    EXPECT_FALSE(GetUpdateRect(Popup(), nullptr, FALSE));
    EXPECT_TRUE(GetUpdateRect(Item(IDC_HISTORY), nullptr, FALSE));
    EXPECT_FALSE(GetUpdateRect(Item(IDC_DESCRIPTION), nullptr, FALSE));
}

TEST_F(MXOVPopupBoxesTest, PaintingThePopupErasesTheHistory) {
    Show(DocumentCategory::PartAssembly);
    RedrawWindow(Popup(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RedrawWindow(Item(IDC_HISTORY), nullptr, nullptr, RDW_VALIDATE | RDW_NOERASE);
    const EraseCount history(Item(IDC_HISTORY));
    RedrawWindow(Popup(), nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
    SendMessageW(Popup(), WM_PAINT, 0, 0);
    GetUpdateRect(Item(IDC_HISTORY), nullptr, TRUE);
    EXPECT_EQ(history.count, 1);
}
