#pragma once

#include "model/Failure.h"
#include "model/NumberText.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvanta {

/// A value of a field: a text, a whole number, a double, or a boolean ("True", "False").
using FieldValue = std::variant<std::string_view, std::int32_t, double, bool>;

/// A table of numbers, [row][column], both from 0.
using FieldTable = std::vector<std::vector<double>>;

/// A table of numbers already formatted in the machine's decimal separator, [row][column] from 0.
using FormattedTable = std::vector<std::vector<std::string>>;

/// A table of pages, [row][column][page], all from 0. Files hold the pages from 1 on.
using FieldTable3d = std::vector<std::vector<std::vector<double>>>;

/// Versions to hold a stream against, in the place of its own.
struct StreamVersions {
    std::optional<std::string> File = {};
    std::optional<std::string> Required = {};
    std::optional<std::string> Compatible = {}; ///< further accepted versions, joined by blanks
};

/// The text file format of the program: a sequence of tagged fields, held as one text.
///
/// A field is "[", its name, "]", TAB, its value, CR LF; sub-fields are parted by TAB. A table is a
/// field whose value begins with CR LF and has a line per row. Behind the last field stands one
/// more CR LF. There is no quoting: a value ends at the next "[". Numbers are written in the
/// machine's decimal separator, which the field "DEC SEP" records; "FILEVERSION" names the version.
///
/// Failures stay in the operation in which they happen: it shows a message, unless the stream is
/// silent, and returns false or an empty result.
class CFileStream {
  public:
    CFileStream(FileServices& files, Messages& messages, Separators separators);

    /// Begins a stream with the fields "DEC SEP" and "FILEVERSION". The stream writes and requires
    /// `version`; it accepts `compatibleVersions` too.
    void Initialise(std::string_view version, std::span<const std::string> compatibleVersions);

    /// Adds a field at the end; an earlier one of the same name goes. A number that is none
    /// (infinite or not a number) is a failure, and the earlier field then stays.
    bool AddField(std::string_view name, FieldValue value);
    bool AddField(std::string_view name, std::span<const FieldValue> values);

    /// Adds rows 0 to `rows` and columns 0 to `columns` of a table; 0 stands for the last. A cell
    /// that is 0 in single precision goes in as "0". A formatted cell must be a number.
    bool AddTable(std::string_view name, const FieldTable& table, int rows = 0, int columns = 0);
    bool AddTable(std::string_view name, const FormattedTable& table, int rows = 0,
                  int columns = 0);

    /// Adds the pages 1 to `pages` as tables of their own, named `name`, " PAGE " and the number; 0
    /// stands for the last. An empty table adds nothing.
    bool AddTable3d(std::string_view name, const FieldTable3d& table, int rows = 0, int columns = 0,
                    int pages = 0);

    /// Removes a field; true if it was there.
    bool RemoveField(std::string_view name);

    /// The value of a field. A field that is absent and one that is empty read alike: `fallback`.
    [[nodiscard]] std::string GetFieldString(std::string_view name, std::string_view fallback = {});

    /// The first `count` sub-fields of a field, at least 1. Empty ones take the fallback of the
    /// same place, if there are fallbacks.
    [[nodiscard]] std::vector<std::string>
    GetFieldString(std::string_view name, std::span<const std::string> fallbacks, int count);

    /// The number in a field; `fallback` when it is absent or empty, 0 when it is no number.
    [[nodiscard]] double GetFieldNumber(std::string_view name, double fallback = 0);

    /// The first `count` sub-fields as numbers, likewise. Empty when that fails.
    [[nodiscard]] std::vector<double> GetFieldNumber(std::string_view name,
                                                     std::span<const double> fallbacks, int count);

    /// Rows 0 to `rows` and columns 0 to `columns` of a table; -1 stands for all rows, and for the
    /// columns of row 0. Cells that the field does not hold read 0. A missing field reads empty.
    [[nodiscard]] FieldTable GetFieldTable(std::string_view name, int rows = -1, int columns = -1);

