#include "window/NewsButtons.h"

#include "resources/resource.h"

#include <algorithm>
#include <iterator>

namespace viewer {

namespace {

NewsBar::Button ButtonOf(NewsAction action) {
    switch (action) {
    case NewsAction::Save:
        return {IDM_FILE_SAVE, L"Save"};
    case NewsAction::Reload:
        return {IDM_VIEW_REFRESH, L"Reload"};
    default:
        return {IDM_PACKAGE_COMPARE, L"Compare"};
    }
}

} // namespace

std::vector<NewsBar::Button> NewsButtons(const std::vector<NewsAction>& actions) {
    std::vector<NewsBar::Button> buttons;
    std::ranges::transform(actions, std::back_inserter(buttons), ButtonOf);
    return buttons;
}

} // namespace viewer
