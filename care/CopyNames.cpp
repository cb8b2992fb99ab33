#include "care/CopyNames.h"

#include <package/PackageInformation.h>

using namespace docview;

namespace care {

CopyNames::CopyNames(const Sections& sections, const std::vector<mxovshare::PackageEntry>& entries) {
    for (const mxovshare::PackageEntry& entry : entries) {
        m_taken.insert(entry.name);
    }
    for (const Section& section : sections) {
        if (IsAdditional(section) && IsCopy(section)) {
            m_taken.insert(ValueOf(section, inikey::kFilePath));
        }
    }
}

std::wstring CopyNames::Take(const std::wstring& fileName) {
    const std::size_t dot = std::min(fileName.rfind(L'.'), fileName.size());
    std::wstring name = kCopiesFolder + fileName;
    for (int number = 2; !m_taken.insert(name).second; ++number) {
        name = kCopiesFolder + fileName.substr(0, dot) + L" (" + std::to_wstring(number) + L")" +
               fileName.substr(dot);
    }
    return name;
}

} // namespace care
