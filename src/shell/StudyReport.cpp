#include "shell/StudyReport.h"

#include "model/Failure.h"
#include "results/MDisplay.h"
#include "results/PointsTable.h"
#include "shell/ExportCommands.h"
#include "shell/StudyFigures.h"
#include "shell/VariableRows.h"
#include "shell/WorkbenchCharts.h"
#include "solver/SInitGeo.h"
#include "study/DesignResults.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

namespace corvanta {

namespace {

constexpr const char* Filter = "PDF document (*.pdf)|*.pdf|HTML page (*.html)|*.html";

ReportTable CoordinatesOf(const Desk& desk, const Design& design) {
    Suspension document;
    SetDesign(document, design, desk.Program.Units);
    ReportTable table{"Static coordinates", {}};
    SetupPointsTableBlank(table.Grid, document, desk.Program.Units, false);
    DataPointsGet(table.Grid, document, desk.Program.Units, 1, 1);
    return table;
}

/// Nothing but the head is a table that says nothing.
void AddTable(std::vector<ReportTable>& to, const StudyTable& table) {
    if (table.Grid.Rows() > table.Grid.FixedRows()) {
        to.push_back({table.Title, table.Grid});
    }
}

/// The bands that were asked for, corner by corner.
ReportTable TargetsOf(const Desk& desk, const std::vector<Target>& targets) {
    const FundamentalUnits& units = desk.Program.Units;
    ReportTable table{"Targets", {}};
    std::size_t corners = 0;
    for (const Target& target : targets) {
        corners += target.Band.size();
    }
    LayOutTable(table.Grid,
                std::array<std::string, 5>{"Target", "At travel", "Least", "Greatest", "Weight"},
                std::array<std::string, 5>{"", units[ucDisplacement].Label, "", "", ""}, corners);
    int row = table.Grid.FixedRows();
    for (const Target& target : targets) {
        const ChannelRecord& record = desk.Program.Channels[target.Channel];
        for (const BandCorner& corner : target.Band) {
            table.Grid.SetCell(
                row, 0, NameOf(target, desk.Program.Channels) + " [" + record.UnitLabel + "]");
            table.Grid.SetCell(row, 1, FormatChannelValue(units, corner.Travel, ucDisplacement));
            table.Grid.SetCell(row, 2, FormatChannelValue(units, corner.Low, record.Class));
            table.Grid.SetCell(row, 3, FormatChannelValue(units, corner.High, record.Class));
            table.Grid.SetCell(row++, 4, NumberToText(target.Weight, units.NumberSeparators));
        }
    }
    return table;
}

/// The charts with curves of the study, as they were when it was asked.
std::vector<ChartSheet> SheetsOf(const Desk& desk, const CStudyPanel& panel) {
    const StudyInquiry& asked = panel.Answered();
    std::vector<StudyChart> charts;
    std::copy_if(asked.Charts.begin(), asked.Charts.end(), std::back_inserter(charts),
                 [&](const StudyChart& chart) { return panel.Overlay.IsOn(chart); });
    if (charts.empty()) {
        return {};
    }
    const auto scratch = std::make_unique<Suspension>();
    const DesignResults results =
        ResultsOf(*scratch, asked.Design, desk.Current.Settings(), charts, {});
    ChartsContent content;
    content.Charts = charts;
    content.Now = &results;
    content.Targets = asked.Targets;
    content.Study = &panel.Overlay;
    WorkbenchCharts composed(desk.Program);
    composed.Compose(content);
    return composed.Sheets();
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\r") + line;
    }
    return text;
}

void WriteTables(PageWriter& pages, const std::vector<ReportTable>& tables) {
    for (const ReportTable& table : tables) {
        pages.AddParagraph(reportstyles::TitleStyle, table.Title);
        pages.AddTable(reportstyles::NormalStyle, table.Grid);
    }
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char letter : text) {
        switch (letter) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += letter;
        }
    }
    return escaped;
}

std::string Element(const std::string& tag, const std::string& content) {
    return "<" + tag + ">" + content + "</" + tag + ">\n";
}

std::string HtmlOf(const std::vector<std::string>& lines) {
    std::string html;
    for (const std::string& line : lines) {
        html += Element("p", Escaped(line));
    }
    return html;
}

std::string HtmlOf(const std::vector<ReportTable>& tables) {
    std::string html;
    for (const ReportTable& table : tables) {
        html += Element("h2", Escaped(table.Title)) + "<table>\n";
        for (int row = 0; row < table.Grid.Rows(); ++row) {
            const std::string cell = row < table.Grid.FixedRows() ? "th" : "td";
            std::string cells;
            for (int column = 0; column < table.Grid.Columns(); ++column) {
                cells += Element(cell, Escaped(table.Grid.Cell(row, column)));
            }
            html += Element("tr", cells);
        }
        html += "</table>\n";
    }
    return html;
}

