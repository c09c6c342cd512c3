#include "expression/Conversion.h"

#include <cmath>

#include "base/CivilTime.h"
#include "base/NumberText.h"
#include "values/Calendar.h"
#include "values/CellText.h"

namespace scoring {
namespace {

/// All smaller whole numbers are exact.
constexpr double kMostInteger = 9007199254740992.0;

} // namespace

Cell Conversion::evaluate(Cells& cells)
{
    const Cell cell = _source->evaluate(cells);
    if (!cell.isPresent())
        return cell;
    switch (_rule) {
    case ConversionRule::ToWhole:
        return Cell::of(std::round(cell.number));
    case ConversionRule::ToTruth:
        return cell.number == 0 || cell.number == 1 ? cell : Cell::invalid();
    case ConversionRule::ToDay:
        return Cell::of(std::floor(cell.number / base::kSecondsPerDay) * base::kSecondsPerDay);
    case ConversionRule::ToText:
        return text(cell.number);
    case ConversionRule::FromText:
        return parseCell(cell.text, kind()).value_or(Cell::invalid());
    default:
        return cell;
    }
}

/// Formats the number as a person writes it.
Cell Conversion::text(double number)
{
    if (_source->kind() == ValueKind::Boolean)
        return Cell::of(std::string_view(number != 0 ? "true" : "false"));
    _text.clear();
    // Writes a million as 1000000 although 1e+06 is shorter.
    if (number == std::floor(number) && std::fabs(number) < kMostInteger)
        base::appendNumber(_text, static_cast<long long>(number));
    else
        base::appendNumber(_text, number);
    return Cell::of(std::string_view(_text));
}

Cell Counting::evaluate(Cells& cells)
{
    const Cell cell = _source->evaluate(cells);
    if (!cell.isPresent())
        return cell;
    const bool isMoment = _source->kind() == ValueKind::Moment;
    const double seconds = isMoment ? secondsSince(_to.origin, cell.number)
                                    : cell.number * _from.unit + (_from.origin - _to.origin);
    return Cell::of(_to.unit == 1 ? seconds : std::floor(seconds / _to.unit));
}

} // namespace scoring
