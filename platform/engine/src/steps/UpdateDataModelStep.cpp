#include <set>

#include "expression/FunctionCall.h"
#include "steps/FieldUpdate.h"
#include "steps/StepCall.h"
#include "steps/StorageChange.h"

namespace EmbeddedHV {
namespace {

/// The fields after the changes of the step's entries.
Fields updatedFields(const StepCall& call, const Settings& settings)
{
    const Json& entries = settings.neededList("fields");
    Fields fields = call.input()->fields;
    std::set<std::string> seen;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Settings entry = settings.objectAt(entries, "fields", i);
        const std::string name = entry.neededText("name");
        const CFField& field = call.inputField(name);
        if (!seen.insert(name).second)
            entry.refuse("name", "is \"" + name + "\", as that of an entry before it");
        const auto place = &field - call.input()->fields.data();
        updateField(entry, fields[static_cast<std::size_t>(place)], call.context.message);
    }
    return fields;
}

/// The column of a field that becomes geospatial, from SQL of its texts. A text with only
/// coordinates is completed to a shape of the field's kind.
std::string shapeColumn(const Dialect& dialect, const CFField& field, const std::string& text)
{
    const std::string begin =
        std::string(R"({"type":")") + WordOf(field.GetGeo()->GetType()) + R"(","coordinates":)";
    const std::string isBare =
        functionSql(dialect, "startsWith", "String, String", {text, dialect.literal("[")});
    return "CASE WHEN " + isBare + " THEN " + dialect.literal(begin) + " || " + text +
           " || '}' ELSE " + text + " END";
}

/// The columns of the input, converted to their new storage. updateField has already rejected
/// impossible conversions.
std::string convertedColumns(const Dialect& dialect, const Fields& before, const Fields& after,
                             const std::string& step)
{
    std::string columns;
    for (std::size_t i = 0; i < before.size(); ++i) {
        columns += i == 0 ? "" : ", ";
        const bool isNewShape = after[i].GetGeo() && !before[i].GetGeo();
        const std::string column = convertedColumn(dialect, before[i], after[i].GetStorage(), step);
        columns += isNewShape ? shapeColumn(dialect, after[i], column) : column;
        if (isNewShape || before[i].GetStorage() != after[i].GetStorage())
            columns += " AS " + dialect.name(before[i].GetName());
    }
    return columns;
}

} // namespace

/// Changes the metadata of fields. Values that are declared missing here remain values for the rest
/// of the job: missing values are replaced when a file is read.
StepResult planUpdateDataModel(StepCall& call)
{
    const Settings settings = call.settings();
    Fields fields = updatedFields(call, settings);
    settings.reportOthers(call.context.message);
    const std::string columns =
        convertedColumns(call.context.dialect, call.input()->fields, fields, call.name);
    return {derivedNode(std::move(fields), {call.input()},
                        [columns](const std::vector<std::string>& inputs) {
                            return "SELECT " + columns + " FROM " + inputs[0];
                        }),
            nullptr};
}

} // namespace EmbeddedHV
