#pragma once

#include "platform/ChartSheet.h"
#include "platform/DataGrid.h"
#include "platform/PageWriter.h"
#include "platform/ProcessServices.h"
#include "shell/Desk.h"
#include "shell/ShellHost.h"
#include "shell/StudyPanel.h"

#include <string>
#include <vector>

namespace corvanta {

/// A table of a report.
struct ReportTable {
    std::string Title;
    DataGrid Grid;
};

/// What the report of a study says: what was asked, of which document and design, and what came
/// out.
struct StudyReport {
    std::string DocumentPath;
    StudyWords Words;
    std::vector<ReportTable> Asked;
    std::vector<ChartSheet> Sheets;
    std::vector<ReportTable> Answers; ///< the coordinates of the design are the last one
};

/// The report of a panel that has an answer. In it are the charts on which the study shows
/// something, with the design that it was asked about at static travel, wherever the workbench
/// stands now.
[[nodiscard]] StudyReport ReportOf(const Desk& desk, const CStudyPanel& panel);

/// Writes a report as a document of pages, in the look of the printed views, and leaves it ended.
void WriteReport(PageWriter& pages, const ProductVersion& version, const StudyReport& report);

/// The same as one HTML page with its drawings in it; it needs nothing else.
[[nodiscard]] std::string ReportAsHtml(const PageWriter& pages, const ProductVersion& version,
                                       const StudyReport& report);

/// Asks for a name and writes the report of a panel, as HTML or PDF by the name. A failure is told.
void AskAndReportStudy(Desk& desk, ShellHost& main, const CStudyPanel& panel);

} // namespace corvanta
