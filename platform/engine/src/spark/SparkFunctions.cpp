#include <algorithm>
#include <array>
#include <string_view>

#include "spark/SparkDialect.h"
#include "spark/SparkPatterns.h"
#include "spark/SparkSql.h"

// Clamps an argument. The server's least and greatest ignore missing values, but a missing argument
// must stay missing.
#define HV_SPARK_CLAMPED(argument, low, high)                                                      \
    "CAST(CASE WHEN " argument " < " low " THEN " low " WHEN " argument " > " high " THEN " high   \
    " ELSE " argument " END AS INT)"

#define HV_SPARK_POSITION(argument) HV_SPARK_CLAMPED(argument, "1", "2147483647")

// Shifts a date. The result is missing if it leaves the supported range of years.
#define HV_SPARK_SHIFTED(shift, farthest)                                                          \
    "CASE WHEN $2 BETWEEN -" farthest " AND " farthest " THEN " shift " END"

// The fields of a text that fits an expression, as texts: year, year of century, month, name of a
// month, day, day of the year, hour, hour of the half day, minute, second, fraction, half of the
// day. A field that the text lacks is empty.
#define HV_SPARK_FIELDS                                                                            \
    "'\\u0024{y},\\u0024{c},\\u0024{M},\\u0024{N},\\u0024{d},\\u0024{D},"                          \
    "\\u0024{H},\\u0024{h},\\u0024{m},\\u0024{s},\\u0024{f},\\u0024{a}'"

// A year of the century is from 1969 to 2068. The default is 1900-01-01 00:00:00.
#define HV_SPARK_YEAR_VALUE                                                                        \
    "coalesce(try_cast(hv_f[0] AS INT), pmod(try_cast(hv_f[1] AS INT) + 31, 100) + 1969, 1900)"
#define HV_SPARK_MONTH_VALUE                                                                       \
    "coalesce(try_cast(hv_f[2] AS INT), CAST((instr('janfebmaraprmayjunjulaugsepoctnovdec', "      \
    "lower(left(nullif(hv_f[3], ''), 3))) + 2) / 3 AS INT), 1)"
#define HV_SPARK_DAY_VALUE "coalesce(try_cast(hv_f[4] AS INT), 1)"
// Day 366 is counted from the leap day, which not every year has.
#define HV_SPARK_OF_LEAP_DAY(value, other)                                                         \
    "CASE try_cast(hv_f[5] AS INT) WHEN 366 THEN " value " ELSE " other " END"
#define HV_SPARK_DAYS_LATER HV_SPARK_OF_LEAP_DAY("306", "coalesce(try_cast(hv_f[5] AS INT) - 1, 0)")
#define HV_SPARK_HOUR_VALUE "coalesce(try_cast(hv_f[6] AS INT), try_cast(hv_f[7] AS INT), 0)"
#define HV_SPARK_HOUR_OF_DAY                                                                       \
    "CASE WHEN hv_f[11] = '' THEN " HV_SPARK_HOUR_VALUE " WHEN " HV_SPARK_HOUR_VALUE               \
    " <= 12 THEN " HV_SPARK_HOUR_VALUE                                                             \
    " % 12 + CASE lower(hv_f[11]) WHEN 'p' THEN 12 ELSE 0 END END"
#define HV_SPARK_SECONDS "CAST(concat('0', hv_f[9], '.', hv_f[10], '0') AS DECIMAL(16, 6))"

// Parses a text; missing if it does not fit the expression or if there is no such day.
#define HV_SPARK_PARSED(expression)                                                                \
    HV_SPARK_LET(                                                                                  \
        "hv_f",                                                                                    \
        "CASE WHEN $1 RLIKE " expression " THEN split(regexp_replace($1, " expression              \
        ", " HV_SPARK_FIELDS "), ',') END",                                                        \
        "timestampadd(DAY, " HV_SPARK_DAYS_LATER ", try_make_timestamp_ntz(" HV_SPARK_YEAR_VALUE   \
        ", " HV_SPARK_OF_LEAP_DAY("2", HV_SPARK_MONTH_VALUE) ", " HV_SPARK_OF_LEAP_DAY(            \
            "29", HV_SPARK_DAY_VALUE) ", " HV_SPARK_HOUR_OF_DAY                                    \
                                      ", coalesce(try_cast(hv_f[8] AS INT), 0), " HV_SPARK_SECONDS \
                                      "))")

#define HV_SPARK_ISO_DAY HV_SPARK_YEAR "-" HV_SPARK_MONTH "-" HV_SPARK_DAY
#define HV_SPARK_ISO_TIME                                                                          \
    HV_SPARK_HOUR ":" HV_SPARK_MINUTE "(?::" HV_SPARK_SECOND "(?:[.]" HV_SPARK_MICROSECONDS ")?)?"
