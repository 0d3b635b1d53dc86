#include "results/MDisplay.h"

#include "platform/FileServices.h"
#include "results/ViewTitles.h"

#include <array>

namespace corvanta {

namespace {

using namespace reportstyles;

constexpr const char* Blank = " ";

void PageSetup(const ReportPlace& place) {
    SetUpReportPages(place.Pages, place.Version, place.Program_.DocumentPath);
}

void PrintTitles(const ReportPlace& place, const ViewSettings& shown) {
    const ViewTitles titles =
        TitlesOfView(place.Program_, shown.View, shown.ViewArgument, shown.ViewVariable);
    place.Pages.AddParagraph(TitleStyle, titles.Title);
    place.Pages.AddParagraph(CloseSpacedStyle, titles.Subtitle);
    place.Pages.AddParagraph(NormalStyle, Blank);
}

/// The grid as the window shows it; a view without a table leaves it empty.
void PrintGrid(const ReportPlace& place) {
    if (place.Host.Grid().Rows() > 0) {
        place.Pages.AddTable(NormalStyle, place.Host.Grid());
    }
}

/// The plot has a landscape page of its own. A document that holds nothing yet begins with it.
void PrintPlot(const ReportPlace& place, const ViewSettings& shown) {
    PageWriter& pages = place.Pages;
    if (place.Program_.Options.PrintCoordinates) {
        pages.SetOrientation(poLandscape);
        pages.NewPage();
    } else {
        pages.CancelDocument();
        pages.SetOrientation(poLandscape);
        pages.StartDocument(Product);
        PageSetup(place);
    }
    PrintTitles(place, shown);
    if (const Chart2D* const chart = place.Host.Chart()) {
        const PageGeometry page = pages.Geometry();
        pages.DrawPicture(*chart, {page.LeftMargin, pages.CurrentY(),
                                   page.Width - page.LeftMargin - page.RightMargin,
                                   page.Height - page.TopMargin - page.BottomMargin});
    }
}

/// Makes the window show a view of its own accord, which leaves the current settings as they are.
void Display(const ReportPlace& place, const ViewSettings& shown) {
    place.Host.DisplayView(shown.View, shown.ViewArgument, shown.ViewVariable, shown.ViewWheel,
                           shown.ViewRack);
}

void PrintView(const ReportPlace& place, const ViewSettings& shown) {
    Display(place, shown);
    if (shown.View == vwPlot) {
        PrintPlot(place, shown);
    } else {
        PrintTitles(place, shown);
        if (shown.View == vwDynamicsReport) {
            place.Pages.AddParagraph(NormalStyle, place.Host.ReportText());
        } else {
            PrintGrid(place);
        }
    }
    place.Pages.AddParagraph(NormalStyle, Blank);
}

/// All three tables of link loads, at the static position.
void PrintLinkLoads(const ReportPlace& place, bool pageThrow) {
    const Suspension& document = place.Program_.Document;
    for (std::int32_t subView = 1; subView <= LinkLoadViewCount; ++subView) {
        if (pageThrow) {
            place.Pages.NewPage();
        }
        PrintView(place, {vwLinkLoads, subView, vvAlongWheelTravel, document.StaticWheel,
                          document.StaticRack});
    }
}

void PrintStaticCoordinates(const ReportPlace& place) {
    place.Pages.AddParagraph(TitleStyle, "Static coordinates");
    place.Pages.AddParagraph(NormalStyle, Blank);
    Display(place, {vwCoordinates, 0, vvAlongRackTravel, 1, 1});
    PrintGrid(place);
    place.Pages.AddParagraph(NormalStyle, Blank);
}

void PrintSelectedViews(const ReportPlace& place, ViewSettings shown) {
    const Options& options = place.Program_.Options;
    for (std::int32_t view = 1; view <= SelectableViewCount; ++view) {
        if (!options.SelectedTables[view]) {
            continue;
        }
        if (view == vwLinkLoads) {
            PrintLinkLoads(place, options.PageThrow);
            continue;
        }
        if (options.PageThrow) {
            place.Pages.NewPage();
        }
        shown.View = view;
        shown.ViewArgument = 0;
        PrintView(place, shown);
    }
}

void PrintClosingPage(const ReportPlace& place) {
    if (place.Program_.Options.PrintChassisDetails) {
        place.Pages.NewPage();
        place.Pages.AddParagraph(TitleStyle, "Chassis details");
        place.Pages.AddParagraph(NormalStyle, ChassisDetailsText(place.Program_));
    }
}

void WriteDocument(const ReportPlace& place, const ViewSettings& current) {
    const Options& options = place.Program_.Options;
    PageSetup(place);
    place.Pages.StartDocument(Product);
    if (options.PrintCoordinates) {
        PrintStaticCoordinates(place);
    }
    if (options.PrintSelectedTables) {
        PrintSelectedViews(place, current);
    } else if (current.View == vwLinkLoads) {
        PrintLinkLoads(place, options.PageThrow);
    } else {
        PrintView(place, current);
    }
    if (current.View != vwPlot) {
        PrintClosingPage(place);
    }
    place.Pages.EndDocument();
}

} // namespace

void SetUpReportPages(PageWriter& pages, const ProductVersion& version,
                      const std::string& documentPath) {
    constexpr double LeftMargin = 20;
    constexpr double RightMargin = 10;
    constexpr double BodySpace = 8;
    constexpr double TitleSpace = 20;
    const PageFont body{"Arial", 8, false};
    const PageFont heading{"Arial", 10, true};
    pages.SetSideMargins(LeftMargin, RightMargin);
    pages.SetStyle(NormalStyle, {body, BodySpace, 0, 100});
    pages.SetStyle(CloseSpacedStyle, {body, BodySpace, 0, 0});
    pages.SetStyle(TitleStyle, {heading, TitleSpace, 0, 100});
    pages.SetHeader({std::string(Product) + " " + version.Text(),
                     FileServices::BaseName(documentPath),
                     pages.ShortTime() + "  " + pages.MediumDate() + "      Page %d", heading});
}

void BuildReport(const ReportPlace& place) {
    ViewSettings& settings = place.Program_.Settings;
    const ViewSettings former = settings;
    const PageOrientation orientation = place.Pages.Orientation();
    const auto restore = [&] {
        place.Pages.SetOrientation(orientation);
        ShowAgain(place.Host, settings, former);
    };
    settings.View = vwNone; // every view then keeps the argument that it is printed with
    place.Host.RefreshGUI(false);
    try {
        WriteDocument(place, former);
    } catch (...) {
        place.Pages.CancelDocument();
        restore();
        throw;
    }
    restore();
}

std::string ChassisDetailsText(const Program& program) {
    const SuspensionData& data = program.Document.Data;
    struct Detail {
        const char* Label;
        double Value;
        std::int32_t Class;
    };
    const std::array<Detail, 7> details{{
        {"Centre of gravity X position = ", data.CGX, ucDisplacement},
        {"Centre of gravity height = ", data.CGZ, ucDisplacement},
        {"Wheelbase = ", data.Wheelbase, ucDisplacement},
        {"Total mass = ", data.Mass, ucMass},
        {"Tyre stiffness = ", data.KTyre, ucRate},
        {"Suspension link stiffness = ", data.KLink, ucRate},
        {"Spring stiffness = ", data.KSpring, ucRate},
    }};
    std::string text;
    for (const Detail& detail : details) {
        text += (text.empty() ? "" : "\r") + std::string(detail.Label) +
                FormatChannelValue(program.Units, detail.Value, detail.Class) + " " +
                program.Units[detail.Class].Label;
    }
    return text;
}

} // namespace corvanta
