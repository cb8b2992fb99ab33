#include "package/NumberAtStart.h"

#include <cwchar>

namespace docview {

double NumberAtStart(const std::wstring& text) {
    return std::wcstod(text.c_str(), nullptr);
}

} // namespace docview