#define HV_SPARK_NO_DAY HV_SPARK_NO("y") HV_SPARK_NO("M") HV_SPARK_NO("d")
#define HV_SPARK_NO_TIME HV_SPARK_NO("H") HV_SPARK_NO("m") HV_SPARK_NO("s") HV_SPARK_NO("f")
// The fields that no text of ISO 8601 has here.
#define HV_SPARK_NO_OTHER                                                                          \
    HV_SPARK_NO("c") HV_SPARK_NO("N") HV_SPARK_NO("D") HV_SPARK_NO("h") HV_SPARK_NO("a")
#define HV_SPARK_ISO(body, missing) "'" HV_SPARK_WHOLE("\\\\", body) missing HV_SPARK_NO_OTHER "'"
#define HV_SPARK_ISO_DATES HV_SPARK_ISO(HV_SPARK_ISO_DAY, HV_SPARK_NO_TIME)
#define HV_SPARK_ISO_TIMES HV_SPARK_ISO(HV_SPARK_ISO_TIME, HV_SPARK_NO_DAY)
#define HV_SPARK_ISO_TIMESTAMPS                                                                    \
    HV_SPARK_ISO(HV_SPARK_ISO_DAY "(?:(?:\\\\s++|T)" HV_SPARK_ISO_TIME ")?", "")

// Microseconds between two moments, and seconds as microseconds.
#define HV_SPARK_MIDNIGHT "TIMESTAMP_NTZ '1970-01-01 00:00:00'"
#define HV_SPARK_TIME_OF(moment)                                                                   \
    "time_from_micros(pmod(timestampdiff(MICROSECOND, " HV_SPARK_MIDNIGHT ", " moment              \
    "), 86400000000))"
#define HV_SPARK_MICROS(seconds) "CAST(round(" seconds " * 1e6D) AS BIGINT)"

#define HV_SPARK_IS_DATE_PARTS                                                                     \
    "$1 BETWEEN 1 AND 9999 AND $2 BETWEEN 1 AND 12 AND $3 BETWEEN 1 AND 31"
#define HV_SPARK_DATE_OF_PARTS                                                                     \
    "try_make_timestamp_ntz(CAST($1 AS INT), CAST($2 AS INT), CAST($3 AS INT), 0, 0, 0)"
#define HV_SPARK_IS_TIME_PARTS(hour, minute, second)                                               \
    hour " BETWEEN 0 AND 23 AND " minute " BETWEEN 0 AND 59 AND " second " >= 0 AND " second " < " \
         "60"
#define HV_SPARK_TIME_PARTS(hour, minute, second)                                                  \
    "((" hour " * 60 + " minute ") * 60000000 + " HV_SPARK_MICROS(second) ")"

// A character changes case only if that gives one character; a sharp s has a capital one.
#define HV_SPARK_SHARP_S "translate($1, '\\u00df', '\\u1e9e')"

// The blanks of Unicode.
#define HV_SPARK_BLANKS                                                                            \
    "' "                                                                                           \
    "\\u00a0\\u1680\\u2000\\u2001\\u2002\\u2003\\u2004\\u2005\\u2006\\u2007\\u2008\\u2009\\u200a"  \
    "\\u202f\\u205f\\u3000'"

// The server's own floor and ceil are integers. Reals from 2^52 on are whole.
#define HV_SPARK_HAS_FRACTION(value) value " <> 0 AND abs(" value ") < 4503599627370496D"
#define HV_SPARK_DOWN(value) "CAST(floor(" value ") AS DOUBLE)"

// Rounds a number above 0 to a number of digits, like the embedded database: digits that a binary
// number does not have exactly do not count as halves.
#define HV_SPARK_ROUNDED(value)                                                                    \
    "CASE WHEN hv_r.n >= 0 THEN round(" value " * power(10D, hv_r.n)) / power(10D, hv_r.n) "       \
    "ELSE round(" value " / power(10D, - hv_r.n)) * power(10D, - hv_r.n) END"

