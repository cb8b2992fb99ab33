#include "OleTestControl.h"

bool operator==(const POINT& left, const POINT& right) {
    return left.x == right.x && left.y == right.y;
}

namespace {

class ControlViewTest : public OleTest {
protected:
    void SetUp() override {
        OleTest::SetUp();
        m_control = CreateControl();
        m_view = m_control.As<IViewObjectEx>(IID_IViewObjectEx);
    }
    void TearDown() override {
        m_container.Remove();
        m_view.Reset();
        m_control.Reset();
        OleTest::TearDown();
    }
    HRESULT Draw(HDC dc, const RECTL& bounds, DWORD aspect = DVASPECT_CONTENT, LONG index = -1) {
        return m_view->Draw(aspect, index, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
    }

    MockContainer m_container;
    ComPtr<IUnknown> m_control;
    ComPtr<IViewObjectEx> m_view;
};

/// A bitmap to draw into, black at first.
class Canvas {
public:
    Canvas() : m_dc(::CreateCompatibleDC(nullptr)) {
        const HDC screen = ::GetDC(nullptr);
        m_bitmap = ::CreateCompatibleBitmap(screen, 100, 100);
        ::ReleaseDC(nullptr, screen);
        m_old = ::SelectObject(m_dc, m_bitmap);
        ::PatBlt(m_dc, 0, 0, 100, 100, BLACKNESS);
    }
    ~Canvas() {
        ::SelectObject(m_dc, m_old);
        ::DeleteObject(m_bitmap);
        ::DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    operator HDC() const { return m_dc; }

private:
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_old;
};

TEST_F(ControlViewTest, DrawsIntoTheBoundsBeforeAndAfterActivation) {
    const COLORREF window = ::GetSysColor(COLOR_WINDOW);
    const Canvas canvas;
    ASSERT_EQ(S_OK, Draw(canvas, {10, 20, 60, 70}));
    EXPECT_TRUE(IsRect(CRect(10, 20, 60, 70), CTestControl::last->drawn.back()));
    EXPECT_EQ(window, ::GetPixel(canvas, 10, 20));
    EXPECT_EQ(window, ::GetPixel(canvas, 59, 69));
    EXPECT_EQ(RGB(0, 0, 0), ::GetPixel(canvas, 60, 70));
    m_container.Embed(m_control.Get());
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    ASSERT_EQ(S_OK, Draw(canvas, {70, 70, 90, 90}));
    EXPECT_EQ(window, ::GetPixel(canvas, 80, 80));
    Pump();
    EXPECT_TRUE(IsRect(CRect(0, 0, 200, 100), CTestControl::last->drawn.back()))
        << "the window is drawn again";
}

TEST_F(ControlViewTest, LeavesTheDeviceContextAsItWas) {
    const Canvas canvas;
    ::SetMapMode(canvas, MM_HIMETRIC);
    ::SetWindowOrgEx(canvas, 300, 400, nullptr);
    ::SetViewportOrgEx(canvas, 5, 6, nullptr);
    ASSERT_EQ(S_OK, Draw(canvas, {300, 400, 1300, -600}));
    EXPECT_EQ(MM_HIMETRIC, ::GetMapMode(canvas));
    EXPECT_EQ((std::vector<POINT>{{0, 0}, {0, 0}}), CTestControl::last->origins)
        << "of window and viewport, in pixels";
    POINT origin{};
    ::GetWindowOrgEx(canvas, &origin);
    EXPECT_EQ((POINT{300, 400}), origin);
    ::GetViewportOrgEx(canvas, &origin);
    EXPECT_EQ((POINT{5, 6}), origin);
    const CRect drawn = CTestControl::last->drawn.back();
    EXPECT_EQ(CPoint(5, 6), drawn.TopLeft());
    const int side = ::MulDiv(1000, ::GetDpiForSystem(), 2540); // pixels, of 10 millimetres
    EXPECT_NEAR(side, drawn.Width(), 1);
    EXPECT_NEAR(side, drawn.Height(), 1);
}

TEST_F(ControlViewTest, DrawsIntoMetafiles) {
    const HDC recorder = ::CreateEnhMetaFile(nullptr, nullptr, nullptr, nullptr);
    ASSERT_EQ(S_OK, Draw(recorder, {0, 0, 50, 50}));
    const HENHMETAFILE metafile = ::CloseEnhMetaFile(recorder);
    const Canvas canvas;
    const RECT place = {0, 0, 50, 50};
    EXPECT_TRUE(::PlayEnhMetaFile(canvas, metafile, &place));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), ::GetPixel(canvas, 25, 25));
    ::DeleteEnhMetaFile(metafile);
}

TEST_F(ControlViewTest, OtherAspectsAndNoPlaceAreRefused) {
    const Canvas canvas;
    EXPECT_EQ(DV_E_DVASPECT, Draw(canvas, {0, 0, 10, 10}, DVASPECT_ICON));
    EXPECT_EQ(DV_E_LINDEX, Draw(canvas, {0, 0, 10, 10}, DVASPECT_OPAQUE, 3));
    EXPECT_EQ(E_INVALIDARG, Draw(nullptr, {0, 0, 10, 10}));
    EXPECT_EQ(E_INVALIDARG, m_view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas, nullptr,
                                         nullptr, nullptr, 0));
    EXPECT_TRUE(CTestControl::last->drawn.empty());
}

