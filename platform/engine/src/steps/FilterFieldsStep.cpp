#include "steps/StepCall.h"

namespace EmbeddedHV {

/// Keeps the named fields, in the order of the names.
StepResult planFilterFields(StepCall& call)
{
    const Settings settings = call.settings();
    const Json& names = settings.neededList("fields");
    if (names.empty())
        settings.refuse("fields", "is empty: no field would be left");
    Fields fields;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const CFField& field = call.inputField(settings.textAt(names, "fields", i));
        refuseDuplicate(fields, field.GetName(), call.name);
        fields.push_back(field);
    }
    settings.reportOthers(call.context.message);
    const std::string columns = call.context.dialect.columns(fields);
    const NodePtr node = derivedNode(std::move(fields), {call.input()},
                                     [columns](const std::vector<std::string>& inputs) {
                                         return "SELECT " + columns + " FROM " + inputs[0];
                                     });
    node->reads = Reads::Listed;
    for (const CFField& field : node->fields)
        node->readFields.insert(field.GetName());
    return {node, nullptr};
}

} // namespace EmbeddedHV
