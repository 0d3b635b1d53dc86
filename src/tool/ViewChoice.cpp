#include "tool/ViewChoice.h"

#include "automation/ResultTable.h"
#include "model/Failure.h"

#include <algorithm>

namespace corvanta {

void ViewChoice::AddTo(CLI::App& command, std::int32_t last) {
    std::vector<std::string> keys;
    for (const std::string_view key : ViewKeys()) {
        if (ViewOfKey(key) <= last) {
            keys.emplace_back(key);
        }
    }
    command.add_option("-v,--view", Keys, "which tables, parted by commas; all without it")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember(keys));
}

std::vector<std::int32_t> ViewChoice::Views(bool hasCustom) const {
    std::vector<std::int32_t> views;
    for (const std::string_view key : ViewKeys()) {
        const std::int32_t view = *ViewOfKey(key);
        const bool isCustom = view == vwCustomTable;
        const bool isNamed = std::ranges::find(Keys, key) != Keys.end();
        if (isCustom && isNamed && !hasCustom) {
            throw Failure(fnInvalidCall, "The custom table needs its channels: name them by "
                                         "--channels");
        }
        if (isCustom ? hasCustom : Keys.empty() ? view != vwAllChannels : isNamed) {
            views.push_back(view);
        }
    }
    return views;
}

} // namespace corvanta
