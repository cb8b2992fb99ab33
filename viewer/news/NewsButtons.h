// The buttons that the bar shows beside the news of a package.
#pragma once

#include "news/NewsBar.h"
#include "session/PackageNews.h"

#include <vector>

namespace viewer {

/// One button for each action, in their order.
[[nodiscard]] std::vector<NewsBar::Button> NewsButtons(const std::vector<NewsAction>& actions);

} // namespace viewer
