#pragma once

#include "model/Design.h"
#include "platform/ChartSheet.h"
#include "platform/Controls.h"
#include "shell/Desk.h"
#include "shell/WorkbenchCharts.h"
#include "study/DesignResults.h"

#include <optional>
#include <string>

namespace corvanta {

/// The small chart of the geometry editor: one channel along wheel travel, of the corner as it is
/// typed and, where that is another, of the document, dashed. A draft that can't be solved leaves
/// the last good line, faded, and says why.
class CurvePreview {
  public:
    explicit CurvePreview(const Desk& desk) : m_desk(desk), m_charts(desk.Program) {}

    /// Fills the list of channels; the choice, and the room that the chart has, are those that the
    /// section of the store remembers.
    void Load(const std::string& section);
    void Keep(const std::string& section) const;

    /// Shows a draft. While a text is being typed the axes don't shrink. What is on show already is
    /// not solved again.
    void Show(const Design& draft, bool typing);

    /// The pointer came to a place of the chart, or left it.
    void Hover(std::optional<ChartPoint> place);

    [[nodiscard]] const ChartSheet& Sheet() const { return m_sheet; }

    ListControl cboChannel;
    Control labFault; ///< why there is no line of the draft

    int Height = 0;      ///< of the chart below its drawing, twips; 0 as it needs
    bool Hidden = false; ///< it was dragged away

  private:
    /// A design with the results for the chosen channel.
    struct Solved {
        corvanta::Design Design;
        StudyChart Chart;
        DesignResults Results;
    };

    [[nodiscard]] StudyChart Chart() const;
    bool Solve(std::optional<Solved>& solved, const Design& design);
    void DescribeFault();
    void Compose();

    const Desk& m_desk;
    WorkbenchCharts m_charts;
    Suspension m_scratch;
    std::optional<Solved> m_draft;
    std::optional<Solved> m_document;
    std::optional<Solved> m_good; ///< the last draft that could be solved
    std::optional<TravelPlace> m_hover;
    bool m_typing = false;
    ChartSheet m_sheet;
};

} // namespace corvanta
