#include "components/descriptives/pairs/CategoryPairs.h"

#include <algorithm>
#include <map>

#include "components/descriptives/pairs/ContingencyTable.h"
#include "components/descriptives/pairs/PairPlan.h"
#include "components/descriptives/pairs/StandardScore.h"
#include "components/descriptives/summary/FieldParts.h"
#include "components/statistics/AssociationTests.h"
#include "runtime/CompensatedSums.h"

namespace EmbeddedHV {
namespace {

/// A statement has at most this many numbers...
constexpr std::size_t kNumbersAtOnce = 64;
/// ...and results, because memory holds them. A number has four for each group.
constexpr std::size_t kResultsAtOnce = 1 << 20;

std::size_t numbersAtOnce(const FieldSummary& category)
{
    const auto groups = static_cast<std::size_t>(category.distinct.value_or(0));
    return std::clamp<std::size_t>(kResultsAtOnce / (4 * groups + 1), 1, kNumbersAtOnce);
}

std::string realSum(const std::string& x)
{
    return std::string(kRealSum) + "(" + x + ")";
}

double meanOf(const std::vector<GroupSums>& groups)
{
    double weight = 0;
    double sum = 0;
    for (const GroupSums& group : groups) {
        weight += group.weight;
        sum += group.sum;
    }
    return weight > 0 ? sum / weight : 0;
}

/// The pairs of one category with some numbers.
class GroupStatement
{
public:
    GroupStatement(const InputTable& table, const DataSummary& summary, std::size_t category)
        : _table(table), _summary(summary), _category(table.column(summary.fields[category].field))
    {
    }

    void add(PairStatistic& pair, std::size_t number)
    {
        _pairs.push_back(&pair);
        const std::string z = "z" + std::to_string(_pairs.size());
        _numbers.push_back(number);
        _scores += ", " + standardScore(_table, _summary.fields[number]) + " AS " + z;
        _sums += ", count(" + z + "), " + realSum("CASE WHEN " + z + " IS NOT NULL THEN w END") +
                 ", " + realSum("w * " + z) + ", " + realSum("w * " + z + " * " + z);
    }

    void run(const ComponentQueries& queries)
    {
        // The order of the groups determines the rounding of their sum.
        duck::Result rows = queries.run("SELECT g" + _sums + " FROM (SELECT " + _category +
                                        " AS g, CAST(" + InputTable::kWeight + " AS DOUBLE) AS w" +
                                        _scores + " FROM " + _table.name() + " WHERE " + _category +
                                        " IS NOT NULL) GROUP BY g ORDER BY g");
        for (std::size_t i = 0; i < _pairs.size(); ++i)
            fill(queries, rows, i, *_pairs[i]);
    }

private:
    void fill(const ComponentQueries& queries, duck::Result& rows, std::size_t place,
              PairStatistic& pair) const
    {
        const std::size_t column = 1 + 4 * place;
        std::vector<GroupSums> groups;
        for (std::size_t row = 0; row < rows.rows(); ++row) {
            pair.records += rows.integer(column, row);
            groups.push_back({rows.real(column + 1, row).value_or(0),
                              rows.real(column + 2, row).value_or(0),
                              rows.real(column + 3, row).value_or(0)});
            pair.weight += groups.back().weight;
        }
        pair.association =
            areOffCentre(groups) ? centredRatio(queries, place, groups) : correlationRatio(groups);
    }

