#include "functions/FunctionTable.h"

#include <algorithm>

// Clamps an argument. The database's least and greatest ignore missing values, but a missing
// argument must stay missing.
#define CLAMPED(argument, low, high)                                                               \
    "CASE WHEN " argument " < " low " THEN " low " WHEN " argument " > " high " THEN " high        \
    " ELSE " argument " END"

// Shifts a date. The result is missing if it leaves the supported range of years. Otherwise the
// database would fail.
#define SHIFTED(shift, farthest)                                                                   \
    "CASE WHEN $2 BETWEEN -" farthest " AND " farthest " THEN $1 + " shift " END"

// Parses a text with one of several formats; missing if none fits. The digit test rejects
// "infinity" and "epoch", which the database accepts in every format.
#define PARSED(formats)                                                                            \
    "CASE WHEN regexp_matches($1, '[0-9]') THEN try_strptime($1, " formats ") END"

// Parses a text with a pattern. strptime turns day 366 of a 365-day year into 1 January. Detect and
// reject it: the result is the first day of a year, and the text also fits the pattern with a
// literal 366 for the day.
#define WITH_DAY_366(pattern) "regexp_replace(" pattern ", '(^|[^%])((%%)*)%j', '\\1\\2366')"
#define PARSED_BY(pattern)                                                                         \
    "CASE WHEN NOT (" WITH_DAY_366(                                                                \
        pattern) " <> " pattern                                                                    \
                 " AND dayofyear(" PARSED(pattern) ") = 1 AND try_strptime($1, " WITH_DAY_366(     \
                     pattern) ") IS NOT NULL) THEN " PARSED(pattern) " END"

#define ISO_DATE "'%Y-%m-%d'"
#define ISO_TIMES "['%H:%M:%S.%f', '%H:%M:%S', '%H:%M']"
#define ISO_TIMESTAMPS                                                                             \
    "['%Y-%m-%d %H:%M:%S.%f', '%Y-%m-%d %H:%M:%S', '%Y-%m-%d %H:%M', '%Y-%m-%d', "                 \
    "'%Y-%m-%dT%H:%M:%S.%f', '%Y-%m-%dT%H:%M:%S', '%Y-%m-%dT%H:%M']"

#define DATE_OF_PARTS                                                                              \
    "TRY_CAST((CAST($1 AS VARCHAR) || '-' || CAST($2 AS VARCHAR) || '-' || "                       \
    "CAST($3 AS VARCHAR)) AS DATE)"
#define IS_DATE_PARTS "$1 BETWEEN 1 AND 9999 AND $2 BETWEEN 1 AND 12 AND $3 BETWEEN 1 AND 31"

