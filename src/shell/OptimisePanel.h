#pragma once

#include "shell/StudyPanel.h"
#include "study/Optimise.h"

namespace corvanta {

/// Which coordinates bring all curves into their bands.
class OptimisePanel final : public CStudyPanel {
  public:
    OptimisePanel(Desk& desk, StudyHost& host);

    NumberBox txtStarts, txtSeed;
    StudyTable grdFree;
    StudyTable grdGains, grdFound;

    void cmdKeep_Click() override;
    [[nodiscard]] StudyWords Words() const override { return m_words; }
    [[nodiscard]] bool AsksTheSame(const StudyQuestions& then) const override {
        return then.Optimise == Questions().Optimise;
    }

  private:
    void ShowQuestion() override;
    void TakeFields() override;
    void EditCell(std::size_t table, int row, int column, const std::string& text) override;
    void AddRows(std::size_t table) override;
    void RemoveRow(std::size_t table, std::size_t row) override;
    [[nodiscard]] bool UsesTargets() const override { return true; }
    [[nodiscard]] CStudyJob::Work Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) override;
    void ShowAnswer(const OptimiseQuestion& question, const OptimiseAnswer& answer);
    void ShowGains(const OptimiseQuestion& question, const OptimiseAnswer& answer);

    Design m_best;
    StudyWords m_words;
};

} // namespace corvanta
