#include "shell/CurvePreview.h"

#include "shell/MLibGUI.h"
#include "shell/PointWords.h"

#include <algorithm>
#include <vector>

namespace corvanta {

namespace {

constexpr const char* ChannelKey = "PreviewChannel";
constexpr const char* HeightKey = "PreviewHeight";
constexpr const char* HiddenKey = "PreviewHidden";
constexpr Colour DocumentColour{128, 128, 128}; ///< to be seen on white and on black paper

} // namespace

void CurvePreview::Load(const std::string& section) {
    const auto remembered = [&](const char* key, int fallback) {
        return m_desk.Store == nullptr
                   ? fallback
                   : StoredNumber(*m_desk.Store, section, key).value_or(fallback);
    };
    cboChannel.ToolTip = "The channel of the chart, along wheel travel with the rack at its centre";
    cboChannel.Clear();
    for (int id = 1; id <= ChannelCount; ++id) {
        if (HasCurve(id)) {
            cboChannel.Add(m_desk.Program.Channels[id].Title, id);
        }
    }
    const int choice = cboChannel.FindData(remembered(ChannelKey, chCamberAngle));
    cboChannel.Select(choice == ListControl::NoSelection ? cboChannel.FindData(chCamberAngle)
                                                         : choice);
    Height = remembered(HeightKey, 0);
    Hidden = remembered(HiddenKey, 0) != 0;
    labFault.Visible = false;
}

void CurvePreview::Keep(const std::string& section) const {
    const auto write = [&](const char* key, int number) {
        m_desk.Store->Write(section, key, std::to_string(number));
    };
    if (m_desk.Store != nullptr && cboChannel.Index() != ListControl::NoSelection) {
        write(ChannelKey, Chart().Channel);
        write(HeightKey, Height);
        write(HiddenKey, Hidden ? 1 : 0);
    }
}

StudyChart CurvePreview::Chart() const {
    return {cboChannel.Entry(cboChannel.Index()).ItemData};
}

/// True when there was something to solve.
bool CurvePreview::Solve(std::optional<Solved>& solved, const Design& design) {
    const StudyChart chart = Chart();
    if (solved && solved->Chart == chart && solved->Design == design) {
        return false;
    }
    solved = {design, chart,
              ResultsOf(m_scratch, design, m_desk.Current.Settings(), {&chart, 1}, {})};
    return true;
}

void CurvePreview::Show(const Design& draft, bool typing) {
    m_typing = typing;
    if (m_desk.Program.Document.DataLoaded) {
        Solve(m_document, DesignOf(m_desk.Program.Document));
    }
    if (Solve(m_draft, draft)) {
        DescribeFault();
    }
    if (m_draft->Results.Outcome.Solved) {
        m_good = m_draft;
    } else if (m_good && m_good->Chart != m_draft->Chart) {
        m_good.reset(); // of another channel
    }
    Compose();
}

void CurvePreview::DescribeFault() {
    const DesignResults& results = m_draft->Results;
    labFault.Caption.clear();
    if (!results.Outcome.Solved) {
        labFault.Caption = FailureLine(results.Outcome.Failure, m_scratch, m_desk.Program.Units);
    } else if (!results.Curves.front() || results.Curves.front()->X.empty()) {
        labFault.Caption = "This corner has no such channel.";
    }
    labFault.ToolTip = labFault.Caption; // where it is cut off
    labFault.Visible = !labFault.Caption.empty();
}

void CurvePreview::Compose() {
    std::vector<BesideResults> beside;
    if (m_desk.Program.Document.DataLoaded && m_document &&
        (!m_good || m_document->Design != m_good->Design)) {
        beside.push_back({"Document", DocumentColour, true, &m_document->Results});
    }
    const StudyChart chart = Chart();
    const bool fails = !m_draft->Results.Outcome.Solved;
    m_charts.Compose({{&chart, 1},
                      m_good ? &m_good->Results : nullptr,
                      fails,
                      beside,
                      m_desk.Current.Study().Targets,
                      m_typing || fails,
                      m_hover});
    m_sheet = m_charts.Sheets().front();
    m_sheet.Cursor.reset(); // the editor stands at no travel
}

void CurvePreview::Hover(std::optional<ChartPoint> place) {
    if (m_draft) {
        m_hover = place ? std::optional(WorkbenchCharts::TravelAt(m_desk.Program, Chart(), *place))
                        : std::nullopt;
        Compose();
    }
}

} // namespace corvanta
