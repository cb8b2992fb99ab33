// When the store looks at its file again, by a clock that moves only where the test says so.
#include "ImportHook.h"
#include "IniStoreFile.h"

namespace mxovshare {
namespace {

LARGE_INTEGER ticks = {};
FILETIME systemTime = {};
int opened = 0;
decltype(CreateFileW)* realCreateFile = nullptr;

BOOL WINAPI StoppedTicks(LARGE_INTEGER* count) {
    *count = ticks;
    return TRUE;
}

void WINAPI StoppedSystemTime(FILETIME* time) {
    *time = systemTime;
}

HANDLE WINAPI CountedCreateFile(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                                DWORD creation, DWORD flags, HANDLE likeness) {
    ++opened;
    return realCreateFile(path, access, share, security, creation, flags, likeness);
}

struct StoppedClock {
    ImportHook<decltype(StoppedTicks)> ticks{"QueryPerformanceCounter", StoppedTicks};
    ImportHook<decltype(StoppedSystemTime)> time{"GetSystemTimeAsFileTime", StoppedSystemTime};
};

class IniStoreClock : public IniStoreFile {
protected:
    IniStoreClock() {
        QueryPerformanceFrequency(&m_frequency);
        QueryPerformanceCounter(&ticks);
    }

    // Writes a file and stops the clock, so that the file's time is too recent to be trusted.
    std::wstring WriteNow(const std::wstring& name, std::string_view bytes) {
        std::wstring path = m_folder.Write(name, bytes);
        GetSystemTimeAsFileTime(&systemTime);
        m_clock.emplace();
        return path;
    }

    void Pass(int milliseconds) const { ticks.QuadPart += m_frequency.QuadPart * milliseconds / 1000; }

private:
    LARGE_INTEGER m_frequency = {};
    std::optional<StoppedClock> m_clock;
};

TEST_F(IniStoreClock, ReadsALargeFileOnceInATenthOfASecond) {
    const std::wstring file = WriteNow(L"large.ini", "[s]\nk=one\n; " + std::string(1 << 20, 'x'));
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"one");
    const ImportHook<decltype(CountedCreateFile)> hook("CreateFileW", CountedCreateFile);
    realCreateFile = hook.Real();
    opened = 0;
    Pass(99);
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"one");
    EXPECT_EQ(opened, 0);
    Pass(2);
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"one");
    EXPECT_EQ(opened, 1);
    Pass(99);
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"one");
    EXPECT_EQ(opened, 1);
}

TEST_F(IniStoreClock, SeesItsOwnWriteUnderAnotherPathHoweverQuickItWas) {
    const std::wstring file = WriteNow(L"a folder with a short name\\mxinfo.ini", "[s]\nk=old\n");
    wchar_t other[MAX_PATH] = {};
    ASSERT_NE(GetShortPathNameW(file.c_str(), other, MAX_PATH), 0u);
    ASSERT_NE(other, file);
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"old");
    m_store.SetValue(L"s", L"k", L"new", other);
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"new");
}

} // namespace
} // namespace mxovshare
