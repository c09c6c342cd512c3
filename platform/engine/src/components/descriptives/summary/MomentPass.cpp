#include "components/descriptives/summary/MomentPass.h"

#include <array>
#include <memory>

#include "components/descriptives/summary/Moments.h"
#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {
namespace {

/// The number of values in a piece. A piece fits into the processor's fastest cache, and a table
/// may have thousands of fields.
constexpr std::size_t kPiece = 512;
using Piece = std::array<double, kPiece>;

bool isThere(const std::uint64_t* validity, std::size_t row)
{
    return !validity || (validity[row / 64] >> (row % 64) & 1) != 0;
}

/// A column of numbers in a chunk. A null validity means that all values are present.
struct Numbers
{
    Numbers(const duck::Chunk& chunk, std::size_t column)
        : values(static_cast<const double*>(duckdb_vector_get_data(chunk.column(column)))),
          validity(duckdb_vector_get_validity(chunk.column(column)))
    {
    }

    const double* values;
    const std::uint64_t* validity;
};

/// Collects the values of a field into pieces and sums each full piece. The size of a piece is
/// fixed, so it does not depend on the database's chunks.
class PieceSums
{
public:
    /// Borrows `scratch`. The pieces of all fields may share it.
    PieceSums(double scale, Piece& scratch) : _scale(scale), _scratch(scratch) {}

    /// `weights` may be null.
    void take(const Numbers& numbers, const double* weights, std::size_t rows)
    {
        for (std::size_t row = 0; row < rows; ++row) {
            if (!isThere(numbers.validity, row))
                continue;
            _values[_count] = numbers.values[row] * _scale;
            if (weights)
                _weights[_count] = weights[row];
            if (++_count == kPiece)
                endPiece(weights != nullptr);
        }
    }

    const CentralSums& finish(bool weighted)
    {
        if (_count > 0)
            endPiece(weighted);
        return _sums;
    }

private:
    void endPiece(bool weighted)
    {
        const double near = _sums.weight > 0 ? _sums.mean : _values[0];
        merge(_sums, centralSums(_values.data(), weighted ? _weights.data() : nullptr, _count, near,
                                 _scratch.data()));
        _count = 0;
    }

    double _scale;
    std::size_t _count = 0;
    CentralSums _sums;
    Piece _values{};
    Piece _weights{};
    Piece& _scratch;
};

/// A field of the pass. If its moments are not needed, or its values are all equal, only the
/// weights of the records with a value are summed.
struct SummedField
{
    FieldSummary* summary;
    std::optional<ValueFrame> frame;
    std::unique_ptr<PieceSums> sums;

    bool needsValues() const { return frame && !frame->isConstant; }
};

std::string columnOf(const SummedField& field, const InputTable& table)
{
    const std::string x = table.column(field.summary->field);
    if (!field.needsValues())
        return "CASE WHEN " + x + " IS NOT NULL THEN CAST(0 AS DOUBLE) END";
    if (field.frame->offset == 0)
        return "CAST(" + x + " AS DOUBLE)";
    return "CAST(CAST(" + x + " AS HUGEINT) - " + duckDialect().literal(field.frame->offset) +
           " AS DOUBLE)";
}

class Pass
{
public:
    Pass(const InputTable& table, bool moments, DataSummary& summary)
        : _table(table), _summary(summary)
    {
        for (FieldSummary& field : summary.fields) {
            SummedField summed{&field, std::nullopt, nullptr};
            if (moments && isNumber(field.field))
                summed.frame = frameOf(field);
            if (summed.needsValues() || table.isWeighted())
                summed.sums = std::make_unique<PieceSums>(
                    summed.needsValues() ? summed.frame->scale() : 1, _scratch);
            _fields.push_back(std::move(summed));
        }
    }

    void run(const ComponentQueries& queries)
    {
        std::string columns = _table.isWeighted() ? InputTable::kWeight : "";
        for (const SummedField& field : _fields)
            if (field.sums)
                columns += (columns.empty() ? "" : ", ") + columnOf(field, _table);
        if (!columns.empty())
            queries.stream("SELECT " + columns + " FROM " + _table.name(),
                           [this](const duck::Chunk& chunk) { take(chunk); });
        for (SummedField& field : _fields)
            fill(field);
        _summary.weight = _table.isWeighted() ? _whole.finish(true).weight
                                              : static_cast<double>(_summary.records);
    }

private:
    void take(const duck::Chunk& chunk)
    {
        const std::size_t rows = chunk.rows();
        std::size_t column = 0;
        const double* weights = nullptr;
        if (_table.isWeighted()) {
            const Numbers numbers(chunk, column++);
            weights = numbers.values;
            _whole.take(numbers, weights, rows);
        }
        for (SummedField& field : _fields)
            if (field.sums)
                field.sums->take(Numbers(chunk, column++), weights, rows);
    }

    void fill(SummedField& field)
    {
        FieldSummary& summary = *field.summary;
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
    DataSummary& _summary;
    Piece _scratch{};
    PieceSums _whole{1, _scratch};
    std::vector<SummedField> _fields;
};

} // namespace

void sumUp(const ComponentQueries& queries, const InputTable& table, bool moments,
           DataSummary& summary)
{
    Pass(table, moments, summary).run(queries);
    for (FieldSummary& field : summary.fields)
        // The difference of two rounded sums is rarely exactly 0.
        field.missingWeight = field.missing == 0 ? 0 : summary.weight - field.validWeight;
}

} // namespace EmbeddedHV