    /// The association from sums with the mean of the pair's own records as the centre, and from
    /// the squared distances from the means of the groups.
    Association centredRatio(const ComponentQueries& queries, std::size_t place,
                             const std::vector<GroupSums>& known) const
    {
        const std::string score =
            standardScore(_table, _summary.fields[_numbers[place]], meanOf(known));
        duck::Result rows = queries.run(
            "SELECT " + realSum("w") + ", " + realSum("w * z") + ", " +
            realSum("w * (z - m) * (z - m)") +
            " FROM (SELECT g, z, w, sum(w * z) OVER same / sum(w) OVER same AS m FROM (SELECT " +
            _category + " AS g, " + score + " AS z, CAST(" + InputTable::kWeight +
            " AS DOUBLE) AS w FROM " + _table.name() +
            ") WHERE g IS NOT NULL AND z IS NOT NULL WINDOW same AS (PARTITION BY g)) GROUP BY g "
            "ORDER BY g");
        std::vector<GroupSums> groups;
        double within = 0;
        for (std::size_t row = 0; row < rows.rows(); ++row) {
            const double weight = rows.real(0, row).value_or(0);
            const double sum = rows.real(1, row).value_or(0);
            const double squares = rows.real(2, row).value_or(0);
            groups.push_back({weight, sum, squares + sum * sum / weight});
            within += squares;
        }
        return correlationRatio(groups, within);
    }

    const InputTable& _table;
    const DataSummary& _summary;
    std::string _category;
    std::vector<std::size_t> _numbers; ///< fields of the summary
    std::string _scores;
    std::string _sums;
    std::vector<PairStatistic*> _pairs;
};

/// The pairs of a statement.
struct GroupBatch
{
    struct Member
    {
        PairStatistic* pair = nullptr;
        std::size_t number = 0;
    };

    std::size_t category = 0;
    std::vector<Member> members;
};

std::vector<GroupBatch> groupBatches(const DataSummary& summary, std::vector<PairStatistic>& pairs)
{
    std::map<std::size_t, std::vector<GroupBatch::Member>> byCategory;
    for (PairStatistic& pair : pairs)
        if (pair.measure == PairMeasure::Eta) {
            const bool isNumberFirst = isPairedNumber(summary.fields[pair.first].field);
            byCategory[isNumberFirst ? pair.second : pair.first].push_back(
                {&pair, isNumberFirst ? pair.first : pair.second});
        }
    std::vector<GroupBatch> batches;
    for (const auto& [category, members] : byCategory) {
        const std::size_t most = numbersAtOnce(summary.fields[category]);
        for (std::size_t i = 0; i < members.size(); ++i) {
            if (i % most == 0)
                batches.push_back({category, {}});
            batches.back().members.push_back(members[i]);
        }
    }
    return batches;
}

} // namespace

void fillGroupPairs(const ComponentQueries& queries, const InputTable& table,
                    const std::string& partName, const DataSummary& summary,
                    std::vector<PairStatistic>& pairs)
{
    const std::vector<GroupBatch> batches = groupBatches(summary, pairs);
    std::vector<std::vector<std::size_t>> sets;
    for (const GroupBatch& batch : batches) {
        sets.push_back({batch.category});
        for (const GroupBatch::Member& member : batch.members)
            sets.back().push_back(member.number);
    }
    forFieldSets(queries, table, partName, fieldsOf(summary), sets,
                 [&](const InputTable& part, std::size_t set) {
                     GroupStatement statement(part, summary, batches[set].category);
                     for (const GroupBatch::Member& member : batches[set].members)
                         statement.add(*member.pair, member.number);
                     statement.run(queries);
                 });
}

void fillCategoryPairs(const ComponentQueries& queries, const InputTable& table,
                       const std::string& partName, const DataSummary& summary,
                       std::vector<PairStatistic>& pairs)
{
    std::vector<PairStatistic*> members;
    std::vector<std::vector<std::size_t>> sets;
    for (PairStatistic& pair : pairs)
        if (pair.measure == PairMeasure::CramersV) {
            members.push_back(&pair);
            sets.push_back({pair.first, pair.second});
        }
    forFieldSets(queries, table, partName, fieldsOf(summary), sets,
                 [&](const InputTable& part, std::size_t set) {
                     PairStatistic& pair = *members[set];
                     const CountedContingency counted =
                         contingencyTable(queries, part, summary.fields[pair.first].field,
                                          summary.fields[pair.second].field);
                     pair.records = counted.records;
                     pair.weight = counted.weight;
                     pair.association = contingency(counted.table);
                 });
}

} // namespace EmbeddedHV
