#include "results/MDisplayTable.h"

#include "model/Failure.h"
#include "results/GridCourse.h"

#include <algorithm>
#include <array>
#include <vector>

namespace corvanta {

namespace {

constexpr int HeadRows = 2;

/// Decimals of the coefficients and of the lengths.
constexpr int CoefficientDecimals = 5;
constexpr int LengthDecimals = 2;

constexpr std::array<int, 1> ChannelWidths{1000};
constexpr std::array<int, 2> LengthWidths{3000, 900};

/// Refuses an id that has no value to show. Only a list made by hand names one.
void RequireValue(int channel) {
    const std::string named = "channel " + std::to_string(channel);
    if (channel < 1 || channel > ChannelCount) {
        throw Failure(fnSubscript, "Subscript out of range: there is no " + named);
    }
    if (channel == chLinkLoads) {
        throw Failure(fnTypeMismatch, "Type mismatch: " + named + " is a table of its own");
    }
}

/// Writes one channel into a column: -1 for a new one at the right, which `column` then names.
void AddChannelColumn(ViewTable& table, const Program& program, const GridCourse& course,
                      int channel, int& column) {
    RequireValue(channel);
    if (column < 0) {
        column = table.AddColumn();
    }
    const ChannelRecord& record = program.Channels[channel];
    table.SetCell(0, column, record.Title);
    table.SetCell(1, column, record.UnitLabel);
    for (int k = 1; k <= course.Count; ++k) {
        const std::optional<double> value =
            course.State(program.Document, k).Channels.Cell(channel);
        table.SetCell(k + 1, column, FormatChannelValue(program.Units, value, record.Class));
    }
}

using ChannelList = std::vector<int>;

void Append(ChannelList& list, std::initializer_list<int> channels) {
    list.insert(list.end(), channels);
}

ChannelList PlanGeometryChannels(const Suspension& document) {
    ChannelList list{chSteerAngle, chSteerAngleBump, chSteerAngleDelta};
    if (IsFrontCorner(document)) {
        Append(list, {chAckerman});
    }
    Append(list, {chCasterAngle, chCasterOffset});
    return list;
}

ChannelList SpringChannels(const SuspensionData& data) {
    const bool cornerSpring = data.ThirdSpringMechanism != tsCentreSpring;
    const bool centreSpring = data.ThirdSpringMechanism != tsCornerSpring;
    ChannelList list;
    if (cornerSpring) {
        Append(list, {chSpringLength, chSpringVelocityRatio});
    }
    if (centreSpring) {
        Append(list, {chCentreSpringLength, chCentreSpringVelocityRatio});
    }
    if (data.SpringMechanism != smDirectToUpperWishbone &&
        data.SpringMechanism != smMacPhersonStrut) {
        Append(list, {chPushrodVelocityRatio});
    }
    if (cornerSpring) {
        Append(list, {chWheelRateSpring, chWheelRateChangeSpring});
    }
    if (centreSpring) {
        Append(list, {chWheelRateCentreSpring, chWheelRateChangeCentreSpring});
    }
    Append(list,
           {chWheelRateTotal, chWheelRateChangeTotal, chRollStiffness, chRollStiffnessChange});
    return list;
}

ChannelList AngleChannels(const SuspensionData& data) {
    ChannelList list;
    if (data.DriveShaftExists) {
        Append(list, {chDriveshaftLength, chDriveshaftAngleXY, chDriveshaftAngleYZ,
                      chDriveshaftTotalAngle});
    }
    Append(list, {chUpperLatAngle, chLowerLatAngle, chUpperLongAngle, chLowerLongAngle});
    return list;
}

ChannelList AllChannels() {
    ChannelList list;
    for (int id = 1; id <= ChannelCount; ++id) {
        if (id != chLinkLoads) {
            list.push_back(id);
        }
    }
    return list;
}

ChannelList ViewChannels(const Suspension& document, std::int32_t view,
                         const CustomChannels& customChannels) {
    switch (view) {
    case vwAntis:
        return {chAntiDiveLength, chAntiDiveAngle,    chAntiDivePercent, chAntiSquatLength,
                chAntiSquatAngle, chAntiSquatPercent, chAntiRollLength,  chAntiRollAngle};
    case vwLateralGeometry:
        return {chCamberAngle,        chHalfTrack,          chKingpinOffset,
                chKingpinInclination, chRollCentreToOrigin, chRollCentreToGround};
    case vwPlanGeometry:
        return PlanGeometryChannels(document);
    case vwSpringDetails:
        return SpringChannels(document.Data);
    case vwBarDetails:
        return {chARBRotation,          chARBVelocityRatio,   chARBRatio,
                chWheelRateARB,         chWheelRateChangeARB, chWheelRateTotal,
                chWheelRateChangeTotal, chRollStiffness,      chRollStiffnessChange};
    case vwAngles:
        return AngleChannels(document.Data);
    case vwCustomTable:
        return customChannels.Ids();
    case vwAllChannels:
        return AllChannels();
    default:
        return {};
    }
}

/// One of the three link load tables: what heads its two links.
struct LinkLoadHeads {
    std::string First;
    std::string Second;
};

LinkLoadHeads LinkLoadHeadsOf(std::int32_t subView, const SuspensionData& data) {
    switch (subView) {
    case 2:
        return {"Lower Rear W'bone Leg Load Factors", "Lower Front W'bone Leg Load Factors"};
    case LinkLoadViewCount:
        return {std::string(SpringShortWord(data)) + " Load Factors", "Track Rod Load Factors"};
    default:
        return {"Upper Rear W'bone Leg Load Factors", "Upper Front W'bone Leg Load Factors"};
    }
}

/// Columns of a link in its table: three factors and the combined load.
constexpr int LinkColumns = 4;
constexpr std::array<std::string_view, 3> AxisNames{"X", "Y", "Z"};

void HeadLinkColumns(ViewTable& table, int column, const std::string& head,
                     const std::string& forceLabel) {
    for (int axis = 0; axis < LinkColumns - 1; ++axis) {
        table.SetCell(0, column + axis, head);
        table.SetCell(1, column + axis, std::string(AxisNames[static_cast<std::size_t>(axis)]));
    }
    table.SetCell(0, column + LinkColumns - 1, "Combined Load");
    table.SetCell(1, column + LinkColumns - 1, forceLabel);
}

/// The row of one wheel step: wheel travel and the loads of links 2 x subView - 1 and the next.
void LinkLoadColumnsAdd(ViewTable& table, const Program& program, std::int32_t subView,
                        int wheelStep, int rackStep) {
    const WheelState& state = program.Document.WheelStates(rackStep, wheelStep);
    table.SetCell(wheelStep, 0,
                  FormatChannelValue(program.Units, state.Channels.Cell(chWheelTravel),
                                     program.Channels[chWheelTravel].Class));
    const int firstLink = 2 * subView - 1;
    for (int link = 0; link < 2; ++link) {
        for (int column = 1; column <= LinkColumns; ++column) {
            const std::int32_t unitClass = column == LinkColumns ? ucForce : ucRatio;
            table.SetCell(wheelStep, link * LinkColumns + column,
                          FormatChannelValue(program.Units,
                                             state.LinkLoads.Cell(firstLink + link, column),
                                             unitClass));
        }
    }
}

/// The next row: a title and its values with a fixed number of decimals.
void AddTextValueRow(ViewTable& table, const Separators& separators, std::string_view text,
                     int decimals, std::initializer_list<double> values) {
    const int row = table.AddRow();
    const std::string format = "0." + std::string(static_cast<std::size_t>(decimals), '0');
    int column = 0;
    table.SetCell(row, column, std::string(text));
    for (const double value : values) {
        table.SetCell(row, ++column, FormatNumber(value, format, separators));
    }
}

/// Rows of the link lengths.
class LengthRows {
  public:
    LengthRows(ViewTable& table, const FundamentalUnits& units) : m_table(table), m_units(units) {}

