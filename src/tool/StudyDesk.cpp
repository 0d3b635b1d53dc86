#include "tool/StudyDesk.h"

#include "frame/MSusp.h"
#include "model/Failure.h"
#include "solver/SInitGeo.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <thread>
#include <utility>

namespace corvanta {

namespace {

/// How often is looked whether a study has ended.
constexpr auto PollTime = std::chrono::milliseconds(5);

/// "What spreads it" as "what-spreads-it".
std::string KeyOf(std::string title) {
    for (char& letter : title) {
        letter = letter == ' ' ? '-' : static_cast<char>(std::tolower(letter));
    }
    return title;
}

/// The place of a chart among those of a study, where it is added if it is not there.
std::size_t PlaceOf(const std::optional<StudyChart>& chart, std::vector<StudyChart>& charts) {
    charts = charts.empty() ? FirstCharts() : charts;
    if (!chart) {
        return 0;
    }
    const auto found = std::ranges::find_if(charts, [&](const StudyChart& each) {
        return each.Channel == chart->Channel && IsLine(each) && TravelOf(each) == TravelOf(*chart);
    });
    const auto place = static_cast<std::size_t>(found - charts.begin());
    if (found == charts.end()) {
        charts.push_back(*chart);
    }
    return place;
}

} // namespace

CStudyDesk::CStudyDesk(const Design& design, StudyData study, const FundamentalUnits& units,
                       const StudyAim& aim)
    : m_process(0, nullptr, BuiltVersion()),
      m_chartInHand(PlaceOf(aim.Chart, study.Charts)) {
    m_program.Units = units;
    m_program.Channels.ChannelsSetup(m_program.Units);
    SetDesign(m_program.Document, design, m_program.Units);
    m_program.Channels.SetFrontRearTitles(IsFrontCorner(m_program.Document));
    m_current.Begin("Open", true);
    m_current.ChangeStudy(std::move(study));
    for (const auto& panel : m_panels.All()) {
        for (const StudyField& field : panel->Fields) {
            if (field.Name == "cboFigure") {
                std::get<ListControl*>(field.Box)->Select(aim.Figure);
            }
        }
    }
}

std::vector<std::size_t> CStudyDesk::Asked() const {
    std::vector<std::size_t> asked;
    for (std::size_t n = 0; n < StudyNames.size(); ++n) {
        if (!m_panels.All().at(n)->AsksTheSame({})) {
            asked.push_back(n);
        }
    }
    return asked;
}

std::vector<ResultTable> CStudyDesk::Answer(std::size_t study,
                                            const std::function<void(double share)>& progress) {
    CStudyPanel& panel = *m_panels.All().at(study);
    m_panels.Show(study);
    if (!panel.IsRunning()) { // one that follows every change runs already
        panel.cmdRun_Click();
    }
    while (panel.IsRunning()) {
        std::this_thread::sleep_for(PollTime);
        m_panels.Poll();
        progress(panel.Progress());
    }
    if (!panel.HasAnswer()) {
        throw Failure(fnInvalidCall, panel.labStatus.Caption);
    }
    const std::string name(StudyNames.at(study));
    const StudyWords words = panel.Words();
    std::vector<ResultTable> tables{
        TableOfLines(name + "-asked", words.Title, words.Title + ": asked", words.Asked),
        TableOfLines(name + "-found", words.Title, words.Title + ": found", words.Found)};
    for (const StudyTable* const table : panel.Answers) {
        if (table->Grid.Rows() > table->Grid.FixedRows()) {
            tables.push_back(
                TableOfGrid(name + "-" + KeyOf(table->Title), table->Title, table->Grid));
        }
    }
    m_found.reset();
    panel.cmdKeep_Click();
    return tables;
}

std::string CStudyDesk::KeepAsVariant(const std::string& name, const std::string& /*note*/,
                                      const Design& design) {
    m_found = design;
    return name;
}

} // namespace corvanta