    /// A table of pages indexed 0 to `rows`, 0 to `columns`, 0 to `pages` with the pages from 1 on
    /// filled. A page that is missing or too small is a failure; the result is then empty.
    [[nodiscard]] FieldTable3d GetTable3d(std::string_view name, int rows, int columns, int pages);

    /// Replaces the contents by a file's. False, with no message, when there is no such file; the
    /// contents then stay. `textRead`, if given, takes the text.
    bool FileRead(const std::string& path, std::string* textRead = nullptr);

    /// True when the last line of the file that was read has no end, as a file has that was cut
    /// off within a value.
    [[nodiscard]] bool LacksLastLineEnd() const { return m_lacksLastLineEnd; }

    /// The fields whose value, or one of their values, was asked for as a number and is none, each
    /// with that text behind it.
    [[nodiscard]] const std::vector<std::string>& NotNumbers() const { return m_notNumbers; }

    /// The contents as they stand in a file.
    [[nodiscard]] std::string FileText();

    /// Writes the contents, behind those of the file if `append` is set. When a character had to be
    /// written as "?" because the file's code page lacks it, a message names the fields.
    bool FileWrite(const std::string& path, bool append = false);

    /// The contents, with "FILEVERSION" and "DEC SEP" added if they were missing.
    const std::string& GetContents();

    /// Replaces the contents; a "FILEVERSION" in them becomes the stream's version.
    void SetContents(std::string_view text);

    /// Holds the version of the contents against the versions accepted. `message` says what is
    /// wrong, empty if nothing is; it is shown unless `silent` is set.
    bool IsCompatibleVersion(bool silent, std::string& message,
                             const StreamVersions& versions = {});

    /// The number of a text that stands in the contents' decimal separator; 0 if it is none.
    [[nodiscard]] double DecimalSeparatorMakeSafe(std::string_view text);

    /// True when no message of a failure is to be shown.
    [[nodiscard]] bool Silent() const { return m_silent; }
    void SetSilent(bool silent) { m_silent = silent; }

  private:
    /// A field's place in the contents: its "[", and its value with no line ends behind it.
    struct FieldLimits {
        std::size_t Open;
        std::size_t Begin;
        std::size_t End;
    };

    [[nodiscard]] std::optional<FieldLimits> FindField(std::string_view name);
    [[nodiscard]] std::string_view GetField(std::string_view name);
    [[nodiscard]] std::vector<std::string_view> GetFieldValues(std::string_view name, int count);
    [[nodiscard]] std::string ValueText(const FieldValue& value) const;
    [[nodiscard]] std::string NumberCell(double value) const;
    [[nodiscard]] std::string FormattedCell(const std::string& text) const;
    [[nodiscard]] const std::string& FileSeparator();
    [[nodiscard]] double FieldNumber(std::string_view name, std::string_view value);
    [[nodiscard]] std::optional<double> NumberIn(std::string_view text);
    [[nodiscard]] FieldTable ReadTable(std::string_view text, int rows, int columns);
    [[nodiscard]] std::string FieldsOutsideCodePage() const;

    template <typename Table, typename CellText>
    bool AddCells(std::string_view name, const Table& table, int rows, int columns,
                  const CellText& cellText);

    /// What an operation says when it fails: `Before`, the name, `After` and, if asked for, the
    /// failure's description.
    struct FailureText {
        std::string_view Before;
        std::string_view After;
        bool TellReason = false;
    };

    /// Runs an operation; when it fails, reports that and gives `onFailure`.
    template <typename Result, typename Work>
    Result Guarded(const FailureText& text, std::string_view name, Result onFailure,
                   const Work& work);

    FileServices& m_files;
    Messages& m_messages;
    Separators m_separators; ///< the machine's
    std::string m_contents;
    std::string m_fileVersion;
    std::string m_compatibleVersions;
    std::string m_fileDecimalSeparator; ///< empty until first asked for
    std::vector<std::string> m_notNumbers;
    bool m_lacksLastLineEnd = false;
    bool m_separatorsMatch = false;
    bool m_silent = false;
};

} // namespace corvanta
