#include "CommandLine.h"

#include "common/LongPath.h"
#include "package/Paths.h"
#include "texts/Texts.h"

#include <string_view>

namespace viewer {

namespace {

constexpr std::wstring_view kLanguageOption = L"--language";

bool IsOption(std::wstring_view argument) {
    return argument.size() > 1 && argument.front() == L'-';
}

} // namespace

std::wstring UsageText() {
    return Text(IDS_USAGE);
}

std::wstring ErrorText(const CommandLine& line) {
    return line.error ? Text(line.error, {line.wrongOption}) : std::wstring();
}

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) {
    CommandLine line;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size() && line.error == 0; ++i) {
        const std::wstring& argument = arguments[i];
        if (optionsEnded || !IsOption(argument)) {
            if (!line.package.empty()) {
                line.error = IDS_ONE_PACKAGE_ONLY;
            } else if (argument.empty()) {
                line.error = IDS_EMPTY_NAME;
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
            line.error = IDS_LANGUAGE_WITHOUT_NAME;
        } else {
            line.error = IDS_UNKNOWN_OPTION;
            line.wrongOption = argument;
        }
    }
    return line;
}

} // namespace viewer
