// Owners and access rights, on a file system that has them: Wine's knows one owner.
#include "files/FileProperties.h"

#include "ImportHook.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include <sddl.h>

using namespace mxovshare;

namespace {

constexpr wchar_t kOld[] = L"O:BAD:(A;;FA;;;WD)";
constexpr wchar_t kOtherRights[] = L"O:BAD:(A;;FR;;;WD)";
constexpr wchar_t kOtherOwner[] = L"O:SYD:(A;;FR;;;WD)";

std::map<std::wstring, std::vector<BYTE>> descriptors; // by path
std::vector<SECURITY_INFORMATION> changes;
SECURITY_INFORMATION refused = 0;

std::vector<BYTE> DescriptorOf(const wchar_t* text) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ULONG size = 0;
    EXPECT_TRUE(
        ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1, &descriptor, &size));
    const auto* bytes = static_cast<const BYTE*>(descriptor);
    std::vector<BYTE> copy(bytes, bytes + size);
    LocalFree(descriptor);
    return copy;
}

BOOL WINAPI Get(LPCWSTR path, SECURITY_INFORMATION, PSECURITY_DESCRIPTOR to, DWORD size, LPDWORD needed) {
    const std::vector<BYTE>& bytes = descriptors.at(path);
    *needed = static_cast<DWORD>(bytes.size());
    if (size < bytes.size()) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    std::ranges::copy(bytes, static_cast<BYTE*>(to));
    return TRUE;
}

BOOL WINAPI Set(LPCWSTR, SECURITY_INFORMATION parts, PSECURITY_DESCRIPTOR) {
    changes.push_back(parts);
    return (parts & refused) == 0;
}

class FilePropertiesTest : public testing::Test {
protected:
    FilePropertiesTest() {
        changes.clear();
        refused = 0;
        descriptors[m_old] = DescriptorOf(kOld);
    }
    std::wstring LostWith(const wchar_t* given) {
        descriptors[m_new] = DescriptorOf(given);
        return CopyFileProperties(m_old, m_new);
    }

    const TempFolder m_folder;
    const std::wstring m_old = m_folder.Write(L"old", "old");
    const std::wstring m_new = m_folder.Write(L"new", "new");
    const ImportHook<decltype(Get)> m_get{"GetFileSecurityW", Get};
    const ImportHook<decltype(Set)> m_set{"SetFileSecurityW", Set};
};

TEST_F(FilePropertiesTest, RightsAndOwnerAreSetWhereTheyDiffer) {
    EXPECT_EQ(LostWith(kOld), L"");
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(LostWith(kOtherRights), L"");
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_NE(changes[0] & DACL_SECURITY_INFORMATION, 0u);
    EXPECT_EQ(changes[0] & OWNER_SECURITY_INFORMATION, 0u);
    EXPECT_EQ(LostWith(kOtherOwner), L"");
    EXPECT_EQ(changes.size(), 3u);
    EXPECT_EQ(changes.back(), static_cast<SECURITY_INFORMATION>(OWNER_SECURITY_INFORMATION));
}

TEST_F(FilePropertiesTest, WhatCannotBeSetIsLost) {
    refused = OWNER_SECURITY_INFORMATION;
    EXPECT_EQ(LostWith(kOtherRights), L"");
    EXPECT_EQ(LostWith(kOtherOwner), L"its owner");
    refused |= DACL_SECURITY_INFORMATION;
    EXPECT_EQ(LostWith(kOtherRights), L"its access rights");
    EXPECT_EQ(LostWith(kOtherOwner), L"its access rights, its owner");
}

} // namespace
