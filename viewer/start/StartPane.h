// The page of a window without a package: an invitation, a button to open one, and the recent packages with
// their pictures.
#pragma once

#include "common/Handles.h"
#include "window/RequestThread.h"
#include "window/Window.h"

#include <memory>
#include <string>
#include <vector>

#include <commctrl.h>

namespace viewer {

struct Palette;

class StartPane : public Window {
public:
    /// Creates the page. Its commands go to the outermost window.
    bool Create(HWND parent, int id);

    /// Shows these packages, full paths, the newest first. Their pictures follow when they are read.
    void ShowRecent(std::vector<std::wstring> packages);

    /// Sets the focus to the button.
    void TakeFocus() const { SetFocus(m_button); }

    /// Whether a key is for the recent packages, and not for moving the focus.
    [[nodiscard]] bool WantsKey(const MSG& message) const {
        return message.hwnd == m_list && message.message == WM_KEYDOWN && message.wParam == VK_RETURN;
    }

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    using PictureReader = RequestThread<std::wstring, common::UniqueBitmap>;

    bool CreateParts();
    HWND CreatePart(const wchar_t* className, const std::wstring& text, DWORD style, int id);
    void OnColoursChanged();
    void LoadFontAndIcon();
    void SetListColours() const;
    void MakeImages();
    int AddImage(HBITMAP picture);
    void FillList();
    void ReadNextPicture();
    void OnPictureRead();
    void Arrange();
    void ArrangeRecent(const RECT& area, int top);
    [[nodiscard]] SIZE ButtonSize() const;
    void Paint(HDC dc, const RECT& area) const;
    void SendToFrame(int command) const;

    std::vector<std::wstring> m_packages;
    std::size_t m_nextPicture = 0; // of the package that is being read
    std::unique_ptr<PictureReader> m_reader;
    HWND m_button = nullptr; // children, destroyed with the window
    HWND m_label = nullptr;
    HWND m_list = nullptr;
    std::vector<std::wstring> m_invitation; // lines
    int m_lineHeight = 0;                   // of a line
    int m_axis = 0;                         // in client coordinates, as the next one
    int m_top = 0;                          // of the icon
    common::UniqueIcon m_packageIcon;
    common::UniqueFont m_font;
    common::UniqueOf<HIMAGELIST, &ImageList_Destroy> m_images;
};

} // namespace viewer
