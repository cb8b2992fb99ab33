// Runs commands from standard input until it ends: edits, attaches, removes, saves, opens and locks, one per
// line. Words are separated by tabs. Each line is answered by one: "done" or "failed", the number of messages
// to the user, the number of questions.
#include "common/Handles.h"
#include "host/MessageBoxes.h"
#include "ini/IniStore.h"
#include "mxovpackage.h"
#include "text/SystemText.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <vector>

using namespace mxovshare;

namespace {

using Words = std::vector<std::wstring>;

int notices = 0;
int questions = 0;
bool answer = false;
std::thread lock;

std::wstring InformationOf(const std::wstring& folder) {
    return folder + L"\\mxinfo.ini";
}

// Diagnostics for a failed run.
void Explain(const wchar_t* text) {
    std::fprintf(stderr, "%ls\n", text);
}

// As a host does before it shows anything; from then on a number means the section that has it.
std::vector<std::wstring> ReadSections(const std::wstring& information) {
    return INIFile::GetSectionNamesFromINI(L"", information);
}

// Whether a key reads back as a value. An edit of a file that could not be read yet is refused and reported
// to the user once.
bool HasValue(const std::wstring& section, const wchar_t* key, const std::wstring& value,
              const std::wstring& information) {
    return INIFile::GetKeyValueFromINI(section, key, information) == value;
}

// FOLDER SECTION KEY VALUE
bool Edit(const Words& words) {
    ReadSections(InformationOf(words[1]));
    INIFile::AddRecordToINI(words[2], words[3], words[4], InformationOf(words[1]));
    return HasValue(words[2], words[3].c_str(), words[4], InformationOf(words[1]));
}

// FOLDER SOURCE NAME
bool Attach(const Words& words) {
    const std::wstring information = InformationOf(words[1]);
    const std::wstring path = L"ReferanceFiles\\" + words[3];
    CreateDirectoryW((words[1] + L"\\ReferanceFiles").c_str(), nullptr);
    if (!CopyFileW(words[2].c_str(), (words[1] + L"\\" + path).c_str(), TRUE)) {
        return false;
    }
    const int last = INIFile::GetLastIndexOfSectionFromINI(L"REFERANCE_FILE", information);
    const std::wstring section = L"REFERANCE_FILE_" + std::to_wstring(last + 1);
    INIFile::AddRecordToINI(section, L"IsReferencedFile", L"NO", information);
    INIFile::AddRecordToINI(section, L"Description", words[3], information);
    INIFile::AddRecordToINI(section, L"Timestamp", L"2024-05-15 07:31:50", information);
    INIFile::AddRecordToINI(section, L"FilePath", path, information);
    return std::ranges::any_of(ReadSections(information), [&](const std::wstring& name) {
        return HasValue(name, L"FilePath", path, information);
    });
}

// FOLDER SECTION
bool Remove(const Words& words) {
    const std::wstring information = InformationOf(words[1]);
    const bool isRead = !ReadSections(information).empty();
    const std::wstring path = INIFile::GetKeyValueFromINI(words[2], L"FilePath", information);
    INIFile::RemoveSectionFromINI(words[2], information);
    if (isRead && notices == 0 && !path.empty()) {
        DeleteFileW((words[1] + L"\\" + path).c_str());
    }
    return isRead;
}

// FOLDER PACKAGE ANSWER
bool Save(const Words& words) {
    answer = words[3] == L"yes";
    Utils::ReGenerateOrvandoFile(words[1], words[2], L"Edited");
    return !TakeSaveFailure(words[1]);
}

// PACKAGE FOLDER
bool Open(const Words& words) {
    const PackageResult result = UnpackPackage(words[1], words[2]);
    Explain(result.message.c_str());
    return result.ok;
}

// Writes what could not be written before, now that nothing is in the way.
bool Flush(const Words&) {
    constexpr int kAttempts = 6000;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (IniStore::Instance().SaveKept()) {
            return true;
        }
        Sleep(10);
    }
    return false;
}

// FILE MILLISECONDS: opens the file without sharing it.
bool Lock(const Words& words) {
    HANDLE file = CreateFileW(words[1].c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    lock = std::thread([file, duration = std::stoul(words[2])] {
        Sleep(duration);
        CloseHandle(file);
    });
    return true;
}

bool Unlock(const Words&) {
    if (lock.joinable()) {
        lock.join();
    }
    return true;
}

const std::map<std::wstring, bool (*)(const Words&)> kCommands = {
    {L"edit", Edit}, {L"attach", Attach}, {L"remove", Remove}, {L"save", Save},
    {L"open", Open}, {L"flush", Flush},   {L"lock", Lock},     {L"unlock", Unlock}};

// The words of a line in UTF-8, without its end.
Words Split(const std::string& line) {
    std::wstring text(line.size(), L'\0');
    text.resize(static_cast<std::size_t>(MultiByteToWideChar(
        CP_UTF8, 0, line.data(), static_cast<int>(line.size()), text.data(), static_cast<int>(text.size()))));
    Words words = {L""};
    for (const wchar_t unit : text) {
        if (unit == L'\t') {
            words.emplace_back();
        } else if (unit != L'\r') {
            words.back() += unit;
        }
    }
    return words;
}

} // namespace

int main() {
    SetErrorSink([](const wchar_t* text) {
        ++notices;
        Explain(text);
    });
    SetQuestionSink([](const std::wstring&) {
        ++questions;
        return answer;
    });
    std::string line;
    while (std::getline(std::cin, line)) {
        const Words words = Split(line);
        notices = 0;
        questions = 0;
        const bool done = kCommands.at(words[0])(words);
        std::printf("%s %d %d\n", done ? "done" : "failed", notices, questions);
        std::fflush(stdout);
    }
    Unlock({});
    return 0;
}
