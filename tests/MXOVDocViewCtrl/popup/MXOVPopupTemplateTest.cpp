// What the popup is made of: its template, the host's texts, its message map.
#include "PopupFixture.h"

#include "SubclassingOrder.h"

#include <mxovshare.h>

#include <tuple>
#include <utility>

namespace {

using MXOVPopupTemplateTest = PopupFixture;

/// Reaches the message map of any window.
struct MapAccess : CWnd {
    using CWnd::GetMessageMap;
};

} // namespace

TEST_F(MXOVPopupTemplateTest, WithoutTheHostsTextsLabelsAreColonsAndTheBoxHasNoTitle) {
    const HINSTANCE host =
        std::exchange(mxovshare::OVApplication::hMXOVResInstance, GetModuleHandleW(nullptr));
    Fill(DocumentCategory::PartAssembly);
    mxovshare::OVApplication::hMXOVResInstance = host;
    for (const int label : {IDC_NAME_LABEL, IDC_PATH_LABEL, IDC_SIZE_LABEL, IDC_DESCRIPTION_LABEL}) {
        EXPECT_EQ(Text(label), L" : ") << label;
    }
    EXPECT_EQ(Text(IDC_PROPERTIES_BOX), L"");
}

TEST_F(MXOVPopupTemplateTest, PathAndDescriptionScroll) {
    Fill(DocumentCategory::PartAssembly);
    const LONG_PTR path = GetWindowLongPtrW(Item(IDC_DOCUMENT_PATH), GWL_STYLE);
    EXPECT_EQ(path & (ES_READONLY | ES_AUTOHSCROLL | ES_MULTILINE), ES_READONLY | ES_AUTOHSCROLL);
    const LONG_PTR description = GetWindowLongPtrW(Item(IDC_DESCRIPTION), GWL_STYLE);
    EXPECT_EQ(description & (ES_READONLY | ES_AUTOVSCROLL | ES_MULTILINE), ES_AUTOVSCROLL | ES_MULTILINE);
}

TEST_F(MXOVPopupTemplateTest, MessagesAreHandledInTheirOrder) {
    using Line = std::tuple<UINT, UINT, UINT>; // message, notification, control
    std::vector<Line> lines;
    Fill(DocumentCategory::PartAssembly);
    const auto map = &MapAccess::GetMessageMap;
    for (auto* entry = (MXOVPopupDlg::Current()->*map)()->lpEntries; entry->pfn != nullptr; ++entry) {
        const bool ofAControl = entry->nMessage == WM_COMMAND;
        lines.emplace_back(entry->nMessage, ofAControl ? entry->nCode : 0, ofAControl ? entry->nID : 0);
    }
    const std::vector<Line> expected = {{WM_PAINT, 0, 0},
                                        {framework::kCtlColorEntry, 0, 0},
                                        {WM_COMMAND, BN_CLICKED, 1036},
                                        {WM_COMMAND, EN_CHANGE, 1037},
                                        {WM_COMMAND, STN_CLICKED, 1049}};
    EXPECT_EQ(lines, expected);
}

TEST_F(MXOVPopupTemplateTest, BindsTheBoxesBeforeTheOtherControls) {
    const SubclassingOrder order;
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(order.Between(1030, 1048),
              (std::vector<int>{1048, 1047, 1030, 1032, 1033, 1035, 1042, 1043, 1044, 1045}));
}
