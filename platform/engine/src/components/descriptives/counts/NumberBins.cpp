#include "components/descriptives/counts/NumberBins.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "components/descriptives/summary/BinEdges.h"
#include "components/descriptives/summary/WeightedQuantiles.h"
#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {
namespace {

constexpr int kEqualBins = 10;
/// Beyond this, edges and widths could exceed the range of a double.
constexpr double kFarthestEdge = 1e300;

std::string binnedNumber(const InputTable& table, const FieldSummary& field)
{
    return "CAST(" + table.column(field.field) + " AS DOUBLE)";
}

std::vector<double> decileEdges(const ComponentQueries& queries, const InputTable& table,
                                const FieldSummary& field)
{
    std::vector<double> parts;
    for (int i = 0; i <= kEqualBins; ++i)
        parts.push_back(static_cast<double>(i) / kEqualBins);
    std::vector<double> edges;
    for (const auto& edge :
         weightedQuantiles(queries, table, binnedNumber(table, field), field.validWeight, parts))
        if (edge && (edges.empty() || *edge > edges.back()))
            edges.push_back(*edge);
    if (edges.size() == 1)
        edges.push_back(edges.front());
    return edges;
}

std::vector<double> equalEdges(const FieldSummary& field)
{
    const double least = std::strtod(field.minimum.c_str(), nullptr);
    const double greatest = std::strtod(field.maximum.c_str(), nullptr);
    if (std::max(-least, greatest) > kFarthestEdge)
        return {};
    BinRequest request{least, greatest, std::nullopt, field.validWeight, BinScale::Real};
    if (field.numeric.firstQuartile && field.numeric.thirdQuartile)
        request.interquartileRange = *field.numeric.thirdQuartile - *field.numeric.firstQuartile;
    if (field.field.GetStorage() == CFField::Integer)
        request.scale = BinScale::Whole;
    return binEdges(request);
}

void countInBins(const ComponentQueries& queries, const InputTable& table,
                 const std::vector<double>& edges, FieldSummary& field)
{
    for (std::size_t i = 0; i + 1 < edges.size(); ++i)
        field.bins.push_back({edges[i], edges[i + 1]});
    // The number of inner edges that the value reaches.
    std::string bin = "0";
    for (std::size_t i = 1; i + 1 < edges.size(); ++i)
        bin += " + CAST(x >= " + duckDialect().literal(edges[i]) + " AS INTEGER)";
    duck::Result rows =
        queries.run("SELECT " + bin + " AS bin, count(*), CAST(sum(w) AS DOUBLE) FROM (SELECT " +
                    binnedNumber(table, field) + " AS x, " + InputTable::kWeight + " AS w FROM " +
                    table.name() + ") WHERE x IS NOT NULL GROUP BY bin");
    for (std::size_t row = 0; row < rows.rows(); ++row) {
        Bin& counted = field.bins.at(static_cast<std::size_t>(rows.integer(0, row)));
        counted.records = rows.integer(1, row);
        counted.weight = rows.real(2, row).value_or(0);
    }
}

} // namespace

void fillBins(const ComponentQueries& queries, const InputTable& table, bool equalFrequencies,
              DataSummary& summary)
{
    for (FieldSummary& field : summary.fields) {
        if (!isNumber(field.field) || isCategorical(field.field) || field.valid == 0)
            continue;
        const std::vector<double> edges =
            equalFrequencies ? decileEdges(queries, table, field) : equalEdges(field);
        if (!edges.empty())
            countInBins(queries, table, edges, field);
    }
}

} // namespace EmbeddedHV
