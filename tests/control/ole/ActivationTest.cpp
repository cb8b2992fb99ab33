// The control in containers that ask in other orders, leave things out, or get them wrong.
#include "EmbeddedControl.h"
#include "PackageBuilder.h"

#include <commctrl.h>

#include <algorithm>

namespace {

constexpr LONG kUnknownVerb = 77;

using ActivationTest = EmbeddedControlTest;

RECT RectOf(HWND window, HWND parent) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

/// A white bitmap that is drawn into, and what came of it.
class Canvas {
public:
    static constexpr int kWidth = 120;
    static constexpr int kHeight = 90;

    Canvas() : m_dc(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        m_bitmap = CreateDIBSection(m_dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        m_old = SelectObject(m_dc, m_bitmap);
        m_pixels = static_cast<DWORD*>(bits);
        std::fill_n(m_pixels, kWidth * kHeight, kUntouched);
    }
    ~Canvas() {
        SelectObject(m_dc, m_old);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    [[nodiscard]] HDC Dc() const { return m_dc; }
    /// Pixels inside or outside a rectangle that were drawn.
    [[nodiscard]] int Drawn(const RECT& rect, bool inside) const {
        GdiFlush();
        int count = 0;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const bool within = PtInRect(&rect, {x, y}) != FALSE;
                count += within == inside && m_pixels[y * kWidth + x] != kUntouched;
            }
        }
        return count;
    }

    [[nodiscard]] COLORREF At(int x, int y) const {
        GdiFlush();
        const DWORD pixel = m_pixels[y * kWidth + x];
        return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
    }

private:
    static constexpr DWORD kUntouched = 0x00123456;
    HDC m_dc;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_old = nullptr;
    DWORD* m_pixels = nullptr;
};

void ExpectDraws(IViewObject2* view, const char* when) {
    const Canvas canvas;
    const RECTL bounds = {10, 10, 90, 70};
    const RECT area = {10, 10, 90, 70};
    EXPECT_EQ(S_OK, view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.Dc(), &bounds, nullptr,
                               nullptr, 0))
        << when;
    EXPECT_EQ(80 * 60, canvas.Drawn(area, true)) << when;
    EXPECT_EQ(0, canvas.Drawn(area, false)) << when;

    const HDC recording = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(S_OK, view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, recording, &bounds, &bounds,
                               nullptr, 0))
        << when;
    const HENHMETAFILE metafile = CloseEnhMetaFile(recording);
    ENHMETAHEADER header = {};
    EXPECT_NE(0U, GetEnhMetaFileHeader(metafile, sizeof header, &header));
    EXPECT_GT(header.nRecords, 2U) << when << ": more than the first and the last record";
    DeleteEnhMetaFile(metafile);
}

} // namespace

TEST_F(ActivationTest, VerbsActivateShowHideAndActivateAgain) {
    EXPECT_EQ(S_OK, Activate(OLEIVERB_INPLACEACTIVATE));
    EXPECT_FALSE(container.HasActiveObject());
    EXPECT_TRUE(IsWindowVisible(Dialog()));
    EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
    EXPECT_TRUE(container.HasActiveObject());
    EXPECT_EQ(S_OK, Activate(OLEIVERB_HIDE));
    EXPECT_FALSE(container.HasActiveObject());
    EXPECT_FALSE(IsWindowVisible(container.ControlWindow()));
    for (const LONG verb : {OLEIVERB_SHOW, OLEIVERB_PRIMARY, OLEIVERB_INPLACEACTIVATE}) {
        EXPECT_EQ(S_OK, Activate(verb)) << verb;
        EXPECT_TRUE(IsWindowVisible(Dialog())) << verb;
    }
    EXPECT_EQ(E_NOTIMPL, Activate(OLEIVERB_OPEN)) << "a control has no window of its own";
    EXPECT_EQ(E_NOTIMPL, Activate(OLEIVERB_DISCARDUNDOSTATE));
    EXPECT_EQ(OLEOBJ_S_INVALIDVERB, Activate(kUnknownVerb));
}

TEST_F(ActivationTest, DialogCoversTheControlAndFollows) {
    ASSERT_EQ(S_OK, Activate());
    Pump();
    UpdateWindow(container.ControlWindow());
    const RECT before = RectOf(Dialog(), container.Window());
    EXPECT_TRUE(EqualRect(&container.position, &before));
    const RECT larger = {0, 0, 390, 280};
    EXPECT_EQ(S_OK, InPlace()->SetObjectRects(&larger, &larger));
    Pump();
    const RECT now = RectOf(Dialog(), container.Window());
    EXPECT_TRUE(EqualRect(&larger, &now));
}

