// Opening and closing packages, the part of the window that is not about messages.
#include "MainWindow.h"

#include "package/PackageSummary.h"
#include "package/Paths.h"

#include <commctrl.h>
#include <shlwapi.h>

namespace viewer {

namespace {

constexpr UINT_PTR kProgressTimer = 1;
constexpr UINT_PTR kWatchTimer = 2;
constexpr UINT kProgressDelay = 400;  // milliseconds before the progress window appears
constexpr UINT kWatchPeriod = 500;    // milliseconds between two looks at the open package
constexpr UINT kProgressPeriod = 100; // milliseconds between its updates

std::wstring SizeText(std::uint64_t bytes) {
    wchar_t text[32] = L"";
    StrFormatByteSizeW(static_cast<LONGLONG>(bytes), text, ARRAYSIZE(text));
    return text;
}

std::wstring FactsText(const std::vector<mxovshare::PackageEntry>& entries) {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    for (const mxovshare::PackageEntry& entry : entries) {
        files += entry.isFolder ? 0 : 1;
        bytes += entry.size;
    }
    if (files == 0) {
        return {};
    }
    return std::to_wstring(files) + (files == 1 ? L" file, " : L" files, ") + SizeText(bytes);
}

// What a package's reader reports, as a sentence of its own.
std::wstring Sentence(std::wstring report) {
    CharUpperBuffW(report.data(), report.empty() ? 0 : 1);
    return report.ends_with(L'.') ? report : report + L".";
}

} // namespace

void MainWindow::OpenPackage(const std::wstring& path) {
    if (IsOpening() || m_closing) {
        MessageBeep(MB_OK);
        return;
    }
    if (FolderExists(path)) {
        Complain(FileName(path) + L" is a folder, not a machining package.");
        return;
    }
    if (!FileExists(path)) {
        m_recent.Remove(path);
        Complain(L"The package cannot be found:\n\n" + path);
        return;
    }
    std::wstring error;
    std::unique_ptr<PackageSession> session = PackageSession::Create(path, error);
    if (!session) {
        Complain(FileName(path) + L" cannot be opened.\n\n" + error);
        return;
    }
    // The open package is saved before it is unpacked anew, and must not change in between.
    m_reopening = m_session && SamePath(path, m_session->PackageFile());
    if (m_reopening) {
        if (!CloseInControl()) {
            m_reopening = false;
            return;
        }
        m_control.Enable(false);
    }
    ShowStatus(L"Opening " + path, {});
    m_task = std::make_unique<UnpackTask>(std::move(session), Handle(), kUnpacked);
    SetTimer(Handle(), kProgressTimer, kProgressDelay, nullptr);
}

void MainWindow::OnTimer(UINT_PTR timer) {
    if (timer == kWatchTimer) {
        OnWatch();
    } else {
        OnProgress();
    }
}

void MainWindow::OnProgress() {
    if (!m_task) {
        return;
    }
    if (!m_progress) {
        m_progress = std::make_unique<ProgressDialog>(Handle(), *m_task);
        SetTimer(Handle(), kProgressTimer, kProgressPeriod, nullptr);
    }
    m_progress->Update();
}

void MainWindow::OnUnpacked() {
    if (!m_task) {
        return;
    }
    KillTimer(Handle(), kProgressTimer);
    m_progress.reset();
    auto [result, session] = m_task->Finish();
    m_task.reset();
    m_control.Enable(true);
    if (result.ok) {
        SwitchTo(std::move(session));
        return;
    }
    const std::wstring name = FileName(session->PackageFile());
    session.reset();
    ShowPackage();
    if (!result.cancelled) {
        Complain(name + L" cannot be opened as a machining package.\n\n" + Sentence(result.message));
    }
}

void MainWindow::CancelOpening() {
    KillTimer(Handle(), kProgressTimer);
    m_progress.reset();
    m_task.reset();
}

void MainWindow::SwitchTo(std::unique_ptr<PackageSession> session) {
    if (!m_reopening && !CloseInControl()) {
        ShowPackage();
        return;
    }
    session->Record(mxovshare::StampOfFolder(session->Folder()));
    const std::wstring folder = session->FolderWithSeparator();
    const std::wstring file = session->PackageFile();
    m_control.LoadFile(folder, file);
    m_session = std::move(session);
    m_recent.Add(file);
    SetTimer(Handle(), kWatchTimer, kWatchPeriod, nullptr);
    ShowSaved();
}

// What the package file holds now.
void MainWindow::ShowSaved() {
    m_facts = FactsText(m_session->Entries());
    m_preview.Show(ReadPackageSummary(m_session->FolderWithSeparator(), m_session->PackageFile()));
    if (!IsOpening()) {
        ShowPackage();
    }
}

// False when the user wants to go on with the package.
bool MainWindow::ClosePackage() {
    if (!m_session || m_closing || IsOpening()) {
        return true;
    }
    if (!CloseInControl()) {
        return false;
    }
    KillTimer(Handle(), kWatchTimer);
    m_control.ClearAllData();
    m_session.reset();
    m_preview.Clear();
    ShowPackage();
    return true;
}

// Without a package there is nothing to attach documents to.
void MainWindow::ShowControl(bool shown) {
    if (shown == m_control.IsShown()) {
        return;
    }
    const bool focused = m_control.HasFocus();
    m_control.Show(shown);
    OnSize();
    if (shown || focused) {
        SetFocus(Handle());
    }
}

void MainWindow::ShowPackage() {
    ShowControl(m_session != nullptr);
    if (!m_session) {
        SetWindowTextW(Handle(), kProgramName);
        ShowStatus(L"Ready", {});
        return;
    }
    const std::wstring& file = m_session->PackageFile();
    SetWindowTextW(Handle(), (FileName(file) + L" - " + kProgramName).c_str());
    ShowStatus(file, m_facts);
}

void MainWindow::ShowStatus(const std::wstring& text, const std::wstring& facts) {
    SendMessageW(m_status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(m_status, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(facts.c_str()));
}

} // namespace viewer
