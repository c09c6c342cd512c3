#include "hvhost/tcm/TrainingOptions.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <set>
#include <string_view>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/Text.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvhost/tcm/SeriesText.h"
#include "tcm/HVTemporalTraining.h"

namespace {

constexpr std::array<std::string_view, 8> kUnits = {"year", "quarter", "month",  "week",
                                                    "day",  "hour",    "minute", "second"};
constexpr std::array<std::string_view, 7> kDays = {"mon", "tue", "wed", "thu", "fri", "sat", "sun"};

constexpr double kUsualShare = 0.25;

template <class List>
std::vector<std::string> wordsOf(const List& list)
{
    return {list.begin(), list.end()};
}

[[noreturn]] void refuseOption(const std::string& option, const std::string& why,
                               const std::string& hint = {})
{
    throw CommandFault(ExitStatus::Usage, option + ": " + why, hint);
}

/// The whole number that a text consists of; nothing for any other text.
std::optional<int> wholeNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

/// "month", "months", "15 minutes" or "15minutes".
void setInterval(const std::string& text, HVTemporalTraining& training)
{
    const std::string option = "--interval " + text;
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    std::string unit(trimmed(std::string_view(text).substr(digits)));
    if (unit.size() > 1 && unit.ends_with('s'))
        unit.pop_back();
    if (std::ranges::find(kUnits, unit) == kUnits.end()) {
        refuseOption(option, "\"" + unit + "\" is not a unit of time",
                     nearestHint(wordsOf(kUnits), unit, "for example month, or 15 minutes"));
    }
    const std::optional<int> increment =
        digits == 0 ? std::optional(1) : wholeNumber(text.substr(0, digits));
    if (!increment || *increment < 1)
        refuseOption(option, "the number of units must be from 1 to 2147483647");
    training.SetTimeInterval(unit, *increment);
}

/// Splits a text at each mark. Pieces can be empty.
std::vector<std::string> piecesOf(const std::string& text, char mark)
{
    std::vector<std::string> pieces(1);
    for (const char character : text)
        if (character == mark)
            pieces.emplace_back();
        else
            pieces.back() += character;
    return pieces;
}

int dayOf(const std::string& option, const std::string& word)
{
    const auto* const day = std::ranges::find(kDays, std::string_view(word));
    if (day == kDays.end())
        refuseOption(option, "\"" + word + "\" is not a day of the week", "for example mon-fri");
    return static_cast<int>(day - kDays.begin()) + 1;
}

/// "mon-fri" or "mon,tue,sat".
void setWorkingDays(const std::string& text, HVTemporalTraining& training)
{
    const std::string option = "--working-days " + text;
    std::set<int> days;
    for (const std::string& piece : piecesOf(text, ',')) {
        const std::vector<std::string> ends = piecesOf(piece, '-');
        const int first = dayOf(option, ends.front());
        const int last = dayOf(option, ends.back());
        if (ends.size() > 2 || last < first)
            refuseOption(option, "\"" + piece + "\" is not a range of days", "for example mon-fri");
        for (int day = first; day <= last; ++day)
            days.insert(day);
    }
    training.SetWorkingDays({days.begin(), days.end()});
}

/// "8-18": the points of the hours 8 to 17.
void setWorkingHours(const std::string& text, HVTemporalTraining& training)
{
    const std::vector<std::string> ends = piecesOf(text, '-');
    const std::optional<int> from = wholeNumber(ends.front());
    const std::optional<int> to = wholeNumber(ends.back());
    constexpr int kHours = 24;
    if (ends.size() != 2 || !from || !to || *from < 0 || *to > kHours || *from >= *to)
        refuseOption("--working-hours " + text, "not a range of hours of a day",
                     "for example 8-18, for the hours 8 to 17");
    training.SetWorkingHours(*from, *to);
}

/// Splits TARGET:PREDICTOR at the first colon outside of quotes.
std::pair<SeriesName, SeriesName> parsePair(const std::string& text, const std::string& name)
{
    const std::string option = name + " " + text;
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"')
            isQuoted = !isQuoted;
        if (text[at] == ':' && !isQuoted)
            return {parseSeries(text.substr(0, at), option),
                    parseSeries(text.substr(at + 1), option)};
    }
    refuseOption(option, "missing colon between target and predictor",
                 "for example " + name + " north,sales:north,advertising");
}

/// An option with its value, as the user wrote it.
std::string optionText(std::string option, const std::string& value)
{
    return option.append(" ").append(value);
}

/// Names that the user wrote in another letter case get that of the dataset.
std::vector<std::string> ownNames(const Dataset& dataset, const std::vector<std::string>& names,
                                  const std::string& option)
{
    std::vector<std::string> own;
    own.reserve(names.size());
    for (const std::string& name : names)
        own.push_back(dataset.nameOf(dataset.columnOf(name, optionText(option, name))));
    return own;
}

