// ProfileValue FILE SECTION KEY: prints a value of an INI file as the platform's profile functions read it.
#include <windows.h>

#include <cstdio>
#include <string>

int wmain(int argc, wchar_t** argv) {
    if (argc != 4) {
        return 2;
    }
    wchar_t value[2048] = L"";
    GetPrivateProfileStringW(argv[2], argv[3], L"", value, ARRAYSIZE(value), argv[1]);
    char text[sizeof value * 2] = "";
    WideCharToMultiByte(CP_UTF8, 0, value, -1, text, sizeof text, nullptr, nullptr);
    std::printf("%s", text);
    return 0;
}
