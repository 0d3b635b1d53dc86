#pragma once

#include "model/Program.h"
#include "platform/PageWriter.h"
#include "platform/ProcessServices.h"
#include "results/ViewHost.h"

#include <string>

namespace corvanta {

/// The printed report: the views of the main window on pages, with the numbers and titles of the
/// screen.

/// What a report works with.
struct ReportPlace {
    Program& Program_;
    ViewHost& Host;
    PageWriter& Pages;
    ProductVersion Version;
};

/// The styles of a report's paragraphs and tables.
namespace reportstyles {
inline constexpr const char* Product = "Corvanta"; ///< in the headers of pages
inline constexpr const char* NormalStyle = "Normal";
inline constexpr const char* CloseSpacedStyle = "CloseSpaced"; ///< lines close under a title
inline constexpr const char* TitleStyle = "Title1";
} // namespace reportstyles

/// Margins, header and styles of a report about a document, for the pages to come. The header keeps
/// the time of this moment.
void SetUpReportPages(PageWriter& pages, const ProductVersion& version,
                      const std::string& documentPath);

/// Builds the report that the print options ask for and leaves its document ended. The window shows
/// again what it showed before, and the writer has its former orientation. A failure passes through
/// to the caller; the document is thrown away then, and window and writer are as before all the
/// same. For an interactive program whose results are valid.
void BuildReport(const ReportPlace& place);

/// What is known of the whole car, in the user's units: seven lines joined by CR.
[[nodiscard]] std::string ChassisDetailsText(const Program& program);

} // namespace corvanta
