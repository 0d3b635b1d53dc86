#include "shell/CMRUFileList.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "platform/FileServices.h"

#include <algorithm>
#include <optional>

namespace corvanta {

namespace {

/// A path of up to this many characters is shown whole.
constexpr std::size_t LongestMenuPath = 32;

/// A stored count beyond any list is damage.
constexpr int MostStoredFiles = 100;

int StoredCount(const SettingsStore& store, const std::string& section) {
    const std::optional<double> count = WholeNumberText(store.Read(section, "Count", "0"), ".");
    if (!count) {
        throw Failure(fnTypeMismatch,
                      "Type mismatch in key Count of section " + section + " of " + store.Place());
    }
    return static_cast<int>(std::clamp<double>(*count, 0, MostStoredFiles));
}

/// True when a list has a path, in whatever case.
bool Holds(const std::vector<std::string>& files, const std::string& path) {
    return std::any_of(files.begin(), files.end(),
                       [&](const std::string& file) { return UpperCase(file) == UpperCase(path); });
}

/// Characters of a UTF-8 text.
std::size_t Characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

} // namespace

void CMRUFileList::Initialise(std::vector<MenuItem>& items, int capacity, bool separators,
                              const std::string& sectionPrefix, const SettingsStore& store,
                              Messages& messages) {
    try {
        m_section = sectionPrefix + "MRU";
        m_capacity = capacity;
        items.assign(static_cast<std::size_t>(capacity) + 2, MenuItem{});
        for (MenuItem& item : items) {
            item.Visible = false;
        }
        for (MenuItem* line : {&items.front(), &items.back()}) {
            line->Caption = "-";
            line->Visible = separators;
        }
        Load(store);
    } catch (...) {
        m_files.clear();
        messages.ShowMessage("There was an error while initialising the MRU object.\rError was " +
                                 FailureInFlight().Description(),
                             msInformation);
    }
}

void CMRUFileList::Load(const SettingsStore& store) {
    m_files.clear();
    if (m_capacity < 1) {
        return;
    }
    const int count = std::min(StoredCount(store, m_section), m_capacity);
    for (int i = 1; i <= count; ++i) {
        m_files.push_back(store.Read(m_section, "File" + std::to_string(i), ""));
    }
}

void CMRUFileList::AddFile(const std::string& path) {
    if (path.empty() || m_capacity < 1) {
        return;
    }
    const auto same = [&](const std::string& file) { return UpperCase(file) == UpperCase(path); };
    const auto found = std::find_if(m_files.begin(), m_files.end(), same);
    if (found != m_files.end()) {
        m_files.erase(found);
    } else if (FileCount() == m_capacity) {
        m_files.pop_back();
    }
    m_files.insert(m_files.begin(), path);
    m_touched.push_back(path);
}

void CMRUFileList::RemoveFile(int index) {
    if (FileExists(index)) {
        m_touched.push_back(File(index));
        m_files.erase(m_files.begin() + (index - 1));
    }
}

std::string CMRUFileList::File(int index) const {
    return index >= 1 && index <= FileCount() ? m_files[static_cast<std::size_t>(index) - 1]
                                              : std::string();
}

void CMRUFileList::ListFiles(std::vector<MenuItem>& items) const {
    for (int i = 1; i <= m_capacity; ++i) {
        MenuItem& item = items[static_cast<std::size_t>(i)];
        item.Visible = FileExists(i);
        if (!item.Visible) {
            continue;
        }
        item.Enabled = true;
        // In a caption an "&" of the path is written twice.
        item.Caption = "&" + std::to_string(i) + "  " + ReplaceAll(MenuPath(File(i)), "&", "&&");
        item.ToolTip = File(i);
        item.Tag = i;
    }
}

void CMRUFileList::TakeOthers(const SettingsStore& store) {
    std::vector<std::string> merged;
    for (const std::string& file : m_files) {
        if (Holds(m_touched, file)) {
            merged.push_back(file);
        }
    }
    Load(store);
    for (const std::string& file : m_files) {
        if (!Holds(m_touched, file) && static_cast<int>(merged.size()) < m_capacity) {
            merged.push_back(file);
        }
    }
    m_files = std::move(merged);
}

void CMRUFileList::Save(SettingsStore& store) {
    store.Refresh(m_section);
    const std::vector<std::string> own = m_files;
    try {
        TakeOthers(store);
    } catch (const Failure&) {
        m_files = own; // a damaged list gives way to this one
    }
    m_touched.clear();
    store.Write(m_section, "MaxCount", std::to_string(m_capacity));
    int count = 0;
    for (int i = 1; i <= FileCount(); ++i) {
        if (FileExists(i)) {
            store.Write(m_section, "File" + std::to_string(i), File(i));
            ++count;
        }
    }
    store.Write(m_section, "Count", std::to_string(count));
}

std::string MenuPath(const std::string& path) {
    if (Characters(path) <= LongestMenuPath) {
        return path;
    }
    const std::size_t first = path.find(FileServices::Separator);
    std::size_t cut = first;
    for (std::size_t at = first; at != std::string::npos;
         at = path.find(FileServices::Separator, at + 1)) {
        if (Characters(std::string_view(path).substr(at + 1)) <= LongestMenuPath) {
            cut = at;
            break;
        }
    }
    // With nothing to cut off the path stays whole.
    return cut == std::string::npos || cut == first ? path : "..." + path.substr(cut);
}

} // namespace corvanta