namespace EmbeddedHV {
namespace {

// The database raises an error where a function is undefined, for example the logarithm of zero.
// The result should be a missing value instead, so such arguments are excluded.
constexpr Function kFunctions[] = {
    // Conversions. A text that does not convert gives a missing value.
    {"toReal", "Number", "Real", "CAST($1 AS DOUBLE)"},
    {"toReal", "String", "Real",
     "CASE WHEN isfinite(TRY_CAST($1 AS DOUBLE)) AND NOT contains($1, '_') "
     "THEN TRY_CAST($1 AS DOUBLE) END"},
    {"toReal", "Boolean", "Real", "CAST($1 AS DOUBLE)"},
    {"toInteger", "Integer", "Integer", "$1"},
    {"toInteger", "Real", "Integer", "TRY_CAST(trunc($1) AS BIGINT)"},
    {"toInteger", "String", "Integer",
     "CASE WHEN regexp_full_match($1, '\\s*[+-]?[0-9]+\\s*') THEN TRY_CAST($1 AS BIGINT) END"},
    {"toInteger", "Boolean", "Integer", "CAST($1 AS BIGINT)"},
    {"toString", "String", "String", "$1"},
    {"toString", "Number", "String", "CAST($1 AS VARCHAR)"},
    {"toString", "Boolean", "String", "CAST($1 AS VARCHAR)"},
    {"toString", "Date", "String", "CAST($1 AS VARCHAR)"},
    {"toString", "Time", "String", "CAST($1 AS VARCHAR)"},
    {"toString", "Timestamp", "String", "CAST($1 AS VARCHAR)"},
    {"toDate", "String", "Date", "CAST(" PARSED(ISO_DATE) " AS DATE)"},
    {"toDate", "String, Pattern", "Date", "CAST(" PARSED_BY("$2") " AS DATE)"},
    {"toDate", "Date", "Date", "$1"},
    {"toDate", "Timestamp", "Date", "CAST($1 AS DATE)"},
    {"toTime", "String", "Time", "CAST(" PARSED(ISO_TIMES) " AS TIME)"},
    {"toTime", "String, Pattern", "Time", "CAST(" PARSED("$2") " AS TIME)"},
    {"toTime", "Time", "Time", "$1"},
    {"toTime", "Timestamp", "Time", "CAST($1 AS TIME)"},
    {"toTimestamp", "String", "Timestamp", PARSED(ISO_TIMESTAMPS)},
    {"toTimestamp", "String, Pattern", "Timestamp", PARSED_BY("$2")},
    {"toTimestamp", "Timestamp", "Timestamp", "$1"},
    {"toTimestamp", "String, Pattern, Pattern, Pattern, String, Date", "Timestamp",
     "CASE WHEN trim($1) <> '' THEN coalesce(" PARSED("$2") ", " PARSED(
         "$3") ", "
               "$6 + CAST(" PARSED("$4") " AS TIME), "
                                         "CAST(error($where || 'toTimestamp cannot convert \"' || "
                                         "$1 || '\"') AS TIMESTAMP)) END"},
    {"toTimestamp", "Time, Pattern, Pattern, Pattern, String, Date", "Timestamp", "($6 + $1)"},
    {"toTimestamp", "Timestamp, Pattern, Pattern, Pattern, String, Date", "Timestamp", "$1"},

    // Dates and times.
    {"date", "Integer, Integer, Integer", "Date",
     "CASE WHEN " IS_DATE_PARTS " THEN " DATE_OF_PARTS " END"},
    {"time", "Integer, Integer, Real", "Time",
     "CASE WHEN $1 BETWEEN 0 AND 23 AND $2 BETWEEN 0 AND 59 AND $3 >= 0 AND $3 < 60 "
     "THEN NULLIF(make_time($1, $2, $3), TIME '24:00:00') END"}, // rounding may give 24:00
    {"timestamp", "Integer, Integer, Integer, Integer, Integer, Real", "Timestamp",
     "CASE WHEN " IS_DATE_PARTS " AND $4 BETWEEN 0 AND 23 AND $5 BETWEEN 0 AND 59 AND $6 >= 0 "
     "AND $6 < 60 THEN " DATE_OF_PARTS " + make_time($4, $5, $6) END"},
    {"year", "Timestamp", "Integer", "year($1)"},
    {"quarter", "Timestamp", "Integer", "quarter($1)"},
    {"month", "Timestamp", "Integer", "month($1)"},
    {"week", "Timestamp", "Integer", "week($1)"},
    {"day", "Timestamp", "Integer", "day($1)"},
    {"dayOfYear", "Timestamp", "Integer", "dayofyear($1)"},
    {"dayOfWeek", "Timestamp", "Integer", "isodow($1)"},
    {"hour", "Time", "Integer", "hour($1)"},
    {"hour", "Timestamp", "Integer", "hour($1)"},
    {"minute", "Time", "Integer", "minute($1)"},
    {"minute", "Timestamp", "Integer", "minute($1)"},
    {"second", "Time", "Integer", "second($1)"},
    {"second", "Timestamp", "Integer", "second($1)"},
    {"addDays", "Date, Integer", "Date",
     "CAST(" SHIFTED("to_days(CAST($2 AS INTEGER))", "4000000") " AS DATE)"},
    {"addDays", "Timestamp, Integer", "Timestamp",
     SHIFTED("to_days(CAST($2 AS INTEGER))", "4000000")},
    {"addMonths", "Date, Integer", "Date",
     "CAST(" SHIFTED("to_months(CAST($2 AS INTEGER))", "120000") " AS DATE)"},
    {"addMonths", "Timestamp, Integer", "Timestamp",
     SHIFTED("to_months(CAST($2 AS INTEGER))", "120000")},
    {"addSeconds", "Timestamp, Real", "Timestamp",
     SHIFTED("to_microseconds(CAST(round($2 * 1e6) AS BIGINT))", "350000000000")},
    {"daysBetween", "Date, Date", "Integer", "date_diff('day', $1, $2)"},
    {"daysBetween", "Timestamp, Timestamp", "Integer", "date_diff('day', $1, $2)"},
    {"secondsBetween", "Time, Time", "Real", "((epoch_us($2) - epoch_us($1)) / 1e6)"},
    {"secondsBetween", "Timestamp, Timestamp", "Real", "((epoch_us($2) - epoch_us($1)) / 1e6)"},

    // Text. Positions count characters from 1.
    {"length", "String", "Integer", "length($1)"},
    {"lower", "String", "String", "lower($1)"},
    {"upper", "String", "String", "upper($1)"},
    {"trim", "String", "String", "trim($1)"},
    {"ltrim", "String", "String", "ltrim($1)"},
    {"rtrim", "String", "String", "rtrim($1)"},
    {"substring", "String, Integer", "String",
     "substring($1, " CLAMPED("$2", "1", "2147483647") ")"},
    {"substring", "String, Integer, Integer", "String",
     "substring($1, " CLAMPED("$2", "1", "2147483647") ", " CLAMPED("$3", "0", "2147483647") ")"},
    {"startsWith", "String, String", "Boolean", "starts_with($1, $2)"},
    {"endsWith", "String, String", "Boolean", "ends_with($1, $2)"},
    {"contains", "String, String", "Boolean", "contains($1, $2)"},
    {"indexOf", "String, String", "Integer", "strpos($1, $2)"},
    {"replace", "String, String, String", "String", "replace($1, $2, $3)"},
    {"concat", "String...", "String", "concat($*)"},
    {"split", "String, String, Integer", "String",
     "CASE WHEN $3 >= 1 THEN split_part($1, $2, $3) END"},
    {"padLeft", "String, Integer, String", "String",
     "CASE WHEN length($1) >= $2 THEN $1 WHEN $2 <= 32767 "
     "THEN lpad($1, CAST($2 AS INTEGER), NULLIF($3, '')) END"},
    {"padRight", "String, Integer, String", "String",
     "CASE WHEN length($1) >= $2 THEN $1 WHEN $2 <= 32767 "
     "THEN rpad($1, CAST($2 AS INTEGER), NULLIF($3, '')) END"},

    // Numbers.
    {"abs", "Integer", "Integer", "abs($1)"},
    {"abs", "Real", "Real", "abs($1)"},
    {"sign", "Number", "Integer", "CAST(sign($1) AS BIGINT)"},
    {"floor", "Integer", "Integer", "$1"},
    {"floor", "Real", "Real", "floor($1)"},
    {"ceiling", "Integer", "Integer", "$1"},
    {"ceiling", "Real", "Real", "ceil($1)"},
    {"truncate", "Integer", "Integer", "$1"},
    {"truncate", "Real", "Real", "trunc($1)"},
    {"round", "Integer", "Integer", "$1"},
    {"round", "Real", "Real", "round($1)"},
    {"round", "Real, Integer", "Real",
     "round($1, CAST(" CLAMPED("$2", "-400", "400") " AS INTEGER))"},
    {"sqrt", "Real", "Real", "CASE WHEN $1 >= 0 THEN sqrt($1) END"},
    {"exp", "Real", "Real", "exp($1)"},
    {"ln", "Real", "Real", "CASE WHEN $1 > 0 THEN ln($1) END"},
    {"log10", "Real", "Real", "CASE WHEN $1 > 0 THEN log10($1) END"},
    {"power", "Real, Real", "Real", "NULLIF(pow($1, $2), CAST('nan' AS DOUBLE))"},
    {"min", "Same...", "Same", "least($*)"},
    {"max", "Same...", "Same", "greatest($*)"},
    {"sin", "Real", "Real", "CASE WHEN isfinite($1) THEN sin($1) END"},
    {"cos", "Real", "Real", "CASE WHEN isfinite($1) THEN cos($1) END"},
    {"tan", "Real", "Real", "CASE WHEN isfinite($1) THEN tan($1) END"},
    {"asin", "Real", "Real", "CASE WHEN $1 BETWEEN -1 AND 1 THEN asin($1) END"},
    {"acos", "Real", "Real", "CASE WHEN $1 BETWEEN -1 AND 1 THEN acos($1) END"},
    {"atan", "Real", "Real", "atan($1)"},
    {"atan2", "Real, Real", "Real", "atan2($1, $2)"},
    {"pi", "", "Real", "pi()"},

    // Missing values.
    {"isMissing", "Any", "Boolean", "($1 IS NULL)"},
    {"ifMissing", "Same, Same", "Same", "coalesce($1, $2)"},
    {"nullIf", "Same, Same", "Same", "NULLIF($1, $2)"},
};

} // namespace

std::span<const Function> functionTable()
{
    return kFunctions;
}

std::span<const Function> formsOf(std::string_view name)
{
    const auto* first = std::ranges::find(kFunctions, name, &Function::name);
    const auto* last = std::find_if(first, std::end(kFunctions), [name](const Function& function) {
        return function.name != name;
    });
    return {first, last};
}

bool isFunction(std::string_view name)
{
    return !formsOf(name).empty();
}

} // namespace EmbeddedHV
