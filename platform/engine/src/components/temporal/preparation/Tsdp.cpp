#include "components/temporal/preparation/Tsdp.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentContainers.h"
#include "components/ComponentQueries.h"
#include "components/ContainerFile.h"
#include "components/result/ValueFormat.h"
#include "components/temporal/base/FewMessages.h"
#include "components/temporal/base/ProgressSink.h"
#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/preparation/PreparationLimits.h"
#include "components/temporal/preparation/SeriesValues.h"
#include "components/temporal/preparation/TsdpDocument.h"
#include "duckdb/DuckSession.h"
#include "duckdb/NewTable.h"
#include "runtime/KeyedCells.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kMostSeriesMessages = 1000;
/// For the progress: the part of the step that the grouping of the records is, and how far the rest
/// is when the values are gathered and when the gaps are filled.
constexpr double kGroupingShare = 0.6;
constexpr double kGathered = 0.5;
constexpr double kFilled = 0.6;
const char* const kSeeDocument = "series: TSDPOutput.json lists them";

/// The series in words: its values and its metric.
std::string seriesText(const std::vector<std::string>& name)
{
    std::string text = "the series ";
    for (std::size_t i = 0; i < name.size(); ++i)
        text += (i == 0 ? "\"" : ", \"") + name[i] + "\"";
    return text;
}

std::string percentText(double share)
{
    return numberJson(std::round(share * 1000) / 10).dump() + " %";
}

/// If the groups of the records are too many for the memory, the step is planned again and puts
/// them into a table.
class GroupSizeCheck : public SourceCheck
{
public:
    explicit GroupSizeCheck(JobContext& context) : _context(context) {}

    void start(Cancellation&, const Progress&) override {}
    void finish(Session&, Reporter&) override {}
    void abandon(const StatementFault& fault) override
    {
        if (std::string_view(fault.what()).find(kTooManyCells) == std::string_view::npos)
            return;
        _context.keepsNoGroups = true;
        throw Reread{};
    }

private:
    JobContext& _context;
};

/// Takes the records into a table first, and makes the series once it is whole.
class TsdpStage : public Stage
{
public:
    TsdpStage(StepCall& call, TsdpSettings settings, std::string container)
        : _context(call.context), _component(call.name), _settings(std::move(settings)),
          _input(call.input()), _table(call.context.newTable("hv_raw_series_"), _settings,
                                       canReadAgain(*_input) && !call.context.keepsNoGroups),
          _file(std::move(container), _component),
          _leftOutMessages(call.context.message, errors::kTsdpLeftOut, kMostSeriesMessages,
                           kSeeDocument),
          _gapMessages(call.context.message, errors::kTsdpGaps, kMostSeriesMessages, kSeeDocument)
    {
        // Until it is whole: a later step of the job must not read what stood there before.
        _context.announce(_file.destination(), _component);
    }

    std::string target() const override { return "the result of " + _component; }
    std::string statement(const std::string& select) override
    {
        return _table.creation(select, canReadAgain(*_input));
    }
    bool takesRecords() const override { return _table.keepsGroups(); }
    void take(RecordBatch& batch) override { _table.take(chunkOf(batch)); }
    NodePtr records() override { return _records; }
    double statementShare() const override { return kGroupingShare; }

    void commit() override
    {
        const ComponentQueries queries(_context, _component);
        const SeriesPlan plan = planSeries(_context, _component, _table, _settings);
        const TimePoints points = findPoints(plan);
        std::vector<std::vector<double>> values =
            seriesValues(_context, _component, _table, _settings, plan, points);
        // It may be as large as the data.
        if (_table.keepsGroups())
            _table.dropGroups();
        else
            queries.run("DROP TABLE " + _table.name());
        _context.progress(kGathered);
        _result.axis = points.axis;
        _result.values = plan.values;
        fill(plan, values);
        if (_result.series.empty())
            throw JobError(errors::kTsdpNoSeries,
                           {.step = _component, .what = "no series is left; " + reasonForNone()});
        makeRecords(values);
        _file.write(
            {{kTsdpMember, tsdpDocument(_settings, _result, [this] { throwIfStopped(); })}});
        // Before the file gets its name: nothing may fail after that.
        const std::string written = canonicalPath(_file.destination());
        _file.commit();
        _context.unwritten.erase(written);
    }

private:
    TimePoints findPoints(const SeriesPlan& plan) const
    {
        if (_settings.source != TimeSource::RecordNumber)
            return numberPoints(_context, _component, _table, _settings);
        TimePoints points;
        points.axis.fields.emplace_back(kCaseCount, CFField::Ordinal, CFField::Integer);
        points.axis.points = plan.mostRecords;
        checkPointCount(_component, points.axis.points);
        if (points.axis.points < 2)
            throw JobError(errors::kTsdpFewPoints,
                           {.step = _component,
                            .what = "no series has two records, and it needs at least two"});
        return points;
    }

