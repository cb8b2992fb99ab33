// A help engine that notes its calls, one line each: command, topic, path.
#include <windows.h>

#include <string>

extern "C" HWND WINAPI RecordCall(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data) {
    wchar_t record[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"MXOV_HELP_RECORD", record, MAX_PATH);
    const std::wstring line =
        std::to_wstring(command) + L" " + std::to_wstring(data) + L" " + (file ? file : L"none") + L"\n";
    const HANDLE out = CreateFileW(record, FILE_APPEND_DATA, 0, nullptr, OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(out, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &written, nullptr);
    CloseHandle(out);
    return caller ? caller : GetDesktopWindow();
}
