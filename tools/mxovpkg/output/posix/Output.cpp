#include "output/Output.h"

#include "common/Utf8.h"

#include <cerrno>

#include <unistd.h>

Output::Output(Stream stream)
    : m_handle(stream == Stream::Results ? STDOUT_FILENO : STDERR_FILENO),
      m_isConsole(isatty(m_handle) == 1) {}

void Output::Write(std::wstring_view text) const {
    const std::string bytes = common::ToUtf8(text);
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t written = write(m_handle, rest.data(), rest.size());
        if (written < 0 && errno != EINTR) {
            return;
        }
        rest.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
}

void Output::WriteLine(std::wstring_view line) const {
    Write(std::wstring(line) + L"\n");
}
