// The collapsible boxes of the gallery.
#pragma once

#include "controls/CollapseGroupBox.h"
#include "GalleryPage.h"

#include <array>
#include <functional>

/// Three boxes that report each other's looks, and a dialog that moves what lies below them when they fold.
class CollapsePage : public GalleryPage {
public:
    /// `tell` is called with a sentence for each notification of a box.
    explicit CollapsePage(std::function<void(const CString&)> tell) : m_tell(std::move(tell)) {}

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnAlignment();
    afx_msg void OnFontStyle();
    afx_msg void OnLarger();
    afx_msg void OnSmaller();
    afx_msg void OnCopper();
    afx_msg void OnForest();
    afx_msg void OnSystem();
    afx_msg void OnFoldAll();
    afx_msg void OnUnfoldAll();
    DECLARE_MESSAGE_MAP()

private:
    struct Box {
        CollapseGroupBox control;
        int height = 0; // as of the last notification
    };
    struct Colours {
        COLORREF border;
        COLORREF header;
        COLORREF title;
    };

    void Tell(Box& box, WPARAM notification);
    void MoveWhatIsBelow(Box& box);
    void SetFontSize(int points);
    void SetColours(const Colours& colours);
    void SetAllCollapsed(bool collapsed);

    std::function<void(const CString&)> m_tell;
    std::array<Box, 3> m_boxes;
    int m_fontSize = 8; // points
};
