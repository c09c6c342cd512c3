#include "bridge/HvlExpressionConditional.h"

#include "bridge/JNIHvlExpression.h"
#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"

HvlExpressionConditional::Clause::Clause(JNIHvlExpression* condition, JNIHvlExpression* value)
    : _condition(condition), _value(value)
{
    setClass(JavaClassNames::Clause);
    JavaCall(*this, "<init>",
             "(Lcom/vexa/ae/hvlhelpers/HvlExpression;Lcom/vexa/ae/hvlhelpers/HvlExpression;)V",
             OnFailure::Record)
        .wrapped(condition)
        .wrapped(value)
        .constructWrapped();
}

HvlExpressionConditional::Clause::~Clause() = default;