TEST_F(ControlViewTest, TellsItsExtentStatusAndHits) {
    SIZEL extent{};
    EXPECT_EQ(S_OK, m_view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &extent));
    EXPECT_EQ(::MulDiv(120, 2540, ::GetDpiForSystem()), extent.cx);
    EXPECT_EQ(DV_E_DVASPECT, m_view->GetExtent(DVASPECT_ICON, -1, nullptr, &extent));
    RECTL rect{};
    EXPECT_EQ(S_OK, m_view->GetRect(DVASPECT_CONTENT, &rect));
    EXPECT_EQ(::MulDiv(80, 2540, ::GetDpiForSystem()), rect.bottom);
    DWORD status = 0;
    EXPECT_EQ(S_OK, m_view->GetViewStatus(&status));
    EXPECT_EQ(static_cast<DWORD>(VIEWSTATUS_OPAQUE), status);
    const RECT bounds = {0, 0, 10, 10};
    DWORD hit = 0;
    EXPECT_EQ(S_OK, m_view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {5, 5}, 0, &hit));
    EXPECT_EQ(static_cast<DWORD>(HITRESULT_HIT), hit);
    EXPECT_EQ(S_OK, m_view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {15, 5}, 0, &hit));
    EXPECT_EQ(static_cast<DWORD>(HITRESULT_OUTSIDE), hit);
    const RECT other = {9, 9, 20, 20};
    EXPECT_EQ(S_OK, m_view->QueryHitRect(DVASPECT_CONTENT, &bounds, &other, 0, &hit));
    EXPECT_EQ(static_cast<DWORD>(HITRESULT_HIT), hit);
    EXPECT_EQ(E_NOTIMPL, m_view->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, &extent));
    LOGPALETTE* colours = nullptr;
    EXPECT_EQ(S_FALSE, m_view->GetColorSet(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, &colours));
}

TEST_F(ControlViewTest, SinkHearsOfChanges) {
    MockSink sink;
    ASSERT_EQ(S_OK, m_view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, &sink));
    EXPECT_EQ(1U, sink.calls.size());
    CTestControl::last->InvalidateControl();
    EXPECT_EQ(2U, sink.calls.size());
    DWORD aspects = 0;
    ComPtr<IAdviseSink> given;
    EXPECT_EQ(S_OK, m_view->GetAdvise(&aspects, nullptr, given.Receive()));
    EXPECT_EQ(static_cast<DWORD>(DVASPECT_CONTENT), aspects);
    EXPECT_EQ(&sink, given.Get());
    given.Reset();
    ASSERT_EQ(S_OK, m_view->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, &sink));
    CTestControl::last->InvalidateControl();
    CTestControl::last->InvalidateControl();
    EXPECT_EQ(3U, sink.calls.size());
    EXPECT_EQ(1, sink.References());
}

