// Shows two texts beside each other, scrolled together.
#pragma once

#include "common/Handles.h"
#include "compare/TextPair.h"
#include "document/TextView.h"

namespace viewer {

class TextPairPane : public Window {
public:
    /// Creates the pane, shown, with a title above each text.
    bool Create(HWND parent, int id, const std::wstring& beforeTitle, const std::wstring& afterTitle);

    /// Shows texts at their first difference.
    void Show(TextColumns columns);

    /// Shows the next difference; after the last one the first one. Nothing without differences.
    void ShowNext();
    /// The same in the other direction.
    void ShowPrevious();

    [[nodiscard]] std::size_t DifferenceCount() const { return m_differences.size(); }
    /// The index of the difference that is framed.
    [[nodiscard]] std::size_t Current() const { return m_current; }

    [[nodiscard]] const TextView& Before() const { return m_before; }
    [[nodiscard]] const TextView& After() const { return m_after; }

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    bool CreateTexts();
    void Arrange();
    void Paint(HDC dc, const RECT& area) const;
    void ShowDifference(std::size_t index);

    std::wstring m_beforeTitle;
    std::wstring m_afterTitle;
    common::UniqueFont m_font;
    TextView m_before;
    TextView m_after;
    std::vector<RowRange> m_differences;
    std::size_t m_current = 0;
};

} // namespace viewer
