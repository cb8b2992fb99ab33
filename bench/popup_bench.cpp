// Filling the properties popup, beside a bare list view with the same texts, and typing into its description,
// beside the system's own way to write the same value.
#include "package/RecordLists.h"
#include "PopupFixture.h"
#include "Report.h"
#include "Timing.h"

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace docview;

namespace {

constexpr int kHistoryEntries = 1000;
constexpr int kDocuments[] = {1000, 10'000};
constexpr double kLongestKeystroke = 16; // milliseconds: a picture of a screen
constexpr int kRuns = 25;
constexpr int kKeystrokes = 1000;

std::wstring Numbered(const wchar_t* text, int number) {
    return text + std::to_wstring(number);
}

/// The system's list view alone, in a window that wants to know nothing of it.
class BareList {
public:
    BareList() {
        m_list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | WS_VISIBLE | LVS_REPORT | LVS_SINGLESEL,
                                 700, 40, 280, 90, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        LVCOLUMNW column = {};
        column.mask = LVCF_WIDTH;
        column.cx = 80;
        for (int i = 0; i < 3; ++i) {
            SendMessageW(m_list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                         reinterpret_cast<LPARAM>(&column));
        }
    }
    ~BareList() { DestroyWindow(m_list); }
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;

    void Clear() const { SendMessageW(m_list, LVM_DELETEALLITEMS, 0, 0); }

    void Fill(const std::vector<HistoryEntry>& history) const {
        SendMessageW(m_list, WM_SETREDRAW, FALSE, 0);
        for (int place = 0; const HistoryEntry& entry : history) {
            Set(LVM_INSERTITEMW, place, 0, entry.operation);
            Set(LVM_SETITEMTEXTW, place, 1, entry.time);
            Set(LVM_SETITEMTEXTW, place, 2, entry.by);
            ++place;
        }
        SendMessageW(m_list, WM_SETREDRAW, TRUE, 0);
    }

private:
    void Set(UINT message, int place, int column, const std::wstring& text) const {
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = place;
        item.iSubItem = column;
        item.pszText = const_cast<wchar_t*>(text.c_str());
        SendMessageW(m_list, message, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
    }

    HWND m_list;
};

class PopupBench : public PopupFixture {
public:
    void TestBody() override {
        BenchFill(0);
        BenchFill(kHistoryEntries);
        for (const int documents : kDocuments) {
            BenchKeystrokes(documents);
        }
    }

private:
    void BenchFill(int entries) {
        m_history.clear();
        for (int i = 0; i < entries; ++i) {
            m_history.push_back({L"Updated", Numbered(L"2024-05-14 08:52:", i), L"M. Keller", L""});
        }
        std::vector<double> fills;
        std::vector<double> bareFills;
        const BareList list;
        // In turns, so that a busy machine slows both alike.
        for (int run = 0; run < kRuns; ++run) {
            MXOVPopupDlg::CloseOf(m_owner);
            MXOVPopupDlg::Open(m_owner);
            fills.push_back(bench::Median(1, [this] { Fill(DocumentCategory::AdditionalDocument); }));
            list.Clear();
            bareFills.push_back(bench::Median(1, [&] { list.Fill(m_history); }));
        }
        const double bare = bench::MedianOf(bareFills);
        const std::string title = "fill with " + std::to_string(entries) + " history entries";
        bench::Compared((title + ", beside a bare list view").c_str(), bench::MedianOf(fills), bare);
    }

    void WriteDocuments(int documents) const {
        std::string information = "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\n";
        for (int i = 1; i <= documents; ++i) {
            information += "[REFERANCE_FILE_" + std::to_string(i) +
                           "]\r\nIsReferencedFile=YES\r\nDescription=Document\r\nTimestamp=2024-01-01 "
                           "09:05:03\r\nFilePath=C:\\Users\\Public\\Documents\\document" +
                           std::to_string(i) + ".pdf\r\n";
        }
        m_package.Write(L"mxinfo.ini", information);
    }

    void BenchKeystrokes(int documents) {
        WriteDocuments(documents);
        Fill(DocumentCategory::AdditionalDocument);
        std::vector<double> keystrokes;
        std::vector<double> systemWrites;
        const std::wstring file = m_package / L"mxinfo.ini";
        for (int i = 0; i < kKeystrokes; ++i) {
            const std::wstring key(1, static_cast<wchar_t>(L'a' + i % 26));
            keystrokes.push_back(bench::Median(1, [&] { Type(key); }));
            HandleMessages();
        }
        for (int i = 0; i < kKeystrokes / 10; ++i) {
            const std::wstring text = Numbered(L"Document", i);
            systemWrites.push_back(bench::Median(1, [&] {
                WritePrivateProfileStringW(L"REFERANCE_FILE_1", L"Description", text.c_str(), file.c_str());
            }));
        }
        std::ranges::sort(keystrokes);
        const std::string title = "keystroke at " + std::to_string(documents) + " documents";
        bench::Compared((title + ", beside the system's profile functions").c_str(),
                        bench::MedianOf(keystrokes), bench::MedianOf(systemWrites));
        bench::LimitedTime((title + ", 99th percentile").c_str(), keystrokes[keystrokes.size() * 99 / 100],
                           kLongestKeystroke);
    }
};

} // namespace

int main() {
    PopupBench().TestBody();
    return 0;
}
