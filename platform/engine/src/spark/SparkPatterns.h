#pragma once

#include "dialect/DateTimePattern.h"

// Texts of dates and times are read by regular expressions: the server's own patterns accept other
// texts. Each field is a named group. A quantifier or alternative that has matched is never given
// back, so a number takes as many digits as it can.

#define HV_SPARK_YEAR "(?<y>[0-9]{1,4}+)"
#define HV_SPARK_YEAR_OF_CENTURY "(?<c>[0-9]{1,2}+)"
#define HV_SPARK_MONTH "(?<M>(?>0[1-9]|1[0-2]|[1-9](?![0-9])))"
#define HV_SPARK_MONTH_SHORT_NAME "(?<N>(?i:jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec))"
#define HV_SPARK_MONTH_NAME                                                                        \
    "(?<N>(?i:january|february|march|april|may|june|july|august|september|october|november|"       \
    "december))"
#define HV_SPARK_DAY "(?<d>(?>0[1-9]|[12][0-9]|3[01]|[1-9](?![0-9])))"
#define HV_SPARK_DAY_OF_YEAR                                                                       \
    "(?<D>(?>00[1-9]|0[1-9][0-9]|[12][0-9][0-9]|3[0-5][0-9]|36[0-6]|"                              \
    "(?:0[1-9]|[1-9][0-9])(?![0-9])|[1-9](?![0-9])))"
#define HV_SPARK_DAY_SHORT_NAME "(?i:mon|tue|wed|thu|fri|sat|sun)"
#define HV_SPARK_DAY_NAME "(?i:monday|tuesday|wednesday|thursday|friday|saturday|sunday)"
#define HV_SPARK_HOUR "(?<H>(?>[01][0-9]|2[0-3]|[0-9](?![0-9])))"
#define HV_SPARK_HOUR_OF_HALF_DAY "(?<h>(?>0[1-9]|1[0-2]|[1-9](?![0-9])))"
#define HV_SPARK_MINUTE "(?<m>(?>[0-5][0-9]|[0-9](?![0-9])))"
#define HV_SPARK_SECOND "(?<s>(?>[0-5][0-9]|[0-9](?![0-9])))"
#define HV_SPARK_MILLISECONDS "(?<f>[0-9]{1,3}+)"
#define HV_SPARK_MICROSECONDS "(?<f>[0-9]{1,6}+)"
#define HV_SPARK_HALF_DAY "(?<a>[aApP])[mM]"

// Blanks around the text are ignored. `slash` is a backslash, or two in a literal of SQL.
#define HV_SPARK_WHOLE(slash, body) "^" slash "s*+" body slash "s*+" slash "z"
// A group that the expression has, but that never takes part.
#define HV_SPARK_NO(group) "(?<" group ">x){0}"
