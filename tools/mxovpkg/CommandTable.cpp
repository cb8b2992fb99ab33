#include "CommandTable.h"

#include "Commands.h"
#include "History.h"
#include "output/Report.h"

namespace {

constexpr wchar_t kHelp[] = LR"(Makes, shows, changes and unpacks Maxtrel Orvando packages.

usage: mxovpkg create FOLDER FILE    pack everything below FOLDER into the package FILE
       mxovpkg list FILE [--json]    list the entries of a package
       mxovpkg extract FILE FOLDER   unpack into FOLDER, which must be new or empty
       mxovpkg check FILE [--strict] [--json]
                                     verify every entry and show the catalogue of documents
       mxovpkg history FILE [--json] show the history
       mxovpkg diff FILE FILE [--all-lines] [--exit-code] [--json]
                                     compare two packages, or folders of unpacked ones
       mxovpkg text FILE             print a package as text, for version control

       mxovpkg add FILE DOCUMENT... [--as KIND] [--description TEXT] [--replace]
                                     add documents; KIND is copy, link, part, gcode or sheet
       mxovpkg remove FILE DOCUMENT...
                                     remove documents, by section, number, path or name
       mxovpkg set FILE KEY=VALUE... set keys of the information file; SECTION/KEY outside [FILEINFO]
       mxovpkg thumbnail FILE --set PICTURE | --extract PICTURE
                                     set the preview to a bitmap, or write it to one
       mxovpkg bundle FILE OUT [--network]
                                     copy the package to OUT with its linked documents inside
       mxovpkg relink FILE --from OLD --to NEW [--dry-run]
                                     point the links to OLD or below it to NEW
The last six add an entry to the history, with [--remarks TEXT]; [--no-history] adds none.

       mxovpkg completion SHELL      print completions for bash (zsh reads them too) or powershell
       mxovpkg --help                show this text
       mxovpkg --version             show the version

Ctrl+C cancels and leaves nothing behind. Exit code: 0 done, 1 failed, 2 wrong usage, 3 done, but bundle could not
take all linked documents along, check --strict warned, or diff --exit-code found a difference.)";

std::vector<Option> WithHistory(std::vector<Option> options) {
    const std::vector<Option> history = HistoryOptions();
    options.insert(options.end(), history.begin(), history.end());
    return options;
}

int ShowText(const wchar_t* text) {
    PrintLine(text);
    return kDone;
}

} // namespace

const std::vector<Command>& CommandTable() {
    static const std::vector<Command> commands = {
        {L"create", 2, 2, Create},
        {L"list", 1, 1, List, {{.name = L"--json"}}},
        {L"extract", 2, 2, Extract},
        {L"check", 1, 1, Check, {{.name = L"--strict"}, {.name = L"--json"}}},
        {L"history", 1, 1, ShowHistory, {{.name = L"--json"}}},
        {L"diff", 2, 2, Diff, {{.name = L"--all-lines"}, {.name = L"--exit-code"}, {.name = L"--json"}}},
        {L"text", 1, 1, Text},
        {L"add", 2, kAnyNumber, Add,
         WithHistory({{.name = L"--as", .takesValue = true},
                      {.name = L"--description", .takesValue = true},
                      {.name = L"--replace"}})},
        {L"remove", 2, kAnyNumber, Remove, WithHistory({})},
        {L"set", 2, kAnyNumber, Set, WithHistory({})},
        {L"thumbnail", 1, 1, Thumbnail,
         WithHistory({{.name = L"--set", .takesValue = true}, {.name = L"--extract", .takesValue = true}})},
        {L"bundle", 2, 2, Bundle, WithHistory({{.name = L"--network"}})},
        {L"relink", 1, 1, Relink,
         WithHistory({{.name = L"--from", .takesValue = true, .isRequired = true},
                      {.name = L"--to", .takesValue = true, .isRequired = true},
                      {.name = L"--dry-run"}})},
        {L"completion", 1, 1, Completion},
        {L"--help", 0, 0, [](const Arguments&) { return ShowText(kHelp); }},
        {L"--version", 0, 0, [](const Arguments&) { return ShowText(L"mxovpkg " MXOVPKG_VERSION); }},
    };
    return commands;
}
