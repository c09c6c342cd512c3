#include <algorithm>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/RaisedFault.h"
#include "datafile/StorageWords.h"
#include "expression/FieldTypes.h"
#include "expression/ValueTypes.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

/// A larger factor is an error: the copies would fill the disk.
constexpr std::int64_t kMostCopies = 1000000;

/// A field that a lambda computes: `("F", value)`.
struct MadeField
{
    std::string name;
    CFField::StorageType storage = CFField::String;
    std::string sql;
    std::set<std::string> fieldsRead;
};

MadeField madeField(const StepCall& call)
{
    const Dialect& dialect = call.context.dialect;
    MadeField made;
    const SqlExpression value =
        compileFieldLambda(*call.lambda,
                           {call.context.dialect, schemaOf(call.input()->fields), call.definitions,
                            call.name, &made.fieldsRead},
                           made.name);
    made.storage = storageOf(value.type);
    made.sql = value.sql;
    // A literal null has no type in SQL. A boolean has no type in a data model.
    if (value.type == ValueType::Null || value.type == ValueType::Boolean)
        made.sql = dialect.cast(value.sql, valueTypeOf(made.storage));
    if (value.type == ValueType::List)
        made.sql = dialect.listText(value.sql);
    return made;
}

/// Notes that a step reads what is wanted of its own fields, and those that its lambda reads.
NodePtr readingAlso(NodePtr node, std::set<std::string> fields)
{
    node->reads = Reads::ListedAndWanted;
    node->readFields = std::move(fields);
    return node;
}

/// A field with new values. Which values occur is unknown. Labels and missing values remain valid
/// only if the storage is unchanged.
CFField reclassifiedField(const CFField& old, CFField::StorageType storage)
{
    const bool same = storage == old.GetStorage();
    CFField changed(old.GetName(), same ? old.GetType() : defaultMeasure(storage), storage,
                    old.GetRole());
    changed.SetLabel(old.GetLabel());
    if (!same)
        return changed;
    changed.SetValueLabels(old.GetValueLabels());
    changed.SetMissingValues(old.GetMissingValues());
    if (old.GetPrivateFormat())
        changed.SetPrivateFormat(*old.GetPrivateFormat());
    return changed;
}

} // namespace

/// Appends a new field.
StepResult planDeriveField(StepCall& call)
{
    MadeField made = madeField(call);
    Fields fields = call.takeFields();
    refuseDuplicate(fields, made.name, call.name);
    fields.push_back(plainField(made.name, made.storage));
    const std::string column = "(" + made.sql + ") AS " + call.context.dialect.name(made.name);
    NodePtr node = derivedNode(std::move(fields), {call.input()},
                               [column](const std::vector<std::string>& inputs) {
                                   return "SELECT *, " + column + " FROM " + inputs[0];
                               });
    return {readingAlso(std::move(node), std::move(made.fieldsRead)), nullptr};
}

/// Replaces the values of an existing field. It keeps its position, label and role.
StepResult planReclassifyField(StepCall& call)
{
    MadeField made = madeField(call);
    const CFField changed = reclassifiedField(call.inputField(made.name), made.storage);
    Fields fields = call.takeFields();
    std::replace_if(
        fields.begin(), fields.end(),
        [&](const CFField& field) { return field.GetName() == made.name; }, changed);
    const Dialect& dialect = call.context.dialect;
    const std::string columns =
        dialect.replacedColumns(fields, {{dialect.name(made.name), "(" + made.sql + ")"}});
    NodePtr node = derivedNode(std::move(fields), {call.input()},
                               [columns](const std::vector<std::string>& inputs) {
                                   return "SELECT " + columns + " FROM " + inputs[0];
                               });
    return {readingAlso(std::move(node), std::move(made.fieldsRead)), nullptr};
}

/// Keeps the records for which the condition is true. A missing result counts as false.
StepResult planFilterRecords(StepCall& call)
{
    std::set<std::string> fieldsRead;
    const SqlExpression condition =
        compileRecordLambda(*call.lambda, {call.context.dialect, schemaOf(call.input()->fields),
                                           call.definitions, call.name, &fieldsRead});
    if (condition.type != ValueType::Boolean && condition.type != ValueType::Null)
        throw JobError(errors::kOperandType,
                       {.step = call.name,
                        .what = std::string("the condition must be true or false, not of type ") +
                                wordOf(condition.type)});
    const std::string sql = call.context.dialect.cast(condition.sql, ValueType::Boolean);
    Fields fields = call.takeFields();
    NodePtr node = derivedNode(std::move(fields), {call.input()},
                               [sql](const std::vector<std::string>& inputs) {
                                   return "SELECT * FROM " + inputs[0] + " WHERE " + sql;
                               });
    return {readingAlso(std::move(node), std::move(fieldsRead)), nullptr};
}

/// Repeats each record by its factor. The fraction of a factor is the probability of one more copy.
/// The random draw depends only on the record's number, so a job gives the same records each time.
StepResult planBalanceRecords(StepCall& call)
{
    Fields fields = call.takeFields();
    const SqlExpression factor = compileRecordLambda(
        *call.lambda, {call.context.dialect, schemaOf(fields), call.definitions, call.name});
    if (!isNumber(factor.type) && factor.type != ValueType::Null)
        throw JobError(errors::kOperandType,
                       {.step = call.name,
                        .what = std::string("the factor must be a number, not of type ") +
                                wordOf(factor.type)});
    const Dialect& dialect = call.context.dialect;
    const std::string name = dialect.name(unusedName(fields, "hv_factor"));
    const std::string number = dialect.name(unusedName(fields, "hv_record"));
    const std::string columns = dialect.columns(fields);
    const std::string fault = raisedText(
        errors::kOutOfRange, {.step = call.name,
                              .limit = kMostCopies,
                              .what = "a factor is above " + std::to_string(kMostCopies)});
    const std::string copies = dialect.copies(name, number, kMostCopies, fault) + " AS " +
                               dialect.name(unusedName(fields, "hv_copy"));
    const std::string factors = "SELECT *, " + dialect.cast(factor.sql, ValueType::Real) + " AS " +
                                name + ", " + dialect.recordNumber() + " AS " + number + " FROM ";
    return {derivedNode(std::move(fields), {call.input()},
                        [=](const std::vector<std::string>& inputs) {
                            return "SELECT " + columns + " FROM (SELECT " + columns + ", " +
                                   copies + " FROM (" + factors + inputs[0] + ") WHERE " + name +
                                   " > 0 AND NOT isnan(" + name + "))";
                        }),
            nullptr};
}

} // namespace EmbeddedHV
