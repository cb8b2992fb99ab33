#include "TestWindow.h"

#include "GdiObjectCount.h"

#include <gtest/gtest.h>

namespace {

/// A memory device context with a bitmap of its own, freed by the test.
class Surface {
public:
    Surface() : m_bitmap(::CreateBitmap(50, 50, 1, 32, nullptr)) {
        handle = ::CreateCompatibleDC(nullptr);
        m_before = ::SelectObject(handle, m_bitmap);
        ::PatBlt(handle, 0, 0, 50, 50, WHITENESS);
    }
    ~Surface() {
        ::SelectObject(handle, m_before);
        ::DeleteDC(handle);
        ::DeleteObject(m_bitmap);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    HDC handle = nullptr;

private:
    HBITMAP m_bitmap;
    HGDIOBJ m_before = nullptr;
};

TEST(DeviceContext, RestoresWhatItFoundWhenItGivesTheHandleUp) {
    const Surface surface;
    const HGDIOBJ pen = ::GetCurrentObject(surface.handle, OBJ_PEN);
    CPen red(PS_SOLID, 1, RGB(255, 0, 0));
    CDC dc;
    ASSERT_TRUE(dc.Attach(surface.handle));
    dc.SelectObject(&red);
    dc.SetTextColor(RGB(9, 9, 9));
    dc.SetBkMode(TRANSPARENT);
    dc.SaveDC();
    dc.MoveTo(1, 1);
    EXPECT_EQ(::GetCurrentObject(surface.handle, OBJ_PEN), red.m_hObject);
    EXPECT_EQ(dc.Detach(), surface.handle);
    EXPECT_EQ(::GetCurrentObject(surface.handle, OBJ_PEN), pen);
    EXPECT_EQ(::GetTextColor(surface.handle), RGB(0, 0, 0));
    EXPECT_EQ(::GetBkMode(surface.handle), OPAQUE);
    EXPECT_EQ(::SaveDC(surface.handle), 1) << "no saved state is left on the stack";
}

TEST(DeviceContext, OwnSavesNest) {
    const Surface surface;
    CDC dc;
    dc.Attach(surface.handle);
    dc.SetTextColor(RGB(1, 1, 1));
    const int saved = dc.SaveDC();
    dc.SetTextColor(RGB(2, 2, 2));
    EXPECT_TRUE(dc.RestoreDC(saved));
    EXPECT_EQ(dc.GetTextColor(), RGB(1, 1, 1));
    dc.Detach();
    EXPECT_EQ(::GetTextColor(surface.handle), RGB(0, 0, 0));
}

TEST(DeviceContext, TemporaryObjectsRestoreNothing) {
    const Surface surface;
    {
        const framework::TemporaryScope call;
        CDC::FromHandle(surface.handle)->SetTextColor(RGB(5, 6, 7));
    }
    EXPECT_EQ(::GetTextColor(surface.handle), RGB(5, 6, 7));
}

TEST(DeviceContext, SelectionsReturnTheObjectBefore) {
    const Surface surface;
    const framework::TemporaryScope call;
    CDC dc;
    dc.Attach(surface.handle);
    CPen pen(PS_SOLID, 1, 0);
    CBrush brush(RGB(1, 1, 1));
    CFont font;
    font.CreatePointFont(80, L"Tahoma");
    CPen* oldPen = dc.SelectObject(&pen);
    CBrush* oldBrush = dc.SelectObject(&brush);
    CFont* oldFont = dc.SelectObject(&font);
    EXPECT_EQ(dc.SelectObject(oldPen)->m_hObject, pen.m_hObject);
    EXPECT_EQ(dc.SelectObject(oldBrush)->m_hObject, brush.m_hObject);
    EXPECT_EQ(dc.SelectObject(oldFont)->m_hObject, font.m_hObject);
    dc.Detach();
}

TEST(DeviceContext, DeletingAMemoryContextFreesItsBitmap) {
    CBitmap bitmap;
    CDC memory;
    {
        CClientDC screen(nullptr);
        ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
        ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 10, 10));
    }
    memory.SelectObject(&bitmap);
    const HGDIOBJ handle = bitmap.m_hObject;
    EXPECT_TRUE(memory.DeleteDC());
    EXPECT_FALSE(memory.DeleteDC());
    EXPECT_TRUE(bitmap.DeleteObject());
    EXPECT_EQ(::GetObjectType(handle), 0U);
}

