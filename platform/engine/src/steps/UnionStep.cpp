#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/FieldNames.h"
#include "datafile/StorageWords.h"
#include "expression/FieldTypes.h"
#include "expression/ValueTypes.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

/// A field of the result, and its position in each input; -1 if an input does not have it.
struct UnionField
{
    CFField field;
    std::vector<int> places;
};

/// Widens the type of the field so that it can hold the values of both.
void widen(CFField& field, const CFField& other, const std::string& step)
{
    if (field.GetStorage() == other.GetStorage())
        return;
    const auto common =
        commonType(valueTypeOf(field.GetStorage()), valueTypeOf(other.GetStorage()));
    if (!common)
        throw JobError(errors::kOperandType,
                       {.step = step,
                        .what = "the field \"" + field.GetName() + "\" is " +
                                typeWordOf(field.GetStorage()) + " in one input and " +
                                typeWordOf(other.GetStorage()) + " in another"});
    changeStorage(field, storageOf(*common));
}

std::vector<UnionField> matchedByPosition(const StepCall& call)
{
    std::vector<UnionField> result;
    for (const CFField& field : call.inputs.front().node->fields)
        result.push_back({field, {}});
    for (const StepInput& input : call.inputs) {
        const Fields& fields = input.node->fields;
        if (fields.size() != result.size())
            throw JobError(errors::kStepInput,
                           {.step = call.name,
                            .what = "the inputs have " + std::to_string(result.size()) + " and " +
                                    std::to_string(fields.size()) +
                                    " fields, so they cannot be matched by position"});
        for (std::size_t i = 0; i < fields.size(); ++i) {
            widen(result[i].field, fields[i], call.name);
            result[i].places.push_back(static_cast<int>(i));
        }
    }
    return result;
}

UnionField* findByName(std::vector<UnionField>& fields, const std::string& name, bool matchCase)
{
    for (UnionField& candidate : fields)
        if (matchCase ? candidate.field.GetName() == name
                      : findFieldAnyCase({candidate.field}, name) != nullptr)
            return &candidate;
    return nullptr;
}

std::vector<UnionField> matchedByName(const StepCall& call, bool matchCase)
{
    std::vector<UnionField> result;
    for (std::size_t input = 0; input < call.inputs.size(); ++input) {
        const Fields& fields = call.inputs[input].node->fields;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            UnionField* known = findByName(result, fields[i].GetName(), matchCase);
            if (known)
                widen(known->field, fields[i], call.name);
            else
                known = &result.emplace_back(UnionField{fields[i], {}});
            // -1 for earlier inputs that do not have the field.
            known->places.resize(input, -1);
            known->places.push_back(static_cast<int>(i));
        }
    }
    for (UnionField& field : result)
        field.places.resize(call.inputs.size(), -1);
    return result;
}

/// With matchCase, id and ID are two fields, but the database cannot have both names. The later one
/// gets a number, as for duplicate columns of a file.
void renameCaseTwins(std::vector<UnionField>& fields, const StepCall& call)
{
    std::vector<std::string> names;
    names.reserve(fields.size());
    for (const UnionField& field : fields)
        names.push_back(field.field.GetName());
    const std::vector<std::string> unique = datafile::uniqueNames(names);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (unique[i] == names[i])
            continue;
        fields[i].field.SetName(unique[i]);
        call.context.message(errors::kFieldRenamed,
                             {.step = call.name,
                              .field = names[i],
                              .name = unique[i],
                              .what = "the field \"" + names[i] + "\" becomes \"" + unique[i] +
                                      "\", since only letter case tells it from another field"});
    }
}

std::string columnsOf(const Dialect& dialect, const std::vector<UnionField>& fields,
                      const Fields& inputFields, std::size_t input)
{
    std::string columns;
    for (const UnionField& field : fields) {
        const int place = field.places[input];
        const std::string value =
            place < 0 ? std::string("NULL")
                      : dialect.name(inputFields[static_cast<std::size_t>(place)].GetName());
        columns += (columns.empty() ? "" : ", ") +
                   dialect.cast(value, valueTypeOf(field.field.GetStorage())) + " AS " +
                   dialect.name(field.field.GetName());
    }
    return columns;
}

} // namespace

/// Appends the records of several inputs.
StepResult planUnion(StepCall& call)
{
    const Json none = Json::object();
    const Settings settings(call.configuration.is_null() ? none : call.configuration, call.name);
    const bool byPosition = settings.flag("matchByPosition").value_or(false);
    const bool matchCase = settings.flag("matchCase").value_or(false);
    settings.reportOthers(call.context.message);
    std::vector<UnionField> matched =
        byPosition ? matchedByPosition(call) : matchedByName(call, matchCase);
    if (matchCase && !byPosition)
        renameCaseTwins(matched, call);
    Fields fields;
    for (const UnionField& field : matched) {
        refuseDuplicate(fields, field.field.GetName(), call.name);
        fields.push_back(field.field);
    }
    std::vector<NodePtr> inputs;
    std::vector<std::string> columns;
    for (std::size_t i = 0; i < call.inputs.size(); ++i) {
        inputs.push_back(call.inputs[i].node);
        columns.push_back(columnsOf(call.context.dialect, matched, call.inputs[i].node->fields, i));
    }
    return {derivedNode(std::move(fields), std::move(inputs),
                        [columns](const std::vector<std::string>& froms) {
                            std::string sql;
                            for (std::size_t i = 0; i < froms.size(); ++i)
                                sql += (i == 0 ? "SELECT " : " UNION ALL SELECT ") + columns[i] +
                                       " FROM " + froms[i];
                            return sql;
                        }),
            nullptr};
}

} // namespace EmbeddedHV
