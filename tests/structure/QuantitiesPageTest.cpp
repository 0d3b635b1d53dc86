#include "model/Channels.h"
#include "model/NumberText.h"
#include "platform/DiskFileServices.h"
#include "tests/support/Places.h"

#include <gtest/gtest.h>

#include <string>

namespace corvanta::test {
namespace {

/// The row of a channel on the page of quantities, without its number; empty where there is none.
std::string RowOf(int id, const std::string& page) {
    const std::string head = "\n| " + std::to_string(id) + " | ";
    const std::size_t row = page.find(head);
    return row == std::string::npos
               ? ""
               : page.substr(row + head.size(), page.find('\n', row + 1) - row - head.size());
}

TEST(QuantitiesPageTest, EveryChannelHasItsRowWithTitlesAndUnit) {
    const std::string page = DiskFileServices().ReadBytes(SourceFolder() + "/docs/quantities.md");
    FundamentalUnits units;
    units[ucDisplacement].Label = "mm";
    units[ucRate].Label = "N/mm";
    ChannelCatalogue channels;
    channels.ChannelsSetup(units);
    for (int id = 1; id <= ChannelCount; ++id) {
        const std::string row = RowOf(id, page);
        for (const bool front : {true, false}) {
            channels.SetFrontRearTitles(front);
            EXPECT_NE(row.find(std::string(TrimBlanks(channels[id].Title))), std::string::npos)
                << id << ", " << channels[id].Title;
        }
        const std::int32_t unitClass = channels[id].Class;
        const std::string unit = unitClass == ucBarRate ? "N.mm" : channels[id].UnitLabel;
        EXPECT_NE(row.find(" | " + unit + " | "), std::string::npos) << id << ", " << unit;
    }
}

} // namespace
} // namespace corvanta::test
