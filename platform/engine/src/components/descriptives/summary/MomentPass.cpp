#include "components/descriptives/summary/MomentPass.h"

#include <algorithm>
#include <memory>

#include "components/descriptives/summary/ChunkColumns.h"
#include "components/descriptives/summary/Moments.h"
#include "components/descriptives/summary/PieceSums.h"

namespace EmbeddedHV {
namespace {

/// The column of a field in the pass.
enum class SummedColumn
{
    None,
    Presence, ///< only the weights of the records with a value are summed
    Numbers,
    Integers ///< beyond the integers that are exact as numbers
};

/// A field of the pass, and the sums of its values in the present group.
struct SummedField
{
    SummedColumn column = SummedColumn::None;
    std::optional<ValueFrame> frame;
    std::unique_ptr<PieceSums> sums;
};

std::string columnOf(SummedColumn column, const std::string& x)
{
    switch (column) {
    case SummedColumn::Presence:
        return "CASE WHEN " + x + " IS NOT NULL THEN CAST(0 AS DOUBLE) END";
    case SummedColumn::Integers:
        return "CAST(" + x + " AS BIGINT)";
    default:
        return "CAST(" + x + " AS DOUBLE)";
    }
}

/// The distance of an integer from the offset, which is not greater.
double beyond(std::int64_t offset, std::int64_t value)
{
    return offset == 0 ? static_cast<double>(value)
                       : static_cast<double>(static_cast<std::uint64_t>(value) -
                                             static_cast<std::uint64_t>(offset));
}

/// Sums the values of each group. The records of a group are read one after the other, so only the
/// sums of one group are in memory.
class Pass
{
public:
    Pass(const InputTable& table, bool moments, GroupSummaries& groups)
        : _table(table), _hasMoments(moments), _groups(groups)
    {
        for (std::size_t i = 0; i < groups.front().fields.size(); ++i) {
            SummedField& field = _fields.emplace_back();
            field.column = columnFor(i);
            if (field.column != SummedColumn::None)
                field.sums = std::make_unique<PieceSums>(_scratch);
        }
    }

    void run(const ComponentQueries& queries)
    {
        begin();
        const std::string columns = columnList();
        if (!columns.empty())
            queries.stream("SELECT " + columns + " FROM " + _table.name() + order(),
                           [this](const duck::Chunk& chunk) { take(chunk); });
        advance(_groups.size());
    }

private:
    std::optional<ValueFrame> frameIn(const DataSummary& group, std::size_t field) const
    {
        const FieldSummary& summary = group.fields[field];
        return _hasMoments && isNumber(summary.field) ? frameOf(summary) : std::nullopt;
    }

    /// The column that serves all groups. If all values of a group are equal, they are not summed.
    SummedColumn columnFor(std::size_t field) const
    {
        SummedColumn column = _table.isWeighted() ? SummedColumn::Presence : SummedColumn::None;
        for (const DataSummary& group : _groups) {
            const std::optional<ValueFrame> frame = frameIn(group, field);
            if (!frame || frame->isConstant)
                continue;
            if (frame->offset != 0)
                return SummedColumn::Integers;
            column = SummedColumn::Numbers;
        }
        return column;
    }

    std::string columnList() const
    {
        std::string columns;
        const auto add = [&](const std::string& sql) {
            columns += (columns.empty() ? "" : ", ") + sql;
        };
        if (_table.isWeighted())
            add(InputTable::kWeight);
        for (std::size_t i = 0; i < _fields.size(); ++i)
            if (_fields[i].sums)
                add(columnOf(_fields[i].column, _table.column(_groups.front().fields[i].field)));
        if (_table.isGrouped() && !columns.empty())
            add(InputTable::kGroup);
        return columns;
    }

    /// Within a group, records keep their order, on which the last digits of a sum depend.
    std::string order() const
    {
        return _table.isGrouped() ? std::string(" ORDER BY ") + InputTable::kGroup + ", rowid" : "";
    }

