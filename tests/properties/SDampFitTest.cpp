#include "properties/SDampFit.h"

#include "calculation/SCalcs.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <array>
#include <vector>

namespace corvanta::test {
namespace {

TEST(QuadraticFitsTest, OfADocumentAreInDisplayUnits) {
    std::array<Suspension, 2> documents; // in mm, and in inches
    FundamentalUnits units = MetricUnits();
    for (Suspension& document : documents) {
        document = LoadSample("formula-front-pullrod.WSP");
        ChannelCatalogue channels;
        channels.ChannelsSetup(units);
        RecordingMessageBox box;
        Messages messages(box);
        RunCalculation(document, channels, messages);
        ASSERT_TRUE(document.ResultsValid);
        units[ucDisplacement].Label = "in";
    }
    // The height of the roll centre over the spring's closing: both are lengths.
    const QuadraticFit& metric = documents[0].QuadraticFits[4];
    const QuadraticFit& inches = documents[1].QuadraticFits[4];
    EXPECT_NEAR(inches.A, metric.A * 25.4, 1e-8);
    EXPECT_NEAR(inches.B, metric.B, 1e-8);
    EXPECT_NEAR(inches.C, metric.C / 25.4, 1e-6);
    EXPECT_NE(metric.A, 0);
    EXPECT_EQ(documents[1].QuadraticFits[5].C, 0) << "no driveshaft";
    const std::vector<double> still(5, 0.0);
    EXPECT_EQ(FitQuadratic(still, still, false).A, -99.9);
}

} // namespace
} // namespace corvanta::test
