#include "Arguments.h"

#include <algorithm>

Arguments::Arguments(const std::wstring& command, const std::vector<std::wstring>& words,
                     const std::vector<Option>& options) {
    bool mayBeOption = true;
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (mayBeOption && *word == L"--") {
            mayBeOption = false;
            continue;
        }
        if (!mayBeOption || !word->starts_with(L"--")) {
            if (word->empty()) {
                throw UsageError{L"an argument of " + command + L" is empty"};
            }
            m_plain.push_back(*word);
            continue;
        }
        const auto option = std::ranges::find(options, *word, &Option::name);
        if (option == options.end()) {
            throw UsageError{command + L" has no option \"" + *word + L"\""};
        }
        if (m_options.contains(*word)) {
            throw UsageError{L"option " + *word + L" stands twice"};
        }
        if (option->takesValue && word + 1 == words.end()) {
            throw UsageError{L"option " + *word + L" needs a value"};
        }
        m_options[option->name] = option->takesValue ? *++word : std::wstring();
    }
    for (const Option& option : options) {
        if (option.isRequired && Value(option.name).empty()) {
            throw UsageError{command + L" needs " + option.name};
        }
    }
}

std::wstring Arguments::Value(const std::wstring& option) const {
    const auto found = m_options.find(option);
    return found != m_options.end() ? found->second : std::wstring();
}