constexpr const char* HtmlLook =
    "<style>body{font:10pt Arial,sans-serif;margin:2em;color:#000;background:#fff}"
    "h1{font-size:14pt}h2{font-size:11pt;margin-top:1.5em}p{margin:.2em 0}"
    "table{border-collapse:collapse;font-variant-numeric:tabular-nums}"
    "td,th{text-align:right;padding:.1em .8em}td:first-child,th:first-child{text-align:left}"
    "th{border-bottom:1px solid #000}header{color:#555;border-bottom:1px solid #888}"
    "svg{margin:.5em 1em .5em 0}</style>\n";

} // namespace

StudyReport ReportOf(const Desk& desk, const CStudyPanel& panel) {
    StudyReport report{desk.Program.DocumentPath, panel.Words(), {}, panel.Sheets, {}};
    for (const StudyTable& table : panel.Answered().Tables) {
        AddTable(report.Asked, table);
    }
    if (!panel.Answered().Targets.empty()) {
        report.Asked.push_back(TargetsOf(desk, panel.Answered().Targets));
    }
    const std::vector<ChartSheet> sheets = SheetsOf(desk, panel);
    report.Sheets.insert(report.Sheets.end(), sheets.begin(), sheets.end());
    for (const StudyTable* const table : panel.Answers) {
        AddTable(report.Answers, *table);
    }
    report.Answers.push_back(CoordinatesOf(desk, panel.Answered().Design));
    return report;
}

void WriteReport(PageWriter& pages, const ProductVersion& version, const StudyReport& report) {
    try {
        SetUpReportPages(pages, version, report.DocumentPath);
        pages.StartDocument(report.Words.Title);
        pages.AddParagraph(reportstyles::TitleStyle, report.Words.Title);
        pages.AddParagraph(reportstyles::NormalStyle, Joined(report.Words.Asked));
        pages.AddParagraph(reportstyles::NormalStyle, Joined(report.Words.Found));
        WriteTables(pages, report.Asked);
        pages.AddParagraph(reportstyles::NormalStyle, " ");
        pages.AddSheets(report.Sheets);
        WriteTables(pages, report.Answers);
        pages.EndDocument();
    } catch (...) {
        pages.CancelDocument();
        throw;
    }
}

std::string ReportAsHtml(const PageWriter& pages, const ProductVersion& version,
                         const StudyReport& report) {
    const std::string title = Escaped(report.Words.Title);
    std::string html =
        "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n<title>" + title +
        "</title>\n" + HtmlLook + "</head><body>\n";
    html += Element("header", Escaped(reportstyles::Product + (" " + version.Text()) + " - " +
                                      FileServices::BaseName(report.DocumentPath) + " - " +
                                      pages.ShortTime() + "  " + pages.MediumDate()));
    html += Element("h1", title) + HtmlOf(report.Words.Asked) + HtmlOf(report.Words.Found) +
            HtmlOf(report.Asked);
    for (const ChartSheet& sheet : report.Sheets) {
        const std::string drawing = pages.SvgOf(sheet); // without the head of a file
        html += drawing.substr(std::min(drawing.size(), drawing.find("<svg")));
    }
    return html + HtmlOf(report.Answers) + "</body></html>\n";
}

void AskAndReportStudy(Desk& desk, ShellHost& main, const CStudyPanel& panel) {
    const std::string& document = desk.Program.DocumentPath;
    const std::string name = FileServices::BaseName(document);
    const std::optional<ChosenFile> file = AskForExport(
        desk, main, Filter, "pdf", name + (name.empty() ? "" : " ") + panel.Page.Caption + ".pdf",
        FileServices::ParentFolder(document));
    if (!file) {
        return;
    }
    try {
        const StudyReport report = ReportOf(desk, panel);
        const ProductVersion version = desk.Process.Version();
        PageWriter& pages = desk.Windows.Pages;
        if (file->Extension == "html" || file->Extension == "htm") {
            desk.Files.WriteBytes(file->Path, ReportAsHtml(pages, version, report));
        } else {
            WriteReport(pages, version, report);
            pages.SavePdf(file->Path);
        }
        ExportedTo(desk, main, file->Path);
    } catch (...) {
        desk.Messages.ShowMessage("The report could not be written to " + file->Path +
                                      ".\rError was: " + FailureInFlight().Description(),
                                  msExclamation);
    }
}

} // namespace corvanta
