#include "WindowsJson.h"

#include "common/Json.h"
#include "RemoteListView.h"
#include "RemoteWindows.h"

#include <commctrl.h>

#include <utility>

using common::JsonArray;
using common::JsonString;
using common::JsonTruth;

namespace {

std::string Number(HWND window) {
    return std::to_string(reinterpret_cast<UINT_PTR>(window));
}

std::string ListJson(HWND window) {
    const ListContent list = ReadListView(window);
    return "\"" + Number(window) + "\":{\"extendedStyle\":" + std::to_string(list.extendedStyle) +
           ",\"rowHeight\":" + std::to_string(list.rowHeight) + ",\"columns\":" +
           JsonArray(list.columns,
                     [](const ListColumn& column) {
                         return "{\"title\":" + JsonString(column.title) +
                                ",\"width\":" + std::to_string(column.width) + "}";
                     }) +
           ",\"rows\":" +
           JsonArray(list.rows,
                     [](const ListRow& row) {
                         return "{\"texts\":" + JsonArray(row.texts, JsonString) +
                                ",\"image\":" + std::to_string(row.image) +
                                ",\"selected\":" + JsonTruth(row.selected) + "}";
                     }) +
           "}";
}

std::string RectangleJson(HWND window) {
    RECT area = {};
    GetWindowRect(window, &area);
    return JsonArray(std::vector<LONG>{area.left, area.top, area.right, area.bottom},
                     [](LONG value) { return std::to_string(value); });
}

// The number of a top-level window on the X display; 0 when it has none.
std::string DisplayNumber(HWND window) {
    return std::to_string(reinterpret_cast<UINT_PTR>(GetPropW(window, L"__wine_x11_whole_window")));
}

/// The windows of a tree without what is in their lists. Each function that reads another process's window
/// costs a call of the system's server, so none is called twice.
class Outline {
public:
    explicit Outline(HWND frame)
        : m_json("{\"focus\":" + Number(FocusOfThread(frame)) +
                 ",\"windows\":" + JsonArray(TopLevelWindows(frame), [this](HWND window) {
                     return Read(window, true, DisplayNumber(window));
                 })) {}

    [[nodiscard]] const std::string& Json() const { return m_json; }
    [[nodiscard]] const std::vector<HWND>& Lists() const { return m_lists; }

private:
    std::string Read(HWND window, bool parentIsVisible, const std::string& display) {
        const std::wstring className = ClassName(window);
        const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
        const bool visible = parentIsVisible && (style & WS_VISIBLE);
        std::string json = "{\"handle\":" + Number(window) + ",\"class\":" + JsonString(className) +
                           ",\"id\":" + std::to_string(GetDlgCtrlID(window)) +
                           ",\"text\":" + JsonString(Text(window, className)) +
                           ",\"visible\":" + JsonTruth(visible) +
                           ",\"enabled\":" + JsonTruth(!(style & WS_DISABLED)) + ",\"display\":" + display +
                           ",\"rect\":" + RectangleJson(window);
        if (className == L"SysListView32") {
            m_lists.push_back(window);
            json += ",\"count\":" + std::to_string(Ask(window, LVM_GETITEMCOUNT));
        }
        return json + ",\"children\":" +
               JsonArray(Children(window), [&](HWND child) { return Read(child, visible, "0"); }) + "}";
    }

    std::vector<HWND> m_lists;
    std::string m_json;
};

std::string ListsJson(const std::vector<HWND>& lists) {
    std::string json;
    for (const HWND list : lists) {
        json.append(json.empty() ? "{" : ",").append(ListJson(list));
    }
    return json.empty() ? "{}" : json.append("}");
}

} // namespace

std::string WindowsJson(HWND frame) {
    constexpr int kMostReadings = 10; // of something that changes all the time
    Outline outline(frame);
    for (int i = 1;; ++i) {
        const std::string lists = ListsJson(outline.Lists());
        const std::string before = std::exchange(outline, Outline(frame)).Json();
        // The windows change while they are read one after the other.
        if (outline.Json() == before || i == kMostReadings) {
            return std::string(before).append(",\"lists\":").append(lists).append("}");
        }
    }
}

std::string TopLevelJson(HWND window) {
    return "{\"text\":" + JsonString(window ? Text(window, ClassName(window)) : L"") +
           ",\"display\":" + DisplayNumber(window) + ",\"enabled\":" + JsonTruth(IsWindowEnabled(window)) +
           ",\"rect\":" + RectangleJson(window) + "}";
}
