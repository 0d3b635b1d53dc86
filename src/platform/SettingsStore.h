#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// The per-user store of strings, by section and key.
class SettingsStore {
  public:
    SettingsStore() = default;
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    SettingsStore(SettingsStore&&) = delete;
    SettingsStore& operator=(SettingsStore&&) = delete;
    virtual ~SettingsStore() = default;

    /// The value of a key, or `fallback` when the store does not hold it.
    [[nodiscard]] virtual std::string Read(std::string_view section, std::string_view key,
                                           std::string_view fallback) const = 0;
    virtual void Write(std::string_view section, std::string_view key, std::string_view value) = 0;

    /// Makes everything written so far last. Throws Failure when that fails; the store on disk is
    /// then as it was before.
    virtual void Save() = 0;
};

} // namespace corvanta
