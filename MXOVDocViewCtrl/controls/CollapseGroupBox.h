// A self-drawn group box that folds to its title bar.
#pragma once

#include "afxtempl.h"
#include "afxwin.h"
#include "MemoryDC.h"

/// Draws a group box with a title bar that lights up under the mouse and folds the box on a click. Folding
/// hides and disables the siblings that lie inside the box and shrinks the box to its title bar. It moves
/// nothing else: the parent does that when it is notified.
///
/// Subclass a group box of a dialog with it, one that stands after the controls inside it in the template: in
/// front of them it would take their mouse clicks. The parent is sent WM_COMMAND with one of the
/// notifications as wParam and the window of the box as lParam. All measures are pixels.
///
/// Setters return the object, so that calls can be chained, and redraw the box.
class CollapseGroupBox : public CButton {
public:
    enum Notification : WPARAM {
        kHeaderEntered = 0x500, ///< the mouse has come over the title bar
        kHeaderLeft = 0x501,    ///< the mouse has left the title bar
        kToggled = 0x502 ///< the box has folded or unfolded: it has its new size but is not redrawn yet
    };

    /// Where the title stands in its bar.
    enum Alignment : int { kLeft = 0, kCentred = 1, kRight = 2 };

    CollapseGroupBox();

    void PreSubclassWindow() override;
    BOOL PreTranslateMessage(MSG* message) override;

    /// Colour of the outline.
    virtual CollapseGroupBox& SetBorderColor(COLORREF colour);
    virtual CollapseGroupBox& SetTitleColor(COLORREF colour);

    /// Fill of the title bar until the mouse next enters or leaves it.
    virtual CollapseGroupBox& SetHeaderColor(COLORREF colour);

    /// Does nothing before there is a window. A box without a title shows its window text between two blanks.
    virtual CollapseGroupBox& SetTitle(const CString& title);
    virtual CollapseGroupBox& SetBold(bool bold);

    /// A face name of more than 31 characters is truncated.
    virtual CollapseGroupBox& SetFontName(const CString& name, BYTE charSet);
    virtual CollapseGroupBox& SetUnderline(bool underline);
    virtual CollapseGroupBox& SetItalic(bool italic);

    /// The size in whole points.
    virtual CollapseGroupBox& SetFontSize(int points);
    virtual CollapseGroupBox& SetLogFont(const LOGFONT& logFont);

    /// Values other than those of Alignment leave it as it was.
    virtual CollapseGroupBox& SetAlignment(int alignment);

    /// Folds or unfolds the box and notifies the parent. Does nothing before there is a window.
    virtual CollapseGroupBox& SetCollapsed(bool collapsed);

    /// The face behind the box. Shows at the next redraw.
    CollapseGroupBox& SetBackgroundColor(COLORREF colour);

protected:
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

    // Handles, since a CWnd pointer to a window without an object of its own lives only until the next idle
    // time.
    CArray<HWND, HWND> m_children;
    bool m_collapsed = false;
    CRect m_headerRect{0, 0, 0, 0};
    bool m_whiteBody = false;     // paints the body white
    docview::MemoryDC m_memoryDC; // everything is drawn here
    CRect m_glyphRect{0, 0, 0, 0};
    CRect m_frameRect{0, 0, 0, 0}; // the body, as of the last unfolded render
    CString m_title;
    COLORREF m_borderColour;
    COLORREF m_headerColour; // one of the next two, unless set
    COLORREF m_headerNormalColour;
    COLORREF m_headerHotColour;
    COLORREF m_backgroundColour;
    COLORREF m_titleColour;
    COLORREF m_glyphColour;
    int m_alignment = kRight;
    LOGFONT m_logFont{};
    CFont m_font;
    bool m_renderedOnce = false;

private:
    static constexpr int kMargin = 1; // between the window and what is drawn

    void Render();
    CSize PrepareTitle();
    void DrawFace(const CRect& client);
    void DrawHeader();
    void DrawGlyph();
    void DrawFrame(const CRect& body);
    void DrawTitle(const CSize& extent);

    void CollectChildren();
    void Redraw();
    CollapseGroupBox& RecreateFont();
    CRect HitRect() const;
    void SetHeaderHot(bool hot);
    void NotifyParent(Notification notification);
};
