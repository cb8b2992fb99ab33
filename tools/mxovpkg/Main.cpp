#include "Commands.h"
#include "Report.h"

#include <exception>
#include <functional>
#include <vector>

namespace {

constexpr wchar_t kHelp[] = LR"(Makes, shows and unpacks Maxtrel Orvando packages.

usage: mxovpkg create FOLDER FILE    pack everything below FOLDER into the package FILE
       mxovpkg list FILE             list the entries of a package
       mxovpkg extract FILE FOLDER   unpack into FOLDER, which must be new or empty
       mxovpkg check FILE            verify every entry and show the catalogue of documents
       mxovpkg --help                show this text
       mxovpkg --version             show the version

Ctrl+C cancels and leaves nothing behind. Exit code: 0 done, 1 failed, 2 wrong usage.)";

struct Command {
    const wchar_t* name;
    std::size_t arguments;
    std::function<int(const std::vector<std::wstring>&)> run;
};

const std::vector<Command>& Commands() {
    using Arguments = std::vector<std::wstring>;
    static const std::vector<Command> commands = {
        {L"create", 2, [](const Arguments& a) { return Create(a[0], a[1]); }},
        {L"list", 1, [](const Arguments& a) { return List(a[0]); }},
        {L"extract", 2, [](const Arguments& a) { return Extract(a[0], a[1]); }},
        {L"check", 1, [](const Arguments& a) { return Check(a[0]); }},
        {L"--help", 0,
         [](const Arguments&) {
             PrintLine(kHelp);
             return static_cast<int>(kDone);
         }},
        {L"--version", 0,
         [](const Arguments&) {
             PrintLine(L"mxovpkg " MXOVPKG_VERSION);
             return static_cast<int>(kDone);
         }},
    };
    return commands;
}

int UsageError(const std::wstring& what) {
    PrintFailure(what + L"; see mxovpkg --help");
    return kUsage;
}

int Run(std::vector<std::wstring> arguments) {
    if (arguments.empty()) {
        return UsageError(L"a command is missing");
    }
    const std::wstring name = arguments.front();
    arguments.erase(arguments.begin());
    for (const Command& command : Commands()) {
        if (name != command.name) {
            continue;
        }
        if (arguments.size() != command.arguments) {
            return UsageError(name + L" takes " + Count(command.arguments, L"argument") + L", not " +
                              std::to_wstring(arguments.size()));
        }
        for (const std::wstring& argument : arguments) {
            if (argument.empty()) {
                return UsageError(L"an argument of " + name + L" is empty");
            }
        }
        return command.run(arguments);
    }
    return UsageError(L"\"" + name + L"\" is no command");
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    try {
        return Run({argv + 1, argv + argc});
    } catch (const std::exception&) {
        PrintFailure(L"there is not enough memory");
        return kFailed;
    }
}
