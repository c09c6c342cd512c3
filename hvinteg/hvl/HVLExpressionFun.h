#pragma once

#include <string>

#include "hvl/HVLFunction.h"

class JNIHvlExpression;

/// A step that evaluates an expression for each record: it derives or reclassifies a field, filters
/// records or balances them. The last expression that was set decides; a null expression is
/// ignored. The step requires an input.
///
/// Expressions are borrowed: the object manager owns them, and they are valid until cleanJRef.
class HVINTEG_EXPORT HVLExpressionFun : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLExpressionFun(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLExpressionFun(const HVLExpressionFun& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLExpressionFun& operator=(const HVLExpressionFun& other);
    ~HVLExpressionFun() override;

    /// Adds a field with the value of the expression.
    void SetDeriveField(const std::string& name, JNIHvlExpression* expression);
    /// Replaces the value of an existing field by that of the expression.
    void SetReclassifyField(const std::string& name, JNIHvlExpression* expression);
    /// Keeps the records for which the expression is true.
    void SetFilterRecords(JNIHvlExpression* expression);
    /// Repeats or drops records by the factor that the expression returns.
    void SetBalanceRecords(JNIHvlExpression* expression);

    /// Creates the input and this step. Returns false also without an expression or an input; see
    /// HVLFunction::GenerateHVL.
    bool GenerateHVL() override;

private:
    HVINTEG_HIDDEN void setExpression(HVFunction functionType, JNIHvlExpression* expression);
    HVINTEG_HIDDEN JNIHvlFunction* createFunction(JNIHvlFunction* input);

    std::string _fieldName;
    JNIHvlExpression* _expression = nullptr;
};