void setAggregations(const TcmTrainOptions& options, const Dataset& dataset,
                     HVTemporalTraining& training)
{
    static const std::vector<std::string> kFunctions = {"sum",   "mean", "min", "max",
                                                        "first", "last", "mode"};
    for (const std::string& text : options.aggregations) {
        const std::string option = "--aggregate " + text;
        const std::size_t equals = text.rfind('=');
        const std::string function = equals == text.npos ? text : text.substr(equals + 1);
        if (std::ranges::find(kFunctions, function) == kFunctions.end()) {
            refuseOption(option, "\"" + function + "\" is not an aggregate function",
                         nearestHint(kFunctions, function, "for example mean, or sales=sum"));
        }
        if (equals == text.npos)
            training.SetAggregation(function);
        else
            training.SetAggregation(
                dataset.nameOf(dataset.columnOf(text.substr(0, equals), option)), function);
    }
}

std::string inCapitals(std::string word)
{
    for (char& letter : word)
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    return word;
}

void setTime(const TcmTrainOptions& options, const Dataset& dataset, HVTemporalTraining& training)
{
    if (options.caseCount)
        training.SetCaseCountTime();
    else if (!options.cyclicFields.empty())
        training.SetCyclicFields(ownNames(dataset, options.cyclicFields, "--cyclic"));
    else
        training.SetTimeField(ownNames(dataset, {options.timeField}, "--time").front());
    if (!options.interval.empty())
        setInterval(options.interval, training);
    if (!options.workingDays.empty())
        setWorkingDays(options.workingDays, training);
    if (!options.workingHours.empty())
        setWorkingHours(options.workingHours, training);
}

void setSeries(const TcmTrainOptions& options, HVTemporalTraining& training)
{
    for (const std::string& text : options.targets)
        training.AddTarget(parseSeries(text, "--target " + text));
    for (const std::string& text : options.predictors)
        training.AddPredictor(parseSeries(text, "--predictor " + text));
    for (const std::string& text : options.both)
        training.AddTargetAndPredictor(parseSeries(text, "--both " + text));
    for (const std::string& text : options.forced) {
        const auto [target, predictor] = parsePair(text, "--force-edge");
        training.ForcePredictor(target, predictor);
    }
    for (const std::string& text : options.forbidden) {
        const auto [target, predictor] = parsePair(text, "--forbid-edge");
        training.ForbidPredictor(target, predictor);
    }
}

} // namespace

std::vector<int> trainingColumns(const TcmTrainOptions& options, const Dataset& dataset)
{
    if (options.timeField.empty() && options.cyclicFields.empty() && !options.caseCount)
        throw CommandFault(ExitStatus::Usage, "the time of the records is missing",
                           "give --time FIELD, --cyclic FIELD,.. or --case-count");
    std::vector<int> columns;
    const auto add = [&](const std::vector<std::string>& names, const std::string& option) {
        for (const std::string& name : names) {
            const std::string place = optionText(option, name);
            const int column = dataset.columnOf(name, place);
            if (std::ranges::find(columns, column) != columns.end())
                refuseOption(place, "named twice");
            columns.push_back(column);
        }
    };
    if (!options.timeField.empty())
        add({options.timeField}, "--time");
    add(options.cyclicFields, "--cyclic");
    add(options.dimensions, "--dims");
    add(options.metrics, "--metrics");
    for (const std::string& name : options.metrics)
        if (dataset.storageOf(dataset.columnOf(name, "")) == CFField::String)
            throw TextFieldFault(name,
                                 "--metrics " + name + ": a metric must be a number, not a text",
                                 "a column without values is a text too");
    return columns;
}

void configureTraining(const TcmTrainOptions& options, const Dataset& dataset,
                       HVTemporalTraining& training)
{
    setTime(options, dataset, training);
    training.SetDimensions(ownNames(dataset, options.dimensions, "--dims"));
    training.SetMetrics(ownNames(dataset, options.metrics, "--metrics"));
    setAggregations(options, dataset, training);
    if (!options.missing.empty() || options.maxMissing)
        training.SetMissingValues(options.missing.empty() ? "linear" : options.missing,
                                  options.maxMissing.value_or(kUsualShare));
    setSeries(options, training);
    if (options.lags)
        training.SetLags(*options.lags);
    if (options.maxLag)
        training.SetMaxLag(*options.maxLag);
    if (!options.criterion.empty())
        training.SetCriterion(inCapitals(options.criterion));
    if (options.maxPredictors)
        training.SetMaxPredictors(*options.maxPredictors);
    if (options.outlierLevel)
        training.SetOutlierLevel(*options.outlierLevel);
}

std::vector<JobOrigin::Setting> trainingSettings()
{
    return {
        {"targets", "--target"},
        {"candidates", "--predictor"},
        {"both", "--both"},
        {"forced", "--force-edge"},
        {"forbidden", "--forbid-edge"},
        {"lags", "--lags"},
        {"maxLag", "--max-lag"},
        {"maxPredictors", "--max-predictors"},
        {"outlierLevel", "--outlier-level"},
        {"timeInterval", "--interval"},
        {"timeInterval.workingDays", "--working-days"},
        {"timeInterval.workingHours", "--working-hours"},
        {"aggregation", "--aggregate"},
        {"missingValues", "--max-missing"},
    };
}
