#include "common/Policies.h"

#include "PolicyValue.h"

#include <gtest/gtest.h>

using namespace common;

TEST(Policies, WithoutThemNothingIsSetOrRefused) {
    EXPECT_EQ(UnpackFolderPolicy(), L"");
    EXPECT_FALSE(IsRefusingPrograms());
    EXPECT_EQ(KeepVersionsPolicy(), std::nullopt);
}

TEST(Policies, TheFolderMayNameVariables) {
    SetEnvironmentVariableW(L"MXOV_TEST_FOLDER", L"D:\\Packages");
    const PolicyValue policy(kUnpackFolderPolicy, L"%MXOV_TEST_FOLDER%\\unpacked");
    EXPECT_EQ(UnpackFolderPolicy(), L"D:\\Packages\\unpacked");
}

TEST(Policies, ThoseOfTheMachineComeFirst) {
    const PolicyValue folder(kUnpackFolderPolicy, L"C:\\user");
    const PolicyValue refuse(kRefuseProgramsPolicy, 1);
    const PolicyValue keep(kKeepVersionsPolicy, 1);
    EXPECT_EQ(UnpackFolderPolicy(), L"C:\\user");
    EXPECT_TRUE(IsRefusingPrograms());
    EXPECT_EQ(KeepVersionsPolicy(), true);
    const PolicyValue machineFolder(kUnpackFolderPolicy, L"C:\\machine", HKEY_LOCAL_MACHINE);
    const PolicyValue machineAllows(kRefuseProgramsPolicy, 0, HKEY_LOCAL_MACHINE);
    const PolicyValue machineForbids(kKeepVersionsPolicy, 0, HKEY_LOCAL_MACHINE);
    EXPECT_EQ(UnpackFolderPolicy(), L"C:\\machine");
    EXPECT_FALSE(IsRefusingPrograms());
    EXPECT_EQ(KeepVersionsPolicy(), false);
}

TEST(Policies, ValuesOfAnotherTypeCountAsNone) {
    const PolicyValue folder(kUnpackFolderPolicy, 1);
    const PolicyValue refuse(kRefuseProgramsPolicy, L"1");
    EXPECT_EQ(UnpackFolderPolicy(), L"");
    EXPECT_FALSE(IsRefusingPrograms());
}
