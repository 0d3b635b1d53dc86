#pragma once

#include "model/Units.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// Ids of the channels: the quantities derived for every solved state. They stand in stored lists
/// and never change.
enum ChannelId : int {
    chAckerman = 1,
    chAntiDiveAngle,
    chAntiDiveLength,
    chAntiDivePercent,
    chAntiRollPercent,
    chAntiSquatLength,
    chAntiSquatAngle,
    chAntiSquatPercent,
    chAntiRollAngle,
    chAntiRollLength,
    chARBRotation,
    chARBVelocityRatio,
    chARBRatio,
    chCamberAngle,
    chCasterAngle,
    chCasterOffset,
    chCentreSpringVelocityRatio,
    chCentreSpringLength,
    chDriveshaftAngleXY,
    chDriveshaftAngleYZ,
    chDriveshaftTotalAngle,
    chDriveshaftLength,
    chHalfTrack,
    chKingpinInclination,
    chKingpinOffset,
    chLinkLoads,
    chPushrodVelocityRatio,
    chRackTravel,
    chRollCentreToOrigin,
    chRollCentreToGround,
    chRollCentreY,
    chRollStiffness,
    chRollStiffnessChange,
    chSpringVelocityRatio,
    chSpringLength,
    chSteerAngle,
    chSteerAngleBump,
    chSteerAngleDelta,
    chWheelRateARB,
    chWheelRateChangeARB,
    chWheelRateSpring,
    chWheelRateChangeSpring,
    chWheelRateCentreSpring,
    chWheelRateChangeCentreSpring,
    chWheelRateTotal,
    chWheelRateChangeTotal,
    chWheelTravel,
    chUpperLongAngle,
    chLowerLongAngle,
    chUpperLatAngle,
    chLowerLatAngle,
};

inline constexpr int ChannelCount = 51;

/// The channel values of one state, in stored units. A cell that was never written reads as 0 and
/// shows as "0" in every unit. The whole numbers that stand for a missing result are values like
/// any other. The cell of the link loads holds a table of its own (`LinkLoadTable`) and stays
/// unwritten.
class ChannelCells {
  public:
    /// Value of a cell, 0 when it was never written. `id` 1 to 51; throws Failure "Subscript out of
    /// range" for another, as ids come from hand-made lists too.
    [[nodiscard]] double operator[](int id) const { return m_values[Slot(id)]; }

    /// Value of a cell, nothing when it was never written.
    [[nodiscard]] std::optional<double> Cell(int id) const {
        const std::size_t slot = Slot(id);
        return Bit(slot) & m_written ? std::optional(m_values[slot]) : std::nullopt;
    }

    void Set(int id, double value) {
        const std::size_t slot = Slot(id);
        m_values[slot] = value;
        m_written |= Bit(slot);
    }

    /// As if the cell was never written.
    void Clear(int id) {
        const std::size_t slot = Slot(id);
        m_values[slot] = 0;
        m_written &= ~Bit(slot);
    }

  private:
    static std::size_t Slot(int id) {
        if (id < 1 || id > ChannelCount) {
            RaiseSubscript();
        }
        return static_cast<std::size_t>(id) - 1;
    }
    static std::uint64_t Bit(std::size_t slot) { return std::uint64_t{1} << slot; }
    [[noreturn]] static void RaiseSubscript();

    std::array<double, ChannelCount> m_values{};
    std::uint64_t m_written = 0;
};

/// What a channel is called and how its values are shown.
struct ChannelRecord {
    std::string Title;
    std::string UnitLabel;
    std::int32_t Class = 0;
    float Factor = 0;
    std::string Format;
};

/// The list of the 51 channels. Labels, factors and formats are copies taken from the unit table
/// when the list is set up, so it is set up again whenever the units change.
class ChannelCatalogue {
  public:
    /// Record of a channel, 1 to 51. Throws Failure "Subscript out of range" for another id.
    [[nodiscard]] const ChannelRecord& operator[](int id) const;

    /// Fills the unit table from its labels, then all 51 records. The titles of the anti channels
    /// are those of a new list until `SetFrontRearTitles` runs.
    void ChannelsSetup(FundamentalUnits& units);

    /// The titles of channels 2, 3, 4, 6, 7 and 8 belong to the end of the car.
    void SetFrontRearTitles(bool isFrontCorner);

  private:
    void AddChannel(int id, std::string_view title, std::int32_t unitClass,
                    const FundamentalUnits& units);
    ChannelRecord& Record(int id);

    std::array<ChannelRecord, ChannelCount> m_records{};
};

} // namespace corvanta
