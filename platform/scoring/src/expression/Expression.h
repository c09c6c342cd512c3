#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "values/Cell.h"
#include "values/TimeScale.h"

namespace scoring {

/// A part of a model that has a value for each row. Evaluated at most once per row, on one thread.
class Expression
{
public:
    explicit Expression(ValueKind kind) : _kind(kind) {}
    virtual ~Expression() = default;
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    /// Allocates nothing, except for texts that it makes.
    virtual Cell evaluate(Cells& cells) = 0;
    ValueKind kind() const { return _kind; }
    /// The time scale of a number, if the model declares it.
    const std::optional<TimeScale>& scale() const { return _scale; }
    void setScale(const std::optional<TimeScale>& scale) { _scale = scale; }

private:
    ValueKind _kind;
    std::optional<TimeScale> _scale;
};

using ExpressionPtr = std::unique_ptr<Expression>;
using Expressions = std::vector<ExpressionPtr>;

/// A constant of the model. A constant without a type takes the kind of its neighbour, so it keeps
/// its text.
class Constant : public Expression
{
public:
    /// `cell` is the value. The cell of a text refers to `text`, which the constant owns.
    Constant(ValueKind kind, const Cell& cell, std::string text, bool isTyped)
        : Expression(kind), _text(std::move(text)), _cell(cell), _isTyped(isTyped)
    {
        if (kind == ValueKind::Text)
            _cell.text = _text;
    }

    Cell evaluate(Cells&) override { return _cell; }
    const Cell& cell() const { return _cell; }
    const std::string& text() const { return _text; }
    bool isTyped() const { return _isTyped; }

private:
    std::string _text;
    Cell _cell;
    bool _isTyped;
};

/// The value of a field, or of a parameter of a function.
class Reference : public Expression
{
public:
    Reference(ValueKind kind, const std::optional<TimeScale>& scale, std::size_t slot)
        : Expression(kind), _slot(slot)
    {
        setScale(scale);
    }
    Cell evaluate(Cells& cells) override { return cells[_slot]; }

private:
    std::size_t _slot;
};

/// Replaces a missing value by a constant.
class MissingReplaced : public Expression
{
public:
    MissingReplaced(ExpressionPtr source, ExpressionPtr replacement)
        : Expression(source->kind()), _source(std::move(source)),
          _replacement(std::move(replacement))
    {
        setScale(_source->scale());
    }
    Cell evaluate(Cells& cells) override
    {
        const Cell cell = _source->evaluate(cells);
        return cell.isMissing() ? _replacement->evaluate(cells) : cell;
    }

private:
    ExpressionPtr _source;
    ExpressionPtr _replacement;
};

} // namespace scoring
