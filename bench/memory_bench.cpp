// The most memory that loading, saving and unpacking take, each in a process of its own.
#include "CatalogueFolder.h"
#include "ControlClient.h"
#include "mxovpackage.h"
#include "mxovshare.h"
#include "Process.h"
#include "Report.h"
#include "TempFolder.h"

#include <psapi.h>

#include <cstdio>
#include <random>
#include <string>

using bench::Require;

namespace {

constexpr double kMostGrowth = 64; // MB, between a small and a large package
constexpr std::size_t kFileSize = 4'000'000;
constexpr int kFailed = -1;

/// The most that this process has had in memory, MB.
double PeakOfThisProcess() {
    PROCESS_MEMORY_COUNTERS counters = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PeakWorkingSetSize) / (1 << 20);
}

/// A file that can be packed to about half.
std::string HalfNoise(unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(kFileSize, ' ');
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        bytes[i] = static_cast<char>(random());
    }
    return bytes;
}

/// A package and its folder, of this size, in which the first file has changed since.
class Package {
public:
    explicit Package(int megabytes) {
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\n");
        for (int i = 0; i < megabytes / 4; ++i) {
            m_folder.Write(L"GCode\\" + std::to_wstring(i), HalfNoise(static_cast<unsigned>(i)));
        }
        Require(mxovshare::CreatePackage(m_folder.Path(), File()).ok, "packing");
        m_folder.Write(L"GCode\\0", HalfNoise(static_cast<unsigned>(megabytes)));
    }

    [[nodiscard]] const std::wstring& Folder() const { return m_folder.Path(); }
    [[nodiscard]] std::wstring File() const { return m_work / L"p.mxov"; }
    [[nodiscard]] std::wstring Target() const { return m_work / L"unpacked"; }

private:
    TempFolder m_folder;
    TempFolder m_work;
};

// The works of a child process, each for what an argument names.
int LoadCatalogue(const std::wstring& folder) {
    const ComApartment apartment;
    ControlClient client;
    return SUCCEEDED(client.Call(L"LoadFile", {folder + L"\\", L""})) ? 0 : kFailed;
}

int SaveFolder(const std::wstring& folder, const std::wstring& file) {
    mxovshare::Utils::ReGenerateOrvandoFile(folder, file, L"Edited");
    return mxovshare::TakeSaveFailure(folder) ? kFailed : 0;
}

int UnpackFile(const std::wstring& file, const std::wstring& folder) {
    return mxovshare::UnpackPackage(file, folder).ok ? 0 : kFailed;
}

int RunWork(const std::wstring& work, const std::wstring& first, const std::wstring& second) {
    const double before = PeakOfThisProcess();
    int code = kFailed;
    if (work == L"load") {
        code = LoadCatalogue(first);
    } else if (work == L"save") {
        code = SaveFolder(first, second);
    } else if (work == L"unpack") {
        code = UnpackFile(first, second);
    }
    return code == 0 ? static_cast<int>((PeakOfThisProcess() - before) * 1024) : code;
}

/// The most memory of a work in MB; ends this program when the work fails.
double PeakOf(const std::wstring& work, const std::wstring& first, const std::wstring& second = {}) {
    wchar_t self[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const Process child(L"\"" + std::wstring(self) + L"\" " + work + L" \"" + first + L"\" \"" + second +
                        L"\"");
    const int kilobytes = child ? static_cast<int>(child.Wait()) : kFailed;
    Require(kilobytes >= 0, "a child process");
    return kilobytes / 1024.0;
}

void Print(const char* what, double megabytes) {
    std::printf("%-62s %10.1f MB\n", what, megabytes);
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count == 4) {
        return RunWork(arguments[1], arguments[2], arguments[3]);
    }
    {
        const CatalogueFolder catalogue(10'000);
        Print("LoadFile of 10000 documents", PeakOf(L"load", catalogue.Folder()));
    }
    double saving[2] = {};
    double unpacking[2] = {};
    constexpr int kSizes[] = {100, 1000};
    for (int i = 0; i < 2; ++i) {
        const Package package(kSizes[i]);
        const std::string size = std::to_string(kSizes[i]) + " MB";
        saving[i] = PeakOf(L"save", package.Folder(), package.File());
        Print(("save of " + size + " after one change").c_str(), saving[i]);
        unpacking[i] = PeakOf(L"unpack", package.File(), package.Target());
        Print(("unpacking of " + size).c_str(), unpacking[i]);
    }
    bench::LimitedNumber("growth of the save's memory, MB", saving[1] - saving[0], kMostGrowth);
    bench::LimitedNumber("growth of the unpacking's memory, MB", unpacking[1] - unpacking[0], kMostGrowth);
    return 0;
}
