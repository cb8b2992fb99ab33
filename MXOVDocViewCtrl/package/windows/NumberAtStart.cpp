#include "package/NumberAtStart.h"

#include <cstdlib>

namespace docview {

// wcstod of this run-time library crashes when memory runs out.
double NumberAtStart(const std::wstring& text) {
    return ::_wtof(text.c_str());
}

} // namespace docview
