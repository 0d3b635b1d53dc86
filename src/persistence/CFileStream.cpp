#include "persistence/CFileStream.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace corvanta {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view SeparatorField = "DEC SEP";
constexpr std::string_view VersionField = "FILEVERSION";
constexpr std::string_view OldVersionField = "FILE VERSION";
constexpr std::string_view ReasonFollows = "\r\nError was: ";

[[noreturn]] void RaiseSubscript() {
    throw Failure(fnSubscript, "Subscript out of range");
}

bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

std::string WithBlank(std::string_view text) {
    return std::string(TrimBlanks(text)) + " ";
}

/// Cuts a text at a delimiter that is searched from the second character of each piece on, so that
/// a piece keeps a delimiter at its head: an empty piece joins the next one.
std::vector<std::string_view> Split(std::string_view text, std::string_view delimiter) {
    std::vector<std::string_view> pieces;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(delimiter, start + 1), text.size());
        pieces.push_back(text.substr(start, end - start));
        start = end + delimiter.size();
    }
    return pieces;
}

/// The highest index to go to in `size` places: `asked`, or the last when `asked` is 0.
std::size_t HighestIndex(int asked, std::size_t size) {
    const std::size_t highest = asked == 0 ? size - 1 : static_cast<std::size_t>(asked);
    if (asked < 0 || size == 0 || highest >= size) {
        RaiseSubscript();
    }
    return highest;
}

/// The head of a field.
std::string Tag(std::string_view name) {
    std::string tag(1, '[');
    return tag.append(name).append(1, ']');
}

std::string PageName(std::string_view name, int page) {
    return std::string(name) + " PAGE " + std::to_string(page);
}

bool IsZeroInSinglePrecision(double value) {
    // Half the least single-precision number; a tie goes to the even neighbour, which is 0.
    constexpr double Limit = 0x1p-150;
    return std::abs(value) <= Limit;
}

} // namespace

CFileStream::CFileStream(FileServices& files, Messages& messages, Separators separators)
    : m_files(files),
      m_messages(messages),
      m_separators(std::move(separators)) {}

template <typename Result, typename Work>
Result CFileStream::Guarded(const FailureText& text, std::string_view name, Result onFailure,
                            const Work& work) {
    try {
        return work();
    } catch (...) {
        const Failure failure = FailureInFlight();
        if (!m_silent) {
            std::string message(text.Before);
            message.append(name).append(text.After);
            if (text.TellReason) {
                message += failure.Description();
            }
            m_messages.ShowMessage(message, msExclamation);
        }
        return onFailure;
    }
}

void CFileStream::Initialise(std::string_view version,
                             std::span<const std::string> compatibleVersions) {
    m_fileVersion = WithBlank(version);
    m_compatibleVersions.clear();
    for (const std::string& compatible : compatibleVersions) {
        m_compatibleVersions += compatible + " ";
    }
    m_contents.clear();
    AddField(SeparatorField, m_separators.Decimal);
    AddField(VersionField, TrimBlanks(version));
}

std::string CFileStream::ValueText(const FieldValue& value) const {
    return std::visit(
        [this](auto held) -> std::string {
            using Held = decltype(held);
            if constexpr (std::is_same_v<Held, bool>) {
                return held ? "True" : "False";
            } else if constexpr (std::is_same_v<Held, double>) {
                return NumberToText(held, m_separators);
            } else if constexpr (std::is_same_v<Held, std::int32_t>) {
                return std::to_string(held);
            } else {
                return std::string(held);
            }
        },
        value);
}

bool CFileStream::AddField(std::string_view name, FieldValue value) {
    return AddField(name, std::span(&value, 1));
}

bool CFileStream::AddField(std::string_view name, std::span<const FieldValue> values) {
    const FailureText text{"An error occurred while adding field: ", " to the filestream"};
    return Guarded(text, name, false, [&] {
        std::string field = Tag(name);
        for (const FieldValue& value : values) {
            field += '\t';
            field += ValueText(value);
        }
        RemoveField(name);
        m_contents.append(field).append(LineEnd);
        return true;
    });
}

