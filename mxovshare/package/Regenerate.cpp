#include "mxovshare.h"

#include "host/MessageBoxes.h"
#include "pack/NewPackage.h"
#include "pack/ProgressMeter.h"
#include "package/NewInformation.h"
#include "package/PackageErrors.h"
#include "package/ProgressWindow.h"
#include "package/ReplacementGuard.h"
#include "package/UnpackedFolders.h"

#include <new>

namespace mxovshare {

namespace {

// Throws Cancelled when the user keeps the old file rather than lose something of it.
void ConfirmLoss(const std::wstring& file, const std::wstring& lost) {
    if (!lost.empty() && !AskYesNo(L"Saving the package \"" + file + L"\" would not keep " + lost +
                                   L".\n\nDo you want to save it anyway?")) {
        throw Cancelled();
    }
}

void Save(const std::wstring& folder, const std::wstring& file, const std::wstring& operation) {
    ReplacementGuard guard(folder, file);
    guard.Confirm();
    NewInformation information(folder, operation, SaveRemarks(folder));
    const Substitute substitute = information.ForPackage();
    NewPackage package(file);
    ProgressWindow progress(L"Saving " + file);
    package.Pack(folder, &progress, &substitute);
    ConfirmLoss(file, package.KeepProperties());
    package.Commit([&guard] { guard.Confirm(); });
    information.Commit();
}

void ReportFailure(const std::wstring& file, const PackageResult& result) noexcept {
    try {
        const std::wstring reason = result.cancelled         ? L"You cancelled it"
                                    : result.message.empty() ? L"There is not enough memory"
                                                             : result.message;
        const std::wstring text =
            L"The package \"" + file + L"\" was not saved:\n\n" + reason +
            L".\n\nThe package file is as it was before. Your changes are still in the open package.";
        ShowError(text.c_str());
    } catch (const std::bad_alloc&) {
        ShowError(L"The package was not saved: there is not enough memory.");
    }
}

} // namespace

void Utils::ReGenerateOrvandoFile(std::wstring packageFolder, std::wstring packageFile, std::wstring text) {
    const PackageResult result = RunForResult(packageFile, [&] { Save(packageFolder, packageFile, text); });
    if (!result.ok) {
        ReportFailure(packageFile, result);
    }
    // Hosts may query the outcome at any time, so it is recorded after the user has read the message.
    RecordSave(packageFolder, packageFile, result.ok);
}

} // namespace mxovshare
