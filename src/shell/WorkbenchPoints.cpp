#include "shell/WorkbenchPoints.h"

#include "model/Failure.h"
#include "shell/PointCells.h"
#include "shell/PointWords.h"
#include "shell/StepNames.h"
#include "shell/TypedNumber.h"
#include "study/DesignFields.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <sstream>

namespace corvanta {

namespace {

constexpr double FirstStep = 0.5; ///< mm
constexpr double Inch = 25.4;
constexpr std::array MetricSteps{0.1, 0.5, 1.0, 5.0};   ///< mm
constexpr std::array InchSteps{0.005, 0.02, 0.05, 0.2}; ///< inches
constexpr int HeadRows = 2;

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

double& Coordinate(PointSet& points, PointNumber number, int axis) {
    return points[number].*PointAxes()[static_cast<std::size_t>(axis)].Member;
}

std::string AxisName(int axis) {
    return std::string(PointAxes()[static_cast<std::size_t>(axis)].Name);
}

/// A coordinate to a nanometre, so that nudges don't leave the dust of their sums behind.
double Tidy(double coordinate) {
    constexpr double PerMillimetre = 1e6;
    return std::round(coordinate * PerMillimetre) / PerMillimetre;
}

} // namespace

WorkbenchPoints::WorkbenchPoints(Desk& desk) : m_desk(desk), m_step(FirstStep) {
    grdPoints.Visible = true;
    txtFilter.ToolTip = "Only points whose names hold these words";
}

std::vector<std::string> WorkbenchPoints::StepTexts() const {
    std::vector<std::string> texts;
    for (const double step : Units()[ucDisplacement].Label == "in" ? InchSteps : MetricSteps) {
        texts.push_back(NumberToText(step, Units().NumberSeparators));
    }
    return texts;
}

bool WorkbenchPoints::Holds(const std::string& name) const {
    std::istringstream words(Lower(m_filter));
    const std::string searched = Lower(name);
    for (std::string word; words >> word;) {
        if (searched.find(word) == std::string::npos) {
            return false;
        }
    }
    return true;
}

/// Only where other points have rows, so that the table keeps its place under the hand.
void WorkbenchPoints::LayOut(const PointCatalogue& catalogue) {
    const std::string& unit = Units()[ucDisplacement].Label;
    std::vector<PointNumber> rows;
    for (const PointNumber number : AllPoints) {
        const std::string name =
            catalogue[number].LongName + " " + std::string(PointShortName(number));
        if (catalogue[number].Enabled && Holds(name)) {
            rows.push_back(number);
        }
    }
    grdPoints.Reset();
    grdPoints.Visible = grdPoints.Editable = true;
    grdPoints.SetSize(HeadRows + static_cast<int>(rows.size()), 4, HeadRows, 1);
    grdPoints.SetBold(0);
    grdPoints.SetCell(0, 0, "Point");
    for (int column = 1; column <= 3; ++column) {
        grdPoints.SetCell(0, column, AxisName(column - 1));
        grdPoints.SetCell(1, column, unit);
    }
    int row = HeadRows;
    for (const PointNumber number : rows) {
        grdPoints.SetCell(row, 0, ShortenedName(catalogue[number].LongName));
        grdPoints.SetRowData(row++, std::string(PointShortName(number)));
    }
    if (unit != m_unit) {
        m_unit = unit;
        txtStep.Unit = unit;
        txtStep.ToolTip = unit + ", by which Ctrl+Up and Ctrl+Down move the selected cells";
        m_step = unit == "in" ? InchSteps[1] * Inch : FirstStep;
        txtStep.Text =
            NumberToText(unit == "in" ? InchSteps[1] : FirstStep, Units().NumberSeparators);
    }
}

void WorkbenchPoints::Show(std::span<const PointNumber> faulty) {
    const Suspension& document = m_desk.Program.Document;
    if (!document.DataLoaded) {
        m_laidOut.reset();
        grdPoints.Reset();
        return;
    }
    const Design now = DesignOf(document);
    SuspensionData sameType = now.Data;
    if (m_laidOut) {
        CopyType(sameType, *m_laidOut);
    }
    if (!m_laidOut || sameType != now.Data || m_filter != txtFilter.Text ||
        m_unit != Units()[ucDisplacement].Label) {
        m_filter = txtFilter.Text;
        LayOut(CatalogueOf(now.Data));
        m_laidOut = now.Data;
    }
    grdPoints.ClearNotes();
    for (int row = grdPoints.FixedRows(); row < grdPoints.Rows(); ++row) {
        const PointNumber number = *PointOfRow(grdPoints, row);
        const bool isFaulty = std::find(faulty.begin(), faulty.end(), number) != faulty.end();
        for (int column = 1; column <= 3; ++column) {
            ShowCell(row, column, now);
            grdPoints.SetFaulty(row, column, isFaulty);
        }
    }
}

void WorkbenchPoints::ShowCell(int row, int column, const Design& now) {
    const PointNumber number = *PointOfRow(grdPoints, row);
    const auto member = PointAxes()[static_cast<std::size_t>(column - 1)].Member;
    const double value = now.Points[number].*member;
    const auto text = [&](double length) {
        return FormatChannelValue(Units(), length, ucDisplacement);
    };
    grdPoints.SetCell(row, column, text(value));
    const std::optional<Design>& baseline = m_desk.Current.Study().Baseline;
    if (baseline && baseline->Points[number].*member != value) { // exactly: it was changed
        const double was = baseline->Points[number].*member;
        grdPoints.SetNote(row, column,
                          "was " + text(was) + ", moved by " + (value > was ? "+" : "") +
                              text(value - was) + " " + Units()[ucDisplacement].Label);
    }
}

void WorkbenchPoints::txtStep_Changed() {
    const auto typed = ReadTypedNumber(txtStep.Text, Units().NumberSeparators, txtStep.Unit);
    const double step = typed ? ParseChannelValue(Units(), typed->Text, ucDisplacement) : 0;
    txtStep.Fault = step <= 0;
    if (step > 0) {
        m_step = step;
    }
}

void WorkbenchPoints::txtStep_LostFocus() {
    txtStep.Text = CommittedText(txtStep.Text, Units().NumberSeparators, txtStep.Unit);
    txtStep_Changed();
}

void WorkbenchPoints::grdPoints_Edited(int row, int column, const std::string& text) {
    if (!IsPointCell(grdPoints, row, column) || text == grdPoints.Cell(row, column)) {
        return;
    }
    const std::size_t first = text.find_first_not_of(' ');
    const bool relative = first != std::string::npos && text[first] == '+';
    const auto typed = ReadTypedNumber(relative ? text.substr(first + 1) : text,
                                       Units().NumberSeparators, Units()[ucDisplacement].Label);
    if (!typed || first == std::string::npos) {
        Note = "\"" + text + "\" is no number: " + grdPoints.Cell(row, 0) + " stays";
        return;
    }
    Note.clear();
    Design design = DesignOf(m_desk.Program.Document);
    const PointNumber number = *PointOfRow(grdPoints, row);
    double& coordinate = Coordinate(design.Points, number, column - 1);
    const double value = ParseChannelValue(Units(), typed->Text, ucDisplacement);
    coordinate = relative ? Tidy(coordinate + value) : value;
    m_desk.Current.Change(MoveName(design.Data, number, column - 1), design);
}

std::vector<PointCoordinate> WorkbenchPoints::SelectedCoordinates() const {
    std::vector<PointCoordinate> cells;
    for (int row = Selection.FirstRow; row <= Selection.LastRow; ++row) {
        for (int column = Selection.FirstColumn; column <= Selection.LastColumn; ++column) {
            if (row < grdPoints.Rows() && IsPointCell(grdPoints, row, column)) {
                cells.push_back({*PointOfRow(grdPoints, row), column - 1});
            }
        }
    }
    return cells;
}

std::vector<PointNumber> WorkbenchPoints::SelectedPoints() const {
    std::vector<PointNumber> points;
    for (const PointCoordinate& cell : SelectedCoordinates()) {
        if (points.empty() || points.back() != cell.Point) {
            points.push_back(cell.Point);
        }
    }
    return points;
}

bool WorkbenchPoints::Select(PointNumber number) {
    return Select(PointCoordinate{number, std::clamp(Selection.FirstColumn, 1, 3) - 1});
}

bool WorkbenchPoints::Select(const PointCoordinate& coordinate) {
    for (int row = grdPoints.FixedRows(); row < grdPoints.Rows(); ++row) {
        if (PointOfRow(grdPoints, row) == coordinate.Point) {
            const int column = coordinate.Axis + 1;
            Selection = {row, column, row, column};
            return true;
        }
    }
    return false;
}

void WorkbenchPoints::MoveCells(const std::vector<PointCoordinate>& cells, const Design& from,
                                double way) {
    if (cells.empty()) {
        return;
    }
    Design design = from;
    for (const PointCoordinate& cell : cells) {
        double& coordinate = Coordinate(design.Points, cell.Point, cell.Axis);
        coordinate = Tidy(coordinate + way);
    }
    const bool oneAxis = std::all_of(cells.begin(), cells.end(), [&](const PointCoordinate& cell) {
        return cell.Axis == cells.front().Axis;
    });
    const std::size_t points = SelectedPoints().size();
    Note.clear();
    m_desk.Current.Change(
        points == 1 ? MoveName(from.Data, cells.front().Point, oneAxis ? cells.front().Axis : -1)
                    : "Move " + std::to_string(points) + " points" +
                          (oneAxis ? " " + AxisName(cells.front().Axis) : ""),
        design, true);
}

void WorkbenchPoints::Nudge(int direction, bool byTen) {
    constexpr int Coarse = 10;
    MoveCells(SelectedCoordinates(), DesignOf(m_desk.Program.Document),
              direction * (byTen ? Coarse : 1) * m_step);
}

void WorkbenchPoints::BeginScrub() {
    m_scrubbed = DesignOf(m_desk.Program.Document);
    m_desk.Current.Hold();
}

void WorkbenchPoints::ScrubTo(double steps) {
    if (m_scrubbed) {
        MoveCells(SelectedCoordinates(), *m_scrubbed, steps * m_step);
    }
}

void WorkbenchPoints::EndScrub(bool kept) {
    if (m_scrubbed) {
        m_scrubbed.reset();
        kept ? m_desk.Current.Release() : m_desk.Current.CallOff();
    }
}

std::string WorkbenchPoints::ToolTip(int row, int column) const {
    return PointCellToolTip(grdPoints, Units(), row, column);
}

} // namespace corvanta
