#include "Edit.h"

#include "Commands.h"
#include "History.h"
#include "output/LineText.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <care/Documents.h>
#include <care/Keys.h>

namespace {

constexpr std::pair<const wchar_t*, care::DocumentKind> kKinds[] = {
    {L"copy", care::DocumentKind::Copy},
    {L"link", care::DocumentKind::Link},
    {L"part", care::DocumentKind::Part},
    {L"gcode", care::DocumentKind::GCode},
    {L"sheet", care::DocumentKind::SetupSheet}};

care::DocumentKind KindOf(const Arguments& arguments) {
    const std::wstring word = arguments.Has(L"--as") ? arguments.Value(L"--as") : L"copy";
    for (const auto& [name, kind] : kKinds) {
        if (word == name) {
            return kind;
        }
    }
    throw UsageError{L"--as takes copy, link, part, gcode or sheet, not \"" + word + L"\""};
}

} // namespace

int EditPackage(const Arguments& arguments, const std::wstring& operation,
                const std::vector<std::wstring>& words, const PackageEdit& edit) {
    const std::wstring& file = arguments[0];
    const std::optional<care::PackageContent> view = ReadPackage(file);
    if (!view) {
        return kFailed;
    }
    care::PackageEditor editor(view->sections, view->entries);
    std::vector<std::wstring> lines;
    try {
        for (const std::wstring& word : words) {
            lines.push_back(edit(editor, word));
        }
    } catch (const care::Refusal& refusal) {
        PrintFailure(L"\"" + file + L"\": " + refusal.message);
        return kFailed;
    }
    mxovshare::PackageChanges changes = editor.Changes();
    SetHistory(arguments, operation, changes);
    if (!WriteChanged(file, file, changes)) {
        return kFailed;
    }
    for (const std::wstring& line : lines) {
        PrintLine(OneLine(line));
    }
    return kDone;
}

int EditPackage(const Arguments& arguments, const std::wstring& operation, const PackageEdit& edit) {
    return EditPackage(arguments, operation, {arguments.All().begin() + 1, arguments.All().end()}, edit);
}

int Add(const Arguments& arguments) {
    care::NewDocument document = {.kind = KindOf(arguments),
                                  .path = {},
                                  .description = arguments.Value(L"--description"),
                                  .hasDescription = arguments.Has(L"--description"),
                                  .replaces = arguments.Has(L"--replace")};
    return EditPackage(arguments, L"Added documents",
                       [&document](care::PackageEditor& editor, const std::wstring& path) {
                           document.path = path;
                           return L"added " + care::AddDocument(editor, document);
                       });
}

int Remove(const Arguments& arguments) {
    return EditPackage(arguments, L"Removed documents",
                       [](care::PackageEditor& editor, const std::wstring& word) {
                           return L"removed " + care::RemoveDocument(editor, word);
                       });
}

int Set(const Arguments& arguments) {
    for (std::size_t i = 1; i < arguments.Count(); ++i) {
        if (arguments[i].find(L'=') == std::wstring::npos) {
            throw UsageError{L"set takes KEY=VALUE, not \"" + arguments[i] + L"\""};
        }
    }
    return EditPackage(arguments, L"Changed properties",
                       [](care::PackageEditor& editor, const std::wstring& word) {
                           const std::size_t equals = word.find(L'=');
                           const care::KeyName name = care::FindKey(editor, word.substr(0, equals));
                           const std::wstring value = word.substr(equals + 1);
                           editor.SetKey(name.section, name.key, value);
                           return L"set " + name.section + L"/" + name.key + L"=" + value;
                       });
}
