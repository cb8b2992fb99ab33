// The page of the package: its name, version and preview picture.
#pragma once

#include "common/Handles.h"
#include "package/PackageSummary.h"
#include "window/Window.h"

namespace viewer {

struct Palette;

class PreviewPane : public Window {
public:
    /// Creates the page, hidden.
    bool Create(HWND parent, int id);

    /// Shows a package.
    void Show(PackageSummary summary);

    /// Forgets the package.
    void Clear();

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    void Paint(HDC dc, const RECT& area) const;
    void PaintPackage(HDC dc, const RECT& area, const Palette& palette) const;
    void PaintPicture(HDC dc, const RECT& area, const Palette& palette) const;

    PackageSummary m_summary;
    common::UniqueBitmap m_picture;
    common::UniqueFont m_headingFont;
    common::UniqueFont m_textFont;
};

} // namespace viewer
