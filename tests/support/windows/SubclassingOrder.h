// In which order this program subclasses the controls of a dialog.
#pragma once

#include "ImportHook.h"

#include <algorithm>
#include <vector>

/// Notes the numbers of the controls whose window procedures are replaced while the object lives. One at a
/// time.
class SubclassingOrder {
public:
    SubclassingOrder() {
        s_numbers.clear();
        s_real = m_hook.Real();
    }
    SubclassingOrder(const SubclassingOrder&) = delete;
    SubclassingOrder& operator=(const SubclassingOrder&) = delete;

    /// Those between two numbers, once each.
    [[nodiscard]] std::vector<int> Between(int first, int last) const {
        std::vector<int> found;
        for (const int number : s_numbers) {
            if (number >= first && number <= last &&
                std::find(found.begin(), found.end(), number) == found.end()) {
                found.push_back(number);
            }
        }
        return found;
    }

private:
    static LONG_PTR WINAPI Set(HWND window, int index, LONG_PTR value) {
        if (index == GWLP_WNDPROC) {
            s_numbers.push_back(GetDlgCtrlID(window));
        }
        return s_real(window, index, value);
    }

    static inline decltype(&SetWindowLongPtrW) s_real = nullptr;
    static inline std::vector<int> s_numbers;
    ImportHook<decltype(SetWindowLongPtrW)> m_hook{"SetWindowLongPtrW", Set};
};
