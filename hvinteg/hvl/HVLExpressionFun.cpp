#include "hvl/HVLExpressionFun.h"

#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlProgram.h"

HVLExpressionFun::HVLExpressionFun(JNIHvlProgram* program) : HVLFunction(program) {}

HVLExpressionFun::HVLExpressionFun(const HVLExpressionFun& other) = default;

HVLExpressionFun& HVLExpressionFun::operator=(const HVLExpressionFun& other) = default;

HVLExpressionFun::~HVLExpressionFun() = default;

void HVLExpressionFun::SetDeriveField(const std::string& name, JNIHvlExpression* expression)
{
    if (expression == nullptr)
        return;
    _fieldName = name;
    setExpression(DeriveFieldFunction, expression);
}

void HVLExpressionFun::SetReclassifyField(const std::string& name, JNIHvlExpression* expression)
{
    if (expression == nullptr)
        return;
    _fieldName = name;
    setExpression(ReclassifyFieldFunction, expression);
}

void HVLExpressionFun::SetFilterRecords(JNIHvlExpression* expression)
{
    setExpression(FilterRecordsFunction, expression);
}

void HVLExpressionFun::SetBalanceRecords(JNIHvlExpression* expression)
{
    setExpression(BalanceRecordsFunction, expression);
}

bool HVLExpressionFun::GenerateHVL()
{
    if (GetProgram() == nullptr || _expression == nullptr)
        return false;
    if (IsCreatedHvl())
        return true;
    HVLFunction* pred = GetFirstPredecessor();
    // Unlike other steps, this one requires an input.
    if (pred == nullptr)
        return false;
    pred->GenerateHVL();
    return KeepFunction(createFunction(pred->GetHVFunction()));
}

void HVLExpressionFun::setExpression(HVFunction functionType, JNIHvlExpression* expression)
{
    if (expression == nullptr)
        return;
    SetFunctionType(functionType);
    _expression = expression;
}

/// Java has a factory method for each kind.
JNIHvlFunction* HVLExpressionFun::createFunction(JNIHvlFunction* input)
{
    JNIHvlProgram& program = *GetProgram();
    switch (GetFunctionType()) {
    case DeriveFieldFunction:
        return program.createHvlFunctionDeriveFields(
            program.createHvlFieldDerive(_fieldName, _expression), input);
    case ReclassifyFieldFunction:
        return program.createHvlFunction("reclassifyField", nullptr,
                                         program.createHvlFieldDerive(_fieldName, _expression),
                                         input);
    case FilterRecordsFunction:
        return program.createHvlFunctionFilterRecords(_expression, input);
    case BalanceRecordsFunction:
        return program.createHvlFunction("balanceRecords", nullptr, _expression, input);
    default:
        return nullptr;
    }
}