TEST_F(ControlViewTest, TheOlderMetafileIsAsLargeAsTheControlInItsUnitsAndPixels) {
    const ComPtr<IDataObject> data = m_control.As<IDataObject>(IID_IDataObject);
    FORMATETC format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
    STGMEDIUM medium{};
    ASSERT_EQ(S_OK, data->GetData(&format, &medium));
    const auto* picture = static_cast<const METAFILEPICT*>(::GlobalLock(medium.hMetaFilePict));
    SIZEL extent{};
    EXPECT_EQ(S_OK, m_view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &extent));
    EXPECT_EQ(MM_ANISOTROPIC, picture->mm);
    EXPECT_EQ(extent.cx, picture->xExt);
    EXPECT_EQ(extent.cy, picture->yExt);
    struct Found {
        SIZE pixels;
        int records;
    } found{};
    const auto note = [](HDC, HANDLETABLE*, METARECORD* record, int, LPARAM place) -> int {
        constexpr WORD kSetWindowExt = 0x020C; // its parameters begin with the height
        Found& found = *reinterpret_cast<Found*>(place);
        if (record->rdFunction == kSetWindowExt) {
            found.pixels = {record->rdParm[1], record->rdParm[0]};
        }
        ++found.records;
        return TRUE;
    };
    const Canvas canvas;
    ::EnumMetaFile(canvas, picture->hMF, note, reinterpret_cast<LPARAM>(&found));
    EXPECT_EQ(120, found.pixels.cx);
    EXPECT_EQ(80, found.pixels.cy);
    EXPECT_GT(found.records, 4) << "mapping mode, origin, extent, the end, and what the control draws";
    ::GlobalUnlock(medium.hMetaFilePict);
    ::ReleaseStgMedium(&medium);
}

TEST_F(ControlViewTest, DataIsThePictureAsEitherMetafile) {
    const ComPtr<IDataObject> data = m_control.As<IDataObject>(IID_IDataObject);
    ComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(S_OK, data->EnumFormatEtc(DATADIR_GET, formats.Receive()));
    FORMATETC format{};
    int count = 0;
    while (formats->Next(1, &format, nullptr) == S_OK) {
        ++count;
        EXPECT_EQ(S_OK, data->QueryGetData(&format));
        STGMEDIUM medium{};
        ASSERT_EQ(S_OK, data->GetData(&format, &medium));
        EXPECT_EQ(format.tymed, medium.tymed);
        EXPECT_TRUE(IsRect(CRect(0, 0, 120, 80), CTestControl::last->drawn.back()));
        if (medium.tymed == TYMED_ENHMF) {
            ENHMETAHEADER header{};
            ASSERT_NE(0U, ::GetEnhMetaFileHeader(medium.hEnhMetaFile, sizeof header, &header));
            EXPECT_GT(header.nRecords, 2U) << "more than its beginning and end";
        }
        ::ReleaseStgMedium(&medium);
        format.tymed = TYMED_FILE;
        EXPECT_EQ(DV_E_TYMED, data->GetData(&format, &medium));
        format.dwAspect = DVASPECT_ICON;
        EXPECT_EQ(DV_E_DVASPECT, data->QueryGetData(&format));
        format.cfFormat = CF_TEXT;
        EXPECT_EQ(DV_E_FORMATETC, data->GetData(&format, &medium));
    }
    EXPECT_EQ(2, count);
    MockSink sink;
    DWORD connection = 0;
    FORMATETC enhanced = {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
    ASSERT_EQ(S_OK, data->DAdvise(&enhanced, ADVF_NODATA, &sink, &connection));
    CTestControl::last->InvalidateControl();
    EXPECT_EQ(std::vector<std::string>{"OnDataChange"}, sink.calls);
    EXPECT_EQ(S_OK, data->DUnadvise(connection));
    EXPECT_EQ(1, sink.References());
}

} // namespace
