// Prints the windows of a running viewer: `catalogue` its document lists as text, `windows` all windows as
// JSON. `press NUMBER` sends a button's command to its dialog, also for a hidden button. `insert NUMBER FILE`
// replaces the selection in a field of a popup with the text of a UTF-8 file, as pasting does. `input X Y`
// prints, as JSON, the targets of keys and of a click at a point of the screen. `copy FILE...` puts files on
// the clipboard, as a file manager does; `copied` prints the text there. `names` prints, as
// JSON, what screen readers call the visible parts of the viewer. `forget KEY` removes a key of the user's
// registry, which need not exist, without a viewer. `serve` reads commands from standard input. Exit code 1:
// there is no viewer, or it cannot be read.
#include "AccessibleNames.h"
#include "common/Json.h"
#include "common/Utf8.h"
#include "FileClipboard.h"
#include "RemoteListView.h"
#include "RemoteWindows.h"
#include "WindowsJson.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string_view>

using common::JsonArray;
using common::JsonString;
using common::JsonTruth;

namespace {

constexpr wchar_t kFrameClass[] = L"MXOVViewerFrame";
constexpr int kFirstSection = 1000;
constexpr int kFirstList = 1004;
constexpr int kSections = 4;

// The top-level window of any program that is in front at a point of the screen, its borders included.
HWND WindowAt(POINT point) {
    struct Search {
        POINT point;
        HWND found;
    } search{point, nullptr};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            RECT area = {};
            GetWindowRect(window, &area);
            if (IsWindowVisible(window) && PtInRect(&area, wanted.point)) {
                wanted.found = window;
            }
            return wanted.found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Keys go to the foreground window. `viewer`: it belongs to the viewer; `focused`: the focus of its thread is
// inside; `held`: a modifier key is down.
void PrintInput(HWND frame, POINT point) {
    const HWND foreground = GetForegroundWindow();
    const HWND focus = foreground ? FocusOfThread(foreground) : nullptr;
    const std::vector<HWND> ours = TopLevelWindows(frame);
    const bool viewer = std::find(ours.begin(), ours.end(), foreground) != ours.end();
    constexpr int kKeys[] = {VK_SHIFT, VK_CONTROL, VK_MENU};
    const bool held = std::any_of(std::begin(kKeys), std::end(kKeys),
                                  [](int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; });
    std::printf("{\"viewer\":%s,\"focused\":%s,\"held\":%s,\"foreground\":%s,\"at\":%s}\n", JsonTruth(viewer),
                JsonTruth(focus && GetAncestor(focus, GA_ROOT) == foreground), JsonTruth(held),
                TopLevelJson(foreground).c_str(), TopLevelJson(WindowAt(point)).c_str());
}

const char* ImageText(int image) {
    constexpr const char* kTexts[] = {"linked", "missing", "in package"};
    return image >= 0 && image < static_cast<int>(std::size(kTexts)) ? kTexts[image] : "?";
}

// Cells in columns; the text of the list's picture ends the line.
void PrintLine(const std::vector<std::wstring>& cells, const char* end) {
    constexpr std::size_t kWidths[] = {22, 34, 9, 21};
    std::wstring line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t width = i < std::size(kWidths) ? kWidths[i] : 12;
        line += cells[i] + std::wstring(cells[i].size() < width ? width - cells[i].size() : 1, L' ');
    }
    std::printf("%s%s\n", common::ToUtf8(line).c_str(), end);
}

// A line for each document, led by its section.
void PrintSection(HWND box, HWND list) {
    const ListContent content = ReadListView(list);
    const std::wstring title = Text(box, ClassName(box)) + (IsWindowVisible(list) ? L"" : L" (hidden)");
    for (const ListRow& row : content.rows) {
        std::vector<std::wstring> cells = {title};
        cells.insert(cells.end(), row.texts.begin(), row.texts.end());
        PrintLine(cells, ImageText(row.image));
    }
    if (content.rows.empty()) {
        PrintLine({title}, "no document");
    }
}

void PrintCatalogue(HWND frame) {
    for (int i = 0; i < kSections; ++i) {
        const HWND box = FindDescendant(frame, kFirstSection + i);
        const HWND list = FindDescendant(frame, kFirstList + i);
        if (!box || !list) {
            throw std::runtime_error("the viewer shows no document lists");
        }
        PrintSection(box, list);
    }
}

void PrintNames(HWND frame) {
    const std::string names = JsonArray(AccessibleNames(frame), [](const AccessibleName& part) {
        return "{\"class\":" + JsonString(ClassName(part.window)) +
               ",\"id\":" + std::to_string(GetDlgCtrlID(part.window)) +
               ",\"name\":" + (part.name ? JsonString(*part.name) : std::string("null")) + "}";
    });
    std::printf("%s\n", names.c_str());
}

void PressButton(HWND frame, int id) {
    const HWND button = FindDescendant(frame, id);
    if (!button) {
        throw std::runtime_error("there is no such button");
    }
    PostMessageW(GetParent(button), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

std::wstring ReadText(const char* file) {
    std::ifstream in(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    return common::FromUtf8(bytes);
}

void InsertText(HWND frame, int id, const std::wstring& text) {
    for (const HWND window : TopLevelWindows(frame)) {
        const HWND field = window == frame ? nullptr : FindDescendant(window, id);
        if (field) {
            SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
            return;
        }
    }
    throw std::runtime_error("there is no such field");
}

void ForgetKey(const std::string& key) {
    const LSTATUS status = RegDeleteTreeW(HKEY_CURRENT_USER, common::FromUtf8(key).c_str());
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
        throw std::runtime_error("the key cannot be removed");
    }
}

int NumberIn(const std::string& word) {
    return static_cast<int>(std::strtol(word.c_str(), nullptr, 10));
}

// Carries a command out; the exit code.
int Run(const std::vector<std::string>& words) {
    const std::map<std::string_view, std::size_t> known = {
        {"catalogue", 1}, {"windows", 1},
        {"press", 2},     {"insert", 3},
        {"input", 3},     {"forget", 2},
        {"command", 2},   {"copied", 1},
        {"names", 1},     {"copy", std::max<std::size_t>(words.size(), 2)}};
    const std::string command = words.empty() ? "" : words.front();
    const auto found = known.find(command);
    if (found == known.end() || words.size() != found->second) {
        std::fputs(
            "usage: WindowDump catalogue | windows | press NUMBER | command NUMBER | insert NUMBER FILE | "
            "input X Y | "
            "copy FILE... | copied | names | forget KEY | serve\n",
            stderr);
        return 2;
    }
    try {
        if (command == "forget") {
            ForgetKey(words[1]);
            return 0;
        }
        const HWND frame = FindWindowW(kFrameClass, nullptr);
        if (!frame) {
            throw std::runtime_error("no viewer is open");
        }
        if (command == "windows") {
            std::printf("%s\n", WindowsJson(frame).c_str());
        } else if (command == "press") {
            PressButton(frame, NumberIn(words[1]));
        } else if (command == "command") { // of the menu
            PostMessageW(frame, WM_COMMAND, static_cast<WPARAM>(NumberIn(words[1])), 0);
        } else if (command == "insert") {
            InsertText(frame, NumberIn(words[1]), ReadText(words[2].c_str()));
        } else if (command == "copy") {
            CopyFiles({words.begin() + 1, words.end()});
        } else if (command == "copied") {
            std::printf("%s\n", ClipboardText().c_str());
        } else if (command == "names") {
            PrintNames(frame);
        } else if (command == "input") {
            PrintInput(frame, {NumberIn(words[1]), NumberIn(words[2])});
        } else {
            PrintCatalogue(frame);
        }
        return 0;
    } catch (const std::exception& error) {
        std::printf("WindowDump: %s\n", error.what());
        return 1;
    }
}

// Commands from standard input, one a line, words apart by tabs; after what one prints comes a line of the
// character EOT and its exit code. A test asks hundreds of times, and starting a program takes longer than
// asking it.
void Serve() {
    for (std::string line; std::getline(std::cin, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        std::istringstream text(line);
        std::vector<std::string> words;
        for (std::string word; std::getline(text, word, '\t');) {
            words.push_back(word);
        }
        const int code = Run(words);
        std::printf("\x04%d\n", code);
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char** argv) {
    // The system would scale the coordinates of other programs' windows for a program that is not aware of
    // the dots.
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words != std::vector<std::string>{"serve"}) {
        return Run(words);
    }
    Serve();
    return 0;
}
