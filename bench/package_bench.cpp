// Saving, packing and reading a package of 200 files and 100 MB, and one keystroke in its information file.
#include "files/DiskFile.h"
#include "mxovpackage.h"
#include "pack/VerifiedEntryCache.h"
#include "PackageFolder.h"
#include "PackagePeers.h"
#include "Report.h"
#include "Timing.h"
#include "zip/EntryReader.h"
#include "zip/ZipDirectory.h"

#include <cstdio>
#include <vector>

using namespace mxovshare;
using namespace bench;

namespace {

constexpr int kRuns = 5;
constexpr int kSavingRuns = 15; // the disk's times scatter

std::uint64_t SizeOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    Require(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data), "reading a size");
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

void Flush(const std::wstring& path) {
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    Require(FlushFileBuffers(handle), "flushing");
    CloseHandle(handle);
}

// Copies the folder file by file and removes the copy; `flush` gives it the guarantee that a save has.
// Returns the milliseconds of the copying.
double TimePlainCopy(const PackageFolder& folder, bool flush) {
    const TempFolder target;
    target.Write(L"GCode\\x", "");
    target.Write(L"ReferanceFiles\\x", "");
    return bench::Time([&] {
        for (const std::wstring& name : folder.Names()) {
            const std::wstring copy = target / name;
            Require(CopyFileW((folder.Path() + L"\\" + name).c_str(), copy.c_str(), FALSE), "copying");
            if (flush) {
                Flush(copy);
            }
        }
    });
}

// Opens a package as a host does and saves its folder: what was unpacked is known from then on.
void Saving(PackageFolder& folder) {
    const TempFolder work;
    const std::wstring package = work / L"p.mxov";
    Require(CreatePackage(folder.Path(), package).ok, "packing");
    const auto save = [&] {
        folder.ChangeOne();
        return bench::Time([&] { Utils::ReGenerateOrvandoFile(folder.Path(), package, L"Edited"); });
    };
    std::vector<double> unknownTimes;
    for (int run = 0; run < kRuns; ++run) {
        VerifiedEntryCache::Instance().Clear();
        unknownTimes.push_back(save());
    }
    Require(UnpackPackage(package, work / L"opened").ok, "opening");
    std::vector<double> copyTimes;
    std::vector<double> flushedTimes;
    std::vector<double> knownTimes;
    for (int run = 0; run < kSavingRuns; ++run) { // in turns, so that a busy disk slows all alike
        copyTimes.push_back(TimePlainCopy(folder, false));
        flushedTimes.push_back(TimePlainCopy(folder, true));
        knownTimes.push_back(save());
    }
    const double copy = bench::MedianOf(copyTimes);
    const double flushed = bench::MedianOf(flushedTimes);
    const double known = bench::MedianOf(knownTimes);
    Require(VerifyPackage(package).ok, "saving");
    Row("plain copy of the folder", copy);
    Row("plain copy of the folder, each file flushed", flushed);
    Limited("save after one document changed", known, copy, 0.5);
    Limited("the same beside the copy that is flushed", known, flushed, 0.5);
    Limited("the first save of a process that did not open the package", bench::MedianOf(unknownTimes), known,
            1.2);
    Row("check of the whole package",
        bench::Median(kRuns, [&] { Require(VerifyPackage(package).ok, "checking"); }));

    const std::string wanted = "GCode/0";
    std::size_t bytes = 0;
    const double read = bench::Median(21, [&] {
        const DiskSource source(package);
        for (const ZipEntry& entry : ReadZipDirectory(source)) {
            if (entry.name == wanted) {
                bytes = ReadWholeEntry(source, entry, entry.size).size();
            }
        }
    });
    Require(bytes > 0, "reading");
    LimitedTime("reading one document out of the package", read, 5);
}