template <typename Table, typename CellText>
bool CFileStream::AddCells(std::string_view name, const Table& table, int rows, int columns,
                           const CellText& cellText) {
    const FailureText failureText{"An error occurred while adding table: ", " to the filestream"};
    return Guarded(failureText, name, false, [&] {
        constexpr std::size_t FirstBuffer = 10000;
        std::string text;
        text.reserve(FirstBuffer);
        const std::size_t lastRow = HighestIndex(rows, table.size());
        const std::size_t lastColumn = HighestIndex(columns, table.front().size());
        for (std::size_t row = 0; row <= lastRow; ++row) {
            text += LineEnd;
            HighestIndex(static_cast<int>(lastColumn), table[row].size());
            for (std::size_t column = 0; column <= lastColumn; ++column) {
                if (column > 0) {
                    text += '\t';
                }
                text += cellText(table[row][column]);
            }
        }
        return AddField(name, std::string_view(text));
    });
}

std::string CFileStream::NumberCell(double value) const {
    return IsZeroInSinglePrecision(value) ? "0" : ValueText(value);
}

std::string CFileStream::FormattedCell(const std::string& text) const {
    const std::optional<double> value = WholeNumberText(text, m_separators.Decimal);
    if (!value) {
        throw Failure(fnTypeMismatch, "Type mismatch");
    }
    return IsZeroInSinglePrecision(*value) ? "0" : text;
}

bool CFileStream::AddTable(std::string_view name, const FieldTable& table, int rows, int columns) {
    return AddCells(name, table, rows, columns, [this](double cell) { return NumberCell(cell); });
}

bool CFileStream::AddTable(std::string_view name, const FormattedTable& table, int rows,
                           int columns) {
    return AddCells(name, table, rows, columns,
                    [this](const std::string& cell) { return FormattedCell(cell); });
}

bool CFileStream::AddTable3d(std::string_view name, const FieldTable3d& table, int rows,
                             int columns, int pages) {
    if (table.empty() || table.front().empty() || table.front().front().empty()) {
        return true;
    }
    const FailureText text{"An error occurred while adding 3d table: ", " to the filestream"};
    return Guarded(text, name, false, [&] {
        const std::size_t lastRow = HighestIndex(rows, table.size());
        const std::size_t lastColumn = HighestIndex(columns, table.front().size());
        const std::size_t lastPage = HighestIndex(pages, table.front().front().size());
        bool added = true;
        for (std::size_t page = 1; page <= lastPage; ++page) {
            FieldTable cells(lastRow + 1, std::vector<double>(lastColumn + 1));
            for (std::size_t row = 0; row <= lastRow; ++row) {
                for (std::size_t column = 0; column <= lastColumn; ++column) {
                    cells[row][column] = table.at(row).at(column).at(page);
                }
            }
            added = AddTable(PageName(name, static_cast<int>(page)), cells) && added;
        }
        return added;
    });
}

bool CFileStream::RemoveField(std::string_view name) {
    return Guarded({"An error occurred while removing field: ", ""}, name, false, [&] {
        const std::optional<FieldLimits> field = FindField(name);
        if (!field) {
            return false;
        }
        std::size_t end = field->End;
        while (end < m_contents.size() && IsLineEnd(m_contents[end])) {
            ++end;
        }
        m_contents.erase(field->Open, end - field->Open);
        return true;
    });
}

std::optional<CFileStream::FieldLimits> CFileStream::FindField(std::string_view name) {
    return Guarded({"An error occurred while finding field: ", ""}, name,
                   std::optional<FieldLimits>(), [&]() -> std::optional<FieldLimits> {
                       const std::string tag = Tag(name);
                       const std::size_t open = m_contents.find(tag);
                       if (open == std::string::npos) {
                           return std::nullopt;
                       }
                       const std::size_t begin = open + tag.size();
                       std::size_t end =
                           std::min(m_contents.find('[', begin + 1), m_contents.size());
                       while (end > begin && IsLineEnd(m_contents[end - 1])) {
                           --end;
                       }
                       return FieldLimits{open, begin, end};
                   });
}

std::string_view CFileStream::GetField(std::string_view name) {
    const FailureText text{"An error occurred while getting field: ", ReasonFollows, true};
    return Guarded(text, name, std::string_view(), [&]() -> std::string_view {
        const std::optional<FieldLimits> field = FindField(name);
        if (!field) {
            return {};
        }
        std::string_view value =
            std::string_view(m_contents).substr(field->Begin, field->End - field->Begin);
        while (!value.empty() && value.front() == '\t') {
            value.remove_prefix(1);
        }
        while (!value.empty() && value.back() == '\t') {
            value.remove_suffix(1);
        }
        return value;
    });
}

std::vector<std::string_view> CFileStream::GetFieldValues(std::string_view name, int count) {
    const std::string_view text = GetField(name);
    if (count == 1) {
        return {text};
    }
    if (count < 1) {
        RaiseSubscript();
    }
    std::vector<std::string_view> values = Split(text, "\t");
    values.resize(static_cast<std::size_t>(count));
    return values;
}

