#pragma once

#include <utility>

#include "expression/Interval.h"
#include "expression/Treatment.h"

namespace scoring {

/// The value of the first bin that contains a number.
class Discretize : public Expression
{
public:
    /// An interval and the value for its numbers.
    struct Bin
    {
        Interval interval;
        ExpressionPtr value;
    };

    Discretize(ValueKind kind, ExpressionPtr source, std::vector<Bin> bins, Treatment treatment)
        : Expression(kind), _source(std::move(source)), _bins(std::move(bins)),
          _treatment(std::move(treatment))
    {
    }

    Cell evaluate(Cells& cells) override
    {
        const Cell cell = _source->evaluate(cells);
        if (cell.isMissing() && _treatment.mapMissingTo)
            return _treatment.mapMissingTo->evaluate(cells);
        if (!cell.isPresent())
            return cell;
        for (const Bin& bin : _bins)
            if (bin.interval.contains(cell.number))
                return bin.value->evaluate(cells);
        return _treatment.apply(Cell::missing(), cells);
    }

private:
    ExpressionPtr _source;
    std::vector<Bin> _bins;
    Treatment _treatment;
};

} // namespace scoring