void Packing(const PackageFolder& folder) {
    const TempFolder work;
    const std::wstring package = work / L"p.mxov";
    const std::wstring cabinet = work / L"p.cab";
    const auto remove = [&] { DeleteFileW(package.c_str()); };
    const auto pack = [&] { Require(CreatePackage(folder.Path(), package).ok, "packing"); };

    DWORD_PTR all = 0;
    DWORD_PTR system = 0;
    Require(GetProcessAffinityMask(GetCurrentProcess(), &all, &system), "asking for the processors");
    const double reference =
        bench::Median(3, [&] { Require(peers::WriteCabinet(folder, cabinet), "writing a cabinet"); });
    Row("platform's cabinet writer, MSZIP", reference);
    constexpr struct {
        int processors;
        double limit;
        const char* title;
    } kLimits[] = {{4, 0.4, "full repack on 4 processors"},
                   {2, 0.7, "full repack on 2 processors"},
                   {1, 1.1, "full repack on 1 processor"}};
    for (const auto& [processors, limit, title] : kLimits) {
        DWORD_PTR mask = 0;
        int chosen = 0;
        for (DWORD_PTR bit = 1; bit != 0 && chosen < processors; bit <<= 1) {
            if ((all & bit) != 0) {
                mask |= bit;
                ++chosen;
            }
        }
        if (chosen == processors && SetProcessAffinityMask(GetCurrentProcess(), mask)) {
            Limited(title, bench::Median(kRuns, remove, pack), reference, limit);
        }
    }
    SetProcessAffinityMask(GetCurrentProcess(), all);
    LimitedNumber("size of the package beside the cabinet",
                  static_cast<double>(SizeOf(package)) / static_cast<double>(SizeOf(cabinet)), 1.01);
}

void Peers(const PackageFolder& folder) {
    const TempFolder work;
    const std::wstring target = work / L"peer";
    constexpr struct {
        const char* title;
        const char* command;
    } kPeers[] = {
        {"zip", "zip -qr \"$TARGET\" . && mv \"$TARGET.zip\" \"$TARGET\""},
        {"gcab", "gcab -c -z \"$TARGET\" GCode/* ReferanceFiles/*"},
        {"7z, ZIP on all processors", "7z a -tzip \"$TARGET\" . && mv \"$TARGET.zip\" \"$TARGET\""}};
    for (const auto& [title, command] : kPeers) {
        DeleteFileW(target.c_str());
        const auto time = peers::RunUnix(folder, target, command);
        if (time) {
            Row(title, *time);
        } else {
            std::printf("%-62s not installed\n", title);
        }
    }
}

// Replaces the bytes of one value and the whole file, as anybody would.
void Splice(std::string& bytes, const std::wstring& file, int number, bool flush) {
    const std::string key = "Description=";
    const std::size_t begin = bytes.find(key, bytes.size() / 2) + key.size();
    bytes.replace(begin, bytes.find('\r', begin) - begin, "Text " + std::to_string(number));
    const std::wstring temporary = file + L".new";
    const HANDLE handle =
        CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    Require(WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr), "writing");
    if (flush) {
        FlushFileBuffers(handle);
    }
    CloseHandle(handle);
    Require(MoveFileExW(temporary.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING), "replacing");
}

void Keystroke() {
    constexpr int kDocuments = 10'000;
    const TempFolder folder;
    std::string bytes = "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\n";
    for (int i = 1; i <= kDocuments; ++i) {
        bytes += "[REFERANCE_FILE_" + std::to_string(i) +
                 "]\r\nIsReferencedFile=YES\r\nDescription=Document " + std::to_string(i) +
                 "\r\nTimestamp=2024-01-01 09:05:03\r\nFilePath=C:\\Jobs\\document" + std::to_string(i) +
                 ".pdf\r\n";
    }
    const std::wstring file = folder.Write(L"mxinfo.ini", bytes);
    const std::wstring section = L"REFERANCE_FILE_5000";
    int number = 0;
    const auto text = [&number] { return L"Text " + std::to_wstring(++number); };
    const double own =
        bench::Median(21, [&] { INIFile::AddRecordToINI(section, L"Description", text(), file); });
    Require(INIFile::GetKeyValueFromINI(section, L"Description", file) == L"Text " + std::to_wstring(number),
            "INI");
    const double profile = bench::Median(5, [&] {
        Require(WritePrivateProfileStringW(section.c_str(), L"Description", text().c_str(), file.c_str()),
                "profile");
    });
    const double flushed = bench::Median(21, [&] { Splice(bytes, file, ++number, true); });
    const double plain = bench::Median(21, [&] { Splice(bytes, file, ++number, false); });
    Row("platform's profile functions: one value of 10000 documents", profile);
    Row("plain splice, flush and replace", flushed);
    Row("plain splice and replace without a flush", plain);
    Limited("INIFile: one value, beside the plain splice and flush", own, flushed, 2);
    Limited("INIFile: one value, beside the profile functions", own, profile, 0.1);
}

} // namespace

int main() {
    PackageFolder folder;
    Saving(folder);
    Packing(folder);
    Peers(folder);
    Keystroke();
    return 0;
}
