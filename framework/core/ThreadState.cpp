#include "ThreadState.h"

namespace framework {

void TemporaryObjects::Release(size_t mark) noexcept {
    while (m_order.size() > mark) {
        m_objects.erase(m_order.back());
        m_order.pop_back();
    }
}

} // namespace framework
