#pragma once

#include "shell/StudyPanel.h"
#include "study/Sweep.h"

namespace corvanta {

/// What if this runs from a to b: one variable as a fan of curves, or two as a map of a figure of
/// the chart in hand.
class SweepPanel final : public CStudyPanel {
  public:
    SweepPanel(Desk& desk, StudyHost& host);

    ListControl cboFigure;
    ListControl cboValue; ///< what can run beside coordinates
    StudyTable grdAxes;   ///< what runs, from, to, in how many values
    StudyTable grdDesigns;

    [[nodiscard]] StudyWords Words() const override { return m_words; }
    [[nodiscard]] bool AsksTheSame(const StudyQuestions& then) const override {
        return then.Sweep == Questions().Sweep;
    }

  private:
    void ShowQuestion() override;
    void EditCell(std::size_t table, int row, int column, const std::string& text) override;
    void AddRows(std::size_t table) override;
    void RemoveRow(std::size_t table, std::size_t row) override;
    void Fill(std::size_t table) override;
    [[nodiscard]] std::optional<StudyNumber> Number() const override {
        return NumberInHand(cboFigure);
    }
    [[nodiscard]] CStudyJob::Work Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) override;
    [[nodiscard]] std::size_t RowOf(int row) const;
    void ListValues();
    void AddAxis(const SweptValue& what);
    void ShowAnswer(const SweepQuestion& question, const SweepAnswer& answer);
    void ShowDesigns(const SweepQuestion& question, const SweepAnswer& answer);
    void ShowFan(const SweepQuestion& question, const SweepAnswer& answer);
    void ShowMap(const SweepQuestion& question, const SweepAnswer& answer);
    [[nodiscard]] std::string Text(const SweepAxis& axis, double stored) const;
    [[nodiscard]] std::string NameOfAxis(const SuspensionData& data, const SweepAxis& axis) const;

    std::vector<SweptValue> m_values; ///< of the list
    StudyWords m_words;
};

} // namespace corvanta
