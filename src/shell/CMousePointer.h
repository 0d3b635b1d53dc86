#pragma once

#include "platform/WindowServices.h"

#include <optional>

namespace corvanta {

/// A cursor for the length of a scope: whichever way the scope is left, the former cursor comes
/// back.
class CMousePointer {
  public:
    explicit CMousePointer(ScreenCursor& cursor) : m_cursor(cursor) {}
    CMousePointer(ScreenCursor& cursor, int shape) : m_cursor(cursor) { SetPointer(shape); }
    CMousePointer(const CMousePointer&) = delete;
    CMousePointer& operator=(const CMousePointer&) = delete;
    CMousePointer(CMousePointer&&) = delete;
    CMousePointer& operator=(CMousePointer&&) = delete;
    ~CMousePointer() {
        if (m_former) {
            m_cursor.Set(*m_former);
        }
    }

    /// Sets the cursor; the first call remembers the one that stood before.
    void SetPointer(int shape) {
        if (!m_former) {
            m_former = m_cursor.Current();
        }
        m_cursor.Set(shape);
    }

  private:
    ScreenCursor& m_cursor;
    std::optional<int> m_former;
};

} // namespace corvanta
