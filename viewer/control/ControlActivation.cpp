#include "control/ControlActivation.h"

#include "common/LongPath.h"
#include "common/Paths.h"
#include "common/SystemError.h"
#include "package/Paths.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

// The file that the control is registered with; empty when it is not registered or the file does not exist.
std::wstring RegisteredFile() {
    const std::wstring key = std::wstring(L"CLSID\\") + ControlActivation::kClassId + L"\\InprocServer32";
    wchar_t file[1024] = L"";
    DWORD bytes = sizeof file;
    if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, file, &bytes) ||
        !FileExists(file)) {
        return {};
    }
    return common::FullPath(file);
}

} // namespace

ControlActivation::~ControlActivation() {
    if (m_cookie) {
        DeactivateActCtx(0, m_cookie);
    }
    if (m_context != INVALID_HANDLE_VALUE) {
        ReleaseActCtx(m_context);
    }
}

std::wstring ControlActivation::Activate(const std::wstring& folder) {
    const std::wstring registered = RegisteredFile();
    const std::wstring manifest = folder + L"\\MXOVDocViewCtrl.manifest";
    m_file = folder + L"\\MXOVDocViewCtrl.ocx";
    if (common::IsSamePath(registered, m_file)) {
        return {};
    }
    for (const std::wstring& file : {m_file, manifest}) {
        if (!FileExists(file)) {
            m_file = registered;
            return registered.empty() ? Text(IDS_FILE_MISSING, {file}) : std::wstring();
        }
    }
    return ActivateManifest(manifest);
}

std::wstring ControlActivation::ActivateManifest(const std::wstring& manifest) {
    ACTCTXW description = {};
    description.cbSize = sizeof description;
    description.lpSource = manifest.c_str();
    m_context = CreateActCtxW(&description);
    if (m_context == INVALID_HANDLE_VALUE || !ActivateActCtx(m_context, &m_cookie)) {
        return Text(IDS_MANIFEST_UNUSABLE, {manifest, common::SystemErrorText(GetLastError())});
    }
    return {};
}

} // namespace viewer
