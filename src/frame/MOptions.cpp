#include "frame/MOptions.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "platform/FileServices.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace corvanta {

namespace {

constexpr std::string_view OptionsSection = "Options";
constexpr std::string_view UnitsSection = "Units";
constexpr std::string_view SelectedTablesKey = "SelectedTables";
constexpr std::string_view ArabicDecimal = "\u066B";

/// A key that stands in the store for other readers and is never read back.
template <typename Record>
struct WrittenOnly {
    bool Record::*Member;
};

/// The text that marks the layout of the store; never read back.
struct LayoutMark {};

/// Where the value of a key lives. The folders' default is computed, so theirs is empty.
using OptionPlace = std::variant<bool Options::*, std::int32_t Options::*, std::string Options::*,
                                 std::int32_t SuspensionData::*, double SuspensionData::*,
                                 WrittenOnly<Options>, WrittenOnly<SuspensionData>, LayoutMark>;

struct OptionEntry {
    std::string_view Key;
    OptionPlace Place;
    std::string_view Default;
};

using SD = SuspensionData;

/// The keys of the options in the order of writing; those of the selected tables follow.
constexpr std::array<OptionEntry, 21> OptionEntries{{
    {"AdjustRHByPushRodLength", &Options::AdjustRHByPushRodLength, "True"},
    {"DriveShaftExists", WrittenOnly<SD>{&SD::DriveShaftExists}, ""},
    {"Options Version", LayoutMark{}, ""},
    {"SpringMechanism", &SD::SpringMechanism, "0"},
    {"Bump", &SD::Bump, "25"},
    {"Droop", &SD::Droop, "25"},
    {"WheelTravelStepSize", &SD::WheelTravelStepSize, "5"},
    {"RackTravel", &SD::RackTravel, "25"},
    {"RackTravelStepSize", &SD::RackTravelStepSize, "5"},
    {"ChassisMotion", &SD::ChassisMotion, "0"},
    {"DataDir", &Options::LastFolder, ""},
    {"ExportFilePath", &Options::ExportFilePath, ""},
    {"ExportHeaderOn", &Options::ExportHeaderOn, "False"},
    {"ExportType", &Options::ExportType, "1"},
    {"DrawAxes", &Options::DrawAxes, "True"},
    {"ThreeDAutoScale", WrittenOnly<Options>{&Options::AutoScale}, ""},
    {"PaperOrientation", &Options::PaperOrientation, "0"},
    {"PrintCoordinates", &Options::PrintCoordinates, "False"},
    {"PageThrow", &Options::PageThrow, "False"},
    {"PrintChassisDetails", &Options::PrintChassisDetails, "True"},
    {"PrintSelectedTables", &Options::PrintSelectedTables, "False"},
}};

/// The keys of the units and the class whose label each holds.
struct UnitEntry {
    std::string_view Key;
    std::int32_t Class;
    std::string_view Default;
};

constexpr std::array<UnitEntry, 4> UnitEntries{{
    {"Displacement", ucDisplacement, "mm"},
    {"Force", ucForce, "kg"},
    {"Mass", ucMass, "kg"},
    {"Rate", ucRate, "lb/in"},
}};

std::string BooleanText(bool value) {
    return value ? "True" : "False";
}

/// Takes the values of options from a store.
class OptionReader {
  public:
    OptionReader(Options& options, SuspensionData& data, const std::string& decimalSeparator,
                 const SettingsStore& store, const std::string& programFolder)
        : m_options(options),
          m_data(data),
          m_decimals{decimalSeparator, ".", ",", ArabicDecimal},
          m_store(store),
          m_defaultFolder(programFolder + NativePath("\\Data")) {}

    void Read(const OptionEntry& entry) {
        std::visit([&](const auto& place) { this->Read(entry, place); }, entry.Place);
    }
    void ReadSelectedTable(int view) {
        const std::string key = std::string(SelectedTablesKey) + std::to_string(view);
        m_options.SelectedTables.Set(view, BooleanOf(key, "False"));
    }

