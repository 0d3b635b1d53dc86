#include "platform/IniSettingsStore.h"

#include <algorithm>
#include <cassert>

namespace corvanta {

namespace {

using IniEntries = IniSections::value_type::second_type;

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

std::string Escaped(std::string_view value) {
    std::string text;
    for (const char c : value) {
        switch (c) {
        case '\\':
            text += "\\\\";
            break;
        case '\r':
            text += "\\r";
            break;
        case '\n':
            text += "\\n";
            break;
        default:
            text += c;
        }
    }
    return text;
}

std::string Unescaped(std::string_view text) {
    std::string value;
    for (std::size_t n = 0; n < text.size(); ++n) {
        const char next = n + 1 < text.size() ? text[n + 1] : '\0';
        if (text[n] != '\\' || (next != '\\' && next != 'r' && next != 'n')) {
            value += text[n];
            continue;
        }
        value += next == 'r' ? '\r' : next == 'n' ? '\n' : '\\';
        ++n;
    }
    return value;
}

/// Cuts the first line off a text.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

bool IsName(std::string_view name) {
    return !name.empty() && name.front() != '[' &&
           name.find_first_of("=\r\n") == std::string_view::npos;
}

/// The value of a key, nothing when it is not there.
const std::string* Find(const IniSections& sections, std::string_view section,
                        std::string_view key) {
    for (const auto& [name, entries] : sections) {
        for (const auto& [entryKey, value] : entries) {
            if (name == section && entryKey == key) {
                return &value;
            }
        }
    }
    return nullptr;
}

void Put(IniSections& sections, std::string_view section, std::string_view key,
         std::string_view value) {
    auto found = std::find_if(sections.begin(), sections.end(),
                              [&](const auto& entry) { return entry.first == section; });
    if (found == sections.end()) {
        found = sections.emplace(sections.end(), section, IniEntries{});
    }
    IniEntries& entries = found->second;
    const auto present = std::find_if(entries.begin(), entries.end(),
                                      [&](const auto& entry) { return entry.first == key; });
    if (present == entries.end()) {
        entries.emplace_back(key, value);
    } else {
        present->second = value;
    }
}

IniSections Parsed(std::string_view text) {
    IniSections sections;
    if (text.starts_with(ByteOrderMark)) {
        text.remove_prefix(ByteOrderMark.size());
    }
    std::string section;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        const std::size_t equals = line.find('=');
        if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
            section = line.substr(1, line.size() - 2);
        } else if (!section.empty() && equals != std::string_view::npos &&
                   IsName(line.substr(0, equals))) {
            Put(sections, section, line.substr(0, equals), Unescaped(line.substr(equals + 1)));
        }
    }
    return sections;
}

std::string TextOf(const IniSections& sections) {
    std::string text;
    for (const auto& [name, entries] : sections) {
        text += "[" + name + "]\n";
        for (const auto& [key, value] : entries) {
            text += key + "=" + Escaped(value) + "\n";
        }
    }
    return text;
}

} // namespace

IniSettingsStore::IniSettingsStore(FileServices& files, std::string path)
    : m_files(files),
      m_path(std::move(path)),
      m_known(InFile()) {}

IniSections IniSettingsStore::InFile() const {
    return m_files.FileExists(m_path) ? Parsed(m_files.ReadBytes(m_path)) : IniSections();
}

std::string IniSettingsStore::Read(std::string_view section, std::string_view key,
                                   std::string_view fallback) const {
    const std::string* const value = Find(m_known, section, key);
    return value == nullptr ? std::string(fallback) : *value;
}

void IniSettingsStore::Write(std::string_view section, std::string_view key,
                             std::string_view value) {
    assert(!section.empty() && IsName(key));
    const std::string* const known = Find(m_known, section, key);
    if (known != nullptr && *known == value) {
        return;
    }
    Put(m_known, section, key, value);
    Put(m_changed, section, key, value);
}

void IniSettingsStore::Refresh(std::string_view section) {
    for (const auto& [name, entries] : InFile()) {
        for (const auto& [key, value] : entries) {
            if (name == section && Find(m_changed, name, key) == nullptr) {
                Put(m_known, name, key, value);
            }
        }
    }
}

void IniSettingsStore::Save() {
    if (m_changed.empty()) {
        return;
    }
    // A file that is gone takes all that is known; otherwise others may have written it since.
    IniSections sections = m_files.FileExists(m_path) ? InFile() : m_known;
    for (const auto& [name, entries] : m_changed) {
        for (const auto& [key, value] : entries) {
            Put(sections, name, key, value);
        }
    }
    m_files.WriteBytes(m_path, TextOf(sections));
    m_changed.clear();
}

} // namespace corvanta
