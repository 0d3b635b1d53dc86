#pragma once

#include "platform/ChartSheet.h"
#include "shell/AxisRange.h"
#include "shell/Desk.h"
#include "shell/StudyPanel.h"
#include "study/DesignResults.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// A design with its results beside the one in hand.
struct BesideResults {
    std::string Name;
    Colour Drawn;
    bool IsBaseline = false;
    const DesignResults* Results = nullptr;
};

/// What the charts of the workbench are made from.
struct ChartsContent {
    std::span<const StudyChart> Charts;
    const DesignResults* Now = nullptr; ///< the last good ones while the design fails
    bool Faded = false;                 ///< the design fails
    std::span<const BesideResults> Beside;
    std::span<const Target> Targets;
    bool Held = false;                ///< a hand moves something: axes don't shrink
    std::optional<TravelPlace> Hover; ///< what the pointer reads out; a travel may be NaN for none
    const DesignResults* Maps = nullptr; ///< of the design as it stands, as far as it goes
    const StudyOverlay* Study = nullptr; ///< what the study in sight adds to the lines
};

/// Makes the charts of the workbench from results, and keeps their axes calm.
class WorkbenchCharts {
  public:
    explicit WorkbenchCharts(const Program& program) : m_program(program) {}

    /// Throws Failure 1000 for a unit without a factor.
    void Compose(const ChartsContent& content);

    [[nodiscard]] const std::vector<ChartSheet>& Sheets() const { return m_sheets; }

    /// The travel at a place of a chart, mm; a travel that the chart does not run along is NaN.
    [[nodiscard]] static TravelPlace TravelAt(const Program& program, const StudyChart& chart,
                                              const ChartPoint& place);

  private:
    struct Axis {
        StudyChart Chart;
        std::string Unit;
        CAxisRange Range;
    };

    void KeepAxes(std::span<const StudyChart> charts);
    [[nodiscard]] ChartSheet LineSheet(const ChartsContent& content, std::size_t n);
    [[nodiscard]] ChartSheet MapSheet(const ChartsContent& content, std::size_t n);
    [[nodiscard]] SheetMap MapOn(const ChartsContent& content, std::size_t n,
                                 const ChannelMap& map);
    [[nodiscard]] std::optional<SheetReadout>
    ReadoutOn(const SheetMap& map, const ChannelRecord& record, const TravelPlace& at) const;
    void AddTargets(ChartSheet& sheet, const ChartsContent& content, std::size_t n) const;
    void AddStudy(ChartSheet& sheet, const ChartsContent& content, std::size_t n) const;
    void FitAxes(ChartSheet& sheet, const ChartsContent& content, std::size_t n);
    [[nodiscard]] std::optional<SheetReadout> ReadoutAt(const ChartsContent& content, std::size_t n,
                                                        double travel) const;
    [[nodiscard]] std::string Text(const ChannelRecord& record, double stored) const;
    [[nodiscard]] double LengthFactor() const;

    const Program& m_program;
    std::vector<Axis> m_axes;
    std::vector<ChartSheet> m_sheets;
};

} // namespace corvanta
