#include "package/NewInformation.h"

#include "common/Handles.h"
#include "common/Utf8.h"
#include "files/FileFailure.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

TEST(NewInformation, NamesAFileThatIsKnownAndCannotBeRead) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"mxinfo.ini", "[s]\nk=v\n");
    Sleep(2200); // from then on its time proves that what was read is current
    ASSERT_EQ(IniStore::Instance().Value(L"s", L"k", path), L"v");
    const common::UniqueHandle lock =
        common::OwnFile(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(lock);
    try {
        const NewInformation information(folder.Path(), L"Edited", L"");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const FileFailure& failure) {
        EXPECT_TRUE(common::FromUtf8(failure.what()).starts_with(L"cannot read \"" + path + L"\": "))
            << failure.what();
    }
    EXPECT_EQ(folder.EntryCount(), 1);
}

} // namespace
