#include "RemoteListView.h"

#include "common/Handles.h"

#include <commctrl.h>

#include <stdexcept>

namespace {

constexpr UINT kPatience = 10000; // milliseconds
constexpr int kMostCharacters = 1024;

// Memory in the process of a window, where its messages find their structures: one structure, then a text.
class RemoteMemory {
public:
    explicit RemoteMemory(HWND window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        m_process.reset(
            OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process));
        if (m_process) {
            m_memory = VirtualAllocEx(m_process.get(), nullptr, kBytes, MEM_COMMIT, PAGE_READWRITE);
        }
        if (!m_memory) {
            throw std::runtime_error("the memory of the other process cannot be used");
        }
    }
    ~RemoteMemory() { VirtualFreeEx(m_process.get(), m_memory, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] void* Structure() const { return m_memory; }
    [[nodiscard]] wchar_t* Text() const {
        return reinterpret_cast<wchar_t*>(static_cast<BYTE*>(m_memory) + kStructureBytes);
    }

    template <class T>
    void Write(const T& value) const {
        static_assert(sizeof(T) <= kStructureBytes);
        const wchar_t empty = L'\0';
        if (!WriteProcessMemory(m_process.get(), Structure(), &value, sizeof value, nullptr) ||
            !WriteProcessMemory(m_process.get(), Text(), &empty, sizeof empty, nullptr)) {
            throw std::runtime_error("the memory of the other process cannot be written");
        }
    }

    template <class T>
    void Read(T& value, const void* from) const {
        if (!ReadProcessMemory(m_process.get(), from, &value, sizeof value, nullptr)) {
            throw std::runtime_error("the memory of the other process cannot be read");
        }
    }

    [[nodiscard]] std::wstring ReadText(const wchar_t* from) const {
        struct {
            wchar_t text[kMostCharacters + 1];
        } buffer = {};
        if (!ReadProcessMemory(m_process.get(), from, buffer.text, kMostCharacters * sizeof(wchar_t),
                               nullptr)) {
            throw std::runtime_error("the text of the other process cannot be read");
        }
        return buffer.text;
    }

private:
    static constexpr SIZE_T kStructureBytes = 256;
    static constexpr SIZE_T kBytes = kStructureBytes + kMostCharacters * sizeof(wchar_t);

    common::UniqueHandle m_process;
    void* m_memory = nullptr;
};

LRESULT AskWith(HWND list, UINT message, int index, const RemoteMemory& memory) {
    return Ask(list, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(memory.Structure()));
}

std::vector<ListColumn> ReadColumns(HWND list, const RemoteMemory& memory) {
    const auto header = reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER));
    const auto count = static_cast<int>(Ask(header, HDM_GETITEMCOUNT));
    std::vector<ListColumn> columns;
    for (int i = 0; i < count; ++i) {
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = memory.Text();
        column.cchTextMax = kMostCharacters;
        memory.Write(column);
        if (!AskWith(list, LVM_GETCOLUMNW, i, memory)) {
            throw std::runtime_error("a column cannot be read");
        }
        memory.Read(column, memory.Structure());
        columns.push_back({memory.ReadText(column.pszText), column.cx});
    }
    return columns;
}

ListRow ReadRow(HWND list, int index, std::size_t columns, const RemoteMemory& memory) {
    ListRow row;
    for (std::size_t column = 0; column < columns; ++column) {
        LVITEMW item = {};
        item.mask = column == 0 ? LVIF_TEXT | LVIF_IMAGE | LVIF_STATE : LVIF_TEXT;
        item.iItem = index;
        item.iSubItem = static_cast<int>(column);
        item.stateMask = LVIS_SELECTED;
        item.pszText = memory.Text();
        item.cchTextMax = kMostCharacters;
        memory.Write(item);
        if (!AskWith(list, LVM_GETITEMW, 0, memory)) {
            throw std::runtime_error("an item cannot be read");
        }
        memory.Read(item, memory.Structure());
        row.texts.push_back(memory.ReadText(item.pszText));
        if (column == 0) {
            row.image = item.iImage;
            row.selected = (item.state & LVIS_SELECTED) != 0;
        }
    }
    return row;
}

} // namespace

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kPatience, &result)) {
        throw std::runtime_error("a window does not answer");
    }
    return static_cast<LRESULT>(result);
}

ListContent ReadListView(HWND list) {
    const RemoteMemory memory(list);
    ListContent content;
    content.extendedStyle = static_cast<unsigned long>(Ask(list, LVM_GETEXTENDEDLISTVIEWSTYLE));
    content.columns = ReadColumns(list, memory);
    const auto count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT));
    for (int i = 0; i < count; ++i) {
        content.rows.push_back(ReadRow(list, i, content.columns.size(), memory));
    }
    return content;
}
