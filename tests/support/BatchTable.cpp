#include "tests/support/BatchTable.h"

#include "model/NumberText.h"
#include "model/Views.h"
#include "persistence/MData.h"
#include "platform/DiskFileServices.h"
#include "solver/SInitGeo.h"
#include "tests/support/Corners.h"
#include "tests/support/Places.h"
#include "tests/support/RecordingMessageBox.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

namespace corvanta::test {

namespace {

std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream text(line);
    for (std::string cell; std::getline(text, cell, '\t');) {
        cells.emplace_back(TrimBlanks(cell));
    }
    return cells;
}

} // namespace

double BatchTable::Cell(std::size_t row, const std::string& title) const {
    const auto column = std::find(Titles.begin(), Titles.end(), title);
    return Rows.at(row).at(static_cast<std::size_t>(column - Titles.begin()));
}

BatchTable BatchTableOf(const Design& design, std::int32_t variable) {
    const TemporaryFolder folder;
    const FundamentalUnits units = MetricUnits();
    Suspension document;
    SetDesign(document, design, units);
    DiskFileServices files;
    RecordingMessageBox box;
    Messages messages(box);
    bool written = false;
    static_cast<void>(DataWrite(written, document, folder / "car.WSP", units, files, messages));
    std::string path = folder.Path();
    std::replace(path.begin(), path.end(), '/', '\\'); // a slash begins a key
    const std::string command = "env -u LC_ALL -u LANG XDG_CONFIG_HOME='" + folder / "config" +
                                "' '" + ProgramFolder() + "/corvanta-batch' '/input=" + path +
                                "\\car.WSP /output=" + path +
                                "\\out.txt /type=1 /variable=" + std::to_string(variable) + "'";
    EXPECT_TRUE(written && std::system(command.c_str()) == 0);

    BatchTable table;
    std::istringstream text(ReplaceAll(files.ReadBytes(folder / "out.txt"), "\r", ""));
    for (std::string line; std::getline(text, line);) {
        const std::vector<std::string> cells = CellsOf(line);
        if (table.Titles.empty() && cells.size() > 3) {
            table.Titles = cells;
        } else if (!cells.empty() && WholeNumberText(cells[0], ".")) {
            table.Rows.emplace_back();
            for (const std::string& cell : cells) {
                table.Rows.back().push_back(WholeNumberText(cell, ".").value_or(std::nan("")));
            }
        }
    }
    return table;
}

} // namespace corvanta::test
