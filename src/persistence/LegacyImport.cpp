#include "persistence/LegacyImport.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "persistence/DocumentIntake.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace corvanta {

namespace {

enum class Layout { Data4, Version3, Untagged };

constexpr std::string_view Data4Tag = "DATA 4.0";
constexpr std::array<std::string_view, 7> Version3Tags{"V3.61", "V3.62", "V3.63", "V3.64",
                                                       "V3.65", "V3.66", "V3.67B"};

/// The machines that wrote these files used a point, or parted numbers with commas.
constexpr std::string_view DecimalPoint = ".";

/// The points in the order of the files. The second rocker's are there with two rockers only.
constexpr std::array<PointNumber, 22> LegacyPoints{
    ptWTCP, ptWC,  ptUWO, ptUWIR, ptUWIF, ptLWO, ptLWIR, ptLWIF, ptTRO,  ptTRI, ptDSO,
    ptDSI,  ptPRO, ptPRI, ptR1P1, ptR1P2, ptR1O, ptR2I,  ptR2P1, ptR2P2, ptR2O, ptSAI};

/// How a value of the vehicle data becomes the stored one.
enum class Conversion { DisplayLength, DisplayMass, Rate, Plain };

struct VehicleField {
    std::string_view Name;
    double SuspensionData::*Member;
    Conversion How;
};

using SD = SuspensionData;

/// One per line, in the order of the files.
constexpr std::array<VehicleField, 10> VehicleFields{{
    {"CGX", &SD::CGX, Conversion::DisplayLength},
    {"CGZ", &SD::CGZ, Conversion::DisplayLength},
    {"Wheelbase", &SD::Wheelbase, Conversion::DisplayLength},
    {"Mass", &SD::Mass, Conversion::DisplayMass},
    {"GAccel", &SD::GAccel, Conversion::Plain},
    {"GBrake", &SD::GBrake, Conversion::Plain},
    {"KTyre", &SD::KTyre, Conversion::Rate},
    {"KLink", &SD::KLink, Conversion::Rate},
    {"KSpring", &SD::KSpring, Conversion::Rate},
    {"FrontBrakeBalanceSplitPC", &SD::FrontBrakeBalanceSplitPC, Conversion::Plain},
}};

/// The characters up to the next one of `ends`, blanks before them left out; `rest` loses both.
std::string_view TakeToken(std::string_view& rest, std::string_view blanks, std::string_view ends) {
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    const std::string_view token = rest.substr(0, rest.find_first_of(ends));
    rest.remove_prefix(token.size());
    return token;
}

/// The text of a file, read from its head on. `name` is what an item holds, for a failure.
class LegacyText {
  public:
    explicit LegacyText(std::string_view text) : m_text(text), m_rest(text) {}

    /// The next line without its end. Lines end CR LF; an editor may have left the LF alone.
    std::string_view Line(std::string_view name) {
        RequireMore(name);
        m_item = m_rest;
        const std::size_t end = m_rest.find('\n');
        std::string_view line = m_rest.substr(0, end);
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        return line;
    }

    /// The next number of free-format input: commas, blanks and line ends part the numbers.
    double FreeNumber(std::string_view name) {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size()));
        RequireMore(name);
        m_item = m_rest;
        const double number = Number(TakeToken(m_rest, "", ", \t\r\n"), name);
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r"), m_rest.size()));
        if (!m_rest.empty() && (m_rest.front() == ',' || m_rest.front() == '\n')) {
            m_rest.remove_prefix(1);
        }
        return number;
    }

    /// Leaves the line of the last free number, which must hold nothing more: a number too many
    /// would shift all that follow.
    void LeaveLine(std::string_view name) {
        const std::size_t read = m_text.size() - m_rest.size();
        const bool left = m_rest.empty() || m_text[read - 1] == '\n';
        if (!left && Line(name).find_first_not_of(" \t") != std::string_view::npos) {
            RaiseTypeMismatch("more than the numbers of " + std::string(name) + " stands there");
        }
    }

    /// The number that a text of the current item is as a whole.
    [[nodiscard]] double Number(std::string_view text, std::string_view name) const {
        const std::optional<double> number = WholeNumberText(text, DecimalPoint);
        if (!number) {
            RaiseTypeMismatch(std::string(name) + " must be a number");
        }
        return *number;
    }

    [[noreturn]] void RaiseTypeMismatch(const std::string& reason) const {
        const std::size_t line = LineEnds(m_text.substr(0, m_text.size() - m_item.size())) + 1;
        throw Failure(fnTypeMismatch,
                      "Type mismatch in line " + std::to_string(line) + ": " + reason);
    }

  private:
    static std::size_t LineEnds(std::string_view text) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }

    void RequireMore(std::string_view name) const {
        if (!m_rest.empty()) {
            return;
        }
        std::string description = "Input past end of file";
        if (!m_text.empty()) {
            const std::size_t lines = LineEnds(m_text) + (m_text.back() == '\n' ? 0 : 1);
            description += " after line " + std::to_string(lines) + ": ";
            description.append(name).append(" is missing");
        }
        throw Failure(fnInputPastEnd, description);
    }

    std::string_view m_text;
    std::string_view m_rest; ///< not yet read
    std::string_view m_item; ///< the text from the current item on
};

Layout LayoutOf(std::string_view firstLine) {
    const std::string tag = UpperCase(TrimBlanks(firstLine));
    if (tag == Data4Tag) {
        return Layout::Data4;
    }
    const bool version3 =
        std::find(Version3Tags.begin(), Version3Tags.end(), tag) != Version3Tags.end();
    return version3 ? Layout::Version3 : Layout::Untagged;
}

