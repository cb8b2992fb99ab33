#include "Commands.h"
#include "History.h"
#include "Report.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <vector>

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
       mxovpkg bundle FILE OUT [--network]
                                     copy the package to OUT with its linked documents inside
       mxovpkg relink FILE --from OLD --to NEW [--dry-run]
                                     point the links to OLD or below it to NEW
The last five add an entry to the history, with [--remarks TEXT]; [--no-history] adds none.

       mxovpkg --help                show this text
       mxovpkg --version             show the version

Ctrl+C cancels and leaves nothing behind. Exit code: 0 done, 1 failed, 2 wrong usage, 3 done, but bundle could not
take all linked documents along, check --strict warned, or diff --exit-code found a difference.)";

constexpr std::size_t kAnyNumber = ~std::size_t{0};

struct Command {
    const wchar_t* name;
    std::size_t least; // arguments
    std::size_t most;
    std::function<int(const Arguments&)> run;
    std::vector<Option> options = {};
};

std::vector<Option> WithHistory(std::vector<Option> options) {
    const std::vector<Option> history = HistoryOptions();
    options.insert(options.end(), history.begin(), history.end());
    return options;
}

int PrintText(const wchar_t* text) {
    PrintLine(text);
    return kDone;
}

const std::vector<Command>& Commands() {
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
        {L"bundle", 2, 2, Bundle, WithHistory({{.name = L"--network"}})},
        {L"relink", 1, 1, Relink,
         WithHistory({{.name = L"--from", .takesValue = true, .isRequired = true},
                      {.name = L"--to", .takesValue = true, .isRequired = true},
                      {.name = L"--dry-run"}})},
        {L"--help", 0, 0, [](const Arguments&) { return PrintText(kHelp); }},
        {L"--version", 0, 0, [](const Arguments&) { return PrintText(L"mxovpkg " MXOVPKG_VERSION); }},
    };
    return commands;
}

int RunCommand(const Command& command, const std::vector<std::wstring>& words) {
    const Arguments arguments(command.name, words, command.options);
    const std::size_t count = arguments.Count();
    if (count < command.least || count > command.most) {
        throw UsageError{command.name +
                         std::wstring(command.most == kAnyNumber ? L" takes at least " : L" takes ") +
                         Count(command.least, L"argument") + L", not " + std::to_wstring(count)};
    }
    return command.run(arguments);
}

int Run(std::vector<std::wstring> words) {
    if (words.empty()) {
        throw UsageError{L"a command is missing"};
    }
    const std::wstring name = words.front();
    words.erase(words.begin());
    const auto command = std::ranges::find(Commands(), name, &Command::name);
    if (command == Commands().end()) {
        throw UsageError{L"\"" + name + L"\" is no command"};
    }
    return RunCommand(*command, words);
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    try {
        return Run({argv + 1, argv + argc});
    } catch (const UsageError& error) {
        PrintFailure(error.message + L"; see mxovpkg --help");
        return kUsage;
    } catch (const std::exception&) {
        PrintFailure(L"there is not enough memory");
        return kFailed;
    }
}
