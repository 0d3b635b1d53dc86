#pragma once

#include "shell/StudyPanel.h"
#include "study/SetupTurns.h"

namespace corvanta {

/// The setup sheet: what one turn or shim does with the car on its wheels, and which turns give the
/// changes that are wanted.
class SetupPanel final : public CStudyPanel {
  public:
    SetupPanel(Desk& desk, StudyHost& host);

    NumberBox txtRideHeight;
    StudyTable grdAdjusters, grdWanted;
    StudyTable grdSheet, grdTurns, grdReached;

    void cmdKeep_Click() override;
    [[nodiscard]] StudyWords Words() const override { return m_words; }
    [[nodiscard]] bool AsksTheSame(const StudyQuestions& then) const override {
        return then.Setup == Questions().Setup;
    }

  private:
    /// What came out of both directions.
    struct Answer {
        SetupSheet Sheet;
        std::optional<TurnsAnswer> Turns; ///< none when nothing is wanted
        std::vector<OverlayCurve> Curves; ///< of the corner that they reach
    };

    void ShowQuestion() override;
    void ShowAdjusters();
    void ShowWanted();
    void TakeFields() override;
    void EditCell(std::size_t table, int row, int column, const std::string& text) override;
    [[nodiscard]] double TypedLength(const std::string& place, const std::string& text) const;
    void EditAdjuster(std::size_t n, int column, const std::string& text);
    void EditWanted(std::size_t n, int column, const std::string& text);
    void AddRows(std::size_t table) override;
    void RemoveRow(std::size_t table, std::size_t row) override;
    void Fill(std::size_t table) override;
    [[nodiscard]] CStudyJob::Work Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) override;
    void ShowAnswer(const TurnsQuestion& question, const Answer& answer);
    [[nodiscard]] static std::string WordsOf(const Answer& answer);
    void ShowSheet(const TurnsQuestion& question, const SetupSheet& sheet);
    void ShowTurns(const TurnsQuestion& question, const TurnsAnswer& turns);
    [[nodiscard]] FigureDisplay Display(const SheetFigure& figure) const {
        return DisplayOf(figure, m_desk.Program.Channels, Units());
    }

    std::optional<Design> m_reached;
    StudyWords m_words;
};

} // namespace corvanta
