// On a window that leaves WM_SETREDRAW to the system: a list view repaints itself unasked.
#include "controls/RedrawPause.h"

#include "BoxParent.h"

#include <gtest/gtest.h>

#include <optional>

using namespace docview;

namespace {

class RedrawPauseTest : public testing::Test {
protected:
    void SetUp() override { Bind(WS_VISIBLE); }
    void TearDown() override { m_list.Detach(); }

    void Bind(DWORD style) {
        m_list.Detach();
        m_list.Attach(m_parent.AddControl({10, 10, 60, 70}, 2000, style));
        m_parent.Paint();
        ASSERT_EQ(InvalidPart(m_list), (RECT{0, 0, 0, 0}));
    }

    BoxParent m_parent;
    CListCtrl m_list;
};

TEST_F(RedrawPauseTest, RepaintsAllOfTheListAtItsEndAndNothingBefore) {
    std::optional<RedrawPause> pause(m_list);
    m_list.Invalidate();
    EXPECT_EQ(InvalidPart(m_list), (RECT{0, 0, 0, 0}));
    pause.reset();
    EXPECT_EQ(InvalidPart(m_list), (RECT{0, 0, 50, 60}));
    EXPECT_TRUE(IsShown(m_list));
}

TEST_F(RedrawPauseTest, AHiddenListStaysHidden) {
    Bind(0);
    { const RedrawPause pause(m_list); }
    EXPECT_FALSE(IsShown(m_list));
}

TEST_F(RedrawPauseTest, WithoutAWindowThereIsNothingToDo) {
    CListCtrl none;
    { const RedrawPause pause(none); }
    EXPECT_EQ(InvalidPart(m_list), (RECT{0, 0, 0, 0}));
}

} // namespace
