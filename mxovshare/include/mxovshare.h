// The host's shared library: the names that the document manager control imports, and no more.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#ifndef MXOVSHARE_API // empty where the library is linked in
#ifdef MXOVSHARE_EXPORTS
#define MXOVSHARE_API __declspec(dllexport)
#else
#define MXOVSHARE_API __declspec(dllimport)
#endif
#endif

namespace mxovshare {

/// Access to an INI file by section and key. Section and key names compare without regard to case. Nothing is
/// reported: what is missing or cannot be read is empty, what cannot be written is kept and retried.
class MXOVSHARE_API INIFile {
public:
    /// The value of a key; empty when the file, the section or the key is absent.
    static std::wstring GetKeyValueFromINI(std::wstring section, std::wstring key, std::wstring file);

    /// Sets a key, creating file, section and key as needed. The file is replaced in one step.
    static void AddRecordToINI(std::wstring section, std::wstring key, std::wstring value, std::wstring file);

    /// The names of all sections that begin with the prefix, in order of appearance.
    static std::vector<std::wstring> GetSectionNamesFromINI(std::wstring prefix, std::wstring file);

    /// The highest n among the sections named prefix, "_", n; 0 when there is none.
    static int GetLastIndexOfSectionFromINI(std::wstring prefix, std::wstring file);

    /// Removes a section with all its keys.
    static void RemoveSectionFromINI(std::wstring section, std::wstring file);
};

/// Questions about files.
class MXOVSHARE_API File {
public:
    /// Size in bytes: 0 for a missing file, 2147483647 for one that does not fit.
    static int GetFileSize(std::wstring path);
};

/// Work on whole packages.
class MXOVSHARE_API Utils {
public:
    /// Adds a history entry with `text` as its operation to the package folder's information file and
    /// rebuilds the package file from the folder. The old file stays whole until the new one is complete; a
    /// failure is reported to the user by this library.
    static void ReGenerateOrvandoFile(std::wstring packageFolder, std::wstring packageFile,
                                      std::wstring text);
};

/// What the running host application publishes.
class MXOVSHARE_API OVApplication {
public:
    /// Name of the current language, such as "English"; decides the help files and the resource module.
    static std::wstring mxLanguageName;

    /// Module that holds the user-visible texts and images, by number; owned by this library.
    static HINSTANCE hMXOVResInstance;
};

} // namespace mxovshare
