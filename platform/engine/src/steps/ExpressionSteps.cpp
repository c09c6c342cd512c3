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

/// A factor beyond this is a slip: the records would fill the disk.
constexpr const char* kMostCopies = "1000000";

/// A field that a lambda makes: `("F", value)`.
struct MadeField
{
    std::string name;
    CFField::StorageType storage = CFField::String;
    std::string sql;
};

/// A clause of a CASE: a list as a text if all its numbers are there.
std::string wholeListClause(const std::string& list)
{
    return " WHEN list_aggregate(list_transform(" + list +
           ", lambda hv_n: hv_n IS NOT NULL AND isfinite(hv_n)), 'bool_and') THEN CAST(" + list +
           " AS VARCHAR)";
}

/// A list of numbers as a text that JSON and geospatial fields understand. A list with a number
/// missing is no point, so it is missing as a whole; but a point whose height is missing, the third
/// number of three, is still a point.
std::string listText(const std::string& list)
{
    return "CASE" + wholeListClause(list) + " WHEN len(" + list + ") = 3 THEN CASE" +
           wholeListClause("list_slice(" + list + ", 1, 2)") + " END END";
}

MadeField madeField(const StepCall& call)
{
    MadeField made;
    const SqlExpression value = compileFieldLambda(*call.lambda, schemaOf(call.input()->fields),
                                                   call.definitions, call.name, made.name);
    made.storage = storageOf(value.type);
    made.sql = value.sql;
    // A bare null has no type in SQL, nor has a truth value one in a data model.
    if (value.type == ValueType::Null || value.type == ValueType::Boolean)
        made.sql = "CAST(" + value.sql + " AS " + sqlTypeOf(made.storage) + ")";
    if (value.type == ValueType::List)
        made.sql = listText(value.sql);
    return made;
}

/// A field with new values: which ones occur is not known, and what labels and missing values say
/// of them holds for values of the same storage alone.
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

/// A new field behind the others.
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

/// New values for a field that is there; it keeps its place, label and role.
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

/// Keeps the records for which the condition is true; a missing answer is not true.
StepResult planFilterRecords(StepCall& call)
{
    const SqlExpression condition = compileRecordLambda(
        *call.lambda, schemaOf(call.input()->fields), call.definitions, call.name);
    if (condition.type != ValueType::Boolean && condition.type != ValueType::Null)
        throw JobError(errors::kOperandType, call.name +
                                                 ": the condition must be true or false, "
                                                 "not of type " +
                                                 wordOf(condition.type));
    const std::string sql = "CAST(" + condition.sql + " AS BOOLEAN)";
    Fields fields = call.takeFields();
    return {derivedNode(std::move(fields), {call.input()},
                        [sql](const std::vector<std::string>& inputs) {
                            return "SELECT * FROM " + inputs[0] + " WHERE " + sql;
                        }),
            nullptr};
}

/// Each record as often as its factor says. The fraction of a factor is the chance of one more
/// copy, drawn by the record's number, so that a job gives the same records each time.
StepResult planBalanceRecords(StepCall& call)
{
    Fields fields = call.takeFields();
    const SqlExpression factor =
        compileRecordLambda(*call.lambda, schemaOf(fields), call.definitions, call.name);
    if (!isNumber(factor.type) && factor.type != ValueType::Null)
        throw JobError(errors::kOperandType, call.name +
                                                 ": the factor must be a number, not of "
                                                 "type " +
                                                 wordOf(factor.type));
    const std::string name = quotedIdentifier(unusedName(fields, "hv_factor"));
    const std::string number = quotedIdentifier(unusedName(fields, "hv_record"));
    const std::string copies = quotedIdentifier(unusedName(fields, "hv_copy"));
    const std::string columns = columnList(fields);
    const std::string inner = "SELECT *, CAST(" + factor.sql + " AS DOUBLE) AS " + name +
                              ", row_number() OVER () AS " + number + " FROM ";
    const std::string count =
        "CASE WHEN " + name + " > " + kMostCopies + " THEN error(" +
        quotedLiteral(
            raisedText(errors::kOutOfRange, call.name + ": a factor is above " + kMostCopies)) +
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
