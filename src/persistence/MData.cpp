#include "persistence/MData.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "persistence/CFileStream.h"
#include "persistence/DocumentIntake.h"
#include "persistence/LegacyImport.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace corvanta {

namespace {

constexpr std::string_view FileVersion = "Data 4.1";
constexpr std::string_view MechanismKey = "SpringMechanism";

/// A mechanism number of the catalogue, from 0 to `Highest`. Without a default a missing field
/// leaves the value in memory.
struct MechanismField {
    std::int32_t SuspensionData::*Member;
    std::int32_t Highest;
    std::optional<std::int32_t> Default;
};

struct NumberField {
    double SuspensionData::*Member;
    double Default;
};

struct FlagField {
    bool SuspensionData::*Member;
};

struct TextField {
    std::string SuspensionData::*Member;
};

/// A field of the file and where its value lives in the document.
struct DocumentField {
    std::string_view Key;
    std::variant<MechanismField, NumberField, FlagField, TextField> Place;
};

using SD = SuspensionData;

/// In the order of the file.
constexpr std::array<DocumentField, 27> DocumentFields{{
    {MechanismKey, MechanismField{&SD::SpringMechanism, smMacPhersonStrut, 0}},
    {"ThirdSpringMechanism", MechanismField{&SD::ThirdSpringMechanism, tsCentreSpring, 0}},
    {"CentreSpringSystem", MechanismField{&SD::CentreSpringSystem, csLateralViaRocker, 0}},
    {"ChassisMotion", MechanismField{&SD::ChassisMotion, cmHeave, std::nullopt}},
    {"DriveShaftExists", FlagField{&SD::DriveShaftExists}},
    {"ARBMechanism", MechanismField{&SD::ARBMechanism, abToUpright, 0}},
    {"Bump", NumberField{&SD::Bump, 25}},
    {"Droop", NumberField{&SD::Droop, 25}},
    {"WheelTravelStepSize", NumberField{&SD::WheelTravelStepSize, 5}},
    {"RackTravel", NumberField{&SD::RackTravel, 25}},
    {"RackTravelStepSize", NumberField{&SD::RackTravelStepSize, 5}},
    {"CGX", NumberField{&SD::CGX, 0}},
    {"CGZ", NumberField{&SD::CGZ, 0}},
    {"Wheelbase", NumberField{&SD::Wheelbase, 0}},
    {"Mass", NumberField{&SD::Mass, 0}},
    {"GAccel", NumberField{&SD::GAccel, 0}},
    {"GBrake", NumberField{&SD::GBrake, 0}},
    {"KTyre", NumberField{&SD::KTyre, 0}},
    {"KLink", NumberField{&SD::KLink, 0}},
    {"KSpring", NumberField{&SD::KSpring, 0}},
    {"KThirdSpring", NumberField{&SD::KThirdSpring, 0}},
    {"KARB", NumberField{&SD::KARB, 0}},
    {"FrontBrakeBalanceSplitPC", NumberField{&SD::FrontBrakeBalanceSplitPC, 0}},
    {"Description", TextField{&SD::Description}},
    {"XForce", NumberField{&SD::XForce, 0}},
    {"YForce", NumberField{&SD::YForce, 0}},
    {"ZForce", NumberField{&SD::ZForce, 0}},
}};

CFileStream NewStream(const FundamentalUnits& units, FileServices& files, Messages& messages) {
    CFileStream stream(files, messages, units.NumberSeparators);
    stream.Initialise(FileVersion, std::array{std::string()});
    return stream;
}

/// Moves the values of fields from a stream into a document's settings.
class FieldReader {
  public:
    FieldReader(SuspensionData& data, CFileStream& stream) : m_data(data), m_stream(stream) {}

    void Read(const DocumentField& field) {
        std::visit([&](const auto& place) { this->Read(field.Key, place); }, field.Place);
    }

  private:
    void Read(std::string_view key, const MechanismField& place) {
        std::int32_t& mechanism = m_data.*place.Member;
        mechanism = MechanismNumber(
            key, m_stream.GetFieldNumber(key, place.Default.value_or(mechanism)), place.Highest);
    }
    void Read(std::string_view key, const NumberField& place) {
        m_data.*place.Member = m_stream.GetFieldNumber(key, place.Default);
    }
    void Read(std::string_view key, const FlagField& place) {
        m_data.*place.Member = ParseBoolean(m_stream.GetFieldString(key));
    }
    void Read(std::string_view key, const TextField& place) {
        m_data.*place.Member = m_stream.GetFieldString(key);
    }

