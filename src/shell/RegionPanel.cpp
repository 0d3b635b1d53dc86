#include "shell/RegionPanel.h"

#include "shell/PointWords.h"
#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"
#include "study/DesignFields.h"

#include <algorithm>
#include <array>

namespace corvanta {

namespace {

enum Column { ColAxis, ColLow, ColHigh, ColNodes };

constexpr double FirstWay = 20; ///< to either side of where the point stands, mm
constexpr int FirstNodes = 21;
constexpr Colour HeldColour{120, 190, 110};
constexpr Colour ReachColour{120, 120, 120};

/// Of the targets, as they came; told apart on white and from the two above.
constexpr std::array TargetColours{Colour{240, 160, 60}, Colour{90, 140, 210}, Colour{200, 90, 150},
                                   Colour{220, 210, 80}, Colour{100, 200, 200}};

/// Whether a target is one of the same curve, whatever its band.
struct IsOfCurve {
    const Target& Of;

    bool operator()(const std::optional<Target>& target) const {
        return target && target->Channel == Of.Channel && target->Variable == Of.Variable;
    }
};

/// Which of the kinds a place is; none for one that was not come to.
std::optional<double> KindOf(const RegionNode& node) {
    switch (node.Verdict) {
    case RegionVerdict::Held:
        return 0;
    case RegionVerdict::OutOfReach:
        return 1;
    case RegionVerdict::MissesTarget:
        return 2 + node.Target;
    default:
        return std::nullopt;
    }
}

PointCoordinate CoordinateOf(const RegionQuestion& question, std::size_t axis) {
    return {question.Point, static_cast<int>(axis)};
}

/// A range of a length about the middle of places.
AxisRange Widened(const std::vector<double>& places, double length) {
    const double middle = (places.front() + places.back()) / 2;
    return {middle - length / 2, middle + length / 2};
}

/// True where a neighbour along an axis is not held, or the box ends.
bool IsBorder(const RegionAnswer& answer, const std::array<std::size_t, 3>& at) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::size_t last = answer.Places[axis].size() - 1;
        for (const bool up : {false, true}) {
            std::array<std::size_t, 3> next = at;
            if (up ? next[axis] == last : next[axis] == 0) {
                return true;
            }
            next[axis] = up ? next[axis] + 1 : next[axis] - 1;
            if (answer.At(next[0], next[1], next[2]).Verdict != RegionVerdict::Held) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

RegionPanel::RegionPanel(Desk& desk, StudyHost& host)
    : CStudyPanel(desk, host),
      grdBox{"grdBox", "Box", {}, {}},
      grdVerdicts{"grdVerdicts", "Demands", {}, {}} {
    Page.Caption = "Where may it go";
    Page.ToolTip = "In which region around a pickup is all travel reached and every target held?";
    HelpTopicNumber = htRegion;
    cboPoint.Caption = "P&oint:";
    chkWholeGrid.Caption = "Also at all &rack travel";
    chkWholeGrid.ToolTip = "All wheel travel must be reached at every rack travel too";
    cmdFill.Caption = "&Around the point";
    cmdFill.ToolTip = "A box around where the point stands now";
    Fields = {{"cboPoint", &cboPoint}, {"chkWholeGrid", &chkWholeGrid}};
    Asked = {&grdBox};
    Answers = {&grdVerdicts};
    cmdKeep.Visible = cmdAdd.Visible = cmdRemove.Visible = false;
}

// --- What is asked -----------------------------------------------------------------------------

void RegionPanel::PlaceBox(RegionQuestion& question) const {
    const Design now = DesignNow();
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double place = ValueOf(now, CoordinateOf(question, axis));
        question.Box[axis] = {place - FirstWay, place + FirstWay, FirstNodes};
    }
}

/// The question of the document, with a box around the point as long as there is none.
RegionQuestion RegionPanel::Question() const {
    RegionQuestion question = Questions().Region;
    const PointCatalogue catalogue = CatalogueOf(m_desk.Program.Document.Data);
    if (!catalogue[question.Point].Enabled) { // a strut has no upper wishbone
        question = RegionQuestion();
        question.Point = catalogue[question.Point].Enabled ? question.Point : ptLWIF;
    }
    if (question.Box == RegionQuestion().Box) {
        PlaceBox(question);
    }
    return question;
}

void RegionPanel::ShowQuestion() {
    const RegionQuestion question = Question();
    const PointCatalogue catalogue = CatalogueOf(m_desk.Program.Document.Data);
    cboPoint.Clear();
    for (const PointNumber number : AllPoints) {
        if (catalogue[number].Enabled) {
            cboPoint.Add(ShortenedName(catalogue[number].LongName), number);
        }
    }
    cboPoint.Select(cboPoint.FindData(question.Point));
    chkWholeGrid.Checked = question.WholeGrid;
    const std::string& length = Units()[ucDisplacement].Label;
    DataGrid& grid = grdBox.Grid;
    LayOutTable(grid, std::array<std::string, 4>{"Box", "From", "To", "Places"},
                std::array<std::string, 4>{"", length, length, ""}, 3);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const int row = grid.FixedRows() + static_cast<int>(axis);
        const RegionAxis& side = question.Box[axis];
        const PointCoordinate of = CoordinateOf(question, axis);
        grid.SetCell(row, ColAxis, std::string(PointAxes()[axis].Name));
        grid.SetCell(row, ColLow, TextOf(of, side.Low, Units()));
        grid.SetCell(row, ColHigh, TextOf(of, side.High, Units()));
        grid.SetCell(row, ColNodes, std::to_string(side.Nodes));
    }
    grdBox.Grid.Editable = true;
}

void RegionPanel::TakeFields() {
    RegionQuestion question = Question();
    question.WholeGrid = chkWholeGrid.Checked;
    const auto chosen = static_cast<PointNumber>(cboPoint.Entry(cboPoint.Index()).ItemData);
    if (chosen != question.Point) {
        question.Point = chosen;
        PlaceBox(question);
    }
    Change([&](StudyQuestions& questions) { questions.Region = question; });
}

void RegionPanel::Fill(std::size_t /*table*/) {
    RegionQuestion question = Question();
    PlaceBox(question);
    Change([&](StudyQuestions& questions) { questions.Region = question; });
}

void RegionPanel::EditCell(std::size_t /*table*/, int row, int column, const std::string& text) {
    RegionQuestion question = Question();
    const auto axis = static_cast<std::size_t>(row - grdBox.Grid.FixedRows());
    RegionAxis& side = question.Box.at(axis);
    if (column == ColNodes) {
        side.Nodes = static_cast<int>(
            TypedCount("The number of places", text, 1, MostNodesOfAxis, Units().NumberSeparators));
    } else {
        (column == ColLow ? side.Low : side.High) =
            TypedNumberOf(CoordinateOf(question, axis), text, Units());
    }
    Change([&](StudyQuestions& questions) { questions.Region = question; });
}

CStudyJob::Work RegionPanel::Prepare(const Design& design,
                                     std::shared_ptr<const StudySettings> settings) {
    RegionQuestion question = Question();
    question.Targets = m_desk.Current.Study().Targets;
    return [this, design, settings, question](const StudyWork& work, const auto&) {
        CSampleRunner runner(work);
        RegionAnswer answer = FindRegion(runner, design, question, settings->Settings());
        return [this, question, answer = std::move(answer)] { ShowAnswer(question, answer); };
    };
}

// --- What came out -----------------------------------------------------------------------------

std::vector<MapKind> RegionPanel::KindsOf(const RegionQuestion& question) const {
    std::vector<MapKind> kinds{{"All held", HeldColour}, {"Travel not reached", ReachColour}};
    for (const Target& target : question.Targets) {
        const auto place = std::find_if(m_coloured.begin(), m_coloured.end(), IsOfCurve{target});
        kinds.push_back({NameOf(target, m_desk.Program.Channels),
                         TargetColours.at(static_cast<std::size_t>(place - m_coloured.begin()) %
                                          TargetColours.size())});
    }
    return kinds;
}

/// A target keeps its colour while others come and go.
void RegionPanel::GiveColours(const std::vector<Target>& targets) {
    for (std::optional<Target>& place : m_coloured) {
        const auto takes = [&](const Target& target) { return IsOfCurve{target}(place); };
        if (std::none_of(targets.begin(), targets.end(), takes)) {
            place.reset();
        }
    }
    for (const Target& target : targets) {
        if (std::none_of(m_coloured.begin(), m_coloured.end(), IsOfCurve{target})) {
            const auto free = std::find(m_coloured.begin(), m_coloured.end(), std::nullopt);
            *(free == m_coloured.end() ? m_coloured.emplace(free) : free) = target;
        }
    }
}

std::string RegionPanel::AxisTitle(std::size_t axis) const {
    return std::string(PointAxes()[axis].Name) + " [" + Units()[ucDisplacement].Label + "]";
}

void RegionPanel::ShowAnswer(const RegionQuestion& question, const RegionAnswer& answer) {
    GiveColours(question.Targets);
    ShowSlices(question, answer);
    ShowPlaces(answer);
    ShowVerdicts(question, answer);
    const std::string name = CatalogueOf(AskedOf().Data)[question.Point].LongName;
    const std::string found = WordsOf(question, answer);
    m_words = {Page.Caption,
               {name},
               {answer.Stopped ? found + (found.empty() ? "Stopped" : ", stopped") : found}};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const RegionAxis& side = question.Box[axis];
        const PointCoordinate of = CoordinateOf(question, axis);
        m_words.Asked.push_back(AxisTitle(axis) + " from " + TextOf(of, side.Low, Units()) +
                                " to " + TextOf(of, side.High, Units()) + " in " +
                                std::to_string(side.Nodes) + " places");
    }
    AnswerCame(m_words.Found.front());
}