TEST_F(ActivationTest, EveryLackingContainerIsServed) {
    const auto lacking = {&MockContainer::Habits::hasFrame, &MockContainer::Habits::hasAmbients,
                          &MockContainer::Habits::hasControlSite, &MockContainer::Habits::knowsWindow,
                          &MockContainer::Habits::knowsContext};
    const PackageBuilder package;
    for (const auto habit : lacking) {
        MockContainer other;
        other.habits.*habit = false;
        const auto another = CreateControl();
        other.Embed(another.Get());
        for (const LONG verb :
             {OLEIVERB_INPLACEACTIVATE, OLEIVERB_UIACTIVATE, OLEIVERB_HIDE, OLEIVERB_SHOW}) {
            EXPECT_EQ(S_OK, other.DoVerb(verb)) << verb;
        }
        EXPECT_TRUE(other.ControlWindow());
        Value path(package.Path());
        EXPECT_EQ(S_OK, Invoke(Automation(another.Get()).Get(), kInputParameter, DISPATCH_PROPERTYPUT,
                               {path.Get()}));
        Pump();
        other.Remove();
        EXPECT_FALSE(other.ControlWindow());
        EXPECT_EQ(1, other.References());
    }
}

TEST_F(ActivationTest, RefusingContainersAreLeftAlone) {
    container.habits.allowsActivation = false;
    EXPECT_EQ(OLE_E_NOT_INPLACEACTIVE, Activate());
    EXPECT_FALSE(container.ControlWindow());
    container.habits.allowsActivation = true;
    container.habits.hasInPlaceSite = false;
    EXPECT_EQ(OLE_E_NOT_INPLACEACTIVE, Activate(OLEIVERB_UIACTIVATE));
    EXPECT_FALSE(container.ControlWindow());
}

TEST_F(ActivationTest, OddAmbientValuesAreHarmless) {
    Value text(L"no colour");
    VARIANT system = {};
    system.vt = VT_I4;
    system.lVal = static_cast<LONG>(0x80000000 | COLOR_WINDOW);
    VARIANT nothing = {};
    nothing.vt = VT_UNKNOWN;
    for (const VARIANT& value : {text.Get(), system, nothing, VARIANT{}}) {
        for (const DISPID id : {DISPID_AMBIENT_BACKCOLOR, DISPID_AMBIENT_FORECOLOR, DISPID_AMBIENT_FONT,
                                DISPID_AMBIENT_LOCALEID, DISPID_AMBIENT_USERMODE, DISPID_AMBIENT_UIDEAD}) {
            container.ambients[id] = value;
        }
        EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        Pump();
        for (const DISPID id : {DISPID_AMBIENT_BACKCOLOR, DISPID_AMBIENT_FONT, DISPID_UNKNOWN}) {
            EXPECT_EQ(S_OK, As<IOleControl>(control.Get(), IID_IOleControl)->OnAmbientPropertyChange(id));
        }
        ExpectDraws(View().Get(), "odd ambient values");
        EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    }
}

TEST_F(ActivationTest, DrawsInTheContainersBackgroundColour) {
    constexpr COLORREF kCopper = RGB(184, 115, 51);
    const std::pair<DWORD, COLORREF> colours[] = {
        {kCopper, kCopper}, {0x80000000 | COLOR_HIGHLIGHT, GetSysColor(COLOR_HIGHLIGHT)}};
    ASSERT_EQ(S_OK, Activate());
    for (const auto& [ambient, drawn] : colours) {
        VARIANT colour = {};
        colour.vt = VT_I4;
        colour.lVal = static_cast<LONG>(ambient);
        container.ambients[DISPID_AMBIENT_BACKCOLOR] = colour;
        const Canvas canvas;
        const RECTL bounds = {10, 10, 90, 70};
        EXPECT_EQ(S_OK, View()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.Dc(), &bounds,
                                     nullptr, nullptr, 0));
        EXPECT_EQ(canvas.At(50, 40), drawn);
        EXPECT_EQ(canvas.At(10, 10), drawn);
    }
}

TEST_F(ActivationTest, RectanglesOfEveryKindAreTaken) {
    const RECT rectangles[] = {{0, 0, 0, 0},
                               {5, 5, 5, 5},
                               {100, 100, 0, 0},
                               {-50, -60, 20, 20},
                               {0, 0, 32767, 32767},
                               {0, 0, 100000, 100000},
                               {-5, 0, 1, 100000},
                               {0, 0, INT_MAX, INT_MAX},
                               {INT_MIN, INT_MIN, INT_MAX, INT_MAX}};
    for (const RECT& rect : rectangles) {
        container.position = container.clip = rect;
        EXPECT_EQ(S_OK, Activate()) << rect.right;
        EXPECT_EQ(S_OK, InPlace()->SetObjectRects(&rect, &rect));
        EXPECT_EQ(S_OK, InPlace()->SetObjectRects(&rect, nullptr));
        Pump();
        EXPECT_TRUE(Dialog());
        EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    }
    EXPECT_EQ(E_INVALIDARG, InPlace()->SetObjectRects(nullptr, nullptr));
}

TEST_F(ActivationTest, DrawsBeforeDuringAndAfterActivation) {
    ExpectDraws(View().Get(), "without a container");
    container.Embed(control.Get());
    ExpectDraws(View().Get(), "before activation");
    ASSERT_EQ(S_OK, Activate());
    ExpectDraws(View().Get(), "while active");
    EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    ExpectDraws(View().Get(), "after activation");
    container.Remove();
    ExpectDraws(View().Get(), "after it was closed");
    const RECTL bounds = {0, 0, 10, 10};
    EXPECT_TRUE(FAILED(View()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, &bounds,
                                    nullptr, nullptr, 0)));
}
