// A GDI object selected into a device context for a scope.
#pragma once

#include "afxwin.h"

namespace docview {

/// Selects the object on construction and the previous one of its kind on destruction. The device context and
/// the object must outlive it.
template <typename Object>
class SelectedObject {
public:
    SelectedObject(CDC& dc, Object& object) : m_dc(dc), m_previous(dc.SelectObject(&object)) {}
    ~SelectedObject() { m_dc.SelectObject(m_previous); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    CDC& m_dc;
    Object* m_previous;
};

} // namespace docview
