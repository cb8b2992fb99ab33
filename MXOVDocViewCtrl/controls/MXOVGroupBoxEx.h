// A group box drawn as a titled section that folds to its header.
#pragma once

#include "afxtempl.h"
#include "afxwin.h"

/// Turns a plain group box of a dialog into a foldable section: a line, a bold title and an icon in a header
/// that a click folds and unfolds. Folding hides the controls inside the box and moves those below it up.
///
/// Bind it with DDX_Control when every control that folds or moves with it exists at its place: the windows
/// are collected at that moment. The title is the window text of the group box. All measures are pixels.
class MXOVGroupBoxEx : public CStatic {
public:
    MXOVGroupBoxEx();

    void PreSubclassWindow() override;

    /// Unfolds a folded box and folds an unfolded one.
    void Toggle();

    /// Shows again what the last fold hid and moves the windows below back. Does nothing for a box without
    /// controls. Only for a folded box; SetExpanded tests that.
    void Expand();

    /// Hides the controls inside and moves the windows below up. Does nothing for a box without controls; one
    /// that is not taller than its folded height loses its contents but stays unfolded. Only for an unfolded
    /// box; SetExpanded tests that.
    void Collapse();

    /// The clickable strip at the top, in client coordinates.
    CRect GetHeaderRect() const;

    /// The place of the icon at the right end of the header.
    CRect GetIconRect() const;

    /// The place for another icon, to the left of the first.
    CRect GetSecondIconRect() const;

    /// Folds or unfolds unless the box is already so.
    void SetExpanded(bool expand);

    /// Whether the box is folded.
    bool IsCollapsed() const { return m_collapsed != FALSE; }

    /// Sets the unfolded height and moves the windows below by the difference, which it returns. A negative
    /// height ends the box 100 pixels above the parent's client bottom; one below the folded height changes
    /// nothing and returns 0.
    int SetHeight(int newHeight);

    /// Shows or hides the whole section; the windows below close the gap. A box without controls stays as it
    /// is.
    void ShowSection(bool show);

    /// Enables or disables the box window; a disabled one has a grey header.
    void EnableSection(bool enable);

protected:
    /// Forgets the windows, which are gone with the dialog; the next binding collects those of a new one.
    void PostNcDestroy() override;

    afx_msg void OnPaint();
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg LRESULT OnNcHitTest(CPoint point);
    DECLARE_MESSAGE_MAP()

    using WindowList = CList<HWND, HWND>;

    BOOL m_collapsible = TRUE;  // header icon, header hit test and own painting
    BOOL m_customPaint = FALSE; // own painting also when not collapsible
    CSize m_fullSize{0, 0};     // of the unfolded box
    BOOL m_collapsed = FALSE;
    BOOL m_pressed = FALSE;               // the left button went down inside the header
    WindowList m_innerWindows{10};        // the controls inside the box
    WindowList m_reshowWindows{10};       // inner controls that the last fold hid
    WindowList m_hiddenBeforeWindows{10}; // inner controls that were invisible already; they stay so
    WindowList m_windowsBelow{10};        // siblings lower than the box; they move when its height changes
    int m_collapsedHeight = 30;
    int m_headerHeight = 20;
    int m_reserved1 = 0;
    BOOL m_shown = TRUE;
    BOOL m_enabled = TRUE;
    BOOL m_excludeById = FALSE; // the sibling with the excluded identifier is not collected
    int m_excludedId = -1;
    BOOL m_useTitleColour = TRUE;
    COLORREF m_titleColour = RGB(0, 102, 178);
    int m_reserved2 = 0;
    CFont m_titleFont;

private:
    void CollectWindows();
    void CollectWindow(HWND window, const CRect& box);
    bool IsExcluded(HWND window) const;
    CRect HeaderSquare(int placeFromRight) const;
    void HideInnerWindow(HWND window);
    void MoveWindowsBelow(int distance);
    void MoveBox(int height);
    void PaintFrame(CDC& dc);
    void PaintTitle(CDC& dc);
    void PaintIcon(CDC& dc);
};
