// What the built library returns about files and about itself.
#include "mxovshare.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <string_view>

namespace mxovshare {
namespace {

TEST(File, SizeIsThatOfTheFile) {
    const TempFolder folder;
    EXPECT_EQ(File::GetFileSize(folder.Write(L"a", "12345")), 5);
    EXPECT_EQ(File::GetFileSize(folder.Write(L"b", "")), 0);
    EXPECT_EQ(File::GetFileSize(folder / L"missing"), 0);
    EXPECT_EQ(File::GetFileSize(folder.Path()), 0);
    EXPECT_EQ(File::GetFileSize(L""), 0);
    EXPECT_EQ(File::GetFileSize(folder / L"a|*?"), 0);
}

TEST(File, SizesBeyondTheTypeAreItsLargestNumber) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"big", "");
    for (const auto& [size, told] :
         {std::pair(2147483646LL, 2147483646), std::pair(2147483647LL, 2147483647),
          std::pair(2147483648LL, 2147483647), std::pair(6000000000LL, 2147483647)}) {
        HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        LARGE_INTEGER end = {};
        end.QuadPart = size;
        EXPECT_TRUE(SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file));
        CloseHandle(file);
        EXPECT_EQ(File::GetFileSize(path), told);
    }
}

TEST(OVApplication, LanguageIsEnglishAndCanBeSet) {
    EXPECT_EQ(OVApplication::mxLanguageName, L"English");
    OVApplication::mxLanguageName = L"a language with a long name";
    EXPECT_EQ(OVApplication::mxLanguageName, L"a language with a long name");
    OVApplication::mxLanguageName = L"English";
}

TEST(OVApplication, ResourcesAreThoseOfTheLibrary) {
    EXPECT_EQ(OVApplication::hMXOVResInstance, GetModuleHandleW(L"mxovshare.dll"));
    EXPECT_NE(OVApplication::hMXOVResInstance, nullptr);
}

TEST(Library, ExportsItsInterfaceAndNoMore) {
    const auto* base = reinterpret_cast<const char*>(GetModuleHandleW(L"mxovshare.dll"));
    ASSERT_NE(base, nullptr);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
    const DWORD offset = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
    const auto* directory = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + offset);
    const auto* names = reinterpret_cast<const DWORD*>(base + directory->AddressOfNames);
    ASSERT_GE(directory->NumberOfNames, 8U);
    for (DWORD i = 0; i < directory->NumberOfNames; ++i) {
        const std::string_view name = base + names[i];
        EXPECT_TRUE(name.starts_with("_ZN9mxovshare") || name.starts_with("_ZNK9mxovshare")) << name;
    }
}

} // namespace
} // namespace mxovshare
