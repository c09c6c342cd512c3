#include "components/descriptives/Descriptives.h"

#include <set>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentQueries.h"
#include "components/ContainerFiles.h"
#include "components/descriptives/Analyses.h"
#include "components/descriptives/DescribedGroup.h"
#include "components/descriptives/TimeInterval.h"
#include "components/descriptives/fields/FieldHandling.h"
#include "components/descriptives/settings/DescriptivesSettings.h"
#include "components/descriptives/summary/InputTable.h"
#include "components/descriptives/summary/Summaries.h"

namespace EmbeddedHV {
namespace {

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
        checkGroups(queries);
        adaptFields(queries, _table, part, _settings.analyses.fields, _settings.fields);
        for (DataSummary& summary : summarizeGroups(queries, _table, _settings, part))
            _groups.push_back({std::move(summary), {}, _settings.remarks});
        if (_settings.analyses.any() || !_settings.points.empty())
            analyseGroups(queries, part);
        // Drop the table before the files are written: it may be as large as the data.
        queries.run("DROP TABLE " + _table.name());
        for (std::size_t i = 0; i < _settings.containers.size(); ++i)
            _files.write(i, containerMembers(_settings.containers[i].kind, _groups, _settings));
        _files.publish();
    }

private:
    void checkGroups(const ComponentQueries& queries) const
    {
        if (!_table.isGrouped())
            return;
        const std::string g = InputTable::kGroup;
        const std::string most = std::to_string(_settings.groups);
        const std::int64_t others = queries
                                        .run("SELECT count(*) FROM " + _table.name() + " WHERE " +
                                             g + " IS NULL OR " + g + " NOT BETWEEN 1 AND " + most)
                                        .integer(0, 0);
        if (others > 0)
            throw JobError(errors::kSettingType,
                           {.step = _component,
                            .setting = "groupField",
                            .what = "names \"" + *_settings.groupField +
                                    "\", which is not from 1 to " + most + " in " +
                                    std::to_string(others) + " records"});
    }

    /// Adds the analyses and the time intervals. They read the records of one group from a table.
    void analyseGroups(const ComponentQueries& queries, const std::string& part)
    {
        const InputTable table =
            _table.isGrouped() ? _table.group(_context.newTable("hv_group_")) : _table;
        for (std::size_t i = 0; i < _groups.size(); ++i) {
            if (_table.isGrouped())
                queries.run(_table.groupCreation(table, i + 1));
            analyseGroup(queries, table, part, i);
            queries.progress(static_cast<double>(i + 1) / static_cast<double>(_groups.size()));
        }
    }

    void analyseGroup(const ComponentQueries& queries, const InputTable& table,
                      const std::string& part, std::size_t number)
    {
        DescribedGroup& group = _groups[number];
        analyse(queries, table, _settings, part, group.summary);
        for (const FaultParts& remark : analysisRemarks(group.summary, _settings.analyses))
            tell(errors::kNotAnalysed, remark, number);
        for (const Fields& point : _settings.points) {
            TimeInterval interval = detectInterval(queries, table, point);
            if (!interval.unit)
                tell(errors::kNoTimeInterval,
                     {.what =
                          "the values of " + listOf(interval.fields) + " make up no time interval"},
                     number);
            group.intervals.push_back(std::move(interval));
        }
    }

    /// Sends a message, which is also a remark of the group's result document.
    void tell(const char* id, FaultParts remark, std::size_t number)
    {
        remark.step = _component;
        _groups[number].remarks.push_back(sentenceOf(remark));
        if (_table.isGrouped())
            remark.group = number + 1;
        _context.message(id, remark);
    }

    JobContext& _context;
    std::string _component;
    DescriptivesSettings _settings;
    InputTable _table;
    ContainerFiles _files;
    std::vector<DescribedGroup> _groups;
};

} // namespace

Fields describedFields(StepCall& call)
{
    const DescriptivesSettings settings = descriptivesSettings(call);
    std::set<std::string> names;
    const auto add = [&names](const Fields& fields) {
        for (const CFField& field : fields)
            names.insert(field.GetName());
    };
    add(settings.fields);
    for (const Fields& point : settings.points)
        add(point);
    for (const auto& name : {settings.weight, settings.groupField})
        if (name)
            names.insert(*name);
    return chosenFields(call.input()->fields, names);
}

StepResult planDescriptives(StepCall& call)
{
    DescriptivesSettings settings = descriptivesSettings(call);
    NodePtr input = call.input();
    return {std::move(input), std::make_unique<DescriptivesOutput>(call, std::move(settings))};
}

} // namespace EmbeddedHV
