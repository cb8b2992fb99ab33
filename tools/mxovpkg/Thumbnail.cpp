#include "Commands.h"
#include "Edit.h"
#include "History.h"
#include "output/Output.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <care/Thumbnail.h>

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/SystemError.h"

namespace {

constexpr wchar_t kSet[] = L"--set";
constexpr wchar_t kExtract[] = L"--extract";

bool WriteBytes(const std::wstring& path, std::string_view bytes) {
    const common::UniqueHandle file = common::OwnFile(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD count = 0;
    return file &&
           WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) != FALSE &&
           count == bytes.size() && FlushFileBuffers(file.get()) != FALSE;
}

// Writes a file beside the one that it replaces. Prints the reason and returns false when that fails.
bool WriteWhole(const std::wstring& path, std::string_view bytes) {
    const std::wstring full = common::LongPath(path);
    const std::wstring incomplete = full + L".mxov-new";
    if (WriteBytes(incomplete, bytes) &&
        MoveFileExW(incomplete.c_str(), full.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE) {
        return true;
    }
    const DWORD error = GetLastError();
    DeleteFileW(incomplete.c_str());
    PrintFailure(L"cannot write \"" + path + L"\": " + common::SystemErrorText(error));
    return false;
}

int ExtractThumbnail(const std::wstring& file, const std::wstring& picture) {
    const std::optional<care::PackageContent> view = ReadPackage(file);
    if (!view) {
        return kFailed;
    }
    const std::wstring name = care::ThumbnailName({view->sections, view->entries});
    if (name.empty()) {
        PrintFailure(L"\"" + file + L"\" has no preview");
        return kFailed;
    }
    const std::optional<care::Texts> texts = ReadTexts(file, {name});
    if (!texts || !WriteWhole(picture, texts->at(name))) {
        return kFailed;
    }
    PrintLine(OneLine(L"extracted " + name + L" to " + picture));
    return kDone;
}

} // namespace

int Thumbnail(const Arguments& arguments) {
    if (arguments.Has(kSet) == arguments.Has(kExtract)) {
        throw UsageError{L"thumbnail takes either --set PICTURE or --extract PICTURE"};
    }
    if (arguments.Has(kExtract)) {
        for (const Option& option : HistoryOptions()) {
            if (arguments.Has(option.name)) {
                throw UsageError{option.name + L" does not go with --extract"};
            }
        }
        return ExtractThumbnail(arguments[0], arguments.Value(kExtract));
    }
    return EditPackage(arguments, L"Changed preview", {arguments.Value(kSet)},
                       [](care::PackageEditor& editor, const std::wstring& picture) {
                           return L"set " + care::SetThumbnail(editor, picture);
                       });
}
