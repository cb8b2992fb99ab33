// Which file the control is created from: the registered one, or the one beside the program.
#pragma once

#include <windows.h>

#include <string>

namespace viewer {

/// While it lives, the control comes from a folder of our own although the system's registry names another
/// file or none.
class ControlActivation {
public:
    /// The class of the control.
    static constexpr wchar_t kClassId[] = L"{6406FF95-0F04-4382-852B-89E0979EAEE8}";

    ControlActivation() = default;
    ~ControlActivation();
    ControlActivation(const ControlActivation&) = delete;
    ControlActivation& operator=(const ControlActivation&) = delete;

    /// Sees to it that the control in `folder` is created, by its manifest when it is not the registered one.
    /// Without a control there the registered one serves. Returns a message for the user;
    /// empty on success.
    [[nodiscard]] std::wstring Activate(const std::wstring& folder);

    /// The file that the control is created from, after a successful `Activate`.
    [[nodiscard]] const std::wstring& File() const { return m_file; }

private:
    [[nodiscard]] std::wstring ActivateManifest(const std::wstring& manifest);

    std::wstring m_file;
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

} // namespace viewer
