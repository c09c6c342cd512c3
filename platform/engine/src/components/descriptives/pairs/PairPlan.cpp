#include "components/descriptives/pairs/PairPlan.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

PairMeasure measureOf(const CFField& first, const CFField& second)
{
    if (isPairedNumber(first) && isPairedNumber(second))
        return PairMeasure::Correlation;
    return isPairedNumber(first) || isPairedNumber(second) ? PairMeasure::Eta
                                                           : PairMeasure::CramersV;
}

class Planner
{
public:
    Planner(const DataSummary& summary, const PairRule& rule) : _summary(summary)
    {
        for (std::size_t i = 0; i < summary.fields.size(); ++i)
            if (isPaired(summary.fields[i])) {
                _fields.push_back(i);
                _isTarget.push_back(
                    std::ranges::find(rule.targets, summary.fields[i].field.GetName()) !=
                    rule.targets.end());
            }
    }

    void addTargets()
    {
        for (std::size_t i = 0; i < _fields.size(); ++i)
            for (std::size_t j = 0; _isTarget[i] && j < _fields.size(); ++j)
                // A pair of two targets is listed with the first of them.
                if (j != i && !(_isTarget[j] && j < i))
                    add(i, j);
    }

    void addOthers()
    {
        for (std::size_t i = 0; i < _fields.size(); ++i)
            for (std::size_t j = i + 1; !_isTarget[i] && j < _fields.size(); ++j)
                if (!_isTarget[j])
                    add(i, j);
    }

    std::optional<std::vector<PairStatistic>> pairs() &&
    {
        if (_pairs.size() > kMostPairs)
            return std::nullopt;
        return std::move(_pairs);
    }

private:
    void add(std::size_t i, std::size_t j)
    {
        if (_pairs.size() > kMostPairs)
            return;
        PairStatistic pair;
        pair.first = _fields[i];
        pair.second = _fields[j];
        pair.measure =
            measureOf(_summary.fields[pair.first].field, _summary.fields[pair.second].field);
        _pairs.push_back(pair);
    }

    const DataSummary& _summary;
    std::vector<std::size_t> _fields;
    std::vector<bool> _isTarget;
    std::vector<PairStatistic> _pairs;
};

} // namespace

bool isPairedNumber(const CFField& field)
{
    return isNumber(field) && !isCategorical(field);
}

bool isPaired(const FieldSummary& field)
{
    return isPairedNumber(field.field) || (isCategorical(field.field) && field.distinct);
}

std::optional<std::vector<PairStatistic>> plannedPairs(const DataSummary& summary,
                                                       const PairRule& rule)
{
    Planner planner(summary, rule);
    planner.addTargets();
    if (rule.all)
        planner.addOthers();
    return std::move(planner).pairs();
}

} // namespace EmbeddedHV
