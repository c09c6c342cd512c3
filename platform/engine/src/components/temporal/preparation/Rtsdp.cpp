#include "components/temporal/preparation/Rtsdp.h"

#include <cmath>
#include <limits>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentContainers.h"
#include "components/ContainerArchive.h"
#include "components/temporal/base/ProgressSink.h"
#include "components/temporal/preparation/NamedLayout.h"
#include "components/temporal/preparation/TsdpDocument.h"
#include "duckdb/DuckSession.h"
#include "duckdb/NewTable.h"

namespace EmbeddedHV {
namespace {

constexpr std::uint64_t kMostDocumentBytes = std::uint64_t{2} << 30;

/// Keeps the records as they come, and writes them with their names when they are there.
class RtsdpStage : public Stage
{
public:
    RtsdpStage(StepCall& call, NamedSeries known, NamedLayout layout)
        : _context(call.context), _component(call.name), _known(std::move(known)),
          _layout(std::move(layout)), _values(call.input()->fields.size())
    {
    }

    std::string target() const override { return "the result of " + _component; }
    std::string statement(const std::string& select) override { return select; }
    bool takesRecords() const override { return true; }
    NodePtr records() override { return _records; }
    double statementShare() const override { return 0.5; }

    void take(RecordBatch& batch) override
    {
        const duck::Chunk& chunk = chunkOf(batch);
        takeIntegers(chunk, _layout.indexColumn, _indexes);
        if (_layout.flagColumn)
            takeIntegers(chunk, *_layout.flagColumn, _flags);
        for (const NamedLayout::Combination& combination : _layout.combinations)
            for (const std::size_t column : combination.columns)
                if (column != NamedLayout::kNoColumn)
                    takeReals(chunk, column);
    }

    void commit() override
    {
        NewTable table(_context, _component, _layout.fields);
        for (std::size_t record = 0; record < _indexes.size(); ++record) {
            _context.progress(fractionOf(record, _indexes.size()));
            for (const NamedLayout::Combination& combination : _layout.combinations)
                addRecord(table, record, combination);
        }
        _values.clear();
        _records = table.finish();
    }

private:
    void takeIntegers(const duck::Chunk& chunk, std::size_t column,
                      std::vector<std::int64_t>& integers) const
    {
        for (std::size_t row = 0; row < chunk.rows(); ++row) {
            const CFDatum value = dimensionValueAt(chunk, column, row, CFField::Integer);
            if (value.IsNull())
                throw JobError(errors::kBadRecord,
                               {.step = _component,
                                .record = integers.size() + 1,
                                .what = "record " + std::to_string(integers.size() + 1) +
                                        " of the input has no point of time"});
            integers.push_back(value.GetInteger());
        }
    }

    void takeReals(const duck::Chunk& chunk, std::size_t column)
    {
        const duckdb_vector vector = chunk.column(column);
        const auto* const values = static_cast<const double*>(duckdb_vector_get_data(vector));
        std::uint64_t* const validity = duckdb_vector_get_validity(vector);
        std::vector<double>& taken = _values[column];
        const std::size_t before = taken.size();
        taken.insert(taken.end(), values, values + chunk.rows());
        for (std::size_t row = 0; validity && row < chunk.rows(); ++row)
            if (!duckdb_validity_row_is_valid(validity, row))
                taken[before + row] = std::numeric_limits<double>::quiet_NaN();
    }

    void addRecord(NewTable& table, std::size_t record,
                   const NamedLayout::Combination& combination) const
    {
        addTime(table, _indexes[record]);
        if (_layout.hasFlag)
            table.addInteger(_flags.empty() || _flags[record] == 0 ? 0 : 1);
        if (_layout.hasDimensions)
            for (std::size_t i = 0; i < combination.codes.size(); ++i)
                addDimensionValue(
                    table, _known.values[i][static_cast<std::size_t>(combination.codes[i] - 1)],
                    _known.dimensions[i].GetStorage());
        for (const std::size_t column : combination.columns)
            table.addReal(shownValue(column, record));
        table.endRecord();
    }

    /// A viewer's rows of scores have a number for each value that is missing: it takes a null for
    /// a fault.
    double shownValue(std::size_t column, std::size_t record) const
    {
        constexpr double kSystemMissing = std::numeric_limits<double>::lowest();
        const double value = column == NamedLayout::kNoColumn
                                 ? std::numeric_limits<double>::quiet_NaN()
                                 : _values[column][record];
        const bool isForViewer = _layout.hasFlag && !_flags.empty();
        return isForViewer && std::isnan(value) ? kSystemMissing : value;
    }

    void addTime(NewTable& table, std::int64_t index) const
    {
        const TimeAxis& axis = _known.axis;
        if (axis.isRecordNumber())
            return table.addInteger(index + 1);
        const auto point = axis.calendar->pointAt(index);
        if (!point)
            throw JobError(errors::kBadRecord,
                           {.step = _component,
                            .what = "point of time " + std::to_string(index + 1) +
                                    " is not in the years 1 to 9999"});
        if (axis.clock) {
            for (const std::int64_t number : axis.clock->numbersOf(*point))
                table.addInteger(number);
        } else {
            addMoment(table, *point, axis.fields.front().GetStorage());
        }
    }

    static void addMoment(NewTable& table, Moment point, CFField::StorageType storage)
    {
        if (storage == CFField::Date)
            table.addDate(static_cast<std::int32_t>(dayOf(point)));
        else if (storage == CFField::Time)
            table.addTime(timeOfDay(point));
        else
            table.addTimestamp(point);
    }

    JobContext& _context;
    std::string _component;
    NamedSeries _known;
    NamedLayout _layout;
    std::vector<std::int64_t> _indexes;
    std::vector<std::int64_t> _flags;
    std::vector<std::vector<double>> _values; ///< by column of the input
    NodePtr _records;
};

NamedSeries readNamedSeries(const StepCall& call)
{
    const std::vector<ComponentContainer> containers = inputContainers(call);
    if (containers.size() != 1)
        throw JobError(errors::kStepArguments, {.step = call.name,
                                                .what = "the step reads one container, not " +
                                                        std::to_string(containers.size())});
    const ContainerArchive archive(containers.front().path, call.name);
    return namedSeriesOf(archive.neededMember(kTsdpMember, kMostDocumentBytes),
                         {call.name, archive.path(), kTsdpMember}, call.context.message);
}

} // namespace

StepResult planRtsdp(StepCall& call)
{
    const Settings settings = call.settings();
    const bool exportsFlag = settings.flag("exportFutureFlag").value_or(false);
    settings.reportOthers(call.context.message);
    NamedSeries known = readNamedSeries(call);
    NamedLayout layout = namedLayout(call.input()->fields, known, exportsFlag, call.name);
    NodePtr input = call.input();
    return {std::move(input), nullptr,
            std::make_unique<RtsdpStage>(call, std::move(known), std::move(layout))};
}

} // namespace EmbeddedHV