    SuspensionData& m_data;
    CFileStream& m_stream;
};

PointSet ReadPoints(CFileStream& stream) {
    PointSet points;
    for (const PointNumber number : AllPoints) {
        const std::vector<double> place = stream.GetFieldNumber(PointShortName(number), {}, 3);
        points[number] = {place.at(0), place.at(1), place.at(2)};
    }
    return points;
}

FieldValue StoredValue(const SuspensionData& data, const DocumentField& field) {
    struct Stored {
        const SuspensionData& Data;

        FieldValue operator()(const MechanismField& place) const { return Data.*place.Member; }
        FieldValue operator()(const NumberField& place) const { return Data.*place.Member; }
        FieldValue operator()(const FlagField& place) const {
            return Data.*place.Member ? std::int32_t{-1} : std::int32_t{0};
        }
        FieldValue operator()(const TextField& place) const {
            return std::string_view(Data.*place.Member);
        }
    };
    return std::visit(Stored{data}, field.Place);
}

/// The points in play that a file does not hold as a whole, by their names on display. A file that
/// was cut off between two lines lacks its last ones.
std::string PointsWithoutPlace(CFileStream& stream, const PointCatalogue& catalogue) {
    std::string names;
    for (const PointNumber number : AllPoints) {
        const std::vector<std::string> place = stream.GetFieldString(PointShortName(number), {}, 3);
        if (catalogue[number].Enabled && std::ranges::count(place, "") > 0) {
            names += (names.empty() ? "" : ", ") + catalogue[number].LongName;
        }
    }
    return names;
}

/// What of a file may not be as it was saved; empty when nothing is.
std::string DoubtsAbout(const CFileStream& stream, const std::string& withoutPlace) {
    std::string text;
    if (stream.LacksLastLineEnd()) {
        text += "\r\rThe last line of the file has no end. If the file was cut off there, its last "
                "value is wrong.";
    }
    if (!stream.NotNumbers().empty()) {
        std::string fields;
        for (const std::string& field : stream.NotNumbers()) {
            fields += (fields.empty() ? "" : ", ") + field;
        }
        text += "\r\rWhat is no number was read as 0: " + fields;
    }
    if (!withoutPlace.empty()) {
        text += "\r\rPoints that the file does not hold, or not with all three coordinates, were "
                "read as 0: " +
                withoutPlace;
    }
    return text;
}

void TellDoubts(const CFileStream& stream, const std::string& withoutPlace, const std::string& path,
                Messages& messages) {
    if (const std::string doubts = DoubtsAbout(stream, withoutPlace); !doubts.empty()) {
        messages.ShowMessage(
            "Please check the values of this file before you use the results: " + path + doubts,
            msExclamation);
    }
}

/// A field that could not be added would be missing from the file.
void Require(bool added, std::string_view key) {
    if (!added) {
        throw Failure(fnOverflow, std::string(key) + " can't be written");
    }
}

/// What can't be read is no older layout either.
[[noreturn]] void RaiseReadFailure(const std::string& path, FileServices& files) {
    (void)files.ReadBytes(path); // fails with the reason
    throw Failure(fnFileAccess, "The file can't be read");
}

} // namespace

bool DataLoad(Suspension& document, ChannelCatalogue& channels, const std::string& path,
              bool announceUpgrade, const FundamentalUnits& units, FileServices& files,
              Messages& messages) {
    document.DataLoaded = false;
    CFileStream stream = NewStream(units, files, messages);
    if (!stream.FileRead(path)) {
        RaiseReadFailure(path, files);
    }
    if (stream.GetFieldString(MechanismKey).empty()) {
        const bool read =
            DataReadLegacy(document, channels, path, announceUpgrade, units, files, messages);
        TellDoubts(stream, "", path, messages); // of these layouts only a last line without its end
        return read;
    }
    return DataRead(document, channels, path, units, files, messages);
}

bool DataRead(Suspension& document, ChannelCatalogue& channels, const std::string& path,
              const FundamentalUnits& units, FileServices& files, Messages& messages) {
    document.DataLoaded = false;
    CFileStream stream = NewStream(units, files, messages);
    if (!stream.FileRead(path)) {
        RaiseReadFailure(path, files);
    }
    std::string message;
    if (!stream.IsCompatibleVersion(false, message)) {
        return false;
    }
    SuspensionData data = document.Data;
    FieldReader reader(data, stream);
    for (const DocumentField& field : DocumentFields) {
        reader.Read(field);
    }
    AdoptDocument(document, channels, std::move(data), ReadPoints(stream), units, messages);
    TellDoubts(stream, PointsWithoutPlace(stream, document.Catalogue), path, messages);
    return true;
}

namespace {

/// A stream with the fields of a document.
CFileStream StreamOf(const Suspension& document, const FundamentalUnits& units, FileServices& files,
                     Messages& messages) {
    CFileStream stream = NewStream(units, files, messages);
    for (const DocumentField& field : DocumentFields) {
        Require(stream.AddField(field.Key, StoredValue(document.Data, field)), field.Key);
    }
    for (const PointNumber number : AllPoints) {
        if (document.Catalogue[number].Enabled) {
            const SuspPoint& point = document.StaticPoints()[number];
            const std::array<FieldValue, 3> place{point.X, point.Y, point.Z};
            Require(stream.AddField(PointShortName(number), place), PointShortName(number));
        }
    }
    return stream;
}

} // namespace

bool DataWrite(bool& written, const Suspension& document, const std::string& path,
               const FundamentalUnits& units, FileServices& files, Messages& messages) {
    written = false;
    if (FileServices::BaseName(path).empty()) {
        return false;
    }
    written = StreamOf(document, units, files, messages).FileWrite(path);
    return true;
}

std::string DataText(const Suspension& document, const FundamentalUnits& units, FileServices& files,
                     Messages& messages) {
    return StreamOf(document, units, files, messages).FileText();
}

bool ParseBoolean(std::string_view text) {
    for (const std::string_view separator : {".", ","}) {
        if (const std::optional<double> value = WholeNumberText(text, separator)) {
            return *value != 0;
        }
    }
    return text == "True";
}

} // namespace corvanta
