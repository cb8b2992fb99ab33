#include "package/ReplacementGuard.h"

#include "host/MessageBoxes.h"
#include "pack/ProgressMeter.h"
#include "package/PackageStamp.h"
#include "package/UnpackedFolders.h"

#include <utility>

namespace mxovshare {

ReplacementGuard::ReplacementGuard(const std::wstring& folder, const std::wstring& file)
    : m_file(file), m_expected(RecordedStamp(folder, file)) {
    if (m_expected.empty()) {
        m_expected = StampOfPackage(file);
    }
}

void ReplacementGuard::Confirm() {
    std::wstring now = StampOfPackage(m_file);
    if (!now.empty() && now != m_expected &&
        !AskYesNo(L"The package \"" + m_file +
                  L"\" was changed by somebody else since it was opened here.\n\nDo you want to replace it "
                  L"with your own state? What the other one changed is then lost.")) {
        throw Cancelled();
    }
    m_expected = std::move(now);
}

} // namespace mxovshare
