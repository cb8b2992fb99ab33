#include "Program.h"

#include "Commands.h"
#include "CommandTable.h"
#include "output/Report.h"

#include <algorithm>
#include <exception>

namespace {

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
    const auto command = std::ranges::find(CommandTable(), name, &Command::name);
    if (command == CommandTable().end()) {
        throw UsageError{L"\"" + name + L"\" is no command"};
    }
    return RunCommand(*command, words);
}

} // namespace

int RunProgram(const std::vector<std::wstring>& words) {
    try {
        return Run(words);
    } catch (const UsageError& error) {
        PrintFailure(error.message + L"; see mxovpkg --help");
        return kUsage;
    } catch (const std::exception&) {
        PrintFailure(L"there is not enough memory");
        return kFailed;
    }
}