    void fill(const SeriesPlan& plan, std::vector<std::vector<double>>& values)
    {
        const ProgressSink progress = partOf(_context.progress, kGathered, kFilled);
        std::size_t kept = 0;
        for (std::size_t i = 0; i < plan.series.size(); ++i) {
            throwIfStopped();
            progress(fractionOf(i, plan.series.size()));
            const PlannedSeries& series = plan.series[i];
            const GapCount gaps = countGaps(values[i]);
            const std::string problem = problemOf(gaps);
            if (!problem.empty() && !plan.isGiven) {
                leaveOut(series, problem);
                continue;
            }
            if (!problem.empty())
                _gapMessages.send({.step = _component,
                                   .series = series.name,
                                   .what = seriesText(series.name) + " " + problem});
            const bool fills = _settings.filling != GapFilling::None;
            if (fills)
                fillGaps(values[i], _settings.filling);
            _result.series.push_back(
                {series.id, series.name, gaps.observed, fills ? gaps.missing : 0});
            std::swap(values[kept++], values[i]);
        }
        values.resize(kept);
        _leftOutMessages.finish();
        _gapMessages.finish();
    }

    /// Why the series would be left out; empty if it is good.
    std::string problemOf(const GapCount& gaps) const
    {
        if (gaps.observed == 0)
            return "has no value";
        const std::string missing = std::to_string(gaps.missing);
        if (_settings.filling == GapFilling::None)
            return gaps.missing == 0 ? ""
                                     : "has gaps, which are not filled: " + missing +
                                           " points of time without a value";
        const std::int64_t span = gaps.observed + gaps.missing;
        const double share = static_cast<double>(gaps.missing) / static_cast<double>(span);
        if (share <= _settings.maxShare)
            return "";
        return "has no value at " + missing + " of " + std::to_string(span) +
               " points of time, which is " + percentText(share) + ", more than " +
               percentText(_settings.maxShare);
    }

    void leaveOut(const PlannedSeries& series, const std::string& problem)
    {
        _leftOutMessages.send({.step = _component,
                               .series = series.name,
                               .what = seriesText(series.name) + " is left out: it " + problem});
        _result.leftOut.push_back({series.id, series.name, "it " + problem});
    }

    std::string reasonForNone() const
    {
        if (_result.leftOut.empty())
            return "no record belongs to one";
        const SeriesLeftOut& first = _result.leftOut.front();
        return seriesText(first.name) + ", the first one, is left out because " + first.reason;
    }

    void throwIfStopped() const
    {
        if (_context.stopping())
            throw JobError(errors::kQueryFailed,
                           {.step = _component, .what = "the job was stopped"});
    }

    void makeRecords(const std::vector<std::vector<double>>& values)
    {
        std::vector<std::string> ids;
        for (const SeriesOutcome& series : _result.series)
            ids.push_back(series.id);
        NewTable table(_context, _component, fieldsOfSeries(ids));
        table.addNumbered(values, partOf(_context.progress, kFilled, 1));
        _records = table.finish();
    }

    JobContext& _context;
    std::string _component;
    TsdpSettings _settings;
    NodePtr _input;
    PreparationTable _table;
    ContainerFile _file;
    FewMessages _leftOutMessages;
    FewMessages _gapMessages;
    PreparationResult _result;
    NodePtr _records;
};

} // namespace

Fields preparedFields(StepCall& call)
{
    const TsdpSettings settings = tsdpSettings(call);
    std::set<std::string> names;
    for (const Fields* fields : {&settings.timeFields, &settings.dimensions, &settings.metrics})
        for (const CFField& field : *fields)
            names.insert(field.GetName());
    return chosenFields(call.input()->fields, names);
}

StepResult planTsdp(StepCall& call)
{
    TsdpSettings settings = tsdpSettings(call);
    const std::vector<ComponentContainer> containers = outputContainers(call);
    if (containers.size() != 1)
        throw JobError(errors::kStepArguments, {.step = call.name,
                                                .what = "the step writes one container, not " +
                                                        std::to_string(containers.size())});
    auto input = derivedNode(call.input()->fields, {call.input()},
                             [](const auto& inputs) { return "SELECT * FROM " + inputs.front(); });
    input->check = std::make_shared<GroupSizeCheck>(call.context);
    return {std::move(input), nullptr,
            std::make_unique<TsdpStage>(call, std::move(settings), containers.front().path)};
}

} // namespace EmbeddedHV
