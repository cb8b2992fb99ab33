#include "session/PackageWatch.h"

#include "common/Handles.h"
#include "package/Paths.h"
#include "session/SessionStore.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr UINT kLooked = WM_APP;
constexpr UINT_PTR kGivenUp = 1;
constexpr UINT kPatience = 20000; // milliseconds

class PackageWatchTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_session) << m_error.c_str();
        m_folder.Write(L"store\\" + FileName(m_session->Folder()) + L"\\plan.txt", "plan");
        m_session->AcceptAll();
        SetTimer(m_window.get(), kGivenUp, kPatience, nullptr);
    }

    // True after a look, whose state is not taken.
    bool WaitForLook() {
        MSG message = {};
        while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != WM_TIMER) {
            if (message.message == kLooked) {
                return true;
            }
        }
        return false;
    }

    void WriteOther() {
        m_folder.Write(L"store\\" + FileName(m_session->Folder()) + L"\\other.txt", "other");
    }
    void RemoveOther() { DeleteFileW((m_session->Folder() + L"\\other.txt").c_str()); }

    TempFolder m_folder;
    std::wstring m_error;
    SessionStore m_store{m_folder / L"store"};
    std::unique_ptr<PackageSession> m_session = m_store.Create(m_folder / L"a.mxov", m_error);
    common::UniqueWindow m_window{
        CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)};
};

} // namespace

TEST_F(PackageWatchTest, TellsOnceWhatChangedInTheFolder) {
    PackageWatch watch(*m_session, m_window.get(), kLooked);
    ASSERT_TRUE(WaitForLook());
    const auto before = watch.Take();
    ASSERT_TRUE(before);
    EXPECT_TRUE(before->changes.empty());
    WriteOther();
    ASSERT_TRUE(WaitForLook());
    const auto after = watch.Take();
    ASSERT_TRUE(after);
    ASSERT_EQ(after->changes.size(), 1U);
    EXPECT_EQ(after->changes[0].name, L"other.txt");
    EXPECT_FALSE(watch.Take());
}

TEST_F(PackageWatchTest, AStateOfBeforeAnUpdateIsForgotten) {
    WriteOther();
    PackageWatch watch(*m_session, m_window.get(), kLooked);
    ASSERT_TRUE(WaitForLook()); // finds the other document, which the viewer takes back now
    RemoveOther();
    watch.Update(*m_session);
    EXPECT_FALSE(watch.Take());
    ASSERT_TRUE(WaitForLook());
    const auto after = watch.Take();
    ASSERT_TRUE(after);
    EXPECT_TRUE(after->changes.empty());
}
