#include "components/temporal/preparation/CellValues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace EmbeddedHV {
namespace {

static_assert(std::numeric_limits<long double>::max_exponent >
                  std::numeric_limits<double>::max_exponent,
              "a sum of the largest numbers must not overflow");

} // namespace

CellValues::CellValues(Aggregation aggregation, std::size_t cells)
    : _aggregation(aggregation), _values(cells, std::numeric_limits<double>::quiet_NaN())
{
    if (aggregation == Aggregation::First || aggregation == Aggregation::Last ||
        aggregation == Aggregation::Mode)
        _order.resize(cells);
}

/// D. E. Knuth, "The Art of Computer Programming", volume 2, 4.2.2, theorem B: the sum of two
/// numbers and its exact rest.
void CellValues::WideSum::add(double value)
{
    const long double sum = high + value;
    const long double part = sum - high;
    low += (high - (sum - part)) + (value - part);
    high = sum;
    ++count;
}

void CellValues::addToSum(std::size_t cell, double value)
{
    if (_sumOf.empty())
        _sumOf.resize(_values.size());
    if (_sumOf[cell] == 0) {
        _sums.emplace_back().add(_values[cell]);
        _sumOf[cell] = static_cast<std::uint32_t>(_sums.size());
    }
    _sums[_sumOf[cell] - 1].add(value);
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
        addToSum(cell, value);
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
        const WideSum& sum = _sums[_sumOf[cell] - 1];
        const long double total = sum.high + sum.low;
        _values[cell] = static_cast<double>(_aggregation == Aggregation::Mean
                                                ? total / static_cast<long double>(sum.count)
                                                : total);
        if (!std::isfinite(_values[cell])) {
            _values[cell] = std::numeric_limits<double>::quiet_NaN();
            ++overflows;
        }
    }
    _sumOf = {};
    _sums = {};
    _order = {};
    return std::move(_values);
}

} // namespace EmbeddedHV
