#pragma once

#include <gmock/gmock.h>

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

/// How a dataset tells the time of a record.
enum class TimeKind
{
    Date,
    Text,   ///< of a date
    Cyclic, ///< year and month
    CaseCount
};

/// Months of sales and of advertising, which leads sales by two months, for each of `groups`
/// combinations of values of the dimensions. The numbers follow from the month alone, so that a
/// longer dataset continues a shorter one.
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
    /// The values of a group, which differ in the last dimension.
    std::vector<std::string> valuesOf(int group) const
    {
        std::vector<std::string> values(_dimensions.size(), "all");
        if (!values.empty())
            values.back() = group == 0 ? "north-1" : "s";
        return values;
    }
    std::string timeField() const
    {
        return _time == TimeKind::Date || _time == TimeKind::Text ? "month" : "";
    }

    /// Sales are missing from this month on.
    void endSales(int month) { _endOfSales = month; }

    std::shared_ptr<MemorySource> source() const
    {
        std::vector<VEXA_Variable> variables = timeVariables();
        for (const std::string& dimension : _dimensions)
            variables.push_back(text(dimension, 8));
        variables.push_back(numeric("sales"));
        variables.push_back(numeric("advertising"));
        std::vector<MemorySource::Row> rows;
        for (int month = 0; month < _months; ++month)
            for (int group = 0; group < groups(); ++group)
                rows.push_back(row(month, group));
        return std::make_shared<MemorySource>(std::move(variables), std::move(rows));
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
};

/// Trains models on the working engine and has a viewer look at them.
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

    void train(const MonthlyData& data)
    {
        const auto source = data.source();
        HVRawDataIterator rows(*source, std::vector<int>(), {}, true, kWeightRound, true, nullptr);
        rows.SetName("cases");
        HVTemporalTraining training(*runner, &rows);
        data.configure(training);
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

    /// What the viewer says of the last failure.
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
