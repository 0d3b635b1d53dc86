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

    /// Where the store lies, for a message about a value in it.
    [[nodiscard]] virtual std::string Place() const = 0;

    /// Sets the value of a key. One that it has already is no change.
    virtual void Write(std::string_view section, std::string_view key, std::string_view value) = 0;

    /// Takes over what other programs have saved of a section. What this one wrote and did not save
    /// yet stays.
    virtual void Refresh(std::string_view section) = 0;

    /// Makes every change so far last; without one it does nothing. A key that this program did not
    /// change keeps what another one has saved since. Throws Failure when it fails; the store on
    /// disk is then as it was before, and the next save tries again.
    virtual void Save() = 0;
};

} // namespace corvanta
