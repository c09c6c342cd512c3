#include "expression/Norms.h"

#include <algorithm>

namespace scoring {

Cell NormContinuous::evaluate(Cells& cells)
{
    const Cell cell = _source->evaluate(cells);
    if (cell.isMissing())
        return missing(cells);
    if (cell.isInvalid())
        return cell;
    const bool isBelow = cell.number < _points.front().original;
    const bool isAbove = cell.number > _points.back().original;
    if ((isBelow || isAbove) && _outliers == Outliers::AsMissing)
        return missing(cells);
    if ((isBelow || isAbove) && _outliers == Outliers::AsExtremes)
        return Cell::of(isBelow ? _points.front().normed : _points.back().normed);
    return onLine(cell.number);
}

Cell NormContinuous::missing(Cells& cells) const
{
    return _missing ? _missing->evaluate(cells) : Cell::missing();
}

Cell NormContinuous::onLine(double number) const
{
    // The end of the line segment that contains the number or is nearest to it.
    const auto end =
        std::lower_bound(_points.begin() + 1, _points.end() - 1, number,
                         [](const Point& point, double value) { return point.original < value; });
    const Point& from = *(end - 1);
    const double slope = (end->normed - from.normed) / (end->original - from.original);
    return Cell::of(from.normed + (number - from.original) * slope);
}

/// A missing value is not known to be the category, nor to be another one.
Cell NormDiscrete::evaluate(Cells& cells)
{
    const Cell cell = _source->evaluate(cells);
    if (cell.isMissing() && _missing)
        return _missing->evaluate(cells);
    if (!cell.isPresent())
        return cell;
    const bool areTexts = _source->kind() == ValueKind::Text;
    return Cell::of(compare(cell, _category->evaluate(cells), areTexts) == 0 ? 1.0 : 0.0);
}

} // namespace scoring
