#pragma once

#include <cstddef>
#include <memory>
#include <utility>

namespace corvanta {

/// The place of a window that opens from the main one: none is there until it is opened, and every
/// opening makes a new one. One that closed is kept until its view on the screen is gone.
template <typename Kind>
class ChildWindow {
  public:
    [[nodiscard]] Kind* get() const { return m_window.get(); }
    [[nodiscard]] Kind* operator->() const { return m_window.get(); }
    [[nodiscard]] Kind& operator*() const { return *m_window; }
    [[nodiscard]] explicit operator bool() const { return m_window != nullptr; }
    friend bool operator==(const ChildWindow& place, std::nullptr_t) { return !place; }

    /// The window while it is open, none otherwise.
    [[nodiscard]] Kind* Opened() const {
        return m_window && m_window->IsOpen ? m_window.get() : nullptr;
    }

    /// Opens a new window in the place of the one before.
    template <typename... Arguments>
    void Open(Arguments&&... arguments) {
        m_former = std::move(m_window);
        m_window = std::make_unique<Kind>(std::forward<Arguments>(arguments)...);
        m_window->Open();
    }

    /// Brings the open window to the front, or opens one.
    template <typename... Arguments>
    void Raise(Arguments&&... arguments) {
        if (Opened() == nullptr) {
            Open(std::forward<Arguments>(arguments)...);
        }
        m_window->Raise = true;
    }

    /// Closes the window if it is open.
    void Close() {
        if (Kind* const window = Opened()) {
            window->Close();
        }
    }

    /// Lets go of what was closed.
    void Release() {
        m_former.reset();
        if (m_window && !m_window->IsOpen) {
            m_window.reset();
        }
    }

  private:
    std::unique_ptr<Kind> m_window;
    std::unique_ptr<Kind> m_former;
};

} // namespace corvanta
