// OpenRecorder LOG DOCUMENT: adds the document's path to a log, as the program that opens it in the tests.
#include <windows.h>

#include <cstdio>

int wmain(int argc, wchar_t** argv) {
    FILE* const log = argc == 3 ? _wfopen(argv[1], L"ab") : nullptr;
    if (!log) {
        return 2;
    }
    char text[4 * MAX_PATH] = "";
    WideCharToMultiByte(CP_UTF8, 0, argv[2], -1, text, sizeof text, nullptr, nullptr);
    std::fprintf(log, "%s\n", text);
    return std::fclose(log);
}
