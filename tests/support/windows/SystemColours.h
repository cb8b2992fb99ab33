// The system's colours, changed as the user's settings do it.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>

inline constexpr std::array<int, 7> kChangedColours = {COLOR_BTNFACE,    COLOR_BTNTEXT,   COLOR_WINDOW,
                                                       COLOR_WINDOWTEXT, COLOR_BTNSHADOW, COLOR_INFOBK,
                                                       COLOR_INFOTEXT};
inline constexpr COLORREF kDarkPage = RGB(32, 16, 48);
inline constexpr COLORREF kDarkCard = RGB(0, 0, 0);
inline constexpr COLORREF kDarkBar = RGB(48, 32, 16);

/// Dark system colours while it lives.
class DarkSystemColours {
public:
    DarkSystemColours() {
        std::ranges::transform(kChangedColours, m_before.begin(),
                               [](int element) { return GetSysColor(element); });
        Set({kDarkPage, RGB(255, 255, 0), kDarkCard, RGB(255, 255, 255), RGB(0, 255, 255), kDarkBar,
             RGB(255, 0, 255)});
    }
    ~DarkSystemColours() { Set(m_before); }
    DarkSystemColours(const DarkSystemColours&) = delete;
    DarkSystemColours& operator=(const DarkSystemColours&) = delete;

private:
    using Colours = std::array<COLORREF, kChangedColours.size()>;

    static void Set(const Colours& colours) {
        SetSysColors(static_cast<int>(kChangedColours.size()), kChangedColours.data(), colours.data());
    }

    Colours m_before = {};
};
