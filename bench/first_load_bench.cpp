// The first load of a catalogue into a control that is shown already, until its rows are painted, beside the
// system's own folder view showing a folder of as many files.
#include "CatalogueFolder.h"
#include "common/ComPtr.h"
#include "ControlClient.h"
#include "Report.h"
#include "Timing.h"

#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

namespace {

constexpr int kCounts[] = {10, 100, 1000, 10000};
constexpr int kRuns = 7;
constexpr int kAdditionalList = 1007;
constexpr double kMost = 0.8; // of the time of the folder view

/// The largest number of rows in a list view below a window.
int RowsBelow(HWND parent) {
    int rows = 0;
    EnumChildWindows(
        parent,
        [](HWND window, LPARAM parameter) -> BOOL {
            wchar_t name[64] = L"";
            GetClassNameW(window, name, ARRAYSIZE(name));
            if (lstrcmpW(name, WC_LISTVIEWW) == 0) {
                int& most = *reinterpret_cast<int*>(parameter);
                most = std::max(most, static_cast<int>(SendMessageW(window, LVM_GETITEMCOUNT, 0, 0)));
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&rows));
    return rows;
}

/// A frame with the system's folder view over its whole client area, empty.
class FolderView {
public:
    FolderView() {
        m_frame = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 500, 620,
                                  nullptr, nullptr, nullptr, nullptr);
        const RECT area = {0, 0, 500, 620};
        const FOLDERSETTINGS settings = {FVM_DETAILS, FWF_NOSUBFOLDERS};
        m_well = SUCCEEDED(CoCreateInstance(CLSID_ExplorerBrowser, nullptr, CLSCTX_INPROC_SERVER,
                                            IID_IExplorerBrowser, m_browser.ReceiveVoid())) &&
                 SUCCEEDED(m_browser->Initialize(m_frame, &area, &settings));
        ControlClient::Settle();
    }
    ~FolderView() {
        if (m_well) {
            m_browser->Destroy();
        }
        DestroyWindow(m_frame);
    }
    FolderView(const FolderView&) = delete;
    FolderView& operator=(const FolderView&) = delete;

    /// Whether it shows a folder of so many files, painted.
    bool Show(const std::wstring& folder, int files) {
        const std::unique_ptr<ITEMIDLIST, decltype(&ILFree)> list(ILCreateFromPathW(folder.c_str()), &ILFree);
        if (!m_well || !list || FAILED(m_browser->BrowseToIDList(list.get(), SBSP_ABSOLUTE))) {
            return false;
        }
        do {
            ControlClient::Settle();
        } while (RowsBelow(m_frame) < files);
        return true;
    }

private:
    HWND m_frame;
    common::ComPtr<IExplorerBrowser> m_browser;
    bool m_well = false;
};

/// Handles what a window that was just shown brings about: the window manager moves, activates and paints it
/// some time afterwards.
void WaitUntilQuiet() {
    const double end = bench::Now() + 200;
    while (bench::Now() < end) {
        ControlClient::Settle();
        Sleep(1);
    }
}

bool Bench(int count) {
    CatalogueFolder catalogue(count);
    const TempFolder files;
    for (int i = 0; i < count; ++i) {
        files.Write(L"document" + std::to_wstring(i) + L".pdf", "x");
    }
    std::vector<double> calls;
    std::vector<double> paintings;
    std::vector<double> loads;
    std::vector<double> views;
    bool well = true;
    for (int run = 0; run < kRuns && well; ++run) { // in turns, so that a busy machine slows both alike
        catalogue.Touch();
        ControlClient client;
        WaitUntilQuiet();
        calls.push_back(bench::Time([&] { client.Call(L"LoadFile", {catalogue.Path(), L""}); }));
        paintings.push_back(bench::Time(ControlClient::Settle));
        loads.push_back(calls.back() + paintings.back());
        well = SendMessageW(client.Item(kAdditionalList), LVM_GETITEMCOUNT, 0, 0) == count;
        FolderView view;
        WaitUntilQuiet();
        views.push_back(bench::Time([&] { well = view.Show(files.Path(), count) && well; }));
    }
    const std::string title = std::to_string(count) + ": first LoadFile, shown, beside the folder view";
    bench::Limited(title.c_str(), bench::MedianOf(loads), bench::MedianOf(views), kMost);
    bench::Row("  LoadFile itself, its phases in catalogue_bench", bench::MedianOf(calls));
    bench::Row("  painting", bench::MedianOf(paintings));
    return well;
}

} // namespace

int main() {
    const ComApartment apartment;
    for (const int count : kCounts) {
        if (!Bench(count)) {
            std::puts("the control or the folder view did not show the documents");
            return 1;
        }
    }
    return 0;
}
