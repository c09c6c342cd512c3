#include "steps/StorageChange.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "DataFileNames.h"
#include "ErrorIds.h"
#include "datafile/ColumnTypes.h"
#include "datafile/RaisedFault.h"
#include "datafile/SqlQuoting.h"
#include "functions/FunctionTable.h"

namespace EmbeddedHV {
namespace {

/// A conversion between storages. $1 in the SQL is the value; the result is missing if the value
/// does not convert without loss. Without SQL, the language's function of that name parses the
/// text.
struct Conversion
{
    CFField::StorageType from;
    CFField::StorageType to;
    const char* sql;
    const char* function = nullptr;
};

constexpr Conversion kConversions[] = {
    // Not every integer beyond 2^53 is exact as a double.
    {CFField::Integer, CFField::Real,
     "CASE WHEN CAST(CAST($1 AS DOUBLE) AS HUGEINT) = $1 THEN CAST($1 AS DOUBLE) END"},
    {CFField::Real, CFField::Integer,
     "CASE WHEN TRY_CAST($1 AS BIGINT) = $1 THEN TRY_CAST($1 AS BIGINT) END"},
    {CFField::Integer, CFField::String, "CAST($1 AS VARCHAR)"},
    {CFField::Real, CFField::String, "CAST($1 AS VARCHAR)"},
    {CFField::Date, CFField::String, "CAST($1 AS VARCHAR)"},
    {CFField::Time, CFField::String, "CAST($1 AS VARCHAR)"},
    {CFField::Timestamp, CFField::String, "CAST($1 AS VARCHAR)"},
    {CFField::String, CFField::Integer, nullptr, "toInteger"},
    {CFField::String, CFField::Real, nullptr, "toReal"},
    {CFField::String, CFField::Date, nullptr, "toDate"},
    {CFField::String, CFField::Time, nullptr, "toTime"},
    {CFField::String, CFField::Timestamp, nullptr, "toTimestamp"},
    {CFField::String, CFField::String, "$1"}, // from Unknown
    {CFField::Date, CFField::Timestamp, "CAST($1 AS TIMESTAMP)"},
    {CFField::Timestamp, CFField::Date,
     "CASE WHEN CAST(CAST($1 AS DATE) AS TIMESTAMP) = $1 THEN CAST($1 AS DATE) END"},
};

/// The SQL of the function's form that takes one text.
std::string_view textForm(const Dialect& dialect, const char* function)
{
    const auto forms = formsOf(function);
    return dialect.function(*std::ranges::find(forms, "String", &Function::parameters));
}

/// A field of unknown storage contains texts.
CFField::StorageType storedAs(const CFField& field)
{
    return field.GetStorage() == CFField::Unknown ? CFField::String : field.GetStorage();
}

/// Null if the storages are not convertible.
const Conversion* conversionOf(CFField::StorageType from, CFField::StorageType to)
{
    const auto* found = std::ranges::find_if(kConversions, [&](const Conversion& known) {
        return known.from == from && known.to == to;
    });
    return found == std::end(kConversions) ? nullptr : found;
}

std::string filledIn(std::string_view sql, const std::string& value)
{
    constexpr std::string_view kPlace = "$1";
    std::string text(sql);
    for (auto at = text.find(kPlace); at != std::string::npos;
         at = text.find(kPlace, at + value.size()))
        text.replace(at, kPlace.size(), value);
    return text;
}

} // namespace

bool isConvertible(const CFField& field, CFField::StorageType storage)
{
    return field.GetStorage() == storage || conversionOf(storedAs(field), storage) != nullptr;
}

std::string convertedColumn(const Dialect& dialect, const CFField& field,
                            CFField::StorageType storage, const std::string& step)
{
    const std::string column = quotedIdentifier(field.GetName());
    if (field.GetStorage() == storage)
        return column;
    const auto from = storedAs(field);
    const Conversion* const found = conversionOf(from, storage);
    const std::string_view sql = found->sql ? found->sql : textForm(dialect, found->function);
    std::string missing = column + " IS NULL";
    if (from == CFField::String && storage != CFField::String)
        missing += " OR trim(" + column + ") = ''";
    // A text may be long, so the message shows only its beginning.
    const std::string begin = raisedText(
        errors::kConversion, {.step = step,
                              .field = field.GetName(),
                              .kind = storage == CFField::Integer ? kinds::kNotInteger : "",
                              .what = "a value of the field \"" + field.GetName() +
                                      "\" cannot be stored as " + WordOf(storage) + ": \""});
    const std::string fault =
        "error(" + quotedLiteral(begin) + " || left(CAST(" + column + " AS VARCHAR), 100) || '\"')";
    return "CASE WHEN " + missing + " THEN NULL ELSE coalesce(" + filledIn(sql, column) +
           ", CAST(" + fault + " AS " + sqlTypeOf(storage) + ")) END";
}

} // namespace EmbeddedHV
