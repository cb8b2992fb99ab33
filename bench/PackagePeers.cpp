#include "PackagePeers.h"

#include <windows.h>

#include <fci.h>
#include <fcntl.h>
#include <io.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sys/stat.h>

namespace {

// The callbacks by which the platform's cabinet writer reaches files and memory.
void* DIAMONDAPI Allocate(ULONG size) {
    return std::malloc(size);
}
void DIAMONDAPI Free(void* memory) {
    std::free(memory);
}
INT_PTR DIAMONDAPI Open(LPSTR file, int flags, int mode, int* error, void*) {
    const int handle = _open(file, flags | _O_BINARY, mode);
    *error = errno;
    return handle;
}
UINT DIAMONDAPI Read(INT_PTR handle, void* memory, UINT size, int*, void*) {
    return static_cast<UINT>(_read(static_cast<int>(handle), memory, size));
}
UINT DIAMONDAPI Write(INT_PTR handle, void* memory, UINT size, int*, void*) {
    return static_cast<UINT>(_write(static_cast<int>(handle), memory, size));
}
int DIAMONDAPI Close(INT_PTR handle, int*, void*) {
    return _close(static_cast<int>(handle));
}
LONG DIAMONDAPI Seek(INT_PTR handle, LONG distance, int origin, int*, void*) {
    return _lseek(static_cast<int>(handle), distance, origin);
}
int DIAMONDAPI Delete(LPSTR file, int*, void*) {
    return std::remove(file);
}
int DIAMONDAPI Placed(PCCAB, LPSTR, LONG, BOOL, void*) {
    return 0;
}
BOOL DIAMONDAPI TemporaryName(char* name, int size, void*) {
    char folder[MAX_PATH];
    char path[MAX_PATH];
    if (GetTempPathA(MAX_PATH, folder) == 0 || GetTempFileNameA(folder, "cab", 0, path) == 0) {
        return FALSE;
    }
    DeleteFileA(path);
    std::snprintf(name, static_cast<std::size_t>(size), "%s", path);
    return TRUE;
}
BOOL DIAMONDAPI NextCabinet(PCCAB, ULONG, void*) {
    return FALSE;
}
LONG DIAMONDAPI Status(UINT, ULONG, ULONG, void*) {
    return 0;
}
INT_PTR DIAMONDAPI OpenInfo(LPSTR name, USHORT* date, USHORT* time, USHORT* attributes, int* error, void*) {
    *date = 0x5821;
    *time = 0;
    *attributes = 0;
    return Open(name, _O_RDONLY, 0, error, nullptr);
}

std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t unit : text) {
        narrow += static_cast<char>(unit);
    }
    return narrow;
}

// The Unix path of a file; empty when this is not Wine.
std::string UnixPath(const std::wstring& path) {
    using Translate = char*(CDECL*)(LPCWSTR);
    const FARPROC function = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
    if (function == nullptr) {
        return {};
    }
    char* text = reinterpret_cast<Translate>(reinterpret_cast<void*>(function))(path.c_str());
    std::string unixPath = text != nullptr ? text : "";
    HeapFree(GetProcessHeap(), 0, text);
    return unixPath;
}

} // namespace

namespace peers {

bool WriteCabinet(const PackageFolder& folder, const std::wstring& target) {
    CCAB cabinet = {};
    cabinet.cb = 0x7FFFFFFF;
    cabinet.cbFolderThresh = 0x7FFFFFFF;
    const std::size_t cut = target.rfind(L'\\') + 1;
    std::snprintf(cabinet.szCab, CB_MAX_CABINET_NAME, "%s", Narrow(target.substr(cut)).c_str());
    std::snprintf(cabinet.szCabPath, CB_MAX_CAB_PATH, "%s", Narrow(target.substr(0, cut)).c_str());
    ERF error = {};
    const HFCI writer = FCICreate(&error, Placed, Allocate, Free, Open, Read, Write, Close, Seek, Delete,
                                  TemporaryName, &cabinet, nullptr);
    if (writer == nullptr) {
        return false;
    }
    bool done = true;
    for (const std::wstring& name : folder.Names()) {
        std::string source = Narrow(folder.Path() + L"\\" + name);
        std::string stored = Narrow(name);
        done = done && FCIAddFile(writer, source.data(), stored.data(), FALSE, NextCabinet, Status, OpenInfo,
                                  tcompTYPE_MSZIP);
    }
    done = done && FCIFlushCabinet(writer, FALSE, NextCabinet, Status);
    FCIDestroy(writer);
    return done;
}

std::optional<double> RunUnix(const PackageFolder& folder, const std::wstring& target,
                              const std::string& command) {
    const std::string unixFolder = UnixPath(folder.Path());
    if (unixFolder.empty()) {
        return std::nullopt;
    }
    // Wine does not wait for such programs, so the script itself reports how long the work took.
    const TempFolder work;
    const std::string script =
        "cd '" + unixFolder + "'; TARGET='" + UnixPath(target.substr(0, target.rfind(L'\\'))) + "/" +
        Narrow(target.substr(target.rfind(L'\\') + 1)) + "'; a=$(date +%s%N); { " + command +
        "; } >/dev/null 2>&1; c=$?; echo \"$c $(($(date +%s%N)-a))\" >\"$0.part\"; "
        "mv \"$0.part\" \"$0.done\"\n";
    const std::wstring path = work.Write(L"script", script);
    std::wstring line = L"Z:\\bin\\sh " + std::wstring(L"\"");
    for (const char byte : UnixPath(path)) {
        line += static_cast<wchar_t>(byte);
    }
    line += L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return std::nullopt;
    }
    constexpr ULONGLONG kPatience = 120'000;
    const ULONGLONG start = GetTickCount64();
    while (GetFileAttributesW((path + L".done").c_str()) == INVALID_FILE_ATTRIBUTES) {
        if (GetTickCount64() - start > kPatience) {
            return std::nullopt;
        }
        Sleep(10);
    }
    int code = -1;
    long long nanoseconds = 0;
    std::sscanf(work.Read(L"script.done").c_str(), "%d %lld", &code, &nanoseconds);
    if (code != 0) {
        return std::nullopt;
    }
    return static_cast<double>(nanoseconds) / 1e6;
}

} // namespace peers
