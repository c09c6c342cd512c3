#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
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
    bool isPlain = false; ///< the database reads it itself, and names the line of an invalid value
};

/// A column of texts with its possible forms, in the order of preference.
struct TextColumn
{
    std::size_t index = 0;
    std::string name; ///< quoted, for SQL
    std::vector<ColumnForm> forms = {};
    bool needsForm = false; ///< a value without a form is an error
    // The rest is the result of chooseForms.
    std::string chosen{}; ///< the expression; empty: the database reads the column
    /// The first value that the best form does not fit.
    struct Misfit
    {
        std::uint64_t record = 0; ///< from 1
        std::string text;
    };
    std::optional<Misfit> misfit{}; ///< only if needsForm
    bool isDayFirst = false;        ///< the month could be first as well
    bool hasShortYears = false;     ///< all dates have a year of two digits
};

/// The forms of dates and timestamps. `type` is that of the result; VARCHAR means either.
std::vector<ColumnForm> dateForms(const std::string& name, const std::string& type);

/// Numbers with signs of currencies or percent, and the words true and false. `type` is BIGINT or
/// DOUBLE. The first form is that of numbers that the database reads itself.
std::vector<ColumnForm> numberForms(const std::string& name, const std::string& type,
                                    const TextImport& form);

/// The words true, yes, t, y and 1, and false, no, f, n and 0, in any letter case, as 1 and 0.
std::vector<ColumnForm> booleanForms(const std::string& name);
constexpr const char* kBooleanWords = "one of true, false, yes, no, t, f, y, n, 1 and 0";

/// Chooses the first form of each column that fits all its texts. Reads the table, in which the
/// columns are texts, at most twice, and once more for each misfit. Throws duck::QueryError, and
/// what `look` throws.
void chooseForms(datafile::duck::Connection& connection, const std::string& table,
                 std::vector<TextColumn>& columns, const std::function<void()>& look);
