#include "model/Failure.h"
#include "tool/Workbook.h"

namespace corvanta {

/// Stands in for the writer in a program that is built without its library.
std::string WorkbookOf(std::span<const ResultTable> /*tables*/, const Separators& /*separators*/) {
    throw Failure(fnInvalidCall, "This program is built without a writer of workbooks: take the "
                                 "format csv, tsv or json");
}

} // namespace corvanta