    void take(const duck::Chunk& chunk)
    {
        if (!_table.isGrouped())
            return takeRows(chunk, {0, chunk.rows()});
        const std::int64_t* const groups = integersOf(chunk, groupColumn());
        for (std::size_t begin = 0, end = 0; begin < chunk.rows(); begin = end) {
            while (end < chunk.rows() && groups[end] == groups[begin])
                ++end;
            advance(static_cast<std::size_t>(groups[begin] - 1));
            takeRows(chunk, {begin, end});
        }
    }

    std::size_t groupColumn() const
    {
        return static_cast<std::size_t>(std::ranges::count_if(
                   _fields, [](const SummedField& field) { return field.sums != nullptr; })) +
               (_table.isWeighted() ? 1 : 0);
    }

    void takeRows(const duck::Chunk& chunk, const Rows& rows)
    {
        std::size_t column = 0;
        const double* weights = nullptr;
        if (_table.isWeighted()) {
            weights = numbersOf(chunk, column);
            takeNumbers(_whole, chunk, column++, weights, rows);
        }
        for (SummedField& field : _fields) {
            if (!field.sums)
                continue;
            if (field.column == SummedColumn::Integers)
                takeIntegers(field, chunk, column++, weights, rows);
            else
                takeNumbers(*field.sums, chunk, column++, weights, rows);
        }
    }

    static void takeNumbers(PieceSums& sums, const duck::Chunk& chunk, std::size_t column,
                            const double* weights, const Rows& rows)
    {
        const double* const values = numbersOf(chunk, column);
        sums.take(rows, validityOf(chunk, column), weights,
                  [values](std::size_t row) { return values[row]; });
    }

    static void takeIntegers(SummedField& field, const duck::Chunk& chunk, std::size_t column,
                             const double* weights, const Rows& rows)
    {
        const std::int64_t* const values = integersOf(chunk, column);
        const std::int64_t offset = field.frame ? field.frame->offset : 0;
        field.sums->take(rows, validityOf(chunk, column), weights,
                         [=](std::size_t row) { return beyond(offset, values[row]); });
    }

    /// Ends the groups before this one.
    void advance(std::size_t group)
    {
        while (_group < group) {
            finish(_groups[_group]);
            if (++_group < _groups.size())
                begin();
        }
    }

    /// Begins the present group.
    void begin()
    {
        _whole.begin(1);
        for (std::size_t i = 0; i < _fields.size(); ++i) {
            SummedField& field = _fields[i];
            field.frame = frameIn(_groups[_group], i);
            if (field.sums)
                field.sums->begin(field.frame && !field.frame->isConstant ? field.frame->scale()
                                                                          : 1);
        }
    }

    void finish(DataSummary& group)
    {
        for (std::size_t i = 0; i < _fields.size(); ++i)
            fill(_fields[i], group.fields[i]);
        group.weight =
            _table.isWeighted() ? _whole.finish(true).weight : static_cast<double>(group.records);
    }

    void fill(SummedField& field, FieldSummary& summary)
    {
        CentralSums sums;
        if (field.sums)
            sums = field.sums->finish(_table.isWeighted());
        if (!_table.isWeighted())
            sums.weight = static_cast<double>(summary.valid);
        summary.validWeight = sums.weight;
        if (field.frame)
            fillMoments(*field.frame, sums, summary.numeric);
    }

    const InputTable& _table;
    bool _hasMoments;
    GroupSummaries& _groups;
    std::size_t _group = 0; ///< the present one
    Piece _scratch{};
    PieceSums _whole{_scratch};
    std::vector<SummedField> _fields;
};

} // namespace

void sumUp(const ComponentQueries& queries, const InputTable& table, bool moments,
           GroupSummaries& groups)
{
    Pass(table, moments, groups).run(queries);
    for (DataSummary& group : groups)
        for (FieldSummary& field : group.fields)
            // The difference of two rounded sums is rarely exactly 0.
            field.missingWeight = field.missing == 0 ? 0 : group.weight - field.validWeight;
}

} // namespace EmbeddedHV
