// The document that the control's "+" button adds to a package, put right: the button overwrites a copy of
// the same name and reports nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace viewer {

struct AddedDocument {
    enum class State {
        Sound,
        Shared,    ///< overwrote the copy of another document, which now shows the same file
        NotCopied, ///< was to be copied, and its file is not in the package
    };
    std::wstring section; ///< of the information file
    std::wstring name;    ///< of the file
    State state = State::Sound;
};

/// Created before the button adds a document; keeps the copies as they are then.
class AddedDocumentRepair {
public:
    /// `folder` is that of an unpacked package and ends with a separator. Creates the folder of the copies,
    /// without which the button copies nothing.
    explicit AddedDocumentRepair(std::wstring folder);

    /// Removes what it kept.
    ~AddedDocumentRepair();
    AddedDocumentRepair(const AddedDocumentRepair&) = delete;
    AddedDocumentRepair& operator=(const AddedDocumentRepair&) = delete;

    /// What was added since; nothing when the user cancelled.
    [[nodiscard]] std::optional<AddedDocument> Find() const;

    /// Stores the file of a shared document under a free name and restores the other document's copy.
    /// Returns a message for the user when that fails; empty on success.
    [[nodiscard]] std::wstring KeepBoth(const AddedDocument& document) const;

    /// Lets the other document have the new file as its own, and removes the added one.
    void Replace(const AddedDocument& document) const;

    /// Removes the added document, and restores the other document's copy when it was shared. Returns a
    /// message for the user when that fails; empty on success.
    [[nodiscard]] std::wstring Undo(const AddedDocument& document) const;

private:
    [[nodiscard]] std::wstring Value(const std::wstring& section, const wchar_t* key) const;
    [[nodiscard]] std::vector<std::wstring> Sections() const;
    [[nodiscard]] std::vector<std::wstring> SharersOf(const std::wstring& section) const;
    [[nodiscard]] std::wstring Restore(const std::wstring& name) const;
    void KeepCopies();

    std::wstring m_folder;
    std::wstring m_information;
    std::wstring m_kept; // folder, without a separator at the end; empty when there was nothing to keep
    std::vector<std::wstring> m_before; // sections
};

} // namespace viewer
