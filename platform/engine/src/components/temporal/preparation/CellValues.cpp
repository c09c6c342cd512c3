#include "components/temporal/preparation/CellValues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace EmbeddedHV {

CellValues::CellValues(Aggregation aggregation, std::size_t cells)
    : _aggregation(aggregation), _values(cells, std::numeric_limits<double>::quiet_NaN())
{
    if (aggregation == Aggregation::First || aggregation == Aggregation::Last ||
        aggregation == Aggregation::Mode)
        _order.resize(cells);
}

/// The sum of a cell. Begins with the only value of the cell so far.
ExactSum& CellValues::sumOf(std::size_t cell)
{
    if (_sumOf.empty())
        _sumOf.resize(_values.size());
    if (_sumOf[cell] == 0) {
        ExactSum& sum = _sums.emplace_back();
        if (!std::isnan(_values[cell]))
            sum.add(_values[cell]);
        _values[cell] = 0; // no longer missing
        _sumOf[cell] = static_cast<std::uint32_t>(_sums.size());
    }
    return _sums[_sumOf[cell] - 1];
}

void CellValues::addSum(std::size_t cell, const ExactSum& sum)
{
    if (sum.count() == 1)
        add(cell, static_cast<double>(sum.rounded()), 0);
    else
        sumOf(cell).add(sum);
}

void CellValues::add(std::size_t cell, double value, std::int64_t place)
{
    // Of 0 and -0 the one that comes first would be the least.
    value += 0.0;
    double& known = _values[cell];
    if (std::isnan(known)) {
        known = value;
        if (!_order.empty())
            _order[cell] = place;
        return;
    }
    switch (_aggregation) {
    case Aggregation::Sum:
    case Aggregation::Mean:
        sumOf(cell).add(value);
        break;
    case Aggregation::Minimum:
        known = std::min(known, value);
        break;
    case Aggregation::Maximum:
        known = std::max(known, value);
        break;
    case Aggregation::First:
    case Aggregation::Last:
        if ((_aggregation == Aggregation::First) == (place < _order[cell])) {
            known = value;
            _order[cell] = place;
        }
        break;
    case Aggregation::Mode:
        break;
    }
}

void CellValues::addCounted(std::size_t cell, double value, std::int64_t times)
{
    value += 0.0;
    double& known = _values[cell];
    if (std::isnan(known) || times > _order[cell] || (times == _order[cell] && value < known)) {
        known = value;
        _order[cell] = times;
    }
}

std::vector<double> CellValues::finish(std::int64_t& overflows)
{
    for (std::size_t cell = 0; cell < _sumOf.size(); ++cell) {
        if (_sumOf[cell] == 0)
            continue;
        const ExactSum& sum = _sums[_sumOf[cell] - 1];
        const long double total = sum.rounded();
        _values[cell] = static_cast<double>(_aggregation == Aggregation::Mean
                                                ? total / static_cast<long double>(sum.count())
                                                : total);
        if (!std::isfinite(_values[cell])) {
            _values[cell] = std::numeric_limits<double>::quiet_NaN();
            ++overflows;
        }
    }
    _sumOf = {};
    _sums = std::vector<ExactSum>();
    _order = {};
    return std::move(_values);
}

} // namespace EmbeddedHV
