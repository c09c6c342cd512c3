#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "HostConversions.h"
#include "VexaCases.h"
#include "data/HVRawDataIterator.h"
#include "data/MemorySource.h"
#include "support/JobFixture.h"
#include "support/ScratchFolder.h"
#include "support/ZipReader.h"
#include "tcm/HVInteractiveTSR.h"
#include "tcm/HVTemporalTraining.h"

using Json = nlohmann::json;

/// How a dataset states the time of a record.
enum class TimeKind
{
    Date,
    Text,   ///< of a date
    Cyclic, ///< year and month
    CaseCount
};

/// Months of sales and of advertising, which leads sales by two months, for each combination of
/// dimension values. Each number depends on the month and the combination only, so a longer dataset
/// continues a shorter one.
class MonthlyData
{
public:
    MonthlyData(TimeKind time, std::vector<std::string> dimensions, int months)
        : _time(time), _dimensions(std::move(dimensions)), _months(months)
    {
    }

    static double advertising(int month, int group)
    {
        return 100 + 30 * std::sin(1.7 * month + group) + 20 * std::sin(0.61 * month * month);
    }
    static double sales(int month, int group)
    {
        return 40 + 2 * advertising(month - 2, group) + 3 * std::sin(0.37 * month * month + group);
    }
    int months() const { return _months; }
    int groups() const { return _dimensions.empty() ? 1 : 2; }
    const std::vector<std::string>& dimensions() const { return _dimensions; }
    /// The dimension values of a group. Groups differ in the last dimension.
    std::vector<std::string> valuesOf(int group) const
    {
        std::vector<std::string> values(_dimensions.size(), "all");
        if (!values.empty())
            values.back() = group == 0 ? "north-1" : "s";
        return values;
    }
    bool isCounted() const { return _time == TimeKind::CaseCount; }
    std::string timeField() const
    {
        return _time == TimeKind::Date || _time == TimeKind::Text ? "month" : "";
    }

    /// The value of the series with these dimension values and this metric.
    double actual(std::vector<std::string> name, int month) const
    {
        const bool isSales = name.back() == "sales";
        name.pop_back();
        const int group = name == valuesOf(0) ? 0 : 1;
        return isSales ? sales(month, group) : advertising(month, group);
    }

    /// Sales are missing from this month on.
    void endSales(int month) { _endOfSales = month; }
    /// Adds a record with dimension values that no series has, and a time if times are texts.
    void addStranger(const std::string& time = "2015-01-01") { _timeOfStranger = time; }
    void reverseRecords() { _isReversed = true; }

    std::vector<VEXA_Variable> variables() const
    {
        std::vector<VEXA_Variable> variables = timeVariables();
        for (const std::string& dimension : _dimensions)
            variables.push_back(text(dimension, 8));
        variables.push_back(numeric("sales"));
        variables.push_back(numeric("advertising"));
        return variables;
    }
    std::shared_ptr<MemorySource> source() const
    {
        std::vector<MemorySource::Row> rows;
        for (int month = 0; month < _months; ++month)
            for (int group = 0; group < groups(); ++group)
                rows.push_back(row(month, group));
        if (!_timeOfStranger.empty()) {
            rows.push_back(row(0, 0));
            rows.back()[0] = _timeOfStranger;
            rows.back()[rows.back().size() - 3] = "stranger";
        }
        if (_isReversed)
            std::ranges::reverse(rows);
        return std::make_shared<MemorySource>(variables(), std::move(rows));
    }

    void configure(HVTemporalTraining& training) const
    {
        if (_time == TimeKind::CaseCount)
            training.SetCaseCountTime();
        else if (_time == TimeKind::Cyclic)
            training.SetCyclicFields({"year", "number"});
        else
            training.SetTimeField("month");
        training.SetDimensions(_dimensions);
        training.SetMetrics({"sales", "advertising"});
        training.SetLags(2);
    }

private:
    std::vector<VEXA_Variable> timeVariables() const
    {
        switch (_time) {
        case TimeKind::Date:
            return {numeric("month", kFormatDateYearFirst)};
        case TimeKind::Text:
            return {text("month", 10)};
        case TimeKind::Cyclic:
            return {numeric("year"), numeric("number")};
        default:
            return {};
        }
    }

