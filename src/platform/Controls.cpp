#include "platform/Controls.h"

#include <algorithm>

namespace corvanta {

namespace {

template <typename Matches>
int IndexOf(const std::vector<ListEntry>& entries, Matches matches) {
    const auto found = std::find_if(entries.begin(), entries.end(), matches);
    return found == entries.end() ? ListControl::NoSelection
                                  : static_cast<int>(found - entries.begin());
}

} // namespace

int ListControl::Find(const std::string& text) const {
    return IndexOf(m_entries, [&](const ListEntry& entry) { return entry.Text == text; });
}

int ListControl::FindData(int itemData) const {
    return IndexOf(m_entries, [&](const ListEntry& entry) { return entry.ItemData == itemData; });
}

} // namespace corvanta
