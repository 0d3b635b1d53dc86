#include "tool/Workbook.h"

#include "automation/TableText.h"
#include "model/Failure.h"
#include "platform/DiskFileServices.h"
#include "tool/TemporaryPath.h"

#include <xlsxwriter.h>

#include <map>

namespace corvanta {

namespace {

/// Formats by the number of decimals; a workbook keeps one of each.
class CNumberFormats {
  public:
    explicit CNumberFormats(lxw_workbook* book) : m_book(book) {}

    lxw_format* For(const std::string& text, const std::string& decimal) {
        const std::size_t point = text.find(decimal);
        const std::size_t decimals =
            point == std::string::npos ? 0 : text.size() - point - decimal.size();
        lxw_format*& format = m_formats[decimals];
        if (format == nullptr) {
            format = workbook_add_format(m_book);
            const std::string code = decimals == 0 ? "0" : "0." + std::string(decimals, '0');
            format_set_num_format(format, code.c_str());
        }
        return format;
    }

  private:
    lxw_workbook* m_book;
    std::map<std::size_t, lxw_format*> m_formats;
};

constexpr lxw_row_t HeadRow = 2; // below title and position

void WriteSheet(lxw_workbook* book, lxw_format* bold, CNumberFormats& formats,
                const ResultTable& table, const Separators& separators) {
    lxw_worksheet* const sheet = workbook_add_worksheet(book, table.Key.c_str());
    worksheet_write_string(sheet, 0, 0, table.Title.c_str(), bold);
    worksheet_write_string(sheet, 1, 0, table.Position.c_str(), nullptr);
    for (std::size_t n = 0; n < table.Heads.size(); ++n) {
        const auto column = static_cast<lxw_col_t>(n);
        worksheet_write_string(sheet, HeadRow, column, table.Heads[n].c_str(), bold);
        worksheet_write_string(sheet, HeadRow + 1, column, table.Units[n].c_str(), nullptr);
    }
    worksheet_freeze_panes(sheet, HeadRow + 2, 1);
    for (std::size_t r = 0; r < table.Rows.size(); ++r) {
        const auto row = static_cast<lxw_row_t>(r + HeadRow + 2);
        for (std::size_t n = 0; n < table.Rows[r].size(); ++n) {
            const auto column = static_cast<lxw_col_t>(n);
            const std::string& cell = table.Rows[r][n];
            if (const std::optional<double> number = NumberOfCell(cell, separators)) {
                worksheet_write_number(sheet, row, column, *number,
                                       formats.For(cell, separators.Decimal));
            } else {
                worksheet_write_string(sheet, row, column, cell.c_str(), nullptr);
            }
        }
    }
}

} // namespace

std::string WorkbookOf(std::span<const ResultTable> tables, const Separators& separators) {
    const CTemporaryPath file(".xlsx"); // the library writes to paths alone
    lxw_workbook* const book = workbook_new(file.Path().c_str());
    if (book == nullptr) {
        throw Failure(fnInvalidCall, "The workbook can't be made");
    }
    lxw_format* const bold = workbook_add_format(book);
    format_set_bold(bold);
    CNumberFormats formats(book);
    for (const ResultTable& table : tables) {
        WriteSheet(book, bold, formats, table, separators);
    }
    const lxw_error error = workbook_close(book);
    if (error != LXW_NO_ERROR) {
        throw Failure(fnInvalidCall,
                      std::string("The workbook can't be made: ") + lxw_strerror(error));
    }
    return DiskFileServices().ReadBytes(file.Path());
}

} // namespace corvanta