    MemorySource::Row row(int month, int group) const
    {
        const std::chrono::year_month_day first{
            std::chrono::year(2015 + month / 12),
            std::chrono::month(static_cast<unsigned>(month % 12) + 1), std::chrono::day(1)};
        MemorySource::Row row;
        if (_time == TimeKind::Date)
            row = {GetBaseDateNumber() +
                   86400.0 * static_cast<double>(
                                 std::chrono::sys_days(first).time_since_epoch().count())};
        else if (_time == TimeKind::Text)
            row = {std::to_string(2015 + month / 12) + (month % 12 < 9 ? "-0" : "-") +
                   std::to_string(month % 12 + 1) + "-01"};
        else if (_time == TimeKind::Cyclic)
            row = {2015.0 + month / 12, month % 12 + 1.0};
        for (const std::string& value : valuesOf(group))
            row.emplace_back(value);
        row.emplace_back(month < _endOfSales ? sales(month, group) : kSystemMissing);
        row.emplace_back(advertising(month, group));
        return row;
    }

    TimeKind _time;
    std::vector<std::string> _dimensions;
    int _months;
    int _endOfSales = INT_MAX;
    std::string _timeOfStranger;
    bool _isReversed = false;
};

/// Predictions from the coefficients in TCMModel.json and the data. The equation of a target, or
/// the autoregression of another series, is applied to actual values and, beyond the data, to its
/// own predictions.
class EquationsByHand
{
public:
    EquationsByHand(Json model, const MonthlyData& data) : _model(std::move(model)), _data(data) {}

    double predicted(const std::vector<std::string>& name, int month) const
    {
        for (const Json& series : _model.at("series"))
            if (series.at("name").get<std::vector<std::string>>() == name)
                return predictedById(series.at("id"), month);
        ADD_FAILURE() << "no such series";
        return 0;
    }

private:
    double predictedById(const std::string& id, int month) const
    {
        for (const char* kind : {"equations", "autoregressions"})
            for (const Json& equation : _model.at(kind))
                if (equation.at("series") == id) {
                    double sum = equation.at("intercept").get<double>();
                    for (const Json& term : equation.at("terms"))
                        sum += term.at("coefficient").get<double>() *
                               value(term.at("series"), month - term.at("lag").get<int>());
                    return sum;
                }
        ADD_FAILURE() << "no equation of " << id;
        return 0;
    }
    double value(const std::string& id, int month) const
    {
        if (month >= _data.months())
            return predictedById(id, month);
        for (const Json& series : _model.at("series"))
            if (series.at("id") == id)
                return _data.actual(series.at("name").get<std::vector<std::string>>(), month);
        return 0;
    }

    Json _model;
    const MonthlyData& _data;
};

/// A folder for a model that the working engine trains, and a viewer.
class WorkingModel : public JobTest
{
protected:
    void SetUp() override
    {
        JobTest::SetUp();
        folder.emplace();
        viewer.emplace();
        path = folder->name("model.tcm");
    }
    void TearDown() override
    {
        viewer.reset();
        folder.reset();
        JobTest::TearDown();
    }

    void train(
        const MonthlyData& data,
        const std::function<void(HVTemporalTraining&)>& configure = [](auto&) {})
    {
        const auto source = data.source();
        HVRawDataIterator rows(*source, std::vector<int>(), {}, true, kWeightRound, true, nullptr);
        rows.SetName("cases");
        HVTemporalTraining training(*runner, &rows);
        data.configure(training);
        configure(training);
        const bool isTrained = training.Train(path);
        std::string id;
        std::string reason;
        std::string detail;
        training.hasError(id, reason, detail);
        ASSERT_TRUE(isTrained) << id << " " << reason << " " << detail;
        EXPECT_THAT(training.getMessages(), testing::IsEmpty());
    }

    std::string entry(const std::string& name) const
    {
        std::string text;
        ZipReader reader(path);
        EXPECT_TRUE(reader.GotoFile(name) && reader.ExportString(text)) << name;
        return text;
    }

    /// The viewer's reason of the last failure.
    std::string reason()
    {
        std::string id;
        std::string text;
        std::string detail;
        return viewer->hasError(id, text, detail) ? id + " " + text + " " + detail : "no reason";
    }

    std::optional<ScratchFolder> folder;
    std::optional<HVInteractiveTSR> viewer;
    std::string path;
};
