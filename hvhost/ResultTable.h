#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "CFField.h"
#include "ValueText.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// Rows of a job's output, as text. A missing value is nothing.
struct ResultTable
{
    /// A column's name and the kind of its values, which decides how they are aligned and quoted.
    struct Column
    {
        std::string name;
        CFField::StorageType storage = CFField::String;
        /// Whether it has whole numbers that may have been rounded: rows carry doubles.
        bool isRounded = false;

        bool isNumber() const { return ::isNumber(storage); }
    };
    using Row = std::vector<std::optional<std::string>>;

    std::vector<Column> columns;
    std::vector<Row> rows;
    /// So many columns, the first ones, tell the rows apart.
    std::size_t keyCount = 0;
};

/// The value of a field of the present row; nothing for a missing one. Notes in the column if it
/// may have been rounded.
std::optional<std::string> cellText(EmbeddedHV::RowDataIterator& rows, std::size_t field,
                                    ResultTable::Column& column);
/// A sentence that names the columns with numbers that may have been rounded; empty for none.
std::string roundedColumnsText(const std::vector<ResultTable::Column>& columns);

/// Reads all rows and disposes of the iterator.
ResultTable readTable(EmbeddedHV::RowDataIterator& rows, std::size_t keyCount);

/// How a table is shown.
struct TableLook
{
    std::string form;      ///< text, csv or json
    std::size_t width = 0; ///< of text
};

void printTable(const ResultTable& table, const TableLook& look, std::ostream& out);

/// The lines that a table as csv is made of.
void printCsvNames(const std::vector<ResultTable::Column>& columns, std::ostream& out);
void printCsvRow(const ResultTable::Row& row, std::ostream& out);
