#pragma once

#include <string>

#include "hvl/HVLFunction.h"

class JNIHvlExpression;

/// A step that carries an expression over the record: it derives or reclassifies a field, filters
/// records or balances them. The last expression that was set decides which; a null expression
/// changes nothing. It needs an input.
///
/// The expression is borrowed: the object manager has it, and it is valid until `cleanJRef`.
class HVINTEG_EXPORT HVLExpressionFun : public HVLFunction
{
public:
    explicit HVLExpressionFun(JNIHvlProgram* program);
    HVLExpressionFun(const HVLExpressionFun& other);
    HVLExpressionFun& operator=(const HVLExpressionFun& other);
    ~HVLExpressionFun() override;

    /// A new field with the value of the expression.
    void SetDeriveField(const std::string& name, JNIHvlExpression* expression);
    /// An existing field that takes the value of the expression.
    void SetReclassifyField(const std::string& name, JNIHvlExpression* expression);
    /// Keeps the records for which the expression is true.
    void SetFilterRecords(JNIHvlExpression* expression);
    /// Repeats or drops records by the factor that the expression gives.
    void SetBalanceRecords(JNIHvlExpression* expression);

    bool GenerateHVL() override;

private:
    void setExpression(HVFunction functionType, JNIHvlExpression* expression);
    JNIHvlFunction* createFunction(JNIHvlFunction* input);

    std::string _fieldName;
    JNIHvlExpression* _expression = nullptr;
};
