#include "RedrawPause.h"

namespace docview {

RedrawPause::RedrawPause(CListCtrl& list) : m_list(list) {
    if (m_list.GetSafeHwnd()) {
        m_hidden = (m_list.GetStyle() & WS_VISIBLE) == 0;
        m_list.SetRedraw(FALSE);
    }
}

RedrawPause::~RedrawPause() {
    if (!m_list.GetSafeHwnd()) {
        return;
    }
    m_list.SetRedraw(TRUE);
    if (m_hidden) {
        m_list.ShowWindow(SW_HIDE); // switching redrawing on makes a window visible
    }
    m_list.Invalidate();
}

} // namespace docview
