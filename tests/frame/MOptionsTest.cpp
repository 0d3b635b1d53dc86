#include "frame/MOptions.h"

#include "model/Failure.h"
#include "tests/support/MemorySettingsStore.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class MOptionsTest : public testing::Test {
  protected:
    void Read() { OptionsRead(m_options, m_data, m_units, m_store, "/opt/corvanta"); }

    /// The entries in the order of their writing.
    static std::string Text(const MemorySettingsStore& store) {
        std::string text;
        for (const MemorySettingsStore::Entry& entry : store.Entries) {
            text += entry.Key + "=" + entry.Value + " ";
        }
        return text;
    }

    Options m_options;
    SuspensionData m_data;
    FundamentalUnits m_units;
    MemorySettingsStore m_store;
};

TEST_F(MOptionsTest, EveryKeyStandsInItsOrderAndComesBackUnderAnyLocale) {
    Read(); // of an empty store: the defaults
    std::string defaults =
        "AdjustRHByPushRodLength=True DriveShaftExists=False Options Version=Options 1.0 "
        "SpringMechanism=0 Bump=25 Droop=25 WheelTravelStepSize=5 RackTravel=25 "
        "RackTravelStepSize=5 ChassisMotion=0 DataDir=/opt/corvanta/Data "
        "ExportFilePath=/opt/corvanta/Data ExportHeaderOn=False ExportType=1 DrawAxes=True "
        "ThreeDAutoScale=True PaperOrientation=0 PrintCoordinates=False PageThrow=False "
        "PrintChassisDetails=True PrintSelectedTables=False ";
    for (int view = 1; view <= SelectableViewCount; ++view) {
        defaults += "SelectedTables" + std::to_string(view) + "=False ";
    }
    OptionsWrite(m_store, m_options, m_data, m_units);
    EXPECT_EQ(Text(m_store), defaults + "Displacement=mm Force=kg Mass=kg Rate=lb/in ");

    for (const std::string decimal : {".", ",", "\u066B"}) {
        MemorySettingsStore changed;
        for (MemorySettingsStore::Entry entry : m_store.Entries) {
            if (entry.Value == "True" || entry.Value == "False") {
                entry.Value = entry.Value == "True" ? "False" : "True";
            } else if (entry.Key.ends_with("StepSize")) {
                entry.Value += decimal + "25";
            } else if (std::isdigit(entry.Value[0]) != 0) {
                entry.Value = entry.Value == "0" ? "1" : "3";
            } else if (entry.Value[0] == '/') {
                entry.Value = entry.Key == "DataDir" ? "" : "C:\\out";
            }
            changed.Write(entry.Section, entry.Key, entry.Value);
        }
        changed.Write("Units", "Rate", "N/mm");
        m_units.NumberSeparators.Decimal = decimal;
        m_options = {};
        m_data = {};
        OptionsRead(m_options, m_data, m_units, changed, "/opt/corvanta");
        EXPECT_TRUE(m_options.AutoScale && !m_data.DriveShaftExists) << "not taken over";
        m_options.AutoScale = false;
        m_data.DriveShaftExists = true;
        MemorySettingsStore again;
        OptionsWrite(again, m_options, m_data, m_units);
        EXPECT_EQ(Text(again), Text(changed));
        // Numbers of another machine are read as they were written.
        m_units.NumberSeparators.Decimal = decimal == "." ? "," : ".";
        OptionsRead(m_options, m_data, m_units, changed, "/opt/corvanta");
        EXPECT_EQ(m_data.RackTravelStepSize, 5.25);
    }
}

TEST_F(MOptionsTest, AValueThatCannotBeConvertedIsAFailureThatNamesItsKey) {
    struct Case {
        std::string Key;
        std::string Value;
        std::int32_t Number;
        std::string Description;
    };
    for (const Case& bad :
         {Case{"Bump", "1.234,5", fnTypeMismatch, "Type mismatch in option Bump"},
          Case{"SelectedTables7", "yes", fnTypeMismatch, "Type mismatch in option SelectedTables7"},
          Case{"DrawAxes", "", fnTypeMismatch, "Type mismatch in option DrawAxes"},
          Case{"ChassisMotion", "3000000000", fnOverflow, "Overflow in option ChassisMotion"}}) {
        MemorySettingsStore store;
        store.Write("Options", bad.Key, bad.Value);
        const Failure failure =
            FailureOf([&] { OptionsRead(m_options, m_data, m_units, store, "/opt/corvanta"); });
        EXPECT_EQ(failure.Number(), bad.Number);
        EXPECT_EQ(failure.Description(), bad.Description + " of /settings.ini");
    }
}

} // namespace
} // namespace corvanta::test