  private:
    [[noreturn]] void RaiseFor(FailureNumber number, const char* description,
                               std::string_view key) const {
        throw Failure(number, std::string(description) + " in option " + std::string(key) + " of " +
                                  m_store.Place());
    }
    [[nodiscard]] double NumberIn(std::string_view text, std::string_view key) const {
        for (const std::string_view separator : m_decimals) {
            if (const std::optional<double> value = WholeNumberText(text, separator)) {
                return *value;
            }
        }
        RaiseFor(fnTypeMismatch, "Type mismatch", key);
    }
    [[nodiscard]] double NumberOf(const OptionEntry& entry) const {
        return NumberIn(m_store.Read(OptionsSection, entry.Key, entry.Default), entry.Key);
    }
    [[nodiscard]] bool BooleanOf(std::string_view key, std::string_view otherwise) const {
        const std::string text = m_store.Read(OptionsSection, key, otherwise);
        const std::string word = UpperCase(TrimBlanks(text));
        return word == "TRUE" || (word != "FALSE" && NumberIn(text, key) != 0);
    }
    [[nodiscard]] std::int32_t IntegerOf(const OptionEntry& entry) const {
        const double value = NumberOf(entry);
        try {
            return ToInteger32(value);
        } catch (const Failure&) {
            RaiseFor(fnOverflow, "Overflow", entry.Key);
        }
    }
    void Read(const OptionEntry& entry, bool Options::*member) {
        m_options.*member = BooleanOf(entry.Key, entry.Default);
    }
    void Read(const OptionEntry& entry, std::int32_t Options::*member) {
        m_options.*member = IntegerOf(entry);
    }
    void Read(const OptionEntry& entry, std::string Options::*member) {
        m_options.*member = m_store.Read(OptionsSection, entry.Key, m_defaultFolder);
    }
    void Read(const OptionEntry& entry, std::int32_t SuspensionData::*member) {
        m_data.*member = IntegerOf(entry);
    }
    void Read(const OptionEntry& entry, double SuspensionData::*member) {
        m_data.*member = NumberOf(entry);
    }
    template <typename Record>
    void Read(const OptionEntry& /*entry*/, const WrittenOnly<Record>& /*place*/) {}
    void Read(const OptionEntry& /*entry*/, const LayoutMark& /*place*/) {}

    Options& m_options;
    SuspensionData& m_data;
    std::array<std::string_view, 4> m_decimals; ///< of any machine, this one's first
    const SettingsStore& m_store;
    std::string m_defaultFolder;
};

/// The text of an option as the store keeps it.
struct OptionText {
    const Options& FromOptions;
    const SuspensionData& FromData;
    const Separators& Characters;

    std::string operator()(bool Options::*member) const { return BooleanText(FromOptions.*member); }
    std::string operator()(std::int32_t Options::*member) const {
        return std::to_string(FromOptions.*member);
    }
    std::string operator()(std::string Options::*member) const { return FromOptions.*member; }
    std::string operator()(std::int32_t SuspensionData::*member) const {
        return std::to_string(FromData.*member);
    }
    std::string operator()(double SuspensionData::*member) const {
        return NumberToText(FromData.*member, Characters);
    }
    std::string operator()(const WrittenOnly<Options>& place) const {
        return BooleanText(FromOptions.*place.Member);
    }
    std::string operator()(const WrittenOnly<SuspensionData>& place) const {
        return BooleanText(FromData.*place.Member);
    }
    std::string operator()(const LayoutMark& /*place*/) const { return "Options 1.0"; }
};

} // namespace

void OptionsRead(Options& options, SuspensionData& data, FundamentalUnits& units,
                 const SettingsStore& store, const std::string& programFolder) {
    OptionReader reader(options, data, units.NumberSeparators.Decimal, store, programFolder);
    for (const OptionEntry& entry : OptionEntries) {
        reader.Read(entry);
    }
    for (int view = 1; view <= SelectableViewCount; ++view) {
        reader.ReadSelectedTable(view);
    }
    for (const UnitEntry& entry : UnitEntries) {
        units[entry.Class].Label = store.Read(UnitsSection, entry.Key, entry.Default);
    }
    options.AutoScale = true;
}

void OptionsWrite(SettingsStore& store, const Options& options, const SuspensionData& data,
                  const FundamentalUnits& units) {
    const OptionText text{options, data, units.NumberSeparators};
    for (const OptionEntry& entry : OptionEntries) {
        store.Write(OptionsSection, entry.Key, std::visit(text, entry.Place));
    }
    for (int view = 1; view <= SelectableViewCount; ++view) {
        store.Write(OptionsSection, std::string(SelectedTablesKey) + std::to_string(view),
                    BooleanText(options.SelectedTables[view]));
    }
    for (const UnitEntry& entry : UnitEntries) {
        store.Write(UnitsSection, entry.Key, units[entry.Class].Label);
    }
}

} // namespace corvanta
