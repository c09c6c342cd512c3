#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "CFField.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/show/TextTable.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// Rows of a job's output, as texts. A missing value is empty.
struct ResultTable
{
    /// The name of a column, and the storage of its values, which determines alignment and quoting.
    struct Column
    {
        std::string name;
        CFField::StorageType storage = CFField::String;
        /// Whether it has whole numbers that may have been rounded, because rows carry doubles.
        bool isRounded = false;
        bool isField = false;  ///< the name is that of a field, not a word
        bool hasWords = false; ///< the cells are words, not data
        std::string key = {};  ///< of the name's translation; empty if it is the name

        bool isNumber() const { return ::isNumber(storage); }
    };
    using Row = std::vector<std::optional<std::string>>;

    std::vector<Column> columns;
    std::vector<Row> rows;
    /// The number of key columns. These come first and identify a row.
    std::size_t keyCount = 0;
};

/// The value of a field in the current row; empty if it is missing. Sets `isRounded` in the column
/// if the value may have been rounded.
std::optional<std::string> cellText(EmbeddedHV::RowDataIterator& rows, std::size_t field,
                                    ResultTable::Column& column);
/// Names the columns whose numbers may be rounded, in one sentence; may be empty.
std::string roundedColumnsText(const std::vector<ResultTable::Column>& columns);

/// Reads all rows and disposes the iterator.
ResultTable readTable(EmbeddedHV::RowDataIterator& rows, std::size_t keyCount);

/// How a table is shown.
struct TableLook
{
    std::string form; ///< text, csv or json
    TextForm text = {};
};

void printTable(const ResultTable& table, const TableLook& look, std::ostream& out);

/// Writes the names of the columns as a csv line.
void printCsvNames(const std::vector<ResultTable::Column>& columns, std::ostream& out);
/// Writes a row as a csv line.
void printCsvRow(const ResultTable::Row& row, std::ostream& out);
