#pragma once

#include <span>
#include <string_view>

namespace EmbeddedHV {

/// One form of a function. docs/hvl.md shows the same table to users. A dialect has the SQL.
struct Function
{
    std::string_view name;
    /// Types of the arguments, separated by ", ". Besides the names of types: "Number" is an
    /// Integer or a Real, "Any" is any type, all arguments that are "Same" share one type, and a
    /// "Pattern" is a string that the job writes out. If "..." follows the last word, that argument
    /// may be repeated.
    std::string_view parameters;
    /// The type of the result. "Same" is the type that the arguments share.
    std::string_view result;
};

/// All forms of all functions. The forms of a function are adjacent, narrower types first.
inline constexpr Function kFunctions[] = {
    // Conversions. A text that does not convert gives a missing value.
    {"toReal", "Number", "Real"},
    {"toReal", "String", "Real"},
    {"toReal", "Boolean", "Real"},
    {"toInteger", "Integer", "Integer"},
    {"toInteger", "Real", "Integer"},
    {"toInteger", "String", "Integer"},
    {"toInteger", "Boolean", "Integer"},
    {"toString", "String", "String"},
    {"toString", "Number", "String"},
    {"toString", "Boolean", "String"},
    {"toString", "Date", "String"},
    {"toString", "Time", "String"},
    {"toString", "Timestamp", "String"},
    {"toDate", "String", "Date"},
    {"toDate", "String, Pattern", "Date"},
    {"toDate", "Date", "Date"},
    {"toDate", "Timestamp", "Date"},
    {"toTime", "String", "Time"},
    {"toTime", "String, Pattern", "Time"},
    {"toTime", "Time", "Time"},
    {"toTime", "Timestamp", "Time"},
    {"toTimestamp", "String", "Timestamp"},
    {"toTimestamp", "String, Pattern", "Timestamp"},
    {"toTimestamp", "Timestamp", "Timestamp"},
    {"toTimestamp", "String, Pattern, Pattern, Pattern, String, Date", "Timestamp"},
    {"toTimestamp", "Time, Pattern, Pattern, Pattern, String, Date", "Timestamp"},
    {"toTimestamp", "Timestamp, Pattern, Pattern, Pattern, String, Date", "Timestamp"},

    // Dates and times.
    {"date", "Integer, Integer, Integer", "Date"},
    {"time", "Integer, Integer, Real", "Time"},
    {"timestamp", "Integer, Integer, Integer, Integer, Integer, Real", "Timestamp"},
    {"year", "Timestamp", "Integer"},
    {"quarter", "Timestamp", "Integer"},
    {"month", "Timestamp", "Integer"},
    {"week", "Timestamp", "Integer"},
    {"day", "Timestamp", "Integer"},
    {"dayOfYear", "Timestamp", "Integer"},
    {"dayOfWeek", "Timestamp", "Integer"},
    {"hour", "Time", "Integer"},
    {"hour", "Timestamp", "Integer"},
    {"minute", "Time", "Integer"},
    {"minute", "Timestamp", "Integer"},
    {"second", "Time", "Integer"},
    {"second", "Timestamp", "Integer"},
    {"addDays", "Date, Integer", "Date"},
    {"addDays", "Timestamp, Integer", "Timestamp"},
    {"addMonths", "Date, Integer", "Date"},
    {"addMonths", "Timestamp, Integer", "Timestamp"},
    {"addSeconds", "Timestamp, Real", "Timestamp"},
    {"daysBetween", "Date, Date", "Integer"},
    {"daysBetween", "Timestamp, Timestamp", "Integer"},
    {"secondsBetween", "Time, Time", "Real"},
    {"secondsBetween", "Timestamp, Timestamp", "Real"},

    // Text. Positions count characters from 1.
    {"length", "String", "Integer"},
    {"lower", "String", "String"},
    {"upper", "String", "String"},
    {"trim", "String", "String"},
    {"ltrim", "String", "String"},
    {"rtrim", "String", "String"},
    {"substring", "String, Integer", "String"},
    {"substring", "String, Integer, Integer", "String"},
    {"startsWith", "String, String", "Boolean"},
    {"endsWith", "String, String", "Boolean"},
    {"contains", "String, String", "Boolean"},
    {"indexOf", "String, String", "Integer"},
    {"replace", "String, String, String", "String"},
    {"concat", "String...", "String"},
    {"split", "String, String, Integer", "String"},
    {"padLeft", "String, Integer, String", "String"},
    {"padRight", "String, Integer, String", "String"},

    // Numbers.
    {"abs", "Integer", "Integer"},
    {"abs", "Real", "Real"},
    {"sign", "Number", "Integer"},
    {"floor", "Integer", "Integer"},
    {"floor", "Real", "Real"},
    {"ceiling", "Integer", "Integer"},
    {"ceiling", "Real", "Real"},
    {"truncate", "Integer", "Integer"},
    {"truncate", "Real", "Real"},
    {"round", "Integer", "Integer"},
    {"round", "Real", "Real"},
    {"round", "Real, Integer", "Real"},
    {"sqrt", "Real", "Real"},
    {"exp", "Real", "Real"},
    {"ln", "Real", "Real"},
    {"log10", "Real", "Real"},
    {"power", "Real, Real", "Real"},
    {"min", "Same...", "Same"},
    {"max", "Same...", "Same"},
    {"sin", "Real", "Real"},
    {"cos", "Real", "Real"},
    {"tan", "Real", "Real"},
    {"asin", "Real", "Real"},
    {"acos", "Real", "Real"},
    {"atan", "Real", "Real"},
    {"atan2", "Real, Real", "Real"},
    {"pi", "", "Real"},

    // Missing values.
    {"isMissing", "Any", "Boolean"},
    {"ifMissing", "Same, Same", "Same"},
    {"nullIf", "Same, Same", "Same"},
};

/// The forms of a function; empty if there is no function of this name.
std::span<const Function> formsOf(std::string_view name);

bool isFunction(std::string_view name);

} // namespace EmbeddedHV
