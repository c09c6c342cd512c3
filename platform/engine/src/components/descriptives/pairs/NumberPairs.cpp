#include "components/descriptives/pairs/NumberPairs.h"

#include <limits>
#include <map>

#include "components/descriptives/pairs/StandardScore.h"
#include "components/statistics/AssociationTests.h"
#include "components/statistics/PairSums.h"
#include "runtime/CompensatedSums.h"

namespace EmbeddedHV {
namespace {

/// Gives each field that is added a position, from 0 on.
class Positions
{
public:
    void add(std::size_t field)
    {
        if (_positions.emplace(field, _fields.size()).second)
            _fields.push_back(field);
    }
    std::size_t of(std::size_t field) const { return _positions.at(field); }
    const std::vector<std::size_t>& fields() const { return _fields; }

private:
    std::map<std::size_t, std::size_t> _positions;
    std::vector<std::size_t> _fields;
};

/// The columns of the numbers, and after them the weights.
class NumberStream
{
public:
    NumberStream(const ComponentQueries& queries, const InputTable& table,
                 const DataSummary& summary, const Positions& columns)
        : _queries(queries), _count(columns.fields().size())
    {
        for (const std::size_t field : columns.fields())
            _sql += standardScore(table, summary.fields[field]) + ", ";
        _sql =
            "SELECT " + _sql + "CAST(" + InputTable::kWeight + " AS DOUBLE) FROM " + table.name();
    }

    void addTo(PairSums& sums)
    {
        _queries.stream(_sql, [&](const duck::Chunk& chunk) {
            const std::size_t rows = chunk.rows();
            _values.resize(rows * _count);
            for (std::size_t column = 0; column < _count; ++column)
                copy(chunk.column(column), rows, _values.data() + column * rows);
            const auto* const weights =
                static_cast<const double*>(duckdb_vector_get_data(chunk.column(_count)));
            sums.take({rows, _count, _values.data(), weights},
                      [this] { _queries.throwIfStopped(); });
        });
    }

private:
    static void copy(duckdb_vector vector, std::size_t rows, double* target)
    {
        const auto* const numbers = static_cast<const double*>(duckdb_vector_get_data(vector));
        std::uint64_t* const validity = duckdb_vector_get_validity(vector);
        for (std::size_t row = 0; row < rows; ++row)
            target[row] = !validity || duckdb_validity_row_is_valid(validity, row)
                              ? numbers[row]
                              : std::numeric_limits<double>::quiet_NaN();
    }

    const ComponentQueries& _queries;
    std::size_t _count;
    std::string _sql;
    std::vector<double> _values; ///< column after column
};

/// The sums of a pair with the means of its own records as the centre. They differ from the means
/// of the fields if values are missing in the other field.
PairMoments centredMoments(const ComponentQueries& queries, const InputTable& table,
                           const DataSummary& summary, const PairStatistic& pair,
                           const PairMoments& known)
{
    const auto deviation = [&](std::size_t field, double sum) {
        return standardScore(table, summary.fields[field], sum / known.weight);
    };
    std::string sums;
    for (const char* term : {"x", "y", "x * x", "y * y", "x * y"})
        sums += std::string(sums.empty() ? "" : ", ") + kRealSum + "(w * " + term + ")";
    duck::Result row = queries.run(
        "SELECT " + sums + " FROM (SELECT " + deviation(pair.first, known.sumX) + " AS x, " +
        deviation(pair.second, known.sumY) + " AS y, CAST(" + InputTable::kWeight +
        " AS DOUBLE) AS w FROM " + table.name() + ") WHERE x IS NOT NULL AND y IS NOT NULL");
    const auto sum = [&](std::size_t column) { return row.real(column, 0).value_or(0); };
    return {known.records, known.weight, sum(0), sum(1), sum(2), sum(3), sum(4)};
}

} // namespace

void fillNumberPairs(const ComponentQueries& queries, const InputTable& table,
                     const DataSummary& summary, std::vector<PairStatistic>& pairs)
{
    Positions columns;
    Positions left;
    Positions right;
    for (const PairStatistic& pair : pairs)
        if (pair.measure == PairMeasure::Correlation) {
            columns.add(pair.first);
            columns.add(pair.second);
            left.add(pair.first);
            right.add(pair.second);
        }
    if (columns.fields().empty())
        return;
    const auto numbersOf = [&](const Positions& side) {
        std::vector<std::size_t> numbers;
        for (const std::size_t field : side.fields())
            numbers.push_back(columns.of(field));
        return numbers;
    };
    PairSums sums(numbersOf(left), numbersOf(right), table.isWeighted());
    NumberStream(queries, table, summary, columns).addTo(sums);
    for (PairStatistic& pair : pairs) {
        if (pair.measure != PairMeasure::Correlation)
            continue;
        PairMoments moments = sums.moments(left.of(pair.first), right.of(pair.second));
        if (moments.isOffCentre())
            moments = centredMoments(queries, table, summary, pair, moments);
        pair.records = static_cast<std::int64_t>(moments.records);
        pair.weight = moments.weight;
        pair.association = correlation(moments);
    }
}

} // namespace EmbeddedHV
