#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "datafile/CsvReading.h"
#include "datafile/FieldNames.h"
#include "dialect/Aggregate.h"
#include "dialect/DateTimePattern.h"
#include "dialect/ValueType.h"
#include "functions/FunctionTable.h"

namespace EmbeddedHV {

/// A CSV file that a statement reads.
struct CsvSource
{
    std::string path;
    bool hasHeader = false;
    const datafile::Fields& columns; ///< borrowed
    datafile::CsvReading reading;
};

/// A column that replaces the one with the same name.
struct NewColumn
{
    std::string name;  ///< quoted
    std::string value; ///< SQL
};

/// The records that come first in an order.
struct LeadingRecords
{
    std::string columns; ///< of the result
    std::string from;    ///< a FROM item
    std::string order;   ///< terms of ORDER BY; empty: the order of the records
    std::string spare;   ///< a quoted name that no column has
    std::int64_t count;
};

/// A data file that a statement writes.
struct FileTarget
{
    std::string path;
    bool isCsv = false;              ///< else Parquet
    const datafile::Fields& columns; ///< of the records; borrowed
    /// An entry of a Parquet file's metadata.
    std::string key = {};
    std::string entry = {};
};

/// How a backend writes relations, names, literals, types and expressions in its SQL. Code above it
/// writes only SQL that all backends share. Has no state; any thread.
class Dialect
{
public:
    virtual ~Dialect() = default;

    /// A quoted name of a column or a table. Any text is one name.
    virtual std::string name(const std::string& name) const = 0;
    /// A string as a literal. No text can end the literal early.
    virtual std::string literal(const std::string& text) const = 0;
    /// A literal of type Integer.
    virtual std::string literal(std::int64_t value) const = 0;
    /// A literal of type Real that gives the same double back.
    virtual std::string literal(double value) const = 0;
    /// The name of a type. A null without a context is a Real.
    virtual const char* typeName(ValueType type) const = 0;

    /// The SQL of a form of a function. `form` is an element of kFunctions. $1 to $9 are the
    /// arguments, $* is all of them, and $where is the beginning of an error message, as a string.
    /// An argument needs no parentheses, and the result needs none.
    virtual std::string_view function(const Function& form) const = 0;
    /// The literal of a pattern, as an argument of `function`.
    virtual std::string pattern(const DateTimePattern& pattern) const = 0;

    /// The remainder of two Integers. The divisor is not 0.
    virtual std::string remainder(const std::string& left, const std::string& right) const = 0;
    /// A power of Reals. A result that is not a number is missing.
    virtual std::string power(const std::string& base, const std::string& exponent) const = 0;
    /// A list of Reals. `elements` are separated by commas.
    virtual std::string list(const std::string& elements) const = 0;
    /// A Real, or missing if it is infinite or not a number.
    virtual std::string finiteReal(const std::string& value) const = 0;
    /// A Real, or missing if it is not a number.
    virtual std::string orderedReal(const std::string& value) const = 0;
    /// A list as a text. If a number is missing or not finite, the text is missing. Exception: a
    /// list of three numbers may lack the third.
    virtual std::string listText(const std::string& list) const = 0;
    /// A value in another type, or missing if the other type cannot hold it exactly.
    virtual std::string exactly(const std::string& value, ValueType from, ValueType to) const = 0;
    /// A value on the scale of data models: a date in days and a timestamp in seconds since
    /// 1970-01-01, a time in seconds.
    virtual std::string onModelScale(const std::string& value, ValueType type) const = 0;
    /// An expression of the type that fails the statement with a text of raisedText. `text` is SQL.
    virtual std::string raised(const std::string& text, ValueType type) const = 0;

    /// A SELECT of one record for each combination of the keys, ordered by them; without keys, of
    /// one record. `from` is a FROM item, which the columns of the calls name `t`. Infinite and
    /// not-a-number Reals count as missing.
    virtual std::string aggregated(const std::string& from,
                                   const std::vector<AggregateColumn>& columns) const = 0;

    /// An item of a SELECT: the number of the record from 1, in the order of the records.
    virtual std::string recordNumber() const = 0;
    /// An item of a SELECT: an integer that grows in the order of the records. A cluster finds it
    /// without counting the records.
    virtual std::string recordOrder() const = 0;
    /// A SELECT of the leading records.
    virtual std::string leading(const LeadingRecords& records) const = 0;
    /// A SELECT of the first record of each combination of the keys, from records with a column of
    /// recordOrder.
    virtual std::string firstRecords(const std::string& columns, const std::string& from,
                                     const std::string& keys, const std::string& number) const = 0;
    /// A random integer that depends only on the number of a record and the seed.
    virtual std::string draw(const std::string& number, std::int64_t seed) const = 0;
    /// A draw as a Real from 0 to 1.
    virtual std::string drawnShare(const std::string& draw) const = 0;
    /// An item of a SELECT that repeats each record by its factor, a Real above 0. The fraction of
    /// the factor is the probability of one more copy; it depends only on the number of the record.
    /// A factor above `most` fails the statement with `fault`, a text of raisedText.
    virtual std::string copies(const std::string& factor, const std::string& number,
                               std::int64_t most, const std::string& fault) const = 0;
    /// The list of a SELECT of all fields, of which some have new values.
    virtual std::string replacedColumns(const datafile::Fields& fields,
                                        const std::vector<NewColumn>& replaced) const = 0;

    /// The FROM item that reads a CSV file. Only the embedded database has the next three: a
    /// cluster plans the reading of CSV files itself. They throw JobError otherwise.
    virtual std::string csvTable(const CsvSource& source) const;
    /// The second table that the read of a CsvSource makes with `rejects`.
    virtual std::string rejectScansOf(const std::string& rejects) const;
    /// A condition that is always true and needs the value of each column, so that no record passes
    /// that does not fit its types.
    virtual std::string readsAll(const std::string& columns) const;
    /// The FROM item that reads a Parquet file.
    virtual std::string parquetTable(const std::string& path) const = 0;
    /// The statement that writes the records of a SELECT to a file.
    virtual std::string fileOf(const std::string& select, const FileTarget& target) const = 0;

    /// The statement that creates a table from the records of a SELECT. `table` is a quoted name.
    virtual std::string newTable(const std::string& table, const std::string& select) const = 0;
    /// The statement that creates a table that only the session sees.
    virtual std::string newTemporaryTable(const std::string& table,
                                          const std::string& select) const = 0;
    /// The statement that appends the records of a SELECT to a table, column by column by name.
    virtual std::string addition(const std::string& table, const std::string& select) const = 0;

    /// The FROM item of the records with a column of their numbers. `from` is a FROM item, `number`
    /// a quoted name.
    std::string numbered(const std::string& from, const std::string& number) const
    {
        return "(SELECT *, " + recordNumber() + " AS " + number + " FROM " + from + ")";
    }
    /// The same with a column of recordOrder.
    std::string ordered(const std::string& from, const std::string& order) const
    {
        return "(SELECT *, " + recordOrder() + " AS " + order + " FROM " + from + ")";
    }
    /// A column list: quoted names, separated by commas.
    std::string columns(const datafile::Fields& fields) const;

    /// The expression as SQL of the type, to which it must be convertible.
    std::string as(const SqlExpression& expression, ValueType type) const
    {
        return expression.type == type ? expression.sql : cast(expression.sql, type);
    }
    std::string cast(const std::string& value, ValueType type) const
    {
        return "CAST(" + value + " AS " + typeName(type) + ")";
    }
};

} // namespace EmbeddedHV
