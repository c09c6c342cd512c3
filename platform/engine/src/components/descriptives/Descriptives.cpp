#include "components/descriptives/Descriptives.h"

#include "ErrorIds.h"
#include "components/ComponentQueries.h"
#include "components/ContainerFiles.h"
#include "components/descriptives/Analyses.h"
#include "components/descriptives/IntervalDocument.h"
#include "components/descriptives/PmmlDocument.h"
#include "components/descriptives/ResultDocument.h"
#include "components/descriptives/StatDocument.h"
#include "components/descriptives/TimeInterval.h"
#include "components/descriptives/fields/FieldHandling.h"
#include "components/descriptives/settings/DescriptivesSettings.h"
#include "components/descriptives/summary/InputTable.h"
#include "components/descriptives/summary/Summaries.h"

namespace EmbeddedHV {
namespace {

const char* memberOf(ContainerKind kind)
{
    switch (kind) {
    case ContainerKind::Pmml:
        return "PMML.xml";
    case ContainerKind::Statistics:
        return "StatXML.xml";
    case ContainerKind::TimeIntervals:
        return "TIME_INTERVAL.json";
    case ContainerKind::Results:
        return "Results.json";
    }
    return "";
}

std::string listOf(const std::vector<std::string>& names)
{
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "\"" : ", \"") + name + "\"";
    return list;
}

std::vector<std::string> destinationsOf(const DescriptivesSettings& settings)
{
    std::vector<std::string> paths;
    for (const OutputContainer& container : settings.containers)
        paths.push_back(container.path);
    return paths;
}

/// Collects the records in a table and describes the complete table. Either all containers get
/// their files, or none does.
class DescriptivesOutput : public Output
{
public:
    DescriptivesOutput(StepCall& call, DescriptivesSettings settings)
        : _context(call.context), _component(call.name), _settings(std::move(settings)),
          _table(call.context.newTable("hv_described_"), _settings),
          _files(call.context, destinationsOf(_settings), _component)
    {
    }

    std::string target() const override { return "the result of " + _component; }
    std::string statement(const std::string& select) override { return _table.creation(select); }

    // A rough value. The statistics of each field take longer than the collection of the records.
    double statementShare() const override { return 0.2; }

    void commit() override
    {
        const ComponentQueries queries(_context, _component);
        const std::string part = _context.newTable("hv_part_");
        adaptFields(queries, _table, part, _settings.analyses.fields, _settings.fields);
        _summary = summarize(queries, _table, _settings, part);
        analyse(queries, _table, _settings, part, _summary);
        for (const FaultParts& remark : analysisRemarks(_summary, _settings.analyses))
            tell(errors::kNotAnalysed, remark);
        for (const Fields& point : _settings.points)
            addInterval(detectInterval(queries, _table, point));
        // Drop the table before the files are written: it may be as large as the data.
        queries.run("DROP TABLE " + _table.name());
        for (std::size_t i = 0; i < _settings.containers.size(); ++i)
            _files.write(i, {{memberOf(_settings.containers[i].kind),
                              documentOf(_settings.containers[i].kind)}});
        _files.publish();
    }

private:
    void addInterval(TimeInterval interval)
    {
        if (!interval.unit)
            tell(errors::kNoTimeInterval, {.what = "the values of " + listOf(interval.fields) +
                                                   " make up no time interval"});
        _intervals.push_back(std::move(interval));
    }

    /// Sends a message, which is also a remark of a result document.
    void tell(const char* id, FaultParts remark)
    {
        remark.step = _component;
        _settings.remarks.push_back(sentenceOf(remark));
        _context.message(id, remark);
    }

    std::string documentOf(ContainerKind kind) const
    {
        switch (kind) {
        case ContainerKind::Pmml:
            return pmmlDocument(_summary);
        case ContainerKind::Statistics:
            return statDocument(_summary);
        case ContainerKind::TimeIntervals:
            return intervalDocument(_intervals);
        case ContainerKind::Results:
            return resultDocument(_summary, _settings, _intervals);
        }
        return {};
    }

    JobContext& _context;
    std::string _component;
    DescriptivesSettings _settings;
    InputTable _table;
    ContainerFiles _files;
    DataSummary _summary;
    std::vector<TimeInterval> _intervals;
};

} // namespace

StepResult planDescriptives(StepCall& call)
{
    DescriptivesSettings settings = descriptivesSettings(call);
    NodePtr input = call.input();
    return {std::move(input), std::make_unique<DescriptivesOutput>(call, std::move(settings))};
}

} // namespace EmbeddedHV
