#include "tool/TableOutput.h"

#include "automation/TableText.h"
#include "tool/Workbook.h"

namespace corvanta {

void TableChoice::AddTo(CLI::App& command) {
    command.add_option("-f,--format", Format, "of what is written")
        ->check(CLI::IsMember({"tsv", "csv", "json", "xlsx"}))
        ->capture_default_str();
}

std::string TableChoice::BytesOf(std::span<const ResultTable> tables,
                                 const Separators& separators) const {
    if (Format == "xlsx") {
        return WorkbookOf(tables, separators);
    }
    const TableForm form = Format == "json"  ? TableForm::Json
                           : Format == "csv" ? TableForm::Csv
                                             : TableForm::Tsv;
    return TableText(tables, form, separators);
}

} // namespace corvanta
