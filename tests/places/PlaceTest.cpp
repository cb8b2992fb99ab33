// Whether the computer is the one that the test was started for: tools/places.sh names it in MXOV_PLACE.
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include <shlobj.h>

namespace {

constexpr LONG kMinutesFromUtc = -330;
constexpr UINT kDots = 144;
constexpr const wchar_t* kUser = L"J\u00f6rg M\u00fcller";
constexpr std::size_t kLongPath = 300;

std::wstring UsersFormat(LCTYPE kind) {
    wchar_t text[80] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, kind, text, ARRAYSIZE(text));
    return text;
}

void ExpectLanguage(LANGID language, UINT codePage) {
    EXPECT_EQ(GetUserDefaultLCID(), MAKELCID(language, SORT_DEFAULT));
    EXPECT_EQ(GetUserDefaultUILanguage(), language);
    EXPECT_EQ(GetACP(), codePage);
}

void ExpectTimeZone() {
    TIME_ZONE_INFORMATION zone = {};
    EXPECT_NE(GetTimeZoneInformation(&zone), TIME_ZONE_ID_INVALID);
    EXPECT_EQ(zone.Bias, kMinutesFromUtc);
    const FILETIME utc = {0, 31'000'000};
    FILETIME local = {};
    EXPECT_TRUE(FileTimeToLocalFileTime(&utc, &local));
    EXPECT_NE(CompareFileTime(&utc, &local), 0);
}

void ExpectGerman() {
    ExpectLanguage(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), 1252);
    EXPECT_EQ(UsersFormat(LOCALE_SDECIMAL), L",");
    EXPECT_NE(UsersFormat(LOCALE_SSHORTDATE).find(L".M"), std::wstring::npos);
}

void ExpectJapanese() {
    ExpectLanguage(MAKELANGID(LANG_JAPANESE, SUBLANG_JAPANESE_JAPAN), 932);
    EXPECT_EQ(UsersFormat(LOCALE_SSHORTDATE).substr(0, 4), L"yyyy");
}

void ExpectResolution() {
    EXPECT_EQ(GetDpiForSystem(), kDots);
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSX), static_cast<int>(kDots));
    ReleaseDC(nullptr, screen);
}

void ExpectUser() {
    wchar_t name[257] = L"";
    DWORD size = ARRAYSIZE(name);
    EXPECT_TRUE(GetUserNameW(name, &size));
    EXPECT_STREQ(name, kUser);
    for (const int kind : {CSIDL_PROFILE, CSIDL_LOCAL_APPDATA, CSIDL_DESKTOPDIRECTORY}) {
        wchar_t folder[MAX_PATH] = L"";
        EXPECT_EQ(SHGetFolderPathW(nullptr, kind, nullptr, SHGFP_TYPE_CURRENT, folder), S_OK);
        EXPECT_NE(std::wstring(folder).find(kUser), std::wstring::npos) << kind;
    }
    const TempFolder folder;
    EXPECT_NE(folder.Path().find(kUser), std::wstring::npos);
    folder.Write(L"a.nc", "G0");
    EXPECT_EQ(folder.Read(L"a.nc"), "G0");
}

// The C run-time library's functions end at 260 characters.
void ExpectLongPath() {
    std::wstring folder = _wgetenv(L"TMPDIR");
    EXPECT_GE(folder.size(), kLongPath);
    std::replace(folder.begin(), folder.end(), L'/', L'\\');
    EXPECT_NE(GetFileAttributesW((L"\\\\?\\Z:" + folder).c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(Place, IsTheOneItIsNamedAfter) {
    const std::map<std::wstring, void (*)()> places = {
        {L"time_zone", ExpectTimeZone},    {L"german", ExpectGerman}, {L"japanese", ExpectJapanese},
        {L"resolution", ExpectResolution}, {L"user", ExpectUser},     {L"long_path", ExpectLongPath}};
    const wchar_t* const name = _wgetenv(L"MXOV_PLACE");
    const auto place = places.find(name != nullptr ? name : L"");
    ASSERT_NE(place, places.end()) << "no place";
    place->second();
}

} // namespace
