#include "solver/SInitGeo.h"

#include "model/Failure.h"
#include "tests/support/Corners.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/Testing.h"

#include <vector>

namespace corvanta::test {
namespace {

class SInitGeoTest : public testing::Test {
  protected:
    /// NW, StaticWheel, NR and StaticRack for the travels set.
    std::vector<int> Shape() {
        SetStepSizes(m_document, m_units, m_messages);
        return {m_document.NW, m_document.StaticWheel, m_document.NR, m_document.StaticRack};
    }
    void SetWheel(double bump, double droop, double step) {
        m_data.Bump = bump;
        m_data.Droop = droop;
        m_data.WheelTravelStepSize = step;
    }
    void SetRack(double travel, double step) {
        m_data.RackTravel = travel;
        m_data.RackTravelStepSize = step;
    }

    Suspension m_document;
    SuspensionData& m_data = m_document.Data;
    FundamentalUnits m_units = MetricUnits();
    RecordingMessageBox m_box;
    Messages m_messages{m_box};
};

TEST_F(SInitGeoTest, AStepThatIsTooSmallGrowsAndTheUserIsToldOnce) {
    constexpr auto* told = "Max number of wheel travel points exceeded so step size reset to  4.5";
    SetWheel(100, 100, 1);
    SetRack(25, 1);
    // 100 / 4.5 + 0.99 = 23.2; at 4 it would be 25.99, 52 steps with the start.
    EXPECT_THAT(Shape(), ElementsAre(47, 25, 2 * 17 + 1, 19));
    EXPECT_EQ(m_data.WheelTravelStepSize, 4.5);
    EXPECT_EQ(m_data.RackTravelStepSize, 1.5);
    EXPECT_THAT(m_box.Prompts(), ElementsAre(told));
    EXPECT_EQ(m_box.Shown[0].Style, msInformation);
    EXPECT_EQ(m_box.Shown[0].Title, "");

    (void)Shape();
    EXPECT_EQ(m_box.Shown.size(), 1U) << "the document's own values are changed";
    SetRack(25, 1);
    (void)Shape();
    EXPECT_THAT(m_box.Prompts(), ElementsAre(told, told)) << "for the rack, with the wheel's value";

    m_units[ucDisplacement].Label = "in";
    SetWheel(24.1, 24.1, 1);
    EXPECT_EQ(Shape()[0], 47);
    EXPECT_DOUBLE_EQ(m_data.WheelTravelStepSize, 1.05);

    m_messages.Silence();
    m_units[ucDisplacement].Label = "mm";
    SetWheel(25, 25, 1e-9);
    EXPECT_EQ(Shape()[0], 35) << "25 / 1.5 + 0.99 = 17.66";
    EXPECT_EQ(m_data.WheelTravelStepSize, 1e-9 + 0.5 + 0.5 + 0.5);
    EXPECT_EQ(m_box.Shown.size(), 3U);
}

TEST_F(SInitGeoTest, TravelThatMakesNoGridIsRefusedAndChangesNothing) {
    struct Refusal {
        double SuspensionData::*Field;
        double Value;
        const char* Message;
    };
    const std::vector<int> shape = Shape();
    for (const Refusal& c : {Refusal{&SuspensionData::WheelTravelStepSize, 0, "Division by zero"},
                             {&SuspensionData::RackTravelStepSize, 0, "Division by zero"},
                             {&SuspensionData::Bump, 1e300, "Overflow"},
                             {&SuspensionData::RackTravel, 1e12, "Overflow"}}) {
        const double kept = m_data.*c.Field;
        m_data.*c.Field = c.Value;
        EXPECT_THAT([&] { (void)Shape(); }, ThrowsMessage<Failure>(c.Message));
        EXPECT_EQ(m_data.*c.Field, c.Value);
        m_data.*c.Field = kept;
        EXPECT_EQ(m_document.NW + m_document.NR, shape[0] + shape[2]);
    }
}

} // namespace
} // namespace corvanta::test
