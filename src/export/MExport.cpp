#include "export/MExport.h"

#include "export/ExportFailure.h"
#include "export/Suspvar.h"
#include "model/Failure.h"
#include "results/DynamicsReport.h"
#include "results/MDisplayTable.h"
#include "results/ViewTitles.h"

namespace corvanta {

namespace {

constexpr const char* LineEnd = "\r\n";

/// One block of an export: a view with its settings. A step of 0 is the static one.
struct ExportBlock {
    std::int32_t View = vwNone;
    std::int32_t Argument = 0;
    std::int32_t Variable = vvAlongWheelTravel;
    int Rack = 0;
    int Wheel = 0;
};

/// The working values of an export: a block to start from, and whether the header is wanted.
struct ExportRequest {
    ExportBlock Block;
    bool Header = false;
};

ExportRequest RequestOf(const Program& program, const BatchExport* batch) {
    if (batch != nullptr) {
        return {{batch->Table, 0, batch->Variable, 0, 0}, batch->Header};
    }
    const ViewSettings& settings = program.Settings;
    return {{settings.View, settings.ViewArgument, settings.ViewVariable, settings.ViewRack,
             settings.ViewWheel},
            program.Options.ExportHeaderOn};
}

/// A batch run may name any table; a plot has no channel there, and a drawing no text.
void RefuseUnknownTable(std::int32_t table) {
    const bool known = (table >= 1 && table <= SelectableViewCount) || table == vwAllChannels;
    if (!known) {
        throw Failure(fnCommandLine, "Invalid export table");
    }
}

std::string HeaderText(const ExportPlace& place) {
    return std::string("CREATED BY:\tCorvanta v") + place.Process.Version().Text() + LineEnd +
           "FILEPATH:\t" + place.Program_.DocumentPath + LineEnd + "TIMESTAMP:\t" +
           place.Process.DateAndTime() + LineEnd + LineEnd;
}

/// The text of a view as the window's grid shows it.
std::string GridViewText(const ExportPlace& place, const ExportBlock& block) {
    place.Program_.Settings = {block.View, block.Argument, block.Variable, block.Wheel, block.Rack};
    place.Host.ShowCurrentView();
    return place.Host.Grid().Text();
}

std::string BlockBody(const ExportPlace& place, const ExportBlock& block) {
    const Program& program = place.Program_;
    switch (block.View) {
    case vwDynamicsReport:
        return ShowDynamicsReport(program, place.Messages_);
    case vwPlot: {
        CustomChannels channel;
        channel.Add(block.Argument);
        return ExportArrayToText(BuildViewTable(program, vwCustomTable, block.Variable, block.Rack,
                                                block.Wheel, channel));
    }
    case vwAllChannels:
        return ExportArrayToText(BuildViewTable(program, vwAllChannels, block.Variable, block.Rack,
                                                block.Wheel, program.CustomChannels));
    default:
        return GridViewText(place, block);
    }
}

/// One block: title, body and an empty line. A drawing has no text.
std::string ExportView(const ExportPlace& place, const ExportBlock& block) {
    if (block.View == vw3d) {
        return {};
    }
    const std::string body = BlockBody(place, block);
    return ExportTitleAdd(place.Program_, body, block.View, block.Argument, block.Variable) +
           LineEnd + LineEnd;
}

/// The link loads go out as their three tables, whichever was asked for, at the static position.
std::string ExportViewOrLoads(const ExportPlace& place, const ExportBlock& block) {
    if (block.View != vwLinkLoads) {
        return ExportView(place, block);
    }
    std::string text;
    for (std::int32_t subView = 1; subView <= LinkLoadViewCount; ++subView) {
        text += ExportView(place, {vwLinkLoads, subView, vvAlongRackTravel, 0, 0});
    }
    return text;
}

std::string ResultText(const ExportPlace& place, std::int32_t exportType, ExportBlock block) {
    if (exportType == etAllChannels) {
        block.View = vwAllChannels;
        block.Argument = 0;
        return ExportView(place, block);
    }
    if (exportType == etCurrentView) {
        return ExportViewOrLoads(place, block);
    }
    std::string text;
    for (std::int32_t view = 1; view <= SelectableViewCount; ++view) {
        if (place.Program_.ExportViews[view]) {
            block.View = view;
            block.Argument = 0;
            text += ExportViewOrLoads(place, block);
        }
    }
    return text;
}

void ExportGeneral(const ExportPlace& place, std::int32_t exportType, const std::string& filePath,
                   const BatchExport* batch) {
    Program& program = place.Program_;
    const ViewSettings former = program.Settings;
    const ExportRequest request = RequestOf(program, batch);
    if (batch != nullptr && exportType == etCurrentView) {
        RefuseUnknownTable(batch->Table);
    }
    const std::string header = request.Header ? HeaderText(place) : std::string();
    try {
        const std::string text = header + ResultText(place, exportType, request.Block);
        place.Files.WriteText(filePath, text);
        program.Options.ExportFilePath = FileServices::ParentFolder(filePath);
    } catch (...) {
        if (batch == nullptr) { // nobody looks at the window of a batch run
            ShowAgain(place.Host, program.Settings, former);
        }
        throw;
    }
    ShowAgain(place.Host, program.Settings, former);
}

} // namespace

bool ExportResults(const ExportPlace& place, std::int32_t exportType, const std::string& filePath,
                   const BatchExport* batch) {
    const Suspension& document = place.Program_.Document;
    const Separators& separators = place.Program_.Units.NumberSeparators;
    try {
        if (exportType == etSuspvar1_1) {
            return ExportSUSPVAR1_1(document, filePath, separators, place.Files, place.Messages_);
        }
        if (exportType == etSuspvar2_2) {
            return ExportSUSPVAR2_1(document, filePath, separators, place.Files, place.Messages_);
        }
        ExportGeneral(place, exportType, filePath, batch);
        return true;
    } catch (...) {
        ReportExportFailure(place.Messages_);
        return false;
    }
}

std::string ExportArrayToText(const ViewTable& table) {
    std::string text;
    for (int row = 0; row < table.Rows(); ++row) {
        for (int column = 0; column < table.Columns(); ++column) {
            if (column > 0) {
                text += '\t';
            }
            text += table.Cell(row, column);
        }
        text += LineEnd;
    }
    return text;
}

std::string ExportTitleAdd(const Program& program, const std::string& body, std::int32_t view,
                           std::int32_t viewArgument, std::int32_t variable) {
    const ViewTitles titles = TitlesOfView(program, view, viewArgument, variable);
    const std::string lines =
        titles.Subtitle.empty() ? titles.Title : titles.Title + LineEnd + titles.Subtitle;
    return "TITLE:\t" + lines + LineEnd + body;
}

} // namespace corvanta
