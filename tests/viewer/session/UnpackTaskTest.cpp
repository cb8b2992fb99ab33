#include "session/UnpackTask.h"

#include "common/Handles.h"
#include "package/Paths.h"
#include "PolicyValue.h"
#include "session/SessionStore.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr UINT kFinished = WM_APP + 7;

common::UniqueWindow MessageWindow() {
    return common::UniqueWindow(
        CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
}

// Waits until the task has posted its message.
bool WaitForMessage(HWND window) {
    const UINT_PTR timer = SetTimer(window, 1, 30000, nullptr);
    MSG message = {};
    while (GetMessageW(&message, window, 0, 0) > 0) {
        if (message.message == kFinished || message.message == WM_TIMER) {
            break;
        }
    }
    KillTimer(window, timer);
    return message.message == kFinished;
}

std::unique_ptr<PackageSession> NewSession(SessionStore& store, const std::wstring& package) {
    std::wstring error;
    std::unique_ptr<PackageSession> session = store.Create(package, error);
    EXPECT_TRUE(session) << error.c_str();
    return session;
}

// A package with two files of known size.
std::wstring MakePackage(const TempFolder& folder) {
    folder.WriteSized(L"source\\mxinfo.ini", 100);
    folder.WriteSized(L"source\\GCode\\a.nc", 5000);
    std::wstring package = folder / L"job.mxov";
    EXPECT_TRUE(mxovshare::CreatePackage(folder / L"source", package).ok);
    return package;
}

} // namespace

TEST(UnpackTask, UnpacksIntoTheFolderOfTheSession) {
    const TempFolder folder;
    SessionStore store(folder / L"sessions");
    const common::UniqueWindow window = MessageWindow();
    UnpackTask task(NewSession(store, MakePackage(folder)));
    task.NotifyAtEnd(window.get(), kFinished);
    ASSERT_TRUE(WaitForMessage(window.get()));
    const auto [result, session] = task.Finish();
    EXPECT_TRUE(result.ok);
    EXPECT_TRUE(FileExists(session->FolderWithSeparator() + L"GCode\\a.nc"));
}

TEST(UnpackTask, WhoAsksAfterTheEndIsNotifiedToo) {
    const TempFolder folder;
    SessionStore store(folder / L"sessions");
    const common::UniqueWindow window = MessageWindow();
    UnpackTask task(NewSession(store, MakePackage(folder)));
    while (task.Current().done < 5100) {
        Sleep(1);
    }
    Sleep(50); // usually the thread has ended by then
    task.NotifyAtEnd(window.get(), kFinished);
    ASSERT_TRUE(WaitForMessage(window.get()));
    EXPECT_TRUE(task.Finish().first.ok);
}

TEST(UnpackTask, AFileThatIsNoPackageLeavesNothing) {
    const TempFolder folder;
    SessionStore store(folder / L"sessions");
    const common::UniqueWindow window = MessageWindow();
    UnpackTask task(NewSession(store, folder.Write(L"letter.mxov", "Dear Sir")));
    task.NotifyAtEnd(window.get(), kFinished);
    ASSERT_TRUE(WaitForMessage(window.get()));
    const auto [result, session] = task.Finish();
    EXPECT_FALSE(result.ok);
    EXPECT_FALSE(result.cancelled);
    EXPECT_NE(result.message.find(L"letter.mxov"), std::wstring::npos);
    EXPECT_EQ(GetFileAttributesW(session->Folder().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(UnpackTask, APolicyRefusesPackagesThatHoldPrograms) {
    const TempFolder folder;
    SessionStore store(folder / L"sessions");
    folder.WriteSized(L"source\\Tools\\setup.exe", 10);
    const std::wstring package = MakePackage(folder);
    const common::UniqueWindow window = MessageWindow();
    {
        const PolicyValue policy(common::kRefuseProgramsPolicy, 1);
        UnpackTask task(NewSession(store, package));
        task.NotifyAtEnd(window.get(), kFinished);
        ASSERT_TRUE(WaitForMessage(window.get()));
        const auto [result, session] = task.Finish();
        EXPECT_FALSE(result.ok || result.cancelled);
        EXPECT_NE(result.message.find(L"Tools\\setup.exe"), std::wstring::npos);
        EXPECT_FALSE(FolderExists(session->Folder()));
    }
    UnpackTask task(NewSession(store, package));
    task.NotifyAtEnd(window.get(), kFinished);
    ASSERT_TRUE(WaitForMessage(window.get()));
    EXPECT_TRUE(task.Finish().first.ok);
}

TEST(UnpackTask, EndingItEarlyLeavesNothing) {
    const TempFolder folder;
    SessionStore store(folder / L"sessions");
    folder.WriteSized(L"source\\large.bin", 64 << 20);
    const std::wstring package = folder / L"job.mxov";
    ASSERT_TRUE(mxovshare::CreatePackage(folder / L"source", package).ok);
    const common::UniqueWindow window = MessageWindow();
    std::unique_ptr<PackageSession> session = NewSession(store, package);
    const std::wstring unpacked = session->Folder();
    { UnpackTask task(std::move(session)); }
    store.WaitForRemovals();
    EXPECT_EQ(GetFileAttributesW(unpacked.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(FileExists(unpacked + L".session"));
}
