#include "platform/IniSettingsStore.h"

#include <algorithm>
#include <cassert>

namespace corvanta {

namespace {

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

} // namespace

IniSettingsStore::IniSettingsStore(FileServices& files, std::string path)
    : m_files(files),
      m_path(std::move(path)) {
    if (!m_files.FileExists(m_path)) {
        return;
    }
    const std::string bytes = m_files.ReadBytes(m_path);
    std::string_view rest = bytes;
    if (rest.substr(0, ByteOrderMark.size()) == ByteOrderMark) {
        rest.remove_prefix(ByteOrderMark.size());
    }
    std::string section;
    while (!rest.empty()) {
        const std::string_view line = TakeLine(rest);
        const std::size_t equals = line.find('=');
        if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
            section = line.substr(1, line.size() - 2);
        } else if (!section.empty() && equals != std::string_view::npos &&
                   IsName(line.substr(0, equals))) {
            Write(section, line.substr(0, equals), Unescaped(line.substr(equals + 1)));
        }
    }
}

std::string IniSettingsStore::Read(std::string_view section, std::string_view key,
                                   std::string_view fallback) const {
    for (const auto& [name, entries] : m_sections) {
        if (name != section) {
            continue;
        }
        for (const auto& [entryKey, value] : entries) {
            if (entryKey == key) {
                return value;
            }
        }
    }
    return std::string(fallback);
}

void IniSettingsStore::Write(std::string_view section, std::string_view key,
                             std::string_view value) {
    assert(!section.empty() && IsName(key));
    Entries& entries = Section(section);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.first == key; });
    if (found != entries.end()) {
        found->second = value;
    } else {
        entries.emplace_back(key, value);
    }
}

void IniSettingsStore::Save() {
    std::string text;
    for (const auto& [name, entries] : m_sections) {
        text += "[" + name + "]\n";
        for (const auto& [key, value] : entries) {
            text += key + "=" + Escaped(value) + "\n";
        }
    }
    if (text != m_saved) {
        m_files.WriteBytes(m_path, text);
        m_saved = text;
    }
}

IniSettingsStore::Entries& IniSettingsStore::Section(std::string_view name) {
    for (auto& [sectionName, entries] : m_sections) {
        if (sectionName == name) {
            return entries;
        }
    }
    return m_sections.emplace_back(std::string(name), Entries{}).second;
}

} // namespace corvanta
