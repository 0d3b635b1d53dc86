#pragma once

#include "shell/StudyPanel.h"
#include "study/Fit.h"

namespace corvanta {

/// Which pickups were really built, as readings of a measured car tell.
class FitPanel final : public CStudyPanel {
  public:
    FitPanel(Desk& desk, StudyHost& host);

    StudyTable grdReadings, grdFree;
    StudyTable grdFound, grdResiduals, grdCorrelations;

    void cmdKeep_Click() override;
    [[nodiscard]] StudyWords Words() const override { return m_words; }
    [[nodiscard]] bool AsksTheSame(const StudyQuestions& then) const override {
        return then.Fit == Questions().Fit;
    }

  private:
    void ShowQuestion() override;
    void ShowReadings();
    void EditCell(std::size_t table, int row, int column, const std::string& text) override;
    void EditReading(std::size_t n, int column, const std::string& text);
    void AddRows(std::size_t table) override;
    void RemoveRow(std::size_t table, std::size_t row) override;

    /// Readings from the clipboard.
    void Fill(std::size_t table) override;
    [[nodiscard]] CStudyJob::Work Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) override;
    void ShowAnswer(const FitQuestion& question, const FitAnswer& answer);
    void ShowFound(const FitAnswer& answer);
    void ShowResiduals(const FitQuestion& question, const FitAnswer& answer);
    void ShowCorrelations(const FitAnswer& answer);
    [[nodiscard]] Reading ReadingNow() const;

    Design m_fitted;
    StudyWords m_words;
};

} // namespace corvanta
