#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace EmbeddedHV {

/// SQL in which $1 to $9 are the arguments.
std::string sparkSql(std::string_view sql, std::initializer_list<std::string> arguments);

/// 2 to the exponent, as a literal of type Real.
std::string sparkPowerOfTwo(int exponent);

} // namespace EmbeddedHV

// Pieces of SQL for a Spark cluster, as string literals. `value` is such a literal too.

#define HV_SPARK_INFINITY "CAST('Infinity' AS DOUBLE)"
#define HV_SPARK_NAN "CAST('NaN' AS DOUBLE)"

// Names the value of an expression in another one, so that it is written and computed once. `body`
// sees only `name`, so `name` hides no column.
#define HV_SPARK_LET(name, value, body)                                                            \
    "element_at(transform(array(" value "), " name " -> " body "), 1)"

// The shortest text of a Real that gives the same double back, with an exponent. `hv_t` is the
// server's text, which is the shortest one if it has at most 15 digits. Java before version 19 does
// not always find the shortest one.
#define HV_SPARK_IS_TINY "abs(CAST(hv_t AS DOUBLE)) < 2.2250738585072014e-308D"
#define HV_SPARK_SHORTEST                                                                          \
    "CASE WHEN length(hv_t) < 17 AND NOT " HV_SPARK_IS_TINY " THEN lower(hv_t) ELSE "              \
    "element_at(filter(transform(sequence(CASE WHEN " HV_SPARK_IS_TINY                             \
    " THEN 0 ELSE 14 END, 16), "                                                                   \
    "hv_p -> format_string(concat('%.', hv_p, 'e'), CAST(hv_t AS DOUBLE))), "                      \
    "hv_c -> CAST(hv_c AS DOUBLE) = CAST(hv_t AS DOUBLE)), 1) END"
#define HV_SPARK_PLAIN                                                                             \
    "regexp_replace(rtrim('0', CAST(CAST(hv_s AS DECIMAL(38, 21)) AS STRING)), '[.]\\\\z', '.0')"
#define HV_SPARK_SCIENTIFIC                                                                        \
    "concat(regexp_replace(split_part(hv_s, 'e', 1), '[.]?0*\\\\z', ''), "                         \
    "CASE WHEN contains(hv_s, 'e-') THEN 'e-' ELSE 'e+' END, "                                     \
    "format_string('%02d', abs(CAST(split_part(hv_s, 'e', 2) AS INT))))"

// The text of an Integer or a Real: 5, 0.1, 2.0, 1e+20.
#define HV_SPARK_NUMBER_TEXT(value)                                                                \
    HV_SPARK_LET("hv_t", "CAST(" value " AS STRING)",                                              \
                 "CASE WHEN hv_t IS NULL OR length(hv_t) < 17 AND contains(hv_t, '.') "            \
                 "AND NOT contains(hv_t, 'E') THEN hv_t WHEN hv_t = 'NaN' THEN 'nan' "             \
                 "WHEN hv_t = 'Infinity' THEN 'inf' WHEN hv_t = '-Infinity' THEN '-inf' "          \
                 "WHEN NOT contains(hv_t, '.') THEN hv_t ELSE " HV_SPARK_LET(                      \
                     "hv_s", HV_SPARK_SHORTEST,                                                    \
                     "CASE WHEN abs(CAST(hv_s AS DOUBLE)) >= 1e-4D "                               \
                     "AND abs(CAST(hv_s AS DOUBLE)) < 1e16D THEN " HV_SPARK_PLAIN                  \
                     " ELSE " HV_SPARK_SCIENTIFIC " END") " END")

// The texts of a Date and a Timestamp. Years before 1 count backwards.
#define HV_SPARK_IS_USUAL(value) "year(" value ") BETWEEN 1 AND 9999"
#define HV_SPARK_YEAR_TEXT                                                                         \
    "CASE WHEN year(hv_d) > 9999 THEN substring(CAST(hv_d AS STRING), 2) "                         \
    "WHEN year(hv_d) < 1 THEN format_string('%04d-%s (BC)', 1 - year(hv_d), "                      \
    "date_format(hv_d, 'MM-dd'))"
#define HV_SPARK_DATE_TEXT(value)                                                                  \
    "CASE WHEN " HV_SPARK_IS_USUAL(value) " THEN CAST(" value " AS STRING) ELSE " HV_SPARK_LET(    \
        "hv_d", value, HV_SPARK_YEAR_TEXT " END") " END"
#define HV_SPARK_TIMESTAMP_TEXT(value)                                                             \
    "CASE WHEN " HV_SPARK_IS_USUAL(value) " THEN CAST(" value " AS STRING) ELSE " HV_SPARK_LET(    \
        "hv_d", value,                                                                             \
        HV_SPARK_YEAR_TEXT " || ' ' || substring_index(CAST(hv_d AS STRING), ' ', -1) END") " END"

// A power. Java has no result for 1 and an exponent that is not a finite number.
#define HV_SPARK_POWER(base, exponent)                                                             \
    "nullif(CASE WHEN " base " = 1 AND " exponent " IS NOT NULL OR " base                          \
    " = -1 AND abs(" exponent ") = " HV_SPARK_INFINITY " THEN 1D ELSE power(" base ", " exponent   \
    ") END, " HV_SPARK_NAN ")"
