#include "expression/CaseClauses.h"

#include "ErrorIds.h"
#include "expression/ValueTypes.h"

namespace EmbeddedHV {
namespace {

void checkConditions(const std::vector<CaseClause>& clauses)
{
    for (const CaseClause& clause : clauses)
        if (!converts(clause.condition.value.type, ValueType::Boolean))
            clause.place.fail(errors::kOperandType,
                              "a condition is a boolean, found " + clause.condition.description);
}

/// The common type of all values. A missing else counts as null.
ValueType sharedType(const std::vector<CaseClause>& clauses,
                     const std::optional<Operand>& otherwise)
{
    ValueType type = otherwise ? otherwise->value.type : ValueType::Null;
    std::string source = otherwise ? otherwise->description : "null";
    for (const CaseClause& clause : clauses) {
        const Operand& value = clause.value;
        const auto common = commonType(type, value.value.type);
        if (!common)
            clause.place.fail(errors::kOperandType,
                              "the values of a conditional are of one type, found " +
                                  value.description + " and " + source,
                              {.kind = kindOfPair(value.value.type, type)});
        // Error messages name the value that determined the type.
        if (type != *common)
            source = value.description;
        type = *common;
    }
    return type;
}

} // namespace

SqlExpression compileCase(const Dialect& dialect, const std::vector<CaseClause>& clauses,
                          const std::optional<Operand>& otherwise)
{
    checkConditions(clauses);
    const ValueType type = sharedType(clauses, otherwise);
    std::string sql = "CASE";
    for (const CaseClause& clause : clauses)
        sql += " WHEN " + dialect.as(clause.condition.value, ValueType::Boolean) + " THEN " +
               dialect.as(clause.value.value, type);
    if (otherwise)
        sql += " ELSE " + dialect.as(otherwise->value, type);
    return {sql + " END", type};
}

} // namespace EmbeddedHV
