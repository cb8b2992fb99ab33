#include "mxovshare.h"

#include "host/MessageBoxes.h"
#include "pack/NewPackage.h"
#include "package/NewInformation.h"
#include "package/PackageErrors.h"
#include "package/ProgressWindow.h"
#include "package/UnpackedFolders.h"

namespace mxovshare {

namespace {

void Save(const std::wstring& folder, const std::wstring& file, const std::wstring& operation) {
    ReplacementGuard guard(folder, file);
    guard.Confirm();
    NewInformation information(folder, operation);
    const Substitute substitute = information.ForPackage();
    NewPackage package(file);
    ProgressWindow progress(L"Saving " + file);
    package.Pack(folder, &progress, &substitute);
    package.Commit([&guard] { guard.Confirm(); });
    information.Commit();
}

void ReportFailure(const std::wstring& file, const PackageResult& result) {
    const std::wstring reason = result.cancelled         ? L"You cancelled it"
                                : result.message.empty() ? L"There is not enough memory"
                                                         : result.message;
    const std::wstring text =
        L"The package \"" + file + L"\" was not saved:\n\n" + reason +
        L".\n\nThe package file is as it was before. Your changes are still in the open package.";
    ShowError(text.c_str());
}

// Hosts may query the outcome at any time, so it is recorded after the user has read the message.
void Report(const std::wstring& folder, const std::wstring& file, const PackageResult& result) noexcept {
    try {
        if (!result.ok) {
            ReportFailure(file, result);
        }
        RecordSave(folder, file, result.ok);
    } catch (...) {
        ShowError(L"There is not enough memory.");
    }
}

} // namespace

void Utils::ReGenerateOrvandoFile(std::wstring packageFolder, std::wstring packageFile, std::wstring text) {
    const PackageResult result = RunForResult(packageFile, [&] { Save(packageFolder, packageFile, text); });
    Report(packageFolder, packageFile, result);
}

} // namespace mxovshare
