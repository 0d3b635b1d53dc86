#include "platform/DataGrid.h"

namespace corvanta {

void DataGrid::Reset() {
    m_rows.clear();
    m_widths.clear();
    m_shadedColumns.clear();
    m_choices.clear();
    m_columns = 0;
    m_fixedRows = 0;
    m_fixedColumns = 0;
    Editable = false;
    MarkedRow = NoRow;
}

void DataGrid::SetSize(int rows, int columns, int fixedRows, int fixedColumns) {
    assert(rows >= fixedRows && columns >= fixedColumns);
    m_columns = columns;
    m_fixedRows = fixedRows;
    m_fixedColumns = fixedColumns;
    m_rows.resize(static_cast<std::size_t>(rows));
    for (GridRow& row : m_rows) {
        row.Cells.resize(static_cast<std::size_t>(columns));
    }
    m_widths.resize(static_cast<std::size_t>(columns));
    m_shadedColumns.resize(static_cast<std::size_t>(columns));
    m_choices.resize(static_cast<std::size_t>(columns));
}

void DataGrid::ClearNotes() {
    for (GridRow& row : m_rows) {
        row.Notes.clear();
    }
}

std::string DataGrid::Text() const {
    std::string text;
    for (const GridRow& row : m_rows) {
        for (std::size_t column = 0; column < row.Cells.size(); ++column) {
            if (column > 0) {
                text += '\t';
            }
            text += row.Cells[column];
        }
        text += "\r\n";
    }
    return text;
}

namespace {

std::string Quoted(const std::string& cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        return cell;
    }
    std::string text = "\"";
    for (const char c : cell) {
        text += c == '"' ? "\"\"" : std::string(1, c);
    }
    return text + "\"";
}

} // namespace

std::string DataGrid::CommaSeparated() const {
    std::string text;
    for (const GridRow& row : m_rows) {
        for (std::size_t column = 0; column < row.Cells.size(); ++column) {
            text += (column > 0 ? "," : "") + Quoted(row.Cells[column]);
        }
        text += "\r\n";
    }
    return text;
}

} // namespace corvanta
