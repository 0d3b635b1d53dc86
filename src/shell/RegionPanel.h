#pragma once

#include "shell/StudyPanel.h"
#include "study/Region.h"

namespace corvanta {

/// Where a point may go with all travel reached and every target held.
class RegionPanel final : public CStudyPanel {
  public:
    RegionPanel(Desk& desk, StudyHost& host);

    ListControl cboPoint;
    CheckBox chkWholeGrid;
    StudyTable grdBox;
    StudyTable grdVerdicts;

    [[nodiscard]] StudyWords Words() const override { return m_words; }
    [[nodiscard]] bool AsksTheSame(const StudyQuestions& then) const override {
        return then.Region == Questions().Region;
    }

  private:
    void ShowQuestion() override;
    void TakeFields() override;
    void EditCell(std::size_t table, int row, int column, const std::string& text) override;
    void Fill(std::size_t table) override;
    [[nodiscard]] bool UsesTargets() const override { return true; }
    [[nodiscard]] CStudyJob::Work Prepare(const Design& design,
                                          std::shared_ptr<const StudySettings> settings) override;
    [[nodiscard]] RegionQuestion Question() const;
    void PlaceBox(RegionQuestion& question) const;
    void ShowAnswer(const RegionQuestion& question, const RegionAnswer& answer);
    void ShowSlices(const RegionQuestion& question, const RegionAnswer& answer);
    void ShowPlaces(const RegionAnswer& answer);
    [[nodiscard]] std::string WordsOf(const RegionQuestion& question,
                                      const RegionAnswer& answer) const;
    void ShowVerdicts(const RegionQuestion& question, const RegionAnswer& answer);
    [[nodiscard]] std::vector<MapKind> KindsOf(const RegionQuestion& question) const;
    void GiveColours(const std::vector<Target>& targets);
    [[nodiscard]] std::string AxisTitle(std::size_t axis) const;

    StudyWords m_words;
    std::vector<std::optional<Target>> m_coloured; ///< by place among the colours
};

} // namespace corvanta