    /// The length goes through the display format first, so that inches too show two decimals of
    /// the three that the unit has.
    void Add(std::string_view title, double length) {
        const std::string shown = FormatChannelValue(m_units, length, ucDisplacement);
        const Separators& separators = m_units.NumberSeparators;
        AddTextValueRow(m_table, separators, title, LengthDecimals,
                        {WholeNumberText(shown, separators.Decimal).value_or(0)});
    }

  private:
    ViewTable& m_table;
    const FundamentalUnits& m_units;
};

void AddRockerLengths(LengthRows& rows, const StaticLengthRecord& lengths,
                      const SuspensionData& data) {
    if (HasSecondRocker(data.SpringMechanism)) {
        rows.Add(SpringShortWord(data), lengths.PushrodLength);
        rows.Add("First Rocker Input Lever", lengths.RockerInputLever);
        rows.Add("First Rocker Output Lever", lengths.RockerOutputLever);
        rows.Add("Interconnect Pushrod", lengths.InterconnectLength);
        rows.Add("Second Rocker Input Lever", lengths.SecondRockerInputLever);
        rows.Add("Second Rocker Output Lever", lengths.SecondRockerOutputLever);
        return;
    }
    if (HasRocker(data.SpringMechanism)) {
        rows.Add(SpringShortWord(data), lengths.PushrodLength);
    }
    if (HasRocker(data.SpringMechanism) || data.SpringMechanism == smDirectToUpperWishbone) {
        rows.Add("Rocker Input Lever", lengths.RockerInputLever);
        rows.Add("Rocker Output Lever", lengths.RockerOutputLever);
    }
}

void AddSpringAndBarLengths(LengthRows& rows, const StaticLengthRecord& lengths,
                            const SuspensionData& data) {
    if (data.ThirdSpringMechanism != tsCentreSpring) {
        rows.Add("Static Spring Length", lengths.SpringLength);
    }
    if (data.ThirdSpringMechanism != tsCornerSpring) {
        rows.Add("Static Centre Spring Length", lengths.CentreSpringLength);
    }
    if (IsLateralBar(data.ARBMechanism)) {
        rows.Add("ARB Input Lever", lengths.ARBInputLever);
        rows.Add("ARB Drop Link", lengths.ARBDropLink);
    } else if (data.ARBMechanism == abTBar) {
        rows.Add("T-Bar Input Lever", lengths.TBarInputLever);
        rows.Add("T-Bar Drop Link", lengths.TBarDropLink);
    }
    if (data.DriveShaftExists) {
        rows.Add("Static Driveshaft Length", lengths.DriveshaftLength);
    }
}

constexpr std::array<std::string_view, QuadraticFitCount> FitTitles{
    "Wheel Movement",          "Camber Angle [deg]",
    "Bump Steer [deg]",        "Pushrod To Wheel Velocity Ratio",
    "Roll Centre (to 0-line)", "DriveShaft IB CompoundAngle deg",
    "AntiDive Angle [deg]",    "AntiSquat Angle [deg]",
    "Swing Axle Length",       "Swing Axle Inclination [deg]",
};
constexpr std::size_t DriveshaftFit = 5;

} // namespace

ViewTable BuildViewTable(const Program& program, std::int32_t view, std::int32_t variable,
                         int rackStep, int wheelStep, const CustomChannels& customChannels) {
    const GridCourse course = CourseOf(program.Document, variable, rackStep, wheelStep);
    ViewTable table(course.Count + HeadRows, 1);
    int column = 0;
    if (view != vwAllChannels) {
        const int axis = course.Variable == vvAlongRackTravel ? chRackTravel : chWheelTravel;
        AddChannelColumn(table, program, course, axis, column);
        column = -1;
    }
    for (const int channel : ViewChannels(program.Document, view, customChannels)) {
        AddChannelColumn(table, program, course, channel, column);
        column = -1;
    }
    return table;
}

ViewTable BuildLinkLoadTable(const Program& program, std::int32_t subView, int rackStep) {
    const std::int32_t shown = subView == 0 ? 1 : subView;
    ViewTable table(program.Document.NW + HeadRows, 1 + 2 * LinkColumns);
    const LinkLoadHeads heads = LinkLoadHeadsOf(shown, program.Document.Data);
    table.SetCell(0, 0, "Wheel Travel");
    table.SetCell(1, 0, program.Units[ucDisplacement].Label);
    HeadLinkColumns(table, 1, heads.First, program.Units[ucForce].Label);
    HeadLinkColumns(table, 1 + LinkColumns, heads.Second, program.Units[ucForce].Label);
    for (int wheelStep = 2; wheelStep <= program.Document.NW + 1; ++wheelStep) {
        LinkLoadColumnsAdd(table, program, shown, wheelStep,
                           RackStepOf(program.Document, rackStep));
    }
    return table;
}

std::optional<ViewTable> ShowLinkLoadView(const Program& program, std::int32_t subView,
                                          int rackStep, Messages& messages, bool& warned) {
    const std::int32_t mechanism = program.Document.Data.SpringMechanism;
    if (!HasLinkLoads(mechanism)) {
        messages.ShowMessage("This option is not available for the current suspension setup");
        return std::nullopt;
    }
    std::optional<ViewTable> table;
    if (program.Document.GeometryValid && program.Document.ResultsValid) {
        table = BuildLinkLoadTable(program, subView, rackStep);
    }
    const bool actuatorOnLowerWishbone = mechanism == smOutboardToLowerWishbone ||
                                         mechanism == smPushrodToLowerWishbone ||
                                         mechanism == smTwoRockersToLowerWishbone;
    if (actuatorOnLowerWishbone && !warned) {
        warned = true;
        messages.ShowMessage(
            "Link loads are calculated assuming the actuator (pushrod, pullrod or spring) is "
            "attached directly to the upright.\rThey are inaccurate when the actuator is attached "
            "to a wishbone because a portion of the wishbone goes into bending.\rThe inaccuracy "
            "increases with the distance between the line of action of the actuator and the "
            "outboard wishbone joint.",
            msExclamation);
    }
    return table;
}

ViewTable ShowQuadraticCoefficients(const Program& program) {
    ViewTable table(1, LinkColumns);
    const std::array<std::string_view, 4> heads{"Coeffs For Damper Travel To", "a", "b", "c"};
    for (std::size_t column = 0; column < heads.size(); ++column) {
        table.SetCell(0, static_cast<int>(column), std::string(heads[column]));
    }
    for (std::size_t record = 0; record < FitTitles.size(); ++record) {
        if (record == DriveshaftFit && !program.Document.Data.DriveShaftExists) {
            continue;
        }
        const QuadraticFit& fit = program.Document.QuadraticFits[record];
        AddTextValueRow(table, program.Units.NumberSeparators, FitTitles[record],
                        CoefficientDecimals, {fit.A, fit.B, fit.C});
    }
    return table;
}

ViewTable ShowLinkLengths(const Program& program) {
    const StaticLengthRecord& lengths = program.Document.StaticLengths;
    ViewTable table(HeadRows, 2);
    table.SetCell(0, 0, "Link");
    table.SetCell(0, 1, "Length");
    table.SetCell(1, 1, program.Units[ucDisplacement].Label);
    LengthRows rows(table, program.Units);
    rows.Add("Tyre Radius", lengths.TyreRadius);
    rows.Add("Static Half Track", lengths.StaticHalfTrack);
    rows.Add("Upper Wishbone Front Link", lengths.UpperFrontLink);
    rows.Add("Upper Wishbone Rear Link", lengths.UpperRearLink);
    rows.Add("Upper Wishbone Axis to OB Joint", lengths.UpperWishboneRadius);
    rows.Add("Lower Wishbone Front Link", lengths.LowerFrontLink);
    rows.Add("Lower Wishbone Rear Link", lengths.LowerRearLink);
    rows.Add("Lower Wishbone Axis to OB Joint", lengths.LowerWishboneRadius);
    rows.Add("Trackrod", lengths.TrackRodLength);
    rows.Add("Steering Arm Lever", lengths.SteeringArmLever);
    AddRockerLengths(rows, lengths, program.Document.Data);
    AddSpringAndBarLengths(rows, lengths, program.Document.Data);
    return table;
}

void ResetGrid(DataGrid& grid) {
    grid.Reset();
}

void FillGrid(DataGrid& grid, const ViewTable& table, int fixedRows, int fixedColumns,
              std::span<const int> columnWidths) {
    ResetGrid(grid);
    grid.SetSize(table.Rows(), table.Columns(), fixedRows, fixedColumns);
    for (int row = 0; row < table.Rows(); ++row) {
        for (int column = 0; column < table.Columns(); ++column) {
            grid.SetCell(row, column, table.Cell(row, column));
        }
    }
    for (int column = 0; column < table.Columns() && !columnWidths.empty(); ++column) {
        const std::size_t place =
            std::min(static_cast<std::size_t>(column), columnWidths.size() - 1);
        grid.SetColumnWidth(column, columnWidths[place]);
    }
}

void BandAlternateLines(DataGrid& grid, bool byRows, int first) {
    const int count = byRows ? grid.Rows() : grid.Columns();
    for (int line = first; line < count; line += 2) {
        if (byRows) {
            grid.ShadeRow(line);
        } else {
            grid.ShadeColumn(line);
        }
    }
}

void ShowTable(DataGrid& grid, std::int32_t view, const ViewTable& table) {
    const bool lengths = view == vwLinkLengths || view == vwQuadraticCoefficients;
    const int fixedRows = view == vwQuadraticCoefficients ? 1 : HeadRows;
    FillGrid(grid, table, fixedRows, 1,
             lengths ? std::span<const int>(LengthWidths) : std::span<const int>(ChannelWidths));
    BandAlternateLines(grid, true, fixedRows);
}

} // namespace corvanta
