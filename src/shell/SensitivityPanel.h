#pragma once

#include "shell/StudyPanel.h"
#include "study/Sensitivity.h"

namespace corvanta {

/// What moves this: which coordinate changes the chart in hand most. It follows the document.
class SensitivityPanel final : public CStudyPanel {
  public:
    SensitivityPanel(Desk& desk, StudyHost& host);

    ListControl cboFigure;
    StudyTable grdSlopes;

    /// Selects the cell of the coordinate.
    void Answer_Clicked(std::size_t table, int row) override;
    [[nodiscard]] StudyWords Words() const override;
    [[nodiscard]] bool AsksTheSame(const StudyQuestions& /*then*/) const override { return true; }

  private:
    void ShowQuestion() override;
    [[nodiscard]] bool IsLive() const override { return true; }
    [[nodiscard]] bool EndsSoon() const override { return true; }
    [[nodiscard]] std::optional<StudyNumber> Number() const override {
        return NumberInHand(cboFigure);
    }
    [[nodiscard]] CStudyJob::Work Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) override;
    void ShowAnswer(const SensitivityQuestion& question, SensitivityAnswer answer);

    std::vector<PointCoordinate> m_rows; ///< of the table
    StudyWords m_words;
};

} // namespace corvanta
