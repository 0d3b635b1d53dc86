#include "frame/MOptions.h"

#include "model/Failure.h"
#include "tests/support/MemorySettingsStore.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

class MOptionsTest : public testing::Test {
  protected:
    void Read() { OptionsRead(m_options, m_data, m_units, m_store, "/opt/corvanta"); }

    /// Sets everything that is kept to a value that is not its default.
    void SetEveryOption() {
        m_options.AdjustRHByPushRodLength = false;
        m_options.LastFolder = "";
        m_options.ExportFilePath = "C:\\out";
        m_options.ExportHeaderOn = true;
        m_options.ExportType = 2;
        m_options.DrawAxes = false;
        m_options.AutoScale = false;
        m_options.PaperOrientation = 1;
        m_options.PrintCoordinates = true;
        m_options.PageThrow = true;
        m_options.PrintChassisDetails = false;
        m_options.PrintSelectedTables = true;
        m_options.SelectedTables.Set(1, true);
        m_options.SelectedTables.Set(12, true);
        m_data.SpringMechanism = 11;
        m_data.ChassisMotion = 1;
        m_data.DriveShaftExists = true;
        m_data.Bump = 30.25;
        m_data.Droop = 31.5;
        m_data.WheelTravelStepSize = 2.5;
        m_data.RackTravel = 1e-7;
        m_data.RackTravelStepSize = 0.125;
    }

    /// The entries in the order of their writing.
    static std::string Text(const MemorySettingsStore& store) {
        std::string text;
        for (const MemorySettingsStore::Entry& entry : store.Entries) {
            text += entry.Section + "/" + entry.Key + "=" + entry.Value + "\n";
        }
        return text;
    }

    Options m_options;
    SuspensionData m_data;
    FundamentalUnits m_units;
    MemorySettingsStore m_store;
};

TEST_F(MOptionsTest, WritesEveryKeyInItsOrder) {
    Read(); // of an empty store: the defaults
    m_data.Bump = 12.5;
    m_units.NumberSeparators = {",", "."};
    OptionsWrite(m_store, m_options, m_data, m_units);
    EXPECT_EQ(Text(m_store),
              "Options/AdjustRHByPushRodLength=True\nOptions/DriveShaftExists=False\n"
              "Options/Options Version=Options 1.0\nOptions/SpringMechanism=0\n"
              "Options/Bump=12,5\nOptions/Droop=25\nOptions/WheelTravelStepSize=5\n"
              "Options/RackTravel=25\nOptions/RackTravelStepSize=5\n"
              "Options/ChassisMotion=0\nOptions/DataDir=/opt/corvanta/Data\nOptions/"
              "ExportFilePath=/opt/corvanta/Data\n"
              "Options/ExportHeaderOn=False\nOptions/ExportType=1\nOptions/DrawAxes=True\n"
              "Options/ThreeDAutoScale=True\nOptions/PaperOrientation=0\n"
              "Options/PrintCoordinates=False\nOptions/PageThrow=False\n"
              "Options/PrintChassisDetails=True\nOptions/PrintSelectedTables=False\n"
              "Options/SelectedTables1=False\nOptions/SelectedTables2=False\n"
              "Options/SelectedTables3=False\nOptions/SelectedTables4=False\n"
              "Options/SelectedTables5=False\nOptions/SelectedTables6=False\n"
              "Options/SelectedTables7=False\nOptions/SelectedTables8=False\n"
              "Options/SelectedTables9=False\nOptions/SelectedTables10=False\n"
              "Options/SelectedTables11=False\nOptions/SelectedTables12=False\n"
              "Units/Displacement=mm\nUnits/Force=kg\nUnits/Mass=kg\nUnits/Rate=lb/in\n");
}

TEST_F(MOptionsTest, WhatWasWrittenComesBackUnderAnyLocale) {
    SetEveryOption();
    m_units[ucRate].Label = "N/mm";
    for (const std::string writer : {".", ","}) {
        for (const std::string reader : {".", ","}) {
            m_units.NumberSeparators.Decimal = writer;
            OptionsWrite(m_store, m_options, m_data, m_units);
            Options options;
            SuspensionData data;
            FundamentalUnits units;
            units.NumberSeparators.Decimal = reader;
            OptionsRead(options, data, units, m_store, "/opt/corvanta");
            EXPECT_TRUE(options.AutoScale);
            EXPECT_FALSE(data.DriveShaftExists);
            EXPECT_EQ(units[ucRate].Label, "N/mm");
            MemorySettingsStore again;
            options.AutoScale = false;
            data.DriveShaftExists = true;
            units.NumberSeparators.Decimal = writer;
            OptionsWrite(again, options, data, units);
            EXPECT_EQ(Text(again), Text(m_store));
        }
    }
    m_units.NumberSeparators.Decimal = "\u066B";
    OptionsWrite(m_store, m_options, m_data, m_units);
    Read();
    EXPECT_EQ(m_data.Bump, 30.25);
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