namespace EmbeddedHV {
namespace {

/// The SQL of a form of a function.
struct SparkFunction
{
    std::string_view name;
    std::string_view parameters;
    std::string_view sql;
};

/// The forms of kFunctions in their order.
constexpr SparkFunction kSparkFunctions[] = {
    // Conversions. A text that does not convert gives a missing value.
    {"toReal", "Number", "CAST($1 AS DOUBLE)"},
    {"toReal", "String",
     "nullif(nullif(CASE WHEN $1 RLIKE "
     "'^\\\\s*[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][+-]?[0-9]+)?\\\\s*\\\\z' "
     "THEN try_cast($1 AS DOUBLE) END, " HV_SPARK_INFINITY "), - " HV_SPARK_INFINITY ")"},
    {"toReal", "Boolean", "CAST($1 AS DOUBLE)"},
    {"toInteger", "Integer", "$1"},
    {"toInteger", "Real",
     "CASE WHEN $1 >= -9223372036854775808D AND $1 < 9223372036854775808D "
     "THEN CAST($1 AS BIGINT) END"},
    {"toInteger", "String",
     "CASE WHEN $1 RLIKE '^\\\\s*[+-]?[0-9]+\\\\s*\\\\z' THEN try_cast($1 AS BIGINT) END"},
    {"toInteger", "Boolean", "CAST($1 AS BIGINT)"},
    {"toString", "String", "$1"},
    {"toString", "Number", HV_SPARK_NUMBER_TEXT("$1")},
    {"toString", "Boolean", "CAST($1 AS STRING)"},
    {"toString", "Date", HV_SPARK_DATE_TEXT("$1")},
    {"toString", "Time", "CAST($1 AS STRING)"},
    {"toString", "Timestamp", HV_SPARK_TIMESTAMP_TEXT("$1")},
    {"toDate", "String", "CAST(" HV_SPARK_PARSED(HV_SPARK_ISO_DATES) " AS DATE)"},
    {"toDate", "String, Pattern", "CAST(" HV_SPARK_PARSED("$2") " AS DATE)"},
    {"toDate", "Date", "$1"},
    {"toDate", "Timestamp", "CAST($1 AS DATE)"},
    {"toTime", "String", HV_SPARK_TIME_OF(HV_SPARK_PARSED(HV_SPARK_ISO_TIMES))},
    {"toTime", "String, Pattern", HV_SPARK_TIME_OF(HV_SPARK_PARSED("$2"))},
    {"toTime", "Time", "$1"},
    {"toTime", "Timestamp", HV_SPARK_TIME_OF("$1")},
    {"toTimestamp", "String", HV_SPARK_PARSED(HV_SPARK_ISO_TIMESTAMPS)},
    {"toTimestamp", "String, Pattern", HV_SPARK_PARSED("$2")},
    {"toTimestamp", "Timestamp", "$1"},
    {"toTimestamp", "String, Pattern, Pattern, Pattern, String, Date",
     "CASE WHEN trim(BOTH " HV_SPARK_BLANKS
     " FROM $1) <> '' THEN coalesce(" HV_SPARK_PARSED("$2") ", " HV_SPARK_PARSED(
         "$3") ", "
               "make_timestamp_ntz($6, " HV_SPARK_TIME_OF(
                   HV_SPARK_PARSED("$4")) "), "
                                          "CAST(raise_error($where || 'toTimestamp "
                                          "cannot convert \"' || $1 || '\"') AS "
                                          "TIMESTAMP_NTZ)) END"},
    {"toTimestamp", "Time, Pattern, Pattern, Pattern, String, Date", "make_timestamp_ntz($6, $1)"},
    {"toTimestamp", "Timestamp, Pattern, Pattern, Pattern, String, Date", "$1"},

    // Dates and times.
    {"date", "Integer, Integer, Integer",
     "CASE WHEN " HV_SPARK_IS_DATE_PARTS " THEN CAST(" HV_SPARK_DATE_OF_PARTS " AS DATE) END"},
    {"time", "Integer, Integer, Real",
     "CASE WHEN " HV_SPARK_IS_TIME_PARTS(
         "$1", "$2",
         "$3") " THEN time_from_micros(nullif(" HV_SPARK_TIME_PARTS("$1", "$2",
                                                                    "$3") ", 86400000000)) "
                                                                          "END"}, // rounding
                                                                                  // may give
                                                                                  // 24:00
    {"timestamp", "Integer, Integer, Integer, Integer, Integer, Real",
     "CASE WHEN " HV_SPARK_IS_DATE_PARTS " AND " HV_SPARK_IS_TIME_PARTS(
         "$4", "$5", "$6") " THEN "
                           "timestampadd(MICROSECOND,"
                           " " HV_SPARK_TIME_PARTS("$4", "$5", "$6") ", " HV_SPARK_DATE_OF_PARTS
                                                                     ") END"},
    {"year", "Timestamp", "CAST(year($1) AS BIGINT)"},
    {"quarter", "Timestamp", "CAST(quarter($1) AS BIGINT)"},
    {"month", "Timestamp", "CAST(month($1) AS BIGINT)"},
    {"week", "Timestamp", "CAST(weekofyear($1) AS BIGINT)"},
    {"day", "Timestamp", "CAST(day($1) AS BIGINT)"},
    {"dayOfYear", "Timestamp", "CAST(dayofyear($1) AS BIGINT)"},
    {"dayOfWeek", "Timestamp", "CAST(weekday($1) + 1 AS BIGINT)"},
    {"hour", "Time", "CAST(hour($1) AS BIGINT)"},
    {"hour", "Timestamp", "CAST(hour($1) AS BIGINT)"},
    {"minute", "Time", "CAST(minute($1) AS BIGINT)"},
    {"minute", "Timestamp", "CAST(minute($1) AS BIGINT)"},
    {"second", "Time", "CAST(second($1) AS BIGINT)"},
    {"second", "Timestamp", "CAST(second($1) AS BIGINT)"},
    {"addDays", "Date, Integer", HV_SPARK_SHIFTED("date_add($1, CAST($2 AS INT))", "4000000")},
    {"addDays", "Timestamp, Integer", HV_SPARK_SHIFTED("timestampadd(DAY, $2, $1)", "4000000")},
    {"addMonths", "Date, Integer", HV_SPARK_SHIFTED("add_months($1, CAST($2 AS INT))", "120000")},
    {"addMonths", "Timestamp, Integer", HV_SPARK_SHIFTED("timestampadd(MONTH, $2, $1)", "120000")},
    {"addSeconds", "Timestamp, Real",
     HV_SPARK_SHIFTED("timestampadd(MICROSECOND, " HV_SPARK_MICROS("$2") ", $1)", "350000000000")},
    {"daysBetween", "Date, Date", "CAST(datediff($2, $1) AS BIGINT)"},
    {"daysBetween", "Timestamp, Timestamp",
     "CAST(datediff(CAST($2 AS DATE), CAST($1 AS DATE)) AS BIGINT)"},
    {"secondsBetween", "Time, Time", "(time_diff('MICROSECOND', $1, $2) / 1e6D)"},
    {"secondsBetween", "Timestamp, Timestamp", "(timestampdiff(MICROSECOND, $1, $2) / 1e6D)"},

    // Text. Positions count characters from 1.
    {"length", "String", "CAST(length($1) AS BIGINT)"},
    // In Java a sigma at the end of a word has another small letter.
    {"lower", "String", "lower(translate($1, '\\u03a3\\u0130', '\\u03c3i'))"},
    {"upper", "String",
     "CASE WHEN length(upper(" HV_SPARK_SHARP_S ")) = length($1) THEN upper(" HV_SPARK_SHARP_S ") "
     "WHEN $1 IS NOT NULL THEN concat_ws('', transform(split(" HV_SPARK_SHARP_S ", ''), hv_c -> "
     "CASE WHEN length(upper(hv_c)) = 1 THEN upper(hv_c) WHEN length(initcap(hv_c)) = 1 "
     "THEN initcap(hv_c) ELSE hv_c END)) END"},
    {"trim", "String", "trim(BOTH " HV_SPARK_BLANKS " FROM $1)"},
    {"ltrim", "String", "trim(LEADING " HV_SPARK_BLANKS " FROM $1)"},
    {"rtrim", "String", "trim(TRAILING " HV_SPARK_BLANKS " FROM $1)"},
    {"substring", "String, Integer", "substring($1, " HV_SPARK_POSITION("$2") ")"},
    {"substring", "String, Integer, Integer",
     "substring($1, " HV_SPARK_POSITION("$2") ", " HV_SPARK_CLAMPED("$3", "0", "2147483647") ")"},
    {"startsWith", "String, String", "startswith($1, $2)"},
    {"endsWith", "String, String", "endswith($1, $2)"},
    {"contains", "String, String", "contains($1, $2)"},
    {"indexOf", "String, String", "CAST(instr($1, $2) AS BIGINT)"},
    {"replace", "String, String, String", "replace($1, $2, $3)"},
    {"concat", "String...", "concat_ws('', $*)"},
    {"split", "String, String, Integer",
     "CASE WHEN $3 >= 1 THEN CASE WHEN $2 = '' THEN substring($1, " HV_SPARK_POSITION(
         "$3") ", 1) ELSE split_part($1, $2, " HV_SPARK_POSITION("$3") ") END END"},
    {"padLeft", "String, Integer, String",
     "CASE WHEN length($1) >= $2 THEN $1 WHEN $2 <= 32767 "
     "THEN lpad($1, CAST($2 AS INT), nullif($3, '')) END"},
    {"padRight", "String, Integer, String",
     "CASE WHEN length($1) >= $2 THEN $1 WHEN $2 <= 32767 "
     "THEN rpad($1, CAST($2 AS INT), nullif($3, '')) END"},

    // Numbers.
    {"abs", "Integer", "abs($1)"},
    {"abs", "Real", "abs($1)"},
    {"sign", "Number",
     "CASE WHEN $1 > 0 AND $1 <= " HV_SPARK_INFINITY
     " THEN 1L WHEN $1 < 0 THEN -1L WHEN $1 IS NOT NULL THEN 0L END"},
    {"floor", "Integer", "$1"},
    {"floor", "Real",
     "CASE WHEN " HV_SPARK_HAS_FRACTION("$1") " THEN " HV_SPARK_DOWN("$1") " ELSE $1 END"},
    {"ceiling", "Integer", "$1"},
    {"ceiling", "Real",
     "CASE WHEN " HV_SPARK_HAS_FRACTION("$1") " THEN (- " HV_SPARK_DOWN("(- $1)") ") ELSE $1 END"},
    {"truncate", "Integer", "$1"},
    {"truncate", "Real",
     "CASE WHEN " HV_SPARK_HAS_FRACTION("$1") " THEN CASE WHEN $1 < 0 THEN (- " HV_SPARK_DOWN(
         "(- $1)") ") ELSE " HV_SPARK_DOWN("$1") " END ELSE $1 END"},
    {"round", "Integer", "$1"},
    {"round", "Real",
     "CASE WHEN $1 > 0 THEN round($1) WHEN $1 < 0 THEN (- round(- $1)) ELSE $1 END"},
    {"round", "Real, Integer",
     HV_SPARK_LET("hv_r", "named_struct('x', $1, 'n', " HV_SPARK_CLAMPED("$2", "-400", "400") ")",
                  HV_SPARK_LET("hv_y",
                               "CASE WHEN hv_r.x < 0 THEN (- " HV_SPARK_ROUNDED(
                                   "(- hv_r.x)") ") "
                                                 "ELSE " HV_SPARK_ROUNDED("hv_r.x") " END",
                               "CASE WHEN abs(hv_y) < " HV_SPARK_INFINITY " OR hv_y IS NULL "
                               "THEN hv_y WHEN hv_r.n < 0 THEN 0D ELSE hv_r.x END"))},
    {"sqrt", "Real", "CASE WHEN $1 >= 0 THEN sqrt($1) END"},
    {"exp", "Real", "exp($1)"},
    {"ln", "Real", "CASE WHEN $1 > 0 THEN ln($1) END"},
    {"log10", "Real", "CASE WHEN $1 > 0 THEN log10($1) END"},
    {"power", "Real, Real", HV_SPARK_POWER("$1", "$2")},
    // The server wants at least two arguments.
    {"min", "Same...", "least($*, NULL)"},
    {"max", "Same...", "greatest($*, NULL)"},
    {"sin", "Real", "CASE WHEN abs($1) < " HV_SPARK_INFINITY " THEN sin($1) END"},
    {"cos", "Real", "CASE WHEN abs($1) < " HV_SPARK_INFINITY " THEN cos($1) END"},
    {"tan", "Real", "CASE WHEN abs($1) < " HV_SPARK_INFINITY " THEN tan($1) END"},
    {"asin", "Real", "CASE WHEN $1 BETWEEN -1 AND 1 THEN asin($1) END"},
    {"acos", "Real", "CASE WHEN $1 BETWEEN -1 AND 1 THEN acos($1) END"},
    {"atan", "Real", "atan($1)"},
    // The server makes 0 of -0.
    {"atan2", "Real, Real",
     "CASE WHEN $1 = 0 AND CAST($1 AS STRING) = '-0.0' THEN (- atan2(0D, $2)) "
     "ELSE atan2($1, $2) END"},
    {"pi", "", "pi()"},

    // Missing values.
    {"isMissing", "Any", "($1 IS NULL)"},
    {"ifMissing", "Same, Same", "coalesce($1, $2)"},
    {"nullIf", "Same, Same", "nullif($1, $2)"},
};

constexpr bool isSparkForm(const SparkFunction& written, const Function& form)
{
    return written.name == form.name && written.parameters == form.parameters;
}
static_assert(std::ranges::equal(kSparkFunctions, kFunctions, isSparkForm));

} // namespace

std::string_view SparkDialect::function(const Function& form) const
{
    return kSparkFunctions[&form - kFunctions].sql;
}

} // namespace EmbeddedHV
