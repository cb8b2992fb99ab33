// A control whose container deactivates it and activates it again: it has a new window each time.
#include "EmbeddedControl.h"
#include "PackageBuilder.h"

#include <vector>

namespace {

constexpr int kFoldedHeight = 30; // pixels
constexpr int kBoxes[] = {kPartBox, kGCodeBox, kSetupBox, kAdditionalBox};
constexpr int kLists[] = {kPartList, kGCodeList, kSetupList, kAdditionalList};

class ReactivationTest : public EmbeddedControlTest {
protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, Activate());
        ASSERT_EQ(S_OK, Load(m_package.Path()));
    }

    void Reactivate() {
        const HWND before = Dialog();
        ASSERT_EQ(S_OK, InPlace()->InPlaceDeactivate());
        ASSERT_FALSE(IsWindow(before));
        ASSERT_EQ(S_OK, Activate());
        ASSERT_TRUE(Dialog());
    }

    [[nodiscard]] RECT PlaceOf(int id) const {
        RECT rect = {};
        GetWindowRect(Item(id), &rect);
        MapWindowPoints(nullptr, Dialog(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }
    [[nodiscard]] int HeightOf(int id) const { return PlaceOf(id).bottom - PlaceOf(id).top; }
    [[nodiscard]] std::vector<LONG> Tops() const {
        std::vector<LONG> tops;
        for (const int box : kBoxes) {
            tops.push_back(PlaceOf(box).top);
        }
        return tops;
    }

    void ClickHeader(int box) const {
        constexpr LPARAM kInHeader = MAKELPARAM(40, 8);
        SendMessageW(Item(box), WM_LBUTTONDOWN, MK_LBUTTON, kInHeader);
        SendMessageW(Item(box), WM_LBUTTONUP, 0, kInHeader);
    }

    /// Folds and unfolds every section, and checks what moves.
    void ExpectSectionsFold() const {
        for (size_t section = 0; section < std::size(kBoxes); ++section) {
            const std::vector<LONG> before = Tops();
            const int height = HeightOf(kBoxes[section]);
            ASSERT_GT(height, kFoldedHeight) << section;
            ClickHeader(kBoxes[section]);
            EXPECT_EQ(kFoldedHeight, HeightOf(kBoxes[section])) << section;
            EXPECT_FALSE(IsWindowVisible(Item(kLists[section]))) << section;
            for (size_t other = 0; other < std::size(kBoxes); ++other) {
                const LONG moved = other > section ? height - kFoldedHeight : 0;
                EXPECT_EQ(before[other] - moved, Tops()[other]) << section << ' ' << other;
                EXPECT_EQ(other != section, IsWindowVisible(Item(kLists[other])) != FALSE);
            }
            ClickHeader(kBoxes[section]);
            EXPECT_EQ(height, HeightOf(kBoxes[section])) << section;
            EXPECT_TRUE(IsWindowVisible(Item(kLists[section]))) << section;
            EXPECT_EQ(before, Tops()) << section;
        }
    }

private:
    PackageBuilder m_package;
};

} // namespace

TEST_F(ReactivationTest, SectionsFoldInEveryWindow) {
    ExpectSectionsFold();
    for (int window = 0; window < 2; ++window) {
        Reactivate();
        ExpectSectionsFold();
    }
}

TEST_F(ReactivationTest, ASectionThatWasFoldedIsUnfoldedInANewWindow) {
    const std::vector<LONG> tops = Tops();
    for (const int box : kBoxes) {
        ClickHeader(box);
    }
    Reactivate();
    EXPECT_EQ(tops, Tops());
    for (const int list : kLists) {
        EXPECT_TRUE(IsWindowVisible(Item(list))) << list;
    }
    ExpectSectionsFold();
}