std::string CFileStream::GetFieldString(std::string_view name, std::string_view fallback) {
    const std::string_view value = GetField(name);
    return std::string(value.empty() ? fallback : value);
}

std::vector<std::string> CFileStream::GetFieldString(std::string_view name,
                                                     std::span<const std::string> fallbacks,
                                                     int count) {
    return Guarded(
        {"An error occurred while getting sub field: ", ""}, name, std::vector<std::string>(), [&] {
            std::vector<std::string> texts;
            for (const std::string_view value : GetFieldValues(name, count)) {
                const std::size_t place = texts.size();
                if (!fallbacks.empty() && place >= fallbacks.size()) {
                    RaiseSubscript();
                }
                texts.emplace_back(value.empty() && !fallbacks.empty() ? fallbacks[place] : value);
            }
            return texts;
        });
}

double CFileStream::GetFieldNumber(std::string_view name, double fallback) {
    const std::string_view value = GetField(name);
    return value.empty() ? fallback : FieldNumber(name, value);
}

std::vector<double> CFileStream::GetFieldNumber(std::string_view name,
                                                std::span<const double> fallbacks, int count) {
    const FailureText text{"An error occurred while getting field: ", ReasonFollows, true};
    return Guarded(text, name, std::vector<double>(), [&] {
        std::vector<double> numbers;
        for (const std::string_view value : GetFieldValues(name, count)) {
            const std::size_t place = numbers.size();
            if (!fallbacks.empty() && place >= fallbacks.size()) {
                RaiseSubscript();
            }
            numbers.push_back(value.empty() && !fallbacks.empty() ? fallbacks[place]
                                                                  : FieldNumber(name, value));
        }
        return numbers;
    });
}

FieldTable CFileStream::ReadTable(std::string_view text, int rows, int columns) {
    if (rows < -1 || columns < -1) {
        RaiseSubscript();
    }
    const std::vector<std::string_view> lines = Split(text, LineEnd);
    const std::size_t rowCount = rows == -1 ? lines.size() : static_cast<std::size_t>(rows) + 1;
    const std::size_t columnCount =
        columns == -1 ? Split(lines.front(), "\t").size() : static_cast<std::size_t>(columns) + 1;
    FieldTable table(rowCount, std::vector<double>(columnCount));
    for (std::size_t row = 0; row < std::min(rowCount, lines.size()); ++row) {
        const std::vector<std::string_view> cells = Split(lines[row], "\t");
        for (std::size_t column = 0; column < std::min(columnCount, cells.size()); ++column) {
            table[row][column] = DecimalSeparatorMakeSafe(cells[column]);
        }
    }
    return table;
}

FieldTable CFileStream::GetFieldTable(std::string_view name, int rows, int columns) {
    return Guarded({"An error occurred while getting table: ", ""}, name, FieldTable(), [&] {
        const std::string text = GetFieldString(name);
        return text.empty() ? FieldTable() : ReadTable(text, rows, columns);
    });
}

FieldTable3d CFileStream::GetTable3d(std::string_view name, int rows, int columns, int pages) {
    return Guarded({"An error occurred while getting 3d table: ", ""}, name, FieldTable3d(), [&] {
        const auto size = [](int highest) {
            if (highest < 0) {
                RaiseSubscript();
            }
            return static_cast<std::size_t>(highest) + 1;
        };
        FieldTable3d table(size(rows),
                           std::vector(size(columns), std::vector<double>(size(pages))));
        for (int page = 1; page <= pages; ++page) {
            const FieldTable cells = GetFieldTable(PageName(name, page));
            for (std::size_t row = 0; row < table.size(); ++row) {
                for (std::size_t column = 0; column < table[row].size(); ++column) {
                    if (row >= cells.size() || column >= cells[row].size()) {
                        RaiseSubscript();
                    }
                    table[row][column][static_cast<std::size_t>(page)] = cells[row][column];
                }
            }
        }
        return table;
    });
}

bool CFileStream::FileRead(const std::string& path, std::string* textRead) {
    if (textRead != nullptr) {
        textRead->clear();
    }
    const bool namesFolder =
        !path.empty() && (path.back() == '\\' || path.back() == FileServices::Separator);
    if (namesFolder || !m_files.FileExists(path)) {
        return false;
    }
    return Guarded({"An error occurred while reading file: ", ""}, path, false, [&] {
        std::string text = m_files.ReadText(path);
        m_lacksLastLineEnd = !text.empty() && !IsLineEnd(text.back());
        // The writer's extra line end. A file that was made by hand may lack it, and its last
        // characters are then data.
        for (int extra = 0; extra < 2 && !text.empty() && IsLineEnd(text.back()); ++extra) {
            text.pop_back();
        }
        m_contents = std::move(text);
        m_separatorsMatch = FileSeparator() == m_separators.Decimal;
        if (textRead != nullptr) {
            *textRead = m_contents;
        }
        return true;
    });
}

