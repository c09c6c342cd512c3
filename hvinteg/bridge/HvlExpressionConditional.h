#pragma once

#include "bridge/JNIHvlAccessor.h"

class JNIHvlExpression;

/// Namespace for the parts of a conditional expression.
class HVINTEG_EXPORT HvlExpressionConditional
{
public:
    class Clause;
};

/// A condition and the value that applies if it is true. The caller owns it until the conditional
/// is created. If the Java constructor fails, the error is recorded and nothing is wrapped.
class HVINTEG_EXPORT HvlExpressionConditional::Clause : public JNIHvlAccessor
{
public:
    /// Both are borrowed and must outlive this object; null means none.
    Clause(JNIHvlExpression* condition, JNIHvlExpression* value);
    Clause(const Clause&) = default;
    Clause& operator=(const Clause&) = default;
    ~Clause() override;

    /// The borrowed condition, or null.
    JNIHvlExpression* getCondition() const { return _condition; }
    /// The borrowed value, or null.
    JNIHvlExpression* getValue() const { return _value; }

private:
    JNIHvlExpression* _condition;
    JNIHvlExpression* _value;
};
