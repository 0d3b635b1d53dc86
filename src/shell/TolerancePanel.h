#pragma once

#include "shell/StudyPanel.h"
#include "study/Tolerance.h"

namespace corvanta {

/// How much build tolerances spread the curves: bands on every chart, and what spreads them.
class TolerancePanel final : public CStudyPanel {
  public:
    TolerancePanel(Desk& desk, StudyHost& host);

    NumberBox txtSamples, txtSeed;
    CheckBox chkFollow; ///< every change of the document begins the study anew
    StudyTable grdTolerances;
    StudyTable grdShares, grdSpread, grdTargets;

    void Answer_Clicked(std::size_t table, int row) override;
    [[nodiscard]] StudyWords Words() const override { return m_words; }
    [[nodiscard]] bool AsksTheSame(const StudyQuestions& then) const override {
        return then.Tolerance == Questions().Tolerance;
    }

  private:
    void ShowQuestion() override;
    void TakeFields() override;
    void EditCell(std::size_t table, int row, int column, const std::string& text) override;
    void AddRows(std::size_t table) override;
    void RemoveRow(std::size_t table, std::size_t row) override;
    void Fill(std::size_t table) override;
    [[nodiscard]] bool UsesTargets() const override { return true; }
    [[nodiscard]] CStudyJob::Work Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) override;
    [[nodiscard]] bool IsLive() const override { return chkFollow.Checked; }
    void ShowAnswer(const ToleranceQuestion& question, const ToleranceAnswer& answer);
    void ShowBands(const ToleranceQuestion& question, const ToleranceAnswer& answer);
    void ShowShares(const ToleranceQuestion& question, const ToleranceAnswer& answer);
    void ShowSpread(const ToleranceQuestion& question, const ToleranceAnswer& answer);
    void ShowTargets(const ToleranceQuestion& question, const ToleranceAnswer& answer);

    std::vector<DesignVariable> m_rows; ///< of the shares
    StudyWords m_words;
};

} // namespace corvanta
