#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "TextImport.h"
#include "datafile/Duck.h"

/// A way to read the texts of a column as values of another type.
struct ColumnForm
{
    enum class Order
    {
        Fixed,
        DayFirst,
        MonthFirst,
        ShortYear ///< recognized, but not read: the place of the year is unclear
    };
    std::string value; ///< an expression that is missing if the text has another form
    Order order = Order::Fixed;
};

/// A column of texts with its possible forms, in the order of preference.
struct TextColumn
{
    std::size_t index = 0;
    std::string name; ///< quoted, for SQL
    std::vector<ColumnForm> forms;
    // The rest is the result of chooseForms.
    std::string chosen;         ///< the expression; empty: the database reads the column
    bool isDayFirst = false;    ///< the month could be first as well
    bool hasShortYears = false; ///< all dates have a year of two digits
};

/// The forms of dates and timestamps. `type` is that of the result; VARCHAR means either.
std::vector<ColumnForm> dateForms(const std::string& name, const std::string& type);

/// Numbers with signs of currencies or percent, and the words true and false. `type` is BIGINT or
/// DOUBLE. The first form is that of numbers that the database reads itself.
std::vector<ColumnForm> numberForms(const std::string& name, const std::string& type,
                                    const TextImport& form);

/// Chooses the first form of each column that fits all its texts. Reads the table, in which the
/// columns are texts, at most twice. Throws duck::QueryError, and what `look` throws.
void chooseForms(datafile::duck::Connection& connection, const std::string& table,
                 std::vector<TextColumn>& columns, const std::function<void()>& look);
