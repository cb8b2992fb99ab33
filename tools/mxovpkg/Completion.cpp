#include "Commands.h"
#include "CommandTable.h"
#include "output/Report.h"

namespace {

constexpr wchar_t kBash[] =
    LR"(# Completion of mxovpkg for bash; for zsh behind "autoload -U +X bashcompinit && bashcompinit".
_mxovpkg() {
    local word=${COMP_WORDS[COMP_CWORD]} words=
    case $COMP_CWORD:${COMP_WORDS[1]} in
        1:*) words='@COMMANDS@' ;;
@OPTIONS@    esac
    COMPREPLY=()
    if ((COMP_CWORD == 1)) || [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$words" -- "$word"))
    fi
}
complete -o default -F _mxovpkg mxovpkg mxovpkg.exe
)";
constexpr wchar_t kBashOption[] = L"        *:@COMMAND@) words='@OPTIONS@' ;;\n";

constexpr wchar_t kPowerShell[] = LR"(# Completion of mxovpkg for PowerShell.
Register-ArgumentCompleter -Native -CommandName mxovpkg, mxovpkg.exe -ScriptBlock {
    param($word, $line, $position)
    $options = @{
@OPTIONS@    }
    $words = -split $line.ToString().Substring(0, [Math]::Min($position, $line.ToString().Length))
    $isCommand = $words.Count -lt 2 -or ($words.Count -eq 2 -and $word)
    $candidates = if ($isCommand) { $options.Keys } elseif ($word -like '-*') { $options[$words[1]] }
    $candidates | Where-Object { $_ -like "$word*" } | Sort-Object
}
)";
constexpr wchar_t kPowerShellOption[] = L"        '@COMMAND@' = -split '@OPTIONS@'\n";

void Replace(std::wstring& text, const std::wstring& mark, const std::wstring& by) {
    const std::size_t place = text.find(mark);
    text.replace(place, mark.size(), by);
}

template <class Named>
std::wstring Names(const std::vector<Named>& list) {
    std::wstring names;
    for (const Named& one : list) {
        names += (names.empty() ? L"" : L" ") + std::wstring(one.name);
    }
    return names;
}

std::wstring OptionLines(const wchar_t* form) {
    std::wstring lines;
    for (const Command& command : CommandTable()) {
        std::wstring line = form;
        Replace(line, L"@COMMAND@", command.name);
        Replace(line, L"@OPTIONS@", Names(command.options));
        lines += line;
    }
    return lines;
}

} // namespace

int Completion(const Arguments& arguments) {
    std::wstring script;
    if (arguments[0] == L"bash") {
        script = kBash;
        Replace(script, L"@COMMANDS@", Names(CommandTable()));
        Replace(script, L"@OPTIONS@", OptionLines(kBashOption));
    } else if (arguments[0] == L"powershell") {
        script = kPowerShell;
        Replace(script, L"@OPTIONS@", OptionLines(kPowerShellOption));
    } else {
        throw UsageError{L"completion takes bash or powershell, not \"" + arguments[0] + L"\""};
    }
    script.pop_back(); // PrintLine ends the last line
    PrintLine(script);
    return kDone;
}
