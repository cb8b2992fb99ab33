// Loading a catalogue by number of documents, beside its parts and other readers of the same file.
#include "CatalogueFolder.h"
#include "common/Handles.h"
#include "ControlClient.h"
#include "IniReaders.h"
#include "Report.h"
#include "Timing.h"

#include <commctrl.h>

#include <cmath>
#include <cstdio>
#include <iterator>
#include <map>
#include <string>

namespace {

constexpr int kCounts[] = {10, 100, 1000, 10000, 100000};
constexpr int kMostForSlow = 10000; // beyond, Wine takes minutes to fill the folder and to read the profile
constexpr int kRuns = 7;
constexpr double kMostOfParts = 1.2;
constexpr double kMostGrowth = 1.1;
constexpr int kAdditionalList = 1007;
volatile size_t g_sink;

double LoadThroughCom(ControlClient& client, CatalogueFolder& folder, bool intoEmptyControl) {
    return bench::Median(
        kRuns,
        [&] {
            folder.Touch();
            if (intoEmptyControl) {
                client.Call(L"ClearAllData", {});
            }
        },
        [&] {
            client.Call(L"LoadFile", {folder.Path(), L""});
        });
}

double AttributeQueries(const CatalogueFolder& folder) {
    return bench::Median(kRuns, [&] {
        for (const std::wstring& document : folder.Documents()) {
            WIN32_FILE_ATTRIBUTE_DATA data;
            g_sink = g_sink + static_cast<size_t>(
                                  GetFileAttributesExW(document.c_str(), GetFileExInfoStandard, &data));
        }
    });
}

// The other folders of a package are listed, which this catalogue has none of: one with as many files.
double ListFolder(int count) {
    const TempFolder folder;
    for (int i = 0; i < count; ++i) {
        folder.Write(std::to_wstring(i) + L".nc", "");
    }
    return bench::Median(kRuns, [&] {
        WIN32_FIND_DATAW data;
        const common::UniqueSearch search = common::OwnSearch(FindFirstFileW((folder / L"*").c_str(), &data));
        while (FindNextFileW(search.get(), &data)) {
            g_sink = g_sink + data.nFileSizeLow;
        }
    });
}

// Takes the rows of the last load out, as the next one does first.
double ClearList(ControlClient& client, CatalogueFolder& folder) {
    return bench::Median(
        kRuns,
        [&] {
            client.Call(L"LoadFile", {folder.Path(), L""});
        },
        [&] { SendMessageW(client.Item(kAdditionalList), LVM_DELETEALLITEMS, 0, 0); });
}

double PaintList(HWND list) {
    return bench::Median(
        kRuns, [&] { RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); });
}

// The same rows in the control's own list view, by nothing but messages.
double FillList(HWND list, const CatalogueFolder& folder) {
    const auto set = [&](int row, int column, const wchar_t* text) {
        LVITEMW item = {};
        item.mask = column == 0 ? LVIF_TEXT | LVIF_IMAGE : LVIF_TEXT;
        item.iItem = row;
        item.iSubItem = column;
        item.pszText = const_cast<wchar_t*>(text);
        SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    };
    return bench::Median(
        kRuns, [&] { SendMessageW(list, LVM_DELETEALLITEMS, 0, 0); },
        [&] {
            SendMessageW(list, WM_SETREDRAW, FALSE, 0);
            int row = 0;
            for (const std::wstring& document : folder.Documents()) {
                set(row, 0, document.c_str() + document.rfind(L'\\') + 1);
                set(row, 1, L"1 KB");
                set(row++, 2, L"2024-01-01 09:05:03");
            }
            SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        });
}

std::string Title(int count, const char* what) {
    return std::to_string(count) + ": " + what;
}

void Row(int count, const char* what, double milliseconds, double reference = 0) {
    const std::string title = Title(count, what);
    reference > 0 ? bench::Compared(title.c_str(), milliseconds, reference)
                  : bench::Row(title.c_str(), milliseconds);
}

} // namespace

int main() {
    ComApartment apartment;
    ControlClient client;
    std::map<int, double> loads;
    for (const int count : kCounts) {
        CatalogueFolder folder(count);
        const std::wstring file = folder.InformationFile();
        const auto touch = [&] { folder.Touch(); };
        loads[count] = LoadThroughCom(client, folder, true);
        const double load = LoadThroughCom(client, folder, false);
        const double index = bench::Median(kRuns, touch, [&] { g_sink = readers::PlainIndex(file, count); });
        const double queries = AttributeQueries(folder);
        const double clearing = ClearList(client, folder);
        const double fill = FillList(client.Item(kAdditionalList), folder);
        const double painting = PaintList(client.Item(kAdditionalList));
        const double scan = bench::Median(kRuns, [&] { g_sink = readers::ScanBytes(file); });

        bench::Limited(Title(count, "LoadFile through COM, beside the sum of").c_str(), load,
                       index + queries + clearing + fill, kMostOfParts);
        Row(count, "LoadFile into an empty control", loads[count]);
        Row(count, "  plain one-pass index with look-ups", index);
        Row(count, "  one attribute query each", queries);
        Row(count, "  taking out the rows of the last load", clearing);
        Row(count, "  redraw-off list fill", fill);
        Row(count, "painting the rows, after it", painting);
        Row(count, "one read and scan of the bytes", scan);
        Row(count, "INIFile: read and index",
            bench::Median(kRuns, touch, [&] { g_sink = readers::SharedLibraryIndex(file); }), scan);
        Row(count, "INIFile: read, index and look-ups",
            bench::Median(kRuns, touch, [&] { g_sink = readers::SharedLibrary(file, count); }), scan);
        Row(count, "SimpleIni: read once and look-ups",
            bench::Median(kRuns, [&] { g_sink = readers::SimpleIni(file, count); }), scan);
        if (count <= kMostForSlow) {
            Row(count, "listing a folder of as many files", ListFolder(count));
            Row(count, "platform's profile functions",
                bench::Median(count > 1000 ? 1 : 3, [&] { g_sink = readers::ProfileFunctions(file, count); }),
                scan);
        }
        std::printf("\n");
    }
    for (auto load = std::next(loads.begin()); load != loads.end(); ++load) {
        const auto [fewer, before] = *std::prev(load);
        const double exponent = std::log(load->second / before) / std::log(1.0 * load->first / fewer);
        bench::LimitedNumber(
            ("growth of LoadFile into an empty control up to " + std::to_string(load->first) + ", exponent")
                .c_str(),
            exponent, kMostGrowth);
    }
    return 0;
}
