#include "pack/ProgressMeter.h"

#include <algorithm>

namespace mxovshare {

void ProgressMeter::Begin(std::wstring name) {
    m_name = std::move(name);
    Report();
}

void ProgressMeter::Advance(std::uint64_t bytes) {
    m_done = std::min(m_total, m_done + bytes);
    Report();
}

void ProgressMeter::Report() {
    if (m_listener != nullptr && !m_listener->OnProgress(m_name, m_done, m_total)) {
        throw Cancelled();
    }
}

} // namespace mxovshare
