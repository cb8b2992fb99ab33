// The page of the package: its name, version and preview picture.
#pragma once

#include "common/Handles.h"
#include "package/PackageSummary.h"
#include "window/Window.h"

namespace viewer {

struct Palette;

class PreviewPane : public Window {
public:
    bool Create(HWND parent, int id);

    /// Shows a package.
    void Show(PackageSummary summary);

    /// Shows the invitation to open a package.
    void Clear();

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint(HDC dc, const RECT& area) const;
    void PaintInvitation(HDC dc, const RECT& area, const Palette& palette) const;
    void PaintPackage(HDC dc, const RECT& area, const Palette& palette) const;
    void PaintPicture(HDC dc, const RECT& area, const Palette& palette) const;
    void LoadPackageIcon();
    void MakeFonts();

    bool m_hasPackage = false;
    PackageSummary m_summary;
    common::UniqueBitmap m_picture;
    common::UniqueIcon m_packageIcon;
    common::UniqueFont m_headingFont;
    common::UniqueFont m_textFont;
};

} // namespace viewer
