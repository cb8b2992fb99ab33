// What the tests of the foldable section share.
#pragma once

#include "BoxParent.h"
#include "controls/MXOVGroupBoxEx.h"

#include <gtest/gtest.h>

#include <vector>

/// A section whose state the tests can read and set.
struct SectionBox : MXOVGroupBoxEx {
    using MXOVGroupBoxEx::GetThisMessageMap;
    using MXOVGroupBoxEx::m_collapsed;
    using MXOVGroupBoxEx::m_collapsedHeight;
    using MXOVGroupBoxEx::m_collapsible;
    using MXOVGroupBoxEx::m_customPaint;
    using MXOVGroupBoxEx::m_enabled;
    using MXOVGroupBoxEx::m_excludeById;
    using MXOVGroupBoxEx::m_excludedId;
    using MXOVGroupBoxEx::m_fullSize;
    using MXOVGroupBoxEx::m_headerHeight;
    using MXOVGroupBoxEx::m_hiddenBeforeWindows;
    using MXOVGroupBoxEx::m_innerWindows;
    using MXOVGroupBoxEx::m_pressed;
    using MXOVGroupBoxEx::m_reshowWindows;
    using MXOVGroupBoxEx::m_shown;
    using MXOVGroupBoxEx::m_titleColour;
    using MXOVGroupBoxEx::m_titleFont;
    using MXOVGroupBoxEx::m_useTitleColour;
    using MXOVGroupBoxEx::m_windowsBelow;
};

using Windows = std::vector<HWND>;

inline Windows Listed(const CList<HWND, HWND>& list) {
    Windows windows;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;) {
        windows.push_back(list.GetNext(position));
    }
    return windows;
}

/// A section of 300 x 150 at (20, 100) in a parent, with room above, below and beside.
class SectionBoxTest : public testing::Test {
protected:
    static constexpr RECT kPlace{20, 100, 320, 250};

    /// Binds the box to a new group box, as a dialog does when all its controls exist.
    void Bind(const RECT& place = kPlace) {
        ASSERT_TRUE(box.SubclassWindow(parent.AddGroupBox(place, L"G Code")));
    }

    /// Adds a control inside the box and one below it, and binds.
    void BindWithControls(const RECT& place = kPlace) {
        inner = parent.AddControl({place.left + 10, place.top + 21, place.left + 50, place.bottom - 1});
        below = parent.AddControl({20, 300, 100, 340});
        Bind(place);
        parent.Paint();
    }

    SectionBox box;
    BoxParent parent; // goes first and takes the windows with it
    HWND inner = nullptr;
    HWND below = nullptr;
};
