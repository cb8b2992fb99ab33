#include "CommandLine.h"

#include "common/LongPath.h"
#include "package/Paths.h"

#include <string_view>

namespace viewer {

namespace {

constexpr std::wstring_view kLanguageOption = L"--language";

bool IsOption(std::wstring_view argument) {
    return argument.size() > 1 && argument.front() == L'-';
}

} // namespace

std::wstring UsageText() {
    return L"viewer.exe [--language NAME] [PACKAGE]\n\n"
           L"PACKAGE is the machining package (*.mxov) to open.\n"
           L"--language NAME sets the language of the document lists, such as English.\n"
           L"--help shows this text.";
}

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) {
    CommandLine line;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size() && line.error.empty(); ++i) {
        const std::wstring& argument = arguments[i];
        if (optionsEnded || !IsOption(argument)) {
            if (!line.package.empty()) {
                line.error = L"Only one package can be opened at a time.";
            } else if (argument.empty()) {
                line.error = L"The name of the package is empty.";
            } else {
                line.package = common::FullPath(argument);
            }
        } else if (argument == L"--") {
            optionsEnded = true;
        } else if (argument == L"--help") {
            line.help = true;
        } else if (argument == kLanguageOption && i + 1 < arguments.size()) {
            line.language = arguments[++i];
        } else if (argument.starts_with(std::wstring(kLanguageOption) + L"=")) {
            line.language = argument.substr(kLanguageOption.size() + 1);
        } else if (argument == kLanguageOption) {
            line.error = L"--language needs a name.";
        } else {
            line.error = L"Unknown option: " + argument;
        }
    }
    return line;
}

} // namespace viewer
