#include "MainLayout.h"

#include "control/ControlHost.h"
#include "news/NewsBar.h"
#include "window/StatusBar.h"
#include "window/Window.h"

#include <algorithm>

namespace viewer {

namespace {

// At 96 dots per inch.
constexpr int kGap = 1; // between control and pages
constexpr int kLeastPages = 220;
constexpr int kUsualPages = 620;
constexpr int kUsualHeight = 640;
constexpr SIZE kUsualControl = {372, 480};

} // namespace

void MainLayout::Arrange() {
    RECT client = {};
    GetClientRect(m_frame.Handle(), &client);
    m_status.Arrange(client.right);
    const LONG bottom = client.bottom - m_status.Height();
    if (bottom <= 0) {
        return;
    }
    LONG left = 0;
    if (m_control.IsShown()) {
        const LONG split = std::min(ControlSize().cx, client.right);
        m_control.Move({0, 0, split, bottom});
        left = split + m_frame.Scale(kGap);
    }
    ArrangeRightSide({left, 0, std::max(left, client.right), bottom});
}

void MainLayout::ArrangeRightSide(const RECT& area) {
    const int width = static_cast<int>(area.right - area.left);
    const int top = std::min<int>(m_news.HeightFor(width), area.bottom);
    MoveWindow(m_news.Handle(), area.left, 0, width, top, TRUE);
    MoveWindow(m_pages.Handle(), area.left, top, width, area.bottom - top, TRUE);
}

SIZE MainLayout::LeastSize() const {
    return FrameSize(kLeastPages, 0);
}

SIZE MainLayout::UsualSize() const {
    return FrameSize(kUsualPages, kUsualHeight);
}

// The control's natural size, or a default where it reports none.
SIZE MainLayout::ControlSize() const {
    const SIZE natural = m_control.NaturalSize(m_frame.Dpi());
    return {natural.cx > 0 ? natural.cx : m_frame.Scale(kUsualControl.cx),
            natural.cy > 0 ? natural.cy : m_frame.Scale(kUsualControl.cy)};
}

// The outer size that leaves the pages this width, and the control at least this height and all that it
// needs.
SIZE MainLayout::FrameSize(int pagesWidth, int leastHeight) const {
    const SIZE control = ControlSize();
    RECT area = {0, 0, control.cx + m_frame.Scale(kGap + pagesWidth),
                 std::max<LONG>(control.cy, m_frame.Scale(leastHeight)) + m_status.Height()};
    AdjustWindowRectExForDpi(&area, WS_OVERLAPPEDWINDOW, TRUE, 0, m_frame.Dpi());
    return {area.right - area.left, area.bottom - area.top};
}

} // namespace viewer
