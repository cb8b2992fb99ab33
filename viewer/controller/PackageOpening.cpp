#include "controller/PackageOpening.h"

#include "package/Paths.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

constexpr UINT kProgressDelay = 200;  // milliseconds before the progress window appears
constexpr UINT kProgressPeriod = 100; // milliseconds between its updates

} // namespace

void PackageOpening::Prepare(std::unique_ptr<PackageSession> session) {
    m_prepared = std::make_unique<UnpackTask>(std::move(session));
}

bool PackageOpening::IsPrepared(const std::wstring& packageFile) const {
    return m_prepared && m_prepared->PackageFile() == packageFile;
}

void PackageOpening::Start(HWND frame, UINT message) {
    m_frame = frame;
    m_task = std::move(m_prepared);
    m_task->NotifyAtEnd(frame, message);
    SetTimer(frame, kTimer, kProgressDelay, nullptr);
}

void PackageOpening::Cancel() {
    CloseProgress();
    m_prepared.reset();
    m_task.reset();
}

void PackageOpening::OnTimer() {
    if (!m_task) {
        return;
    }
    if (!m_progress) {
        m_progress = std::make_unique<ProgressDialog>(m_frame, *m_task,
                                                      Text(IDS_OPENING, {FileName(m_task->PackageFile())}));
        SetTimer(m_frame, kTimer, kProgressPeriod, nullptr);
    }
    m_progress->Update();
}

std::pair<mxovshare::PackageResult, std::unique_ptr<PackageSession>> PackageOpening::Finish() {
    CloseProgress();
    const std::unique_ptr<UnpackTask> task = std::move(m_task);
    return task->Finish();
}

bool PackageOpening::PreTranslate(MSG& message) const {
    return m_progress && m_progress->IsDialogMessage(message);
}

void PackageOpening::CloseProgress() {
    KillTimer(m_frame, kTimer);
    m_progress.reset();
}

} // namespace viewer
