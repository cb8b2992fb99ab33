// What the tests of the collapsible group box share.
#pragma once

#include "BoxParent.h"
#include "controls/CollapseGroupBox.h"

#include <gtest/gtest.h>

/// A box whose state the tests can read and set.
struct CollapseBox : CollapseGroupBox {
    using CollapseGroupBox::GetThisMessageMap;
    using CollapseGroupBox::m_alignment;
    using CollapseGroupBox::m_backgroundColour;
    using CollapseGroupBox::m_borderColour;
    using CollapseGroupBox::m_children;
    using CollapseGroupBox::m_collapsed;
    using CollapseGroupBox::m_font;
    using CollapseGroupBox::m_frameRect;
    using CollapseGroupBox::m_glyphColour;
    using CollapseGroupBox::m_glyphRect;
    using CollapseGroupBox::m_headerColour;
    using CollapseGroupBox::m_headerHotColour;
    using CollapseGroupBox::m_headerNormalColour;
    using CollapseGroupBox::m_headerRect;
    using CollapseGroupBox::m_logFont;
    using CollapseGroupBox::m_memoryDC;
    using CollapseGroupBox::m_renderedOnce;
    using CollapseGroupBox::m_title;
    using CollapseGroupBox::m_titleColour;
    using CollapseGroupBox::m_whiteBody;

    /// The height of the title's text.
    int TextHeight() const { return m_headerRect.Height() - 4; }
};

/// A box of 200 x 100 at (20, 100) in a parent.
class CollapseBoxTest : public testing::Test {
protected:
    static constexpr RECT kPlace{20, 100, 220, 200};

    /// Subclasses a new group box, as a dialog does before it is shown.
    void Bind(const wchar_t* title = L"Options", const RECT& place = kPlace) {
        ASSERT_TRUE(box.SubclassWindow(parent.AddGroupBox(place, title)));
        box.Invalidate();
        parent.Paint();
    }

    /// Adds a control inside the box, and binds.
    void BindWithControl() {
        child = parent.AddControl({40, 130, 90, 150});
        Bind();
    }

    CollapseBox box;
    BoxParent parent; // goes first and takes the windows with it
    HWND child = nullptr;
};
