#include <algorithm>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/RaisedFault.h"
#include "datafile/SqlQuoting.h"
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
};

/// A clause of a CASE: the list as a text if all its numbers are present.
std::string wholeListClause(const std::string& list)
{
    return " WHEN list_aggregate(list_transform(" + list +
           ", lambda hv_n: hv_n IS NOT NULL AND isfinite(hv_n)), 'bool_and') THEN CAST(" + list +
           " AS VARCHAR)";
}

/// A list of numbers as a text for JSON and geospatial fields. If a number is missing, the whole
/// list is missing. Exception: a point of three numbers may lack the third, its height.
std::string listText(const std::string& list)
{
    return "CASE" + wholeListClause(list) + " WHEN len(" + list + ") = 3 THEN CASE" +
           wholeListClause("list_slice(" + list + ", 1, 2)") + " END END";
}

MadeField madeField(const StepCall& call)
{
    MadeField made;
    const SqlExpression value = compileFieldLambda(
        *call.lambda,
        {call.context.dialect, schemaOf(call.input()->fields), call.definitions, call.name},
        made.name);
    made.storage = storageOf(value.type);
    made.sql = value.sql;
    // A literal null has no type in SQL. A boolean has no type in a data model.
    if (value.type == ValueType::Null || value.type == ValueType::Boolean)
        made.sql = "CAST(" + value.sql + " AS " + sqlTypeOf(made.storage) + ")";
    if (value.type == ValueType::List)
        made.sql = listText(value.sql);
    return made;
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
    const MadeField made = madeField(call);
    Fields fields = call.takeFields();
    refuseDuplicate(fields, made.name, call.name);
    fields.push_back(plainField(made.name, made.storage));
    const std::string column = "(" + made.sql + ") AS " + quotedIdentifier(made.name);
    return {derivedNode(std::move(fields), {call.input()},
                        [column](const std::vector<std::string>& inputs) {
                            return "SELECT *, " + column + " FROM " + inputs[0];
                        }),
            nullptr};
}

/// Replaces the values of an existing field. It keeps its position, label and role.
StepResult planReclassifyField(StepCall& call)
{
    const MadeField made = madeField(call);
    const CFField changed = reclassifiedField(call.inputField(made.name), made.storage);
    Fields fields = call.takeFields();
    std::replace_if(
        fields.begin(), fields.end(),
        [&](const CFField& field) { return field.GetName() == made.name; }, changed);
    const std::string column = "(" + made.sql + ") AS " + quotedIdentifier(made.name);
    return {derivedNode(std::move(fields), {call.input()},
                        [column](const std::vector<std::string>& inputs) {
                            return "SELECT * REPLACE (" + column + ") FROM " + inputs[0];
                        }),
            nullptr};
}

/// Keeps the records for which the condition is true. A missing result counts as false.
StepResult planFilterRecords(StepCall& call)
{
    const SqlExpression condition =
        compileRecordLambda(*call.lambda, {call.context.dialect, schemaOf(call.input()->fields),
                                           call.definitions, call.name});
    if (condition.type != ValueType::Boolean && condition.type != ValueType::Null)
        throw JobError(errors::kOperandType,
                       {.step = call.name,
                        .what = std::string("the condition must be true or false, not of type ") +
                                wordOf(condition.type)});
    const std::string sql = "CAST(" + condition.sql + " AS BOOLEAN)";
    Fields fields = call.takeFields();
    return {derivedNode(std::move(fields), {call.input()},
                        [sql](const std::vector<std::string>& inputs) {
                            return "SELECT * FROM " + inputs[0] + " WHERE " + sql;
                        }),
            nullptr};
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
    const std::string name = quotedIdentifier(unusedName(fields, "hv_factor"));
    const std::string number = quotedIdentifier(unusedName(fields, "hv_record"));
    const std::string copies = quotedIdentifier(unusedName(fields, "hv_copy"));
    const std::string columns = columnList(fields);
    const std::string inner = "SELECT *, CAST(" + factor.sql + " AS DOUBLE) AS " + name +
                              ", row_number() OVER () AS " + number + " FROM ";
    const std::string count =
        "CASE WHEN " + name + " > " + std::to_string(kMostCopies) + " THEN error(" +
        quotedLiteral(raisedText(errors::kOutOfRange,
                                 {.step = call.name,
                                  .limit = kMostCopies,
                                  .what = "a factor is above " + std::to_string(kMostCopies)})) +
        ")::BIGINT ELSE CAST(floor(" + name +
        ") AS BIGINT) + CASE WHEN "
        "hash(" +
        number + ")::DOUBLE / 18446744073709551616.0 < " + name + " - floor(" + name +
        ") THEN 1 ELSE 0 END END";
    return {derivedNode(std::move(fields), {call.input()},
                        [=](const std::vector<std::string>& inputs) {
                            return "SELECT " + columns + " FROM (SELECT " + columns +
                                   ", unnest(range(" + count + ")) AS " + copies + " FROM (" +
                                   inner + inputs[0] + ") WHERE " + name + " > 0 AND NOT isnan(" +
                                   name + "))";
                        }),
            nullptr};
}

} // namespace EmbeddedHV
