// Where the parts of the main window lie: the document control at the left, the pages beside it below the
// bar for news, the status bar at the bottom.
#pragma once

#include <windows.h>

namespace viewer {

class ControlHost;
class NewsBar;
class StatusBar;
class Window;

class MainLayout {
public:
    /// The parts outlive it.
    MainLayout(const Window& frame, ControlHost& control, NewsBar& news, Window& pages, StatusBar& status)
        : m_frame(frame), m_control(control), m_news(news), m_pages(pages), m_status(status) {}

    /// Places the parts in the client area.
    void Arrange();

    /// The smallest outer size of the frame: the control with a useful piece of the pages.
    [[nodiscard]] SIZE LeastSize() const;

    /// The outer size of the frame at the first start.
    [[nodiscard]] SIZE UsualSize() const;

private:
    void ArrangeRightSide(const RECT& area);
    [[nodiscard]] SIZE ControlSize() const;
    [[nodiscard]] SIZE FrameSize(int pagesWidth, int leastHeight) const;

    const Window& m_frame;
    ControlHost& m_control;
    NewsBar& m_news;
    Window& m_pages;
    StatusBar& m_status;
};

} // namespace viewer
