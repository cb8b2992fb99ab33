#include "package/CopyName.h"

#include "package/Paths.h"

#include <windows.h>

namespace viewer {

std::wstring NumberedName(const std::wstring& name, int number) {
    const std::wstring stem = FileStem(name);
    return stem + L" (" + std::to_wstring(number) + L")" + name.substr(stem.size());
}

std::wstring FreeCopyName(const std::wstring& folder, const std::wstring& name) {
    int number = 2;
    while (GetFileAttributesW((folder + NumberedName(name, number)).c_str()) != INVALID_FILE_ATTRIBUTES) {
        ++number;
    }
    return NumberedName(name, number);
}

} // namespace viewer
