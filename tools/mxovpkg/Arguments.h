// The words behind a command.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

/// An option of a command.
struct Option {
    std::wstring name; ///< with its dashes
    bool takesValue = false;
    bool isRequired = false;
};

/// The words do not fit the command. The text is one line without the program's name.
struct UsageError {
    std::wstring message;
};

/// Words told apart into arguments and options. Behind "--" every word is an argument.
class Arguments {
public:
    /// Throws UsageError for an unknown, repeated or missing option, and for empty words.
    Arguments(const std::wstring& command, const std::vector<std::wstring>& words,
              const std::vector<Option>& options);

    std::size_t Count() const { return m_plain.size(); }
    const std::wstring& operator[](std::size_t index) const { return m_plain.at(index); }
    const std::vector<std::wstring>& All() const { return m_plain; }

    bool Has(const std::wstring& option) const { return m_options.contains(option); }
    /// The value of an option; empty without one.
    std::wstring Value(const std::wstring& option) const;

private:
    std::vector<std::wstring> m_plain;
    std::map<std::wstring, std::wstring> m_options;
};
