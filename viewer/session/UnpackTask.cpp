#include "session/UnpackTask.h"

#include "common/Policies.h"
#include "package/ProgramsText.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

using mxovshare::PackageResult;

// Fails for a package that holds programs, where those are refused.
PackageResult CheckPrograms(const std::wstring& packageFile) {
    std::vector<mxovshare::PackageEntry> entries;
    PackageResult result = mxovshare::ListPackage(packageFile, entries);
    const std::wstring programs = ProgramsText(entries);
    if (result.ok && !programs.empty()) {
        result.ok = false;
        result.message = Text(IDS_PROGRAMS_REFUSED, {programs});
    }
    return result;
}

PackageResult Unpack(const std::wstring& packageFile, const std::wstring& folder,
                     mxovshare::PackageProgress& progress) {
    if (common::IsRefusingPrograms()) {
        PackageResult refused = CheckPrograms(packageFile);
        if (!refused.ok) {
            return refused;
        }
    }
    return mxovshare::UnpackPackage(packageFile, folder, &progress);
}

} // namespace

UnpackTask::UnpackTask(std::unique_ptr<PackageSession> session)
    : m_session(std::move(session)), m_thread([this] { Run(); }) {}

UnpackTask::~UnpackTask() {
    Cancel();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void UnpackTask::NotifyAtEnd(HWND window, UINT message) {
    const std::lock_guard guard(m_lock);
    m_window = window;
    m_message = message;
    if (m_hasEnded) {
        PostMessageW(window, message, 0, 0);
    }
}

std::pair<mxovshare::PackageResult, std::unique_ptr<PackageSession>> UnpackTask::Finish() {
    m_thread.join();
    return {std::move(m_result), std::move(m_session)};
}

void UnpackTask::Run() noexcept {
    try {
        m_result = Unpack(m_session->PackageFile(), m_session->Folder(), *this);
    } catch (...) {
        m_result.ok = false; // out of memory: without a text
    }
    const std::lock_guard guard(m_lock);
    m_hasEnded = true;
    if (m_window) {
        PostMessageW(m_window, m_message, 0, 0);
    }
}

} // namespace viewer
