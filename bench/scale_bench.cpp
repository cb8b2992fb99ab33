// How the time of saving, checking, listing and unpacking grows with the number of documents. That of loading
// is in catalogue_bench. Takes about a quarter of an hour.
#include "mxovpackage.h"
#include "mxovshare.h"
#include "Report.h"
#include "TempFolder.h"
#include "Timing.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

using bench::Require;

namespace {

constexpr int kCounts[] = {10, 100, 1000, 10'000, 100'000};
constexpr int kRuns = 7;
constexpr double kMostGrowth = 1.1; // exponent

/// So many G-code files of some hundred bytes, a hundred to a folder, and the package made of them. (With all
/// in one folder Wine reads its names for each new file.)
class Documents {
public:
    explicit Documents(int count) : m_count(count) {
        m_folder.Write(L"mxinfo.ini",
                       "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\nGCode=GCode\\0\\0.nc\r\n");
        for (int i = 0; i < count; ++i) {
            Change(i, 1);
        }
        Require(mxovshare::CreatePackage(m_folder.Path(), Package()).ok, "packing");
    }

    void Change(int number, int feed) const {
        std::string text;
        for (int line = 1; line <= 10; ++line) {
            text += "N" + std::to_string(line) + "0 G01 X" + std::to_string(number) + "." +
                    std::to_string(line) + " F" + std::to_string(feed) + "\r\n";
        }
        m_folder.Write(L"GCode\\" + std::to_wstring(number / 100) + L"\\" + std::to_wstring(number) + L".nc",
                       text);
    }

    [[nodiscard]] int Count() const { return m_count; }
    [[nodiscard]] std::wstring Package() const { return m_work / L"p.mxov"; }
    [[nodiscard]] const TempFolder& Folder() const { return m_folder; }

private:
    int m_count;
    TempFolder m_folder;
    TempFolder m_work;
};

double Save(const Documents& documents) {
    int feed = 100;
    return bench::Median(
        kRuns, [&] { documents.Change(0, ++feed); },
        [&] {
            mxovshare::Utils::ReGenerateOrvandoFile(documents.Folder().Path(), documents.Package(),
                                                    L"Edited");
        });
}

double Check(const Documents& documents) {
    return bench::Median(kRuns,
                         [&] { Require(mxovshare::VerifyPackage(documents.Package()).ok, "checking"); });
}

double List(const Documents& documents) {
    return bench::Median(kRuns, [&] {
        std::vector<mxovshare::PackageEntry> entries;
        Require(mxovshare::ListPackage(documents.Package(), entries).ok &&
                    static_cast<int>(entries.size()) >= documents.Count(),
                "listing");
    });
}

double Unpack(const Documents& documents) {
    std::vector<double> times;
    for (int run = 0; run < kRuns; ++run) {
        const TempFolder target;
        times.push_back(bench::Time([&] {
            Require(mxovshare::UnpackPackage(documents.Package(), target / L"unpacked").ok, "unpacking");
        }));
    }
    return bench::MedianOf(times);
}

struct Work {
    const char* name;
    double (*time)(const Documents&);
};

constexpr Work kWorks[] = {
    {"save after one change", Save}, {"check", Check}, {"list", List}, {"unpack", Unpack}};

} // namespace

int main() {
    std::map<std::string, double> before;
    for (const int count : kCounts) {
        const Documents documents(count);
        for (const auto& [name, work] : kWorks) {
            const double time = work(documents);
            bench::Row((std::to_string(count) + " documents: " + name).c_str(), time);
            if (before.contains(name)) {
                bench::LimitedNumber((std::string("  exponent of ") + name).c_str(),
                                     std::log10(time / before[name]), kMostGrowth);
            }
            before[name] = time;
        }
    }
    return 0;
}
