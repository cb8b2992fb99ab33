#include "files/DiskFile.h"

#include "common/Utf8.h"
#include "files/FileFailure.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

TEST(OpenFile, NamesTheFileThatCannotBeCut) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"a.txt", "content");
    const common::UniqueHandle readable = OpenDiskFile(path);
    mxovshare::OpenFile file(readable.get(), path);
    try {
        file.SetSize(1);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const FileFailure& failure) {
        EXPECT_TRUE(common::FromUtf8(failure.what()).starts_with(L"cannot write \"" + path + L"\": "))
            << failure.what();
    }
    EXPECT_EQ(file.Size(), 7u);
    EXPECT_EQ(folder.Read(L"a.txt"), "content");
}

} // namespace
