#include "steps/StorageChange.h"

#include <algorithm>
#include <iterator>

#include "DataFileNames.h"
#include "ErrorIds.h"
#include "datafile/RaisedFault.h"
#include "expression/FieldTypes.h"
#include "expression/FunctionCall.h"

namespace EmbeddedHV {
namespace {

/// A conversion between storages. A text is parsed by the language's function of that name.
struct Conversion
{
    CFField::StorageType from;
    CFField::StorageType to;
    const char* function = nullptr; ///< null: the dialect converts
};

constexpr Conversion kConversions[] = {
    {CFField::Integer, CFField::Real},
    {CFField::Real, CFField::Integer},
    {CFField::Integer, CFField::String},
    {CFField::Real, CFField::String},
    {CFField::Date, CFField::String},
    {CFField::Time, CFField::String},
    {CFField::Timestamp, CFField::String},
    {CFField::String, CFField::Integer, "toInteger"},
    {CFField::String, CFField::Real, "toReal"},
    {CFField::String, CFField::Date, "toDate"},
    {CFField::String, CFField::Time, "toTime"},
    {CFField::String, CFField::Timestamp, "toTimestamp"},
    {CFField::String, CFField::String}, // from Unknown
    {CFField::Date, CFField::Timestamp},
    {CFField::Timestamp, CFField::Date},
};

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

/// The value, or missing if the new storage cannot hold it.
std::string convertedValue(const Dialect& dialect, const Conversion& conversion,
                           const std::string& column)
{
    if (conversion.function)
        return functionSql(dialect, conversion.function, "String", {column});
    return dialect.exactly(column, valueTypeOf(conversion.from), valueTypeOf(conversion.to));
}

} // namespace

bool isConvertible(const CFField& field, CFField::StorageType storage)
{
    return field.GetStorage() == storage || conversionOf(storedAs(field), storage) != nullptr;
}

std::string convertedColumn(const Dialect& dialect, const CFField& field,
                            CFField::StorageType storage, const std::string& step)
{
    std::string column = dialect.name(field.GetName());
    if (field.GetStorage() == storage)
        return column;
    const auto from = storedAs(field);
    const Conversion* const found = conversionOf(from, storage);
    std::string missing = column + " IS NULL";
    if (from == CFField::String && storage != CFField::String)
        missing += " OR " + functionSql(dialect, "trim", "String", {column}) + " = ''";
    // A text may be long, so the message shows only its beginning.
    const std::string begin = raisedText(
        errors::kConversion, {.step = step,
                              .field = field.GetName(),
                              .kind = storage == CFField::Integer ? kinds::kNotInteger : "",
                              .what = "a value of the field \"" + field.GetName() +
                                      "\" cannot be stored as " + WordOf(storage) + ": \""});
    const ValueType type = valueTypeOf(storage);
    const std::string shown =
        "left(" + dialect.exactly(column, valueTypeOf(from), ValueType::String) + ", 100)";
    const std::string fault =
        dialect.raised(dialect.literal(begin) + " || " + shown + " || '\"'", type);
    return "CASE WHEN " + missing + " THEN NULL ELSE coalesce(" +
           convertedValue(dialect, *found, column) + ", " + fault + ") END";
}

} // namespace EmbeddedHV
