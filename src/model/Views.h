#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

struct SuspensionData;

/// Numbers of the views. 1 to 12 are also the places in the list of selected views.
enum ViewNumber : std::int32_t {
    vwNone = 0,
    vwAntis = 1,
    vwLateralGeometry = 2,
    vwPlanGeometry = 3,
    vwSpringDetails = 4,
    vwBarDetails = 5,
    vwAngles = 6,
    vwCustomTable = 7,
    vwCoordinates = 8,
    vwLinkLoads = 9,
    vwLinkLengths = 10,
    vwDynamicsReport = 11,
    vwQuadraticCoefficients = 12,
    vwPlot = 14,
    vw3d = 15,
    vwAllChannels = 16, ///< a table of exports, no view of the window
};

inline constexpr int SelectableViewCount = 12;
inline constexpr int LinkLoadViewCount = 3;

/// What a table or plot runs along.
enum ViewVariableValue : std::int32_t {
    vvAlongRackTravel = 1,  ///< rack travel, at a fixed wheel step
    vvAlongWheelTravel = 2, ///< wheel travel, at a fixed rack step
};

/// What is on show.
struct ViewSettings {
    std::int32_t View = vwNone;
    std::int32_t ViewArgument = 0; ///< view 9: the sub-view 1 to 3; view 14: the channel id; else 0
    std::int32_t ViewVariable = vvAlongWheelTravel;
    int ViewWheel = 0; ///< wheel step of the grid; 0 stands for the static one
    int ViewRack = 0;  ///< rack step of the grid; 0 stands for the static one
};

/// Name of a view; the empty string for a number without one.
[[nodiscard]] std::string_view ViewName(std::int32_t view);

/// Name of a sub-view of the link loads, 1 to 3; the empty string for another number.
[[nodiscard]] std::string LinkLoadViewName(std::int32_t subView, const SuspensionData& data);

/// The views ticked for print and export, 1 to 12.
class SelectedViews {
  public:
    [[nodiscard]] bool operator[](int view) const { return m_ticks.at(Slot(view)); }
    void Set(int view, bool ticked) { m_ticks.at(Slot(view)) = ticked; }

    friend bool operator==(const SelectedViews&, const SelectedViews&) = default;

  private:
    static std::size_t Slot(int view) { return static_cast<std::size_t>(view) - 1; }

    std::array<bool, SelectableViewCount> m_ticks{};
};

/// The channels of the custom table in display order. An id stands in it once.
class CustomChannels {
  public:
    /// Appends an id; one that is there already keeps its place.
    void Add(int id);
    void Clear() { m_ids.clear(); }
    [[nodiscard]] bool Contains(int id) const;
    [[nodiscard]] const std::vector<int>& Ids() const { return m_ids; }

    friend bool operator==(const CustomChannels&, const CustomChannels&) = default;

  private:
    std::vector<int> m_ids;
};

} // namespace corvanta
