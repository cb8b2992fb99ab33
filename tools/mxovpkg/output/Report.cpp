#include "Report.h"

#include "LineText.h"
#include "Output.h"

namespace {

const Output& ErrorOutput() {
    static const Output output(Stream::Errors);
    return output;
}

const Output& StandardOutput() {
    static const Output output(Stream::Results);
    return output;
}

} // namespace

void PrintText(std::wstring_view text) {
    StandardOutput().Write(text);
}

void PrintLine(std::wstring_view line) {
    StandardOutput().WriteLine(line);
}

void PrintWarning(const std::wstring& warning) {
    ErrorOutput().WriteLine(L"warning: " + OneLine(warning));
}

void PrintNote(const std::wstring& note) {
    ErrorOutput().WriteLine(L"note: " + OneLine(note));
}

void PrintFailure(const std::wstring& message) {
    ErrorOutput().WriteLine(L"mxovpkg: " + OneLine(message));
}

void PrintCancelled() {
    PrintFailure(L"cancelled, nothing was left behind");
}

void PrintFailure(const mxovshare::PackageResult& result) {
    if (result.cancelled) {
        PrintCancelled();
    } else {
        PrintFailure(result.message);
    }
}

std::wstring Count(std::size_t number, const std::wstring& thing) {
    return std::to_wstring(number) + L" " + thing + (number == 1 ? L"" : L"s");
}

std::wstring Padded(const std::wstring& text, std::size_t width) {
    const std::size_t length = CharacterCount(text);
    return text + std::wstring(width > length ? width - length : 0, L' ');
}
