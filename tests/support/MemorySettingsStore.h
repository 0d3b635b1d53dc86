#pragma once

#include "model/Failure.h"
#include "platform/SettingsStore.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvanta::test {

/// A settings store in memory that keeps the order of its first writes.
class MemorySettingsStore final : public SettingsStore {
  public:
    struct Entry {
        std::string Section;
        std::string Key;
        std::string Value;
    };

    std::vector<Entry> Entries;
    int Saves = 0;
    bool RefuseSave = false;

    [[nodiscard]] std::string Read(std::string_view section, std::string_view key,
                                   std::string_view fallback) const override {
        for (const Entry& entry : Entries) {
            if (entry.Section == section && entry.Key == key) {
                return entry.Value;
            }
        }
        return std::string(fallback);
    }

    void Write(std::string_view section, std::string_view key, std::string_view value) override {
        for (Entry& entry : Entries) {
            if (entry.Section == section && entry.Key == key) {
                entry.Value = value;
                return;
            }
        }
        Entries.push_back({std::string(section), std::string(key), std::string(value)});
    }

    [[nodiscard]] std::string Place() const override { return "/settings.ini"; }

    void Refresh(std::string_view /*section*/) override {}

    void Save() override {
        if (RefuseSave) {
            throw Failure(fnFileAccess, "No space left on device");
        }
        ++Saves;
    }
};

} // namespace corvanta::test