std::string RegionPanel::WordsOf(const RegionQuestion& question, const RegionAnswer& answer) const {
    std::string words;
    if (const std::optional<double> kind = KindOf(answer.Present)) {
        words = "Where it stands now, ";
        if (*kind > 0) {
            words += "fails: " + KindsOf(question)[static_cast<std::size_t>(*kind)].Name;
            words += answer.PresentFailure.empty() ? "" : " (" + answer.PresentFailure + ")";
        } else {
            words += question.Targets.empty() ? "all travel is reached; no target is set"
                                              : "all is held";
        }
    }
    if (!answer.Stopped &&
        std::none_of(answer.Nodes.begin(), answer.Nodes.end(),
                     [](const RegionNode& node) { return node.Verdict == RegionVerdict::Held; })) {
        words += "; nowhere in the box everything holds";
    }
    return words;
}

/// Three layers through where the point stands now. All have axes of the same length, so that they
/// have one scale when they are equally large.
void RegionPanel::ShowSlices(const RegionQuestion& question, const RegionAnswer& answer) {
    constexpr std::array<std::array<std::size_t, 2>, 3> Others{{{1, 2}, {0, 2}, {0, 1}}};
    const std::vector<MapKind> kinds = KindsOf(question);
    const double factor = UsableUnit(Units(), ucDisplacement).Factor;
    std::array<double, 3> sides{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        sides[axis] = question.Box[axis].High - question.Box[axis].Low;
    }
    const double width = std::max(sides[0], sides[1]);
    const double height = std::max(sides[1], sides[2]);
    Sheets.clear();
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const PointCoordinate of = CoordinateOf(question, axis);
        const RegionSlice slice = SliceOf(answer, axis, ValueOf(AskedOf(), of));
        if (slice.Across.size() < 2 || slice.Up.size() < 2) {
            continue;
        }
        ChartSheet sheet;
        sheet.NumberSeparators = Units().NumberSeparators;
        sheet.Title = std::string(PointAxes()[axis].Name) + " = " +
                      TextOf(of, slice.Place, Units()) + " " + Units()[ucDisplacement].Label;
        SheetMap map;
        for (const double place : slice.Across) {
            map.X.push_back(place * factor);
        }
        for (const double place : slice.Up) {
            map.Y.push_back(place * factor);
        }
        for (const RegionNode& node : slice.Nodes) {
            map.Values.push_back(KindOf(node));
        }
        const auto count = static_cast<int>(kinds.size());
        map.Kinds = kinds;
        map.Levels = {-0.5, count - 0.5, count};
        map.UnreachedText = "not solved";
        const auto [across, up] = Others.at(axis);
        map.Cross = ChartPoint{ValueOf(AskedOf(), CoordinateOf(question, across)) * factor,
                               ValueOf(AskedOf(), CoordinateOf(question, up)) * factor};
        sheet.AxisX = {AxisTitle(across), Widened(map.X, width * factor)};
        sheet.AxisY = {AxisTitle(up), Widened(map.Y, height * factor)};
        sheet.ToScale = true;
        sheet.Map = std::move(map);
        Sheets.push_back(std::move(sheet));
    }
}

