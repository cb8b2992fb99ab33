#include "control/PropertiesWindow.h"

#include "common/Handles.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr int kBox = 1030;

// A frame, and a window that looks like that of the properties.
class PropertiesWindowTest : public testing::Test {
protected:
    static common::UniqueWindow MakeWindow(const wchar_t* className, HWND owner, int width, int height) {
        return common::UniqueWindow(
            CreateWindowW(className, L"", WS_POPUP, 0, 0, width, height, owner, nullptr, nullptr, nullptr));
    }

    // Where the window is put beside a control that has this place in the work area, in a frame that fills
    // it.
    [[nodiscard]] RECT PlaceBeside(const RECT& control) const {
        return PlaceBeside(control, {0, 0, m_width, m_height});
    }

    // The same in a frame of this place.
    [[nodiscard]] RECT PlaceBeside(RECT control, RECT frame) const {
        OffsetRect(&control, m_work.left, m_work.top);
        OffsetRect(&frame, m_work.left, m_work.top);
        PlaceProperties(m_properties.get(), control, frame);
        RECT area = {};
        GetWindowRect(m_properties.get(), &area);
        OffsetRect(&area, -m_work.left, -m_work.top);
        return area;
    }

    PropertiesWindowTest() {
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &m_work, 0);
        m_width = m_work.right - m_work.left;
        m_height = m_work.bottom - m_work.top;
        CreateWindowW(L"STATIC", L"", WS_CHILD, 0, 0, 9, 9, m_properties.get(),
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(kBox)), nullptr, nullptr);
    }

    RECT m_work = {};
    LONG m_width = 0;
    LONG m_height = 0;
    common::UniqueWindow m_frame = MakeWindow(L"STATIC", nullptr, 600, 400);
    common::UniqueWindow m_properties = MakeWindow(L"#32770", m_frame.get(), 300, 400);
};

} // namespace

TEST_F(PropertiesWindowTest, ItIsKnownByItsOwnerClassAndContent) {
    EXPECT_TRUE(IsProperties(m_properties.get(), m_frame.get()));
    const common::UniqueWindow other = MakeWindow(L"#32770", m_frame.get(), 10, 10);
    EXPECT_FALSE(IsProperties(other.get(), m_frame.get())) << "another dialog";
    EXPECT_FALSE(IsProperties(m_properties.get(), other.get())) << "of another frame";
    EXPECT_FALSE(IsProperties(nullptr, m_frame.get()));
}

TEST_F(PropertiesWindowTest, ItComesToTheRightOfTheControl) {
    const RECT area = PlaceBeside({100, 50, 470, 600});
    EXPECT_EQ(area.left, 476);
    EXPECT_EQ(area.top, 50);
    EXPECT_EQ(area.right - area.left, 300);
    EXPECT_EQ(area.bottom - area.top, 400);
}

TEST_F(PropertiesWindowTest, ItComesBesideTheFrameWhereThereIsRoom) {
    EXPECT_EQ(PlaceBeside({10, 50, 200, 600}, {0, 0, m_width - 306, 700}).left, m_width - 300);
    EXPECT_EQ(PlaceBeside({310, 50, 500, 600}, {306, 0, m_width, 700}).left, 0);
    EXPECT_EQ(PlaceBeside({10, 50, 200, 600}, {0, 0, m_width - 305, 700}).left, 206) << "a pixel too little";
}

TEST_F(PropertiesWindowTest, WhereTheMonitorEndsItComesToTheLeft) {
    EXPECT_EQ(PlaceBeside({m_width - 400, 50, m_width - 30, 600}).right, m_width - 406);
}

TEST_F(PropertiesWindowTest, WithoutRoomOnEitherSideItStaysOnTheMonitor) {
    EXPECT_EQ(PlaceBeside({100, 50, m_width - 100, 600}).right, m_width);
}

TEST_F(PropertiesWindowTest, ItIsNeverAboveOrBelowTheMonitor) {
    EXPECT_EQ(PlaceBeside({100, m_height - 60, 470, m_height + 400}).bottom, m_height);
    EXPECT_EQ(PlaceBeside({100, -80, 470, 300}).top, 0);
}

TEST_F(PropertiesWindowTest, ClosingLeavesADisabledFrameAndOtherDialogsAlone) {
    const common::UniqueWindow other = MakeWindow(L"#32770", m_frame.get(), 10, 10);
    EnableWindow(m_frame.get(), FALSE);
    CloseProperties(m_frame.get());
    EXPECT_TRUE(IsWindow(m_properties.get()));
    EnableWindow(m_frame.get(), TRUE);
    CloseProperties(m_frame.get());
    EXPECT_FALSE(IsWindow(m_properties.release()));
    EXPECT_TRUE(IsWindow(other.get()));
}
