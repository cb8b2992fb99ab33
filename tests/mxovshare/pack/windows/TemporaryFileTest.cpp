#include "pack/TemporaryFile.h"

#include "common/Utf8.h"
#include "files/FileFailure.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

// Another temporary folder for this process, until the end of its scope.
class OtherTemporaryFolder {
public:
    explicit OtherTemporaryFolder(const std::wstring& path) {
        GetEnvironmentVariableW(L"TMP", m_before, MAX_PATH);
        SetEnvironmentVariableW(L"TMP", path.c_str());
    }
    ~OtherTemporaryFolder() { SetEnvironmentVariableW(L"TMP", m_before); }
    OtherTemporaryFolder(const OtherTemporaryFolder&) = delete;
    OtherTemporaryFolder& operator=(const OtherTemporaryFolder&) = delete;

private:
    wchar_t m_before[MAX_PATH] = {};
};

TEST(TemporaryFile, LiesInTheTemporaryFolderUntilItsEnd) {
    const TempFolder folder;
    const OtherTemporaryFolder other(folder.Path());
    {
        TemporaryFile file;
        EXPECT_TRUE(file.Path().starts_with(folder.PathWithSeparator()));
        EXPECT_EQ(folder.EntryCount(), 1);
    }
    EXPECT_EQ(folder.EntryCount(), 0);
}

TEST(TemporaryFile, NamesATemporaryFolderThatIsMissing) {
    const TempFolder folder;
    const std::wstring missing = folder / L"missing";
    const OtherTemporaryFolder other(missing);
    try {
        TemporaryFile file;
        ADD_FAILURE() << "nothing was thrown";
    } catch (const FileFailure& failure) {
        const std::wstring text = common::FromUtf8(failure.what());
        EXPECT_TRUE(text.starts_with(L"cannot create a temporary file in \"" + missing + L"\\\": "))
            << failure.what();
    }
}

} // namespace
