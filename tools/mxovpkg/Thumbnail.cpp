#include "Commands.h"
#include "Edit.h"
#include "History.h"
#include "output/LineText.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <care/Thumbnail.h>

#include "common/FileBytes.h"
#include "common/SystemError.h"

namespace {

constexpr wchar_t kSet[] = L"--set";
constexpr wchar_t kExtract[] = L"--extract";

// Prints the reason and returns false when that fails.
bool WriteWhole(const std::wstring& path, std::string_view bytes) {
    const DWORD error = common::ReplaceFileWith(path, bytes);
    if (error != ERROR_SUCCESS) {
        PrintFailure(L"cannot write \"" + path + L"\": " + common::SystemErrorText(error));
    }
    return error == ERROR_SUCCESS;
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