std::string CFileStream::FileText() {
    return GetContents() + std::string(LineEnd);
}

bool CFileStream::FileWrite(const std::string& path, bool append) {
    const FailureText text{"An error occurred while writing file: ", ReasonFollows, true};
    return Guarded(text, path, false, [&] {
        const std::string bytes = FileText();
        if (append) {
            m_files.AppendText(path, bytes);
        } else {
            m_files.WriteText(path, bytes);
        }
        const std::string fields = FieldsOutsideCodePage();
        if (!fields.empty() && !m_silent) {
            m_messages.ShowMessage("Some characters can't be kept in the file and were written as "
                                   "\"?\": " +
                                       fields,
                                   msExclamation);
        }
        return true;
    });
}

std::string CFileStream::FieldsOutsideCodePage() const {
    std::string names;
    if (FitsCodePage1252(m_contents)) {
        return names;
    }
    for (std::string_view rest = m_contents; !rest.empty();) {
        // A field begins with a "[" at the head of a line; one inside a value does not.
        const std::string_view field = rest.substr(0, rest.find("\n[", 1));
        rest.remove_prefix(std::min(field.size() + 1, rest.size()));
        if (!FitsCodePage1252(field)) {
            const std::size_t open = field.find('[');
            const std::string_view name =
                open == std::string_view::npos ? field : field.substr(open + 1);
            names += (names.empty() ? "" : ", ") + std::string(name.substr(0, name.find(']')));
        }
    }
    return names;
}

const std::string& CFileStream::GetContents() {
    if (!FindField(VersionField)) {
        AddField(VersionField, TrimBlanks(m_fileVersion));
    }
    if (!FindField(SeparatorField)) {
        AddField(SeparatorField, m_separators.Decimal);
    }
    return m_contents;
}

void CFileStream::SetContents(std::string_view text) {
    m_contents = text;
    if (FindField(VersionField)) {
        m_fileVersion = WithBlank(GetField(VersionField));
    }
}

bool CFileStream::IsCompatibleVersion(bool silent, std::string& message,
                                      const StreamVersions& versions) {
    const FailureText text{
        "An error occured while checking for the required file version: ", "\r\nError was ", true};
    message.clear();
    return Guarded(text, "", false, [&] {
        const std::string file =
            WithBlank(versions.File ? *versions.File
                                    : GetFieldString(VersionField, GetField(OldVersionField)));
        const std::string required = WithBlank(versions.Required.value_or(m_fileVersion));
        const std::string compatible =
            versions.Compatible ? WithBlank(*versions.Compatible) : m_compatibleVersions;
        const std::string available =
            "Wrong file version\r\n\r\nFile version required = " + compatible + " " + required +
            "\r\n";
        if (UpperCase(compatible + required).find(UpperCase(file)) == std::string::npos) {
            message = available + "File version available = " + file;
        } else if (file == " ") {
            message = available + "No file version available";
        }
        if (!message.empty() && !silent) {
            m_messages.ShowMessage(message, msExclamation);
        }
        return message.empty();
    });
}

const std::string& CFileStream::FileSeparator() {
    if (m_fileDecimalSeparator.empty()) {
        m_fileDecimalSeparator = GetFieldString(SeparatorField, ".");
    }
    return m_fileDecimalSeparator;
}

std::optional<double> CFileStream::NumberIn(std::string_view text) {
    const std::string& decimal = m_separators.Decimal;
    return WholeNumberText(m_separatorsMatch ? std::string(text)
                                             : ReplaceAll(text, FileSeparator(), decimal),
                           decimal);
}

double CFileStream::DecimalSeparatorMakeSafe(std::string_view text) {
    return NumberIn(text).value_or(0);
}

double CFileStream::FieldNumber(std::string_view name, std::string_view value) {
    const std::optional<double> number = NumberIn(value);
    if (!number && !value.empty()) {
        constexpr std::size_t LongestShown = 20;
        m_notNumbers.push_back(std::string(name) + " (" +
                               std::string(value.substr(0, LongestShown)) + ")");
    }
    return number.value_or(0);
}

} // namespace corvanta