TEST(DeviceContext, DrawsShapes) {
    const Surface surface;
    CDC dc;
    dc.Attach(surface.handle);
    CPen black(PS_SOLID, 1, RGB(0, 0, 0));
    CBrush green(RGB(0, 255, 0));
    dc.SelectObject(&black);
    dc.SelectObject(&green);
    dc.Rectangle(CRect(0, 0, 10, 10));
    EXPECT_EQ(dc.GetPixel(0, 0), RGB(0, 0, 0));
    EXPECT_EQ(dc.GetPixel(5, 5), RGB(0, 255, 0));
    EXPECT_EQ(dc.GetPixel(10, 10), RGB(255, 255, 255));
    dc.RoundRect(CRect(20, 20, 40, 40), CPoint(10, 10));
    EXPECT_EQ(dc.GetPixel(20, 20), RGB(255, 255, 255)) << "the corner is cut off";
    EXPECT_EQ(dc.GetPixel(30, 30), RGB(0, 255, 0));
    EXPECT_EQ(dc.MoveTo(0, 45), CPoint(0, 0));
    EXPECT_TRUE(dc.LineTo(5, 45));
    EXPECT_EQ(dc.MoveTo(CPoint(9, 9)), CPoint(5, 45));
    EXPECT_EQ(dc.GetPixel(3, 45), RGB(0, 0, 0));
    CBrush blue(RGB(0, 0, 255));
    dc.FillRect(CRect(40, 40, 50, 50), &blue);
    EXPECT_EQ(dc.GetPixel(45, 45), RGB(0, 0, 255));
    dc.FillSolidRect(0, 40, 5, 5, RGB(255, 0, 0));
    EXPECT_EQ(dc.GetPixel(0, 40), RGB(255, 0, 0));
    EXPECT_EQ(dc.GetPixel(5, 40), RGB(255, 255, 255));
    EXPECT_EQ(dc.GetBkColor(), RGB(255, 0, 0));
    dc.BitBlt(12, 0, 5, 5, &dc, 40, 40, SRCCOPY);
    EXPECT_EQ(dc.GetPixel(12, 0), RGB(0, 0, 255));
    dc.Detach();
}

TEST(DeviceContext, MeasuresAndDrawsText) {
    const Surface surface;
    CDC dc;
    dc.Attach(surface.handle);
    const CString text(L"Title");
    const CSize size = dc.GetTextExtent(text);
    EXPECT_GT(size.cx, 0);
    EXPECT_GT(size.cy, 0);
    EXPECT_EQ(dc.GetTextExtent(CString()).cx, 0);
    CRect rect(0, 0, 50, 50);
    EXPECT_EQ(dc.DrawText(text, rect, DT_CALCRECT | DT_SINGLELINE), size.cy);
    EXPECT_EQ(rect.Width(), size.cx);
    const auto inked = [&] {
        for (int y = 0; y < size.cy; ++y) {
            for (int x = 0; x < size.cx; ++x) {
                if (dc.GetPixel(x, y) != RGB(255, 255, 255)) {
                    return true;
                }
            }
        }
        return false;
    };
    EXPECT_FALSE(inked());
    EXPECT_TRUE(dc.TextOut(0, 0, text));
    EXPECT_TRUE(inked());
    dc.Detach();
}

TEST(WindowContext, ClientIsGivenBack) {
    RecordingWindow window;
    ASSERT_TRUE(window.CreateTop(WS_POPUP | WS_VISIBLE));
    const auto use = [&] {
        CClientDC client(&window);
        CClientDC screen(nullptr);
        CPen pen(PS_SOLID, 1, RGB(1, 2, 3));
        client.SelectObject(&pen);
        EXPECT_EQ(::WindowFromDC(client), window.m_hWnd);
        EXPECT_NE(screen.m_hDC, nullptr);
    };
    use();
    const int before = GdiObjectCount();
    for (int i = 0; i < 100; ++i) {
        use();
    }
    EXPECT_LE(GdiObjectCount(), before + 1);
}

TEST(WindowContext, AWindowThatIsGoneGivesNoContext) {
    RecordingWindow window;
    window.m_hWnd = reinterpret_cast<HWND>(static_cast<UINT_PTR>(0xDEAD));
    EXPECT_THROW(CClientDC{&window}, CResourceException*);
    window.m_hWnd = nullptr;
}

class Painter : public RecordingWindow {
public:
    CRect dirty;

protected:
    afx_msg void OnPaint() {
        CPaintDC dc(this);
        dirty = CRect(dc.m_ps.rcPaint);
        dc.FillSolidRect(&dc.m_ps.rcPaint, RGB(0, 0, 255));
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Painter, RecordingWindow)
    ON_WM_PAINT()
END_MESSAGE_MAP()

TEST(WindowContext, PaintingValidatesAndEndsOnce) {
    Painter window;
    ASSERT_TRUE(window.CreateTop(WS_POPUP | WS_VISIBLE));
    window.UpdateWindow();
    window.InvalidateRect(CRect(1, 2, 30, 40));
    window.UpdateWindow();
    EXPECT_EQ(window.dirty, CRect(1, 2, 30, 40));
    EXPECT_FALSE(::GetUpdateRect(window, nullptr, FALSE));
    CClientDC dc(&window);
    EXPECT_EQ(dc.GetPixel(10, 10), RGB(0, 0, 255));
}

} // namespace
