// What a package file has besides its content and loses when it is replaced.
#include "files/FileProperties.h"
#include "Listeners.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

constexpr wchar_t kHardLinks[] = L"its other hard links";

// Records the reported losses; continues or cancels as constructed.
class LossListener : public RecordingProgress {
public:
    explicit LossListener(bool continues) : m_continues(continues) {}

    bool OnLoss(const std::wstring& lost) override {
        losses.push_back(lost);
        return m_continues;
    }

    std::vector<std::wstring> losses;

private:
    bool m_continues;
};

class FileLossTest : public testing::Test {
protected:
    FileLossTest() {
        m_folder.Write(L"a.txt", "a");
        m_work.Write(L"p.mxov", "old");
        CreateHardLinkW((m_work / L"other").c_str(), Package().c_str(), nullptr);
    }
    std::wstring Package() const { return m_work / L"p.mxov"; }

    TempFolder m_folder;
    TempFolder m_work;
};

TEST_F(FileLossTest, OtherHardLinksAreLost) {
    const std::wstring single = m_work.Write(L"single", "new");
    EXPECT_EQ(CopyFileProperties(Package(), single), kHardLinks);
    EXPECT_EQ(CopyFileProperties(single, m_work.Write(L"another", "new")), L"");
    EXPECT_EQ(CopyFileProperties(m_work / L"nowhere", single), L"");
}

TEST_F(FileLossTest, PackingIsCancelledByWhoDeclinesTheLoss) {
    LossListener listener(false);
    EXPECT_TRUE(CreatePackage(m_folder.Path(), Package(), &listener).cancelled);
    EXPECT_EQ(listener.losses, std::vector<std::wstring>{kHardLinks});
    EXPECT_EQ(m_work.Read(L"p.mxov"), "old");
    EXPECT_EQ(m_work.Read(L"other"), "old");
    EXPECT_EQ(m_work.EntryCount(), 2);
}

TEST_F(FileLossTest, PackingReplacesTheFileForWhoAcceptsTheLoss) {
    LossListener listener(true);
    EXPECT_TRUE(CreatePackage(m_folder.Path(), Package(), &listener).ok);
    EXPECT_EQ(listener.losses.size(), 1U);
    EXPECT_EQ(m_work.Read(L"other"), "old");
    EXPECT_TRUE(VerifyPackage(Package()).ok);
    EXPECT_TRUE(CreatePackage(m_folder.Path(), Package(), &listener).ok);
    EXPECT_EQ(listener.losses.size(), 1U) << "now there is no other link";
}

TEST_F(FileLossTest, AFileThatIsNoLinkIsItsOwnTarget) {
    EXPECT_EQ(FinalFile(Package()), Package());
    EXPECT_EQ(FinalFile(m_work / L"nowhere"), m_work / L"nowhere");
}

} // namespace