/// An untagged file begins with the number of its spring mechanism.
bool HeadsUntaggedFile(std::string_view firstLine) {
    const std::optional<double> number = WholeNumberText(firstLine, DecimalPoint);
    return number && *number >= 0 && *number <= int{smMacPhersonStrut};
}

void AnnounceUpgrade(Layout layout, const FundamentalUnits& units, Messages& messages) {
    std::string notice =
        "You are loading a Version 3 file.\r\r"
        "If the current units settings do not match those that the file was made then values will "
        "be incorrectly converted.\r\r"
        "\tCurrent displacement setting: " +
        units[ucDisplacement].Label + "\r\tCurrent mass setting: " + units[ucMass].Label +
        "\r\tCurrent spring rate setting: " + units[ucRate].Label;
    if (layout == Layout::Untagged) {
        notice += "\r\rOnly suspension point data can be loaded from this file. You must re-enter "
                  "vehicle and travel values.";
    }
    notice += "\r\rIf you save this file it will be upgraded to the current file format.";
    messages.ShowMessage(notice, msExclamation);
}

/// Reads one layout after its first line into the settings and points of a document.
class LegacyReader {
  public:
    LegacyReader(LegacyText& text, Layout layout, const FundamentalUnits& units)
        : m_text(text),
          m_layout(layout),
          m_units(units) {}

    void ReadTypes(SuspensionData& data, std::string_view firstLine) {
        constexpr std::string_view Mechanism = "SpringMechanism";
        double mechanism = 0;
        if (m_layout != Layout::Untagged) {
            mechanism = m_text.Number(m_text.Line(Mechanism), Mechanism);
        } else if (const auto number = WholeNumberText(firstLine, DecimalPoint)) {
            mechanism = *number;
        } else {
            m_text.RaiseTypeMismatch("a suspension file begins with its version or with the "
                                     "number of its SpringMechanism");
        }
        data.SpringMechanism = MechanismNumber(Mechanism, mechanism, smMacPhersonStrut);
        SkipLine();
        SkipLine();
        constexpr std::string_view DriveShaft = "DriveShaftExists";
        data.DriveShaftExists =
            UpperCase(m_text.Line(DriveShaft)).find("TRUE") != std::string::npos;
        if (m_layout == Layout::Untagged) {
            SkipLine();
        }
    }

    void ReadPoints(PointSet& points, std::int32_t mechanism) {
        for (const PointNumber number : LegacyPoints) {
            const bool ofSecondRocker = number >= ptR2I && number <= ptR2O;
            if (!ofSecondRocker || HasSecondRocker(mechanism)) {
                points[number] = ReadPoint(PointShortName(number));
            }
        }
        if (m_layout == Layout::Data4) {
            m_text.LeaveLine(PointShortName(LegacyPoints.back()));
        }
    }

    void ReadVehicle(SuspensionData& data) {
        for (const VehicleField& field : VehicleFields) {
            data.*field.Member = ReadVehicleValue(field);
        }
    }

  private:
    void SkipLine() { (void)m_text.Line("a line"); }

    SuspPoint ReadPoint(std::string_view name) {
        std::string_view rest = m_layout == Layout::Data4 ? "" : m_text.Line(name);
        const auto next = [&] {
            if (m_layout == Layout::Data4) {
                return m_text.FreeNumber(name);
            }
            return DisplayNumber(TakeToken(rest, " \t", " \t\r"), name, ucDisplacement);
        };
        SuspPoint point;
        point.X = next();
        point.Y = next();
        point.Z = next();
        return point;
    }

    double ReadVehicleValue(const VehicleField& field) {
        const std::string_view line = m_text.Line(field.Name);
        switch (field.How) {
        case Conversion::DisplayLength:
            return DisplayNumber(line, field.Name, ucDisplacement);
        case Conversion::DisplayMass:
            return DisplayNumber(line, field.Name, ucMass);
        case Conversion::Rate:
            return m_text.Number(line, field.Name) /
                   (m_layout == Layout::Version3 ? SuspensionData::PoundsPerInch : 1);
        default:
            return m_text.Number(line, field.Name);
        }
    }

    /// The stored value of a number in the user's units.
    [[nodiscard]] double DisplayNumber(std::string_view text, std::string_view name,
                                       UnitClass unitClass) const {
        (void)m_text.Number(text, name); // a text that is no number would convert to 0
        return ParseChannelValue(m_units, text, unitClass);
    }

    LegacyText& m_text;
    Layout m_layout;
    const FundamentalUnits& m_units;
};

} // namespace

bool DataReadLegacy(Suspension& document, ChannelCatalogue& channels, const std::string& path,
                    bool announceUpgrade, const FundamentalUnits& units, FileServices& files,
                    Messages& messages) {
    document.DataLoaded = false;
    const std::string bytes = files.ReadText(path);
    LegacyText text(bytes);
    const std::string_view firstLine = text.Line("the first line");
    const Layout layout = LayoutOf(firstLine);
    // A file that is none of ours at all is not announced as an old one.
    const bool old =
        layout == Layout::Version3 || (layout == Layout::Untagged && HeadsUntaggedFile(firstLine));
    if (announceUpgrade && old) {
        AnnounceUpgrade(layout, units, messages);
    }
    LegacyReader reader(text, layout, units);
    SuspensionData data = document.Data;
    PointSet points = document.StaticPoints();
    reader.ReadTypes(data, firstLine);
    reader.ReadPoints(points, data.SpringMechanism);
    if (layout != Layout::Untagged) {
        reader.ReadVehicle(data);
    }
    AdoptDocument(document, channels, std::move(data), points, units, messages);
    return true;
}

} // namespace corvanta
