#include "RemoteListView.h"

#include "common/Handles.h"

#include <commctrl.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace {

constexpr UINT kPatience = 10000; // milliseconds
constexpr int kMostCharacters = 1024;
constexpr int kRowsAtOnce = 100;

/// Memory in a process, where the messages of its windows find their structures.
class RemoteMemory {
public:
    RemoteMemory(DWORD process, SIZE_T bytes)
        : m_id(process), m_bytes(bytes),
          m_process(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process)) {
        if (m_process) {
            m_memory = VirtualAllocEx(m_process.get(), nullptr, bytes, MEM_COMMIT, PAGE_READWRITE);
        }
        if (!m_memory) {
            throw std::runtime_error("the memory of the other process cannot be used");
        }
    }
    ~RemoteMemory() { VirtualFreeEx(m_process.get(), m_memory, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] void* Address() const { return m_memory; }

    [[nodiscard]] bool Serves(DWORD process, SIZE_T bytes) const {
        return m_id == process && bytes <= m_bytes;
    }

    void Write(const void* from, SIZE_T bytes) const {
        if (!WriteProcessMemory(m_process.get(), m_memory, from, bytes, nullptr)) {
            throw std::runtime_error("the memory of the other process cannot be written");
        }
    }

    void Read(void* to, const void* from, SIZE_T bytes) const {
        if (!ReadProcessMemory(m_process.get(), from, to, bytes, nullptr)) {
            throw std::runtime_error("the memory of the other process cannot be read");
        }
    }

private:
    DWORD m_id; // no other process gets it while the handle is open
    SIZE_T m_bytes;
    common::UniqueHandle m_process;
    void* m_memory = nullptr;
};

/// Memory in the process of a window. It is kept until another process or more is asked for: the other
/// process stops while memory is made or freed there.
const RemoteMemory& MemoryOf(HWND window, SIZE_T bytes) {
    constexpr SIZE_T kLeast = 1 << 18;
    static std::unique_ptr<RemoteMemory> kept;
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (!kept || !kept->Serves(process, bytes)) {
        kept = std::make_unique<RemoteMemory>(process, std::max(bytes, kLeast));
    }
    return *kept;
}

/// The structure of a message, its text, and the message's first parameter.
template <class T>
struct Question {
    WPARAM wParam = 0;
    T structure = {};
    wchar_t text[kMostCharacters + 1] = {};
};

/// Sends the message once for each question and fills in the answers. All are transferred at once: each
/// transfer stops the other process.
template <class T>
void AskAll(HWND list, UINT message, std::vector<Question<T>>& questions) {
    if (questions.empty()) {
        return;
    }
    const SIZE_T bytes = questions.size() * sizeof(Question<T>);
    const RemoteMemory& memory = MemoryOf(list, bytes);
    auto* const there = static_cast<Question<T>*>(memory.Address());
    for (std::size_t i = 0; i < questions.size(); ++i) {
        questions[i].structure.pszText = there[i].text;
        questions[i].structure.cchTextMax = kMostCharacters;
    }
    memory.Write(questions.data(), bytes);
    for (std::size_t i = 0; i < questions.size(); ++i) {
        if (!Ask(list, message, questions[i].wParam, reinterpret_cast<LPARAM>(&there[i].structure))) {
            throw std::runtime_error("a column or an item cannot be read");
        }
    }
    memory.Read(questions.data(), there, bytes);
    for (std::size_t i = 0; i < questions.size(); ++i) {
        const wchar_t* const text = questions[i].structure.pszText;
        if (text != there[i].text) { // a list view may answer with a text of its own
            memory.Read(questions[i].text, text, kMostCharacters * sizeof(wchar_t));
        }
    }
}

// None in a list of icons.
std::vector<ListColumn> ReadColumns(HWND list) {
    const auto header = reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER));
    if (!header) {
        return {};
    }
    std::vector<Question<LVCOLUMNW>> questions(static_cast<std::size_t>(Ask(header, HDM_GETITEMCOUNT)));
    for (std::size_t i = 0; i < questions.size(); ++i) {
        questions[i].wParam = i;
        questions[i].structure.mask = LVCF_TEXT | LVCF_WIDTH;
    }
    AskAll(list, LVM_GETCOLUMNW, questions);
    std::vector<ListColumn> columns;
    columns.reserve(questions.size());
    for (const auto& question : questions) {
        columns.push_back({question.text, question.structure.cx});
    }
    return columns;
}

int RowHeight(HWND list) {
    const auto heightOf = [list](WPARAM rows) {
        return HIWORD(Ask(list, LVM_APPROXIMATEVIEWRECT, rows, -1));
    };
    return heightOf(2) - heightOf(1);
}

void AppendRows(HWND list, int first, int end, int columns, std::vector<ListRow>& rows) {
    std::vector<Question<LVITEMW>> questions;
    for (int row = first; row < end; ++row) {
        for (int column = 0; column < columns; ++column) {
            LVITEMW& item = questions.emplace_back().structure;
            item.mask = column == 0 ? LVIF_TEXT | LVIF_IMAGE | LVIF_STATE : LVIF_TEXT;
            item.iItem = row;
            item.iSubItem = column;
            item.stateMask = LVIS_SELECTED;
        }
    }
    AskAll(list, LVM_GETITEMW, questions);
    for (const auto& [wParam, item, text] : questions) {
        if (item.iSubItem == 0) {
            rows.push_back({{}, item.iImage, (item.state & LVIS_SELECTED) != 0});
        }
        rows.back().texts.push_back(text);
    }
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
    ListContent content;
    content.extendedStyle = static_cast<unsigned long>(Ask(list, LVM_GETEXTENDEDLISTVIEWSTYLE));
    content.columns = ReadColumns(list);
    content.rowHeight = RowHeight(list);
    const auto count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT));
    const int columns = std::max(1, static_cast<int>(content.columns.size()));
    for (int first = 0; first < count; first += kRowsAtOnce) {
        AppendRows(list, first, std::min(first + kRowsAtOnce, count), columns, content.rows);
    }
    return content;
}
