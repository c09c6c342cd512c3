#include <algorithm>
#include <array>
#include <string_view>

#include "duckdb/DuckDialect.h"

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

/// The SQL of a form of a function.
struct FunctionSql
{
    std::string_view name;
    std::string_view parameters;
    std::string_view sql;
};

/// The forms of kFunctions in their order. The database raises an error where a function is
/// undefined, for example the logarithm of zero. The result should be a missing value instead, so
/// such arguments are excluded.
constexpr FunctionSql kFunctionSql[] = {
    // Conversions. A text that does not convert gives a missing value.
    {"toReal", "Number", "CAST($1 AS DOUBLE)"},
    {"toReal", "String",
     // The database reads 1_000 and +-1.
     "CASE WHEN isfinite(TRY_CAST($1 AS DOUBLE)) AND NOT regexp_matches($1, '_|[+]-') "
     "THEN TRY_CAST($1 AS DOUBLE) END"},
    {"toReal", "Boolean", "CAST($1 AS DOUBLE)"},
    {"toInteger", "Integer", "$1"},
    {"toInteger", "Real", "TRY_CAST(trunc($1) AS BIGINT)"},
    {"toInteger", "String",
     "CASE WHEN regexp_full_match($1, '\\s*[+-]?[0-9]+\\s*') THEN TRY_CAST($1 AS BIGINT) END"},
    {"toInteger", "Boolean", "CAST($1 AS BIGINT)"},
    {"toString", "String", "$1"},
    {"toString", "Number", "CAST($1 AS VARCHAR)"},
    {"toString", "Boolean", "CAST($1 AS VARCHAR)"},
    {"toString", "Date", "CAST($1 AS VARCHAR)"},
    {"toString", "Time", "CAST($1 AS VARCHAR)"},
    {"toString", "Timestamp", "CAST($1 AS VARCHAR)"},
    {"toDate", "String", "CAST(" PARSED(ISO_DATE) " AS DATE)"},
    {"toDate", "String, Pattern", "CAST(" PARSED_BY("$2") " AS DATE)"},
    {"toDate", "Date", "$1"},
    {"toDate", "Timestamp", "CAST($1 AS DATE)"},
    {"toTime", "String", "CAST(" PARSED(ISO_TIMES) " AS TIME)"},
    {"toTime", "String, Pattern", "CAST(" PARSED("$2") " AS TIME)"},
    {"toTime", "Time", "$1"},
    {"toTime", "Timestamp", "CAST($1 AS TIME)"},
    {"toTimestamp", "String", PARSED(ISO_TIMESTAMPS)},
    {"toTimestamp", "String, Pattern", PARSED_BY("$2")},
    {"toTimestamp", "Timestamp", "$1"},
    {"toTimestamp", "String, Pattern, Pattern, Pattern, String, Date",
     "CASE WHEN trim($1) <> '' THEN coalesce(" PARSED("$2") ", " PARSED(
         "$3") ", "
               "$6 + CAST(" PARSED("$4") " AS TIME), "
                                         "CAST(error($where || 'toTimestamp cannot convert \"' || "
                                         "$1 || '\"') AS TIMESTAMP)) END"},
    {"toTimestamp", "Time, Pattern, Pattern, Pattern, String, Date", "($6 + $1)"},
    {"toTimestamp", "Timestamp, Pattern, Pattern, Pattern, String, Date", "$1"},

    // Dates and times.
    {"date", "Integer, Integer, Integer", "CASE WHEN " IS_DATE_PARTS " THEN " DATE_OF_PARTS " END"},
    {"time", "Integer, Integer, Real",
     "CASE WHEN $1 BETWEEN 0 AND 23 AND $2 BETWEEN 0 AND 59 AND $3 >= 0 AND $3 < 60 "
     "THEN NULLIF(make_time($1, $2, $3), TIME '24:00:00') END"}, // rounding may give 24:00
    {"timestamp", "Integer, Integer, Integer, Integer, Integer, Real",
     "CASE WHEN " IS_DATE_PARTS " AND $4 BETWEEN 0 AND 23 AND $5 BETWEEN 0 AND 59 AND $6 >= 0 "
     "AND $6 < 60 THEN " DATE_OF_PARTS " + make_time($4, $5, $6) END"},
    {"year", "Timestamp", "year($1)"},
    {"quarter", "Timestamp", "quarter($1)"},
    {"month", "Timestamp", "month($1)"},
    {"week", "Timestamp", "week($1)"},
    {"day", "Timestamp", "day($1)"},
    {"dayOfYear", "Timestamp", "dayofyear($1)"},
    {"dayOfWeek", "Timestamp", "isodow($1)"},
    {"hour", "Time", "hour($1)"},
    {"hour", "Timestamp", "hour($1)"},
    {"minute", "Time", "minute($1)"},
    {"minute", "Timestamp", "minute($1)"},
    {"second", "Time", "second($1)"},
    {"second", "Timestamp", "second($1)"},
    {"addDays", "Date, Integer",
     "CAST(" SHIFTED("to_days(CAST($2 AS INTEGER))", "4000000") " AS DATE)"},
    {"addDays", "Timestamp, Integer", SHIFTED("to_days(CAST($2 AS INTEGER))", "4000000")},
    {"addMonths", "Date, Integer",
     "CAST(" SHIFTED("to_months(CAST($2 AS INTEGER))", "120000") " AS DATE)"},
    {"addMonths", "Timestamp, Integer", SHIFTED("to_months(CAST($2 AS INTEGER))", "120000")},
    {"addSeconds", "Timestamp, Real",
     SHIFTED("to_microseconds(CAST(round($2 * 1e6) AS BIGINT))", "350000000000")},
    {"daysBetween", "Date, Date", "date_diff('day', $1, $2)"},
    {"daysBetween", "Timestamp, Timestamp", "date_diff('day', $1, $2)"},
    {"secondsBetween", "Time, Time", "((epoch_us($2) - epoch_us($1)) / 1e6)"},
    {"secondsBetween", "Timestamp, Timestamp", "((epoch_us($2) - epoch_us($1)) / 1e6)"},

    // Text. Positions count characters from 1.
    {"length", "String", "length($1)"},
    {"lower", "String", "lower($1)"},
    {"upper", "String", "upper($1)"},
    {"trim", "String", "trim($1)"},
    {"ltrim", "String", "ltrim($1)"},
    {"rtrim", "String", "rtrim($1)"},
    {"substring", "String, Integer", "substring($1, " CLAMPED("$2", "1", "2147483647") ")"},
    {"substring", "String, Integer, Integer",
     "substring($1, " CLAMPED("$2", "1", "2147483647") ", " CLAMPED("$3", "0", "2147483647") ")"},
    {"startsWith", "String, String", "starts_with($1, $2)"},
    {"endsWith", "String, String", "ends_with($1, $2)"},
    {"contains", "String, String", "contains($1, $2)"},
    {"indexOf", "String, String", "strpos($1, $2)"},
    {"replace", "String, String, String", "replace($1, $2, $3)"},
    {"concat", "String...", "concat($*)"},
    {"split", "String, String, Integer", "CASE WHEN $3 >= 1 THEN split_part($1, $2, $3) END"},
    {"padLeft", "String, Integer, String",
     "CASE WHEN length($1) >= $2 THEN $1 WHEN $2 <= 32767 "
     "THEN lpad($1, CAST($2 AS INTEGER), NULLIF($3, '')) END"},
    {"padRight", "String, Integer, String",
     "CASE WHEN length($1) >= $2 THEN $1 WHEN $2 <= 32767 "
     "THEN rpad($1, CAST($2 AS INTEGER), NULLIF($3, '')) END"},

    // Numbers.
    {"abs", "Integer", "abs($1)"},
    {"abs", "Real", "abs($1)"},
    {"sign", "Number", "CAST(sign($1) AS BIGINT)"},
    {"floor", "Integer", "$1"},
    {"floor", "Real", "floor($1)"},
    {"ceiling", "Integer", "$1"},
    {"ceiling", "Real", "ceil($1)"},
    {"truncate", "Integer", "$1"},
    {"truncate", "Real", "trunc($1)"},
    {"round", "Integer", "$1"},
    {"round", "Real", "round($1)"},
    {"round", "Real, Integer", "round($1, CAST(" CLAMPED("$2", "-400", "400") " AS INTEGER))"},
    {"sqrt", "Real", "CASE WHEN $1 >= 0 THEN sqrt($1) END"},
    {"exp", "Real", "exp($1)"},
    {"ln", "Real", "CASE WHEN $1 > 0 THEN ln($1) END"},
    {"log10", "Real", "CASE WHEN $1 > 0 THEN log10($1) END"},
    {"power", "Real, Real", "NULLIF(pow($1, $2), CAST('nan' AS DOUBLE))"},
    {"min", "Same...", "least($*)"},
    {"max", "Same...", "greatest($*)"},
    {"sin", "Real", "CASE WHEN isfinite($1) THEN sin($1) END"},
    {"cos", "Real", "CASE WHEN isfinite($1) THEN cos($1) END"},
    {"tan", "Real", "CASE WHEN isfinite($1) THEN tan($1) END"},
    {"asin", "Real", "CASE WHEN $1 BETWEEN -1 AND 1 THEN asin($1) END"},
    {"acos", "Real", "CASE WHEN $1 BETWEEN -1 AND 1 THEN acos($1) END"},
    {"atan", "Real", "atan($1)"},
    {"atan2", "Real, Real", "atan2($1, $2)"},
    {"pi", "", "pi()"},

    // Missing values.
    {"isMissing", "Any", "($1 IS NULL)"},
    {"ifMissing", "Same, Same", "coalesce($1, $2)"},
    {"nullIf", "Same, Same", "NULLIF($1, $2)"},
};

constexpr bool isForm(const FunctionSql& written, const Function& form)
{
    return written.name == form.name && written.parameters == form.parameters;
}
static_assert(std::ranges::equal(kFunctionSql, kFunctions, isForm));

} // namespace

std::string_view DuckDialect::function(const Function& form) const
{
    return kFunctionSql[&form - kFunctions].sql;
}

} // namespace EmbeddedHV
