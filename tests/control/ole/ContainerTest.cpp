// Containers that the control meets in the field: sloppy, strict and hostile ones.
#include "EmbeddedControl.h"

namespace {

using ContainerTest = EmbeddedControlTest;

} // namespace

TEST_F(ContainerTest, ContentIsDrawnAndMeasuredWithAnyIndex) {
    const auto view = As<IViewObjectEx>(control.Get(), IID_IViewObjectEx);
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    const RECTL bounds = {0, 0, 50, 50};
    for (const LONG index : {-1L, 0L, 1L, LONG_MAX}) {
        EXPECT_EQ(S_OK, view->Draw(DVASPECT_CONTENT, index, nullptr, nullptr, nullptr, dc, &bounds, nullptr,
                                   nullptr, 0))
            << index;
        SIZEL size = {};
        EXPECT_EQ(S_OK, view->GetExtent(DVASPECT_CONTENT, index, nullptr, &size)) << index;
        LOGPALETTE* colours = nullptr;
        EXPECT_EQ(S_FALSE, view->GetColorSet(DVASPECT_CONTENT, index, nullptr, nullptr, nullptr, &colours))
            << index;
    }
    EXPECT_EQ(DV_E_LINDEX,
              view->Draw(DVASPECT_OPAQUE, 0, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0));
    EXPECT_EQ(DV_E_DVASPECT, view->Draw(DVASPECT_THUMBNAIL, -1, nullptr, nullptr, nullptr, dc, &bounds,
                                        nullptr, nullptr, 0));
    DeleteDC(dc);
}
