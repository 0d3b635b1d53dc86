#pragma once

#include "platform/Controls.h"
#include "platform/SettingsStore.h"

#include <cstddef>
#include <string_view>

namespace corvanta {

/// The parts of the workbench that its tour speaks of.
enum class TourPart { Points, Charts, Corner, Travel, Lists };

struct TourStep {
    TourPart Part;
    std::string_view Title;
    std::string_view Text;
};

/// The tour of the workbench: five steps, each beside the part that it speaks of. It comes by
/// itself once, may be left at any step and called again. It holds nothing up: all that it speaks
/// of can be tried while it stands there.
class CWorkbenchTour {
  public:
    static constexpr std::size_t Steps = 5;

    CWorkbenchTour();

    /// Begins for a user who has not seen it, and remembers in `store` that it was shown; without a
    /// store nothing could be remembered, and nothing comes by itself.
    void Offer(SettingsStore* store);

    void Begin();

    // Events.
    void cmdNext_Click(); ///< on the last step it ends
    void cmdBack_Click();
    void cmdSkip_Click();

    [[nodiscard]] bool IsOpen() const { return m_open; }
    [[nodiscard]] const TourStep& Step() const;

    Control labCount; ///< "2 of 5"
    Control cmdNext, cmdBack, cmdSkip;

  private:
    void GoTo(std::size_t step);

    std::size_t m_step = 0;
    bool m_open = false;
    bool m_offered = false;
};

} // namespace corvanta
