#include "news/NewsButtons.h"

#include "resources/resource.h"
#include "texts/Texts.h"

#include <algorithm>
#include <iterator>

namespace viewer {

namespace {

NewsBar::Button ButtonOf(NewsAction action) {
    switch (action) {
    case NewsAction::Save:
        return {IDM_FILE_SAVE, Text(IDS_NEWS_SAVE)};
    case NewsAction::Reload:
        return {IDM_VIEW_REFRESH, Text(IDS_NEWS_RELOAD)};
    default:
        return {IDM_PACKAGE_COMPARE, Text(IDS_NEWS_COMPARE)};
    }
}

} // namespace

std::vector<NewsBar::Button> NewsButtons(const std::vector<NewsAction>& actions) {
    std::vector<NewsBar::Button> buttons;
    std::ranges::transform(actions, std::back_inserter(buttons), ButtonOf);
    return buttons;
}

} // namespace viewer
