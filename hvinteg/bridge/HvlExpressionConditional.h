#pragma once

#include "bridge/JNIHvlAccessor.h"

class JNIHvlExpression;

/// The parts of a conditional expression.
class HVINTEG_EXPORT HvlExpressionConditional
{
public:
    class Clause;
};

/// A condition and the value that holds where it is true. Whoever makes one keeps it until the
/// conditional has been created. A failure of the constructor is recorded, and nothing is wrapped.
class HVINTEG_EXPORT HvlExpressionConditional::Clause : public JNIHvlAccessor
{
public:
    /// Both are borrowed and must outlive this; null for none.
    Clause(JNIHvlExpression* condition, JNIHvlExpression* value);
    Clause(const Clause&) = default;
    Clause& operator=(const Clause&) = default;
    ~Clause() override;

    JNIHvlExpression* getCondition() const { return _condition; }
    JNIHvlExpression* getValue() const { return _value; }

private:
    JNIHvlExpression* _condition;
    JNIHvlExpression* _value;
};