/// The skin of the region in the drawing of the corner.
void RegionPanel::ShowPlaces(const RegionAnswer& answer) {
    Overlay = {};
    const auto& [xs, ys, zs] = answer.Places;
    for (std::size_t z = 0; z < zs.size(); ++z) {
        for (std::size_t y = 0; y < ys.size(); ++y) {
            for (std::size_t x = 0; x < xs.size(); ++x) {
                if (answer.At(x, y, z).Verdict == RegionVerdict::Held &&
                    IsBorder(answer, {x, y, z})) {
                    Overlay.Places.push_back({{xs[x], ys[y], zs[z]}, HeldColour});
                }
            }
        }
    }
    constexpr std::size_t MostDots = 2000;
    std::vector<MarkedPlace>& places = Overlay.Places;
    if (const std::size_t step = places.size() / MostDots + 1; step > 1) {
        for (std::size_t n = 0; n * step < places.size(); ++n) {
            places[n] = places[n * step];
        }
        places.resize((places.size() + step - 1) / step);
    }
}

void RegionPanel::ShowVerdicts(const RegionQuestion& question, const RegionAnswer& answer) {
    const std::vector<MapKind> kinds = KindsOf(question);
    std::vector<std::size_t> counts(kinds.size());
    for (const RegionNode& node : answer.Nodes) {
        if (const std::optional<double> kind = KindOf(node)) {
            ++counts[static_cast<std::size_t>(*kind)];
        }
    }
    DataGrid& grid = grdVerdicts.Grid;
    LayOutTable(grid, std::array<std::string, 3>{"What fails first", "Places", "Of all, %"}, {},
                kinds.size() + 1);
    int row = grid.FixedRows();
    const auto all = static_cast<double>(answer.Nodes.size());
    for (std::size_t n = 0; n < kinds.size(); ++n, ++row) {
        constexpr double PerCent = 100;
        grid.SetCell(row, 0, kinds[n].Name);
        grid.SetCell(row, 1, std::to_string(counts[n]));
        grid.SetCell(row, 2,
                     FormatNumber(PerCent * static_cast<double>(counts[n]) / all, "0.0",
                                  Units().NumberSeparators));
    }
    grid.SetCell(row, 0, "Solved; the others are told by those around them");
    grid.SetCell(row, 1, std::to_string(answer.Solved));
}

} // namespace corvanta
