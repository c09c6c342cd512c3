#pragma once

#include <utility>

#include "expression/Treatment.h"

namespace scoring {

/// How numbers beyond the ends of a polyline are treated.
enum class Outliers
{
    AsIs, ///< extend the first or last line
    AsMissing,
    AsExtremes ///< use the value at the end
};

/// Maps a number along a polyline.
class NormContinuous : public Expression
{
public:
    /// A point of the polyline.
    struct Point
    {
        double original;
        double normed;
    };

    /// At least two points in ascending order. `missing` may be null.
    NormContinuous(ExpressionPtr source, std::vector<Point> points, Outliers outliers,
                   ExpressionPtr missing)
        : Expression(ValueKind::Number), _source(std::move(source)), _points(std::move(points)),
          _outliers(outliers), _missing(std::move(missing))
    {
    }
    Cell evaluate(Cells& cells) override;

private:
    Cell onLine(double number) const;
    Cell missing(Cells& cells) const;

    ExpressionPtr _source;
    std::vector<Point> _points;
    Outliers _outliers;
    ExpressionPtr _missing;
};

/// 1 for one category, 0 for all others.
class NormDiscrete : public Expression
{
public:
    /// The category is a constant of the source's kind; `missing` may be null.
    NormDiscrete(ExpressionPtr source, ExpressionPtr category, ExpressionPtr missing)
        : Expression(ValueKind::Number), _source(std::move(source)), _category(std::move(category)),
          _missing(std::move(missing))
    {
    }
    Cell evaluate(Cells& cells) override;

private:
    ExpressionPtr _source;
    ExpressionPtr _category;
    ExpressionPtr _missing;
};

} // namespace scoring
