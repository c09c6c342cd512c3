#include "scoring/ExecutionDocument.h"

namespace {

constexpr const char* kAssocNameTable = "assocNameTable";
constexpr const char* kListValue = "ListValue";
constexpr const char* kStructuredValue = "StructuredValue";
constexpr const char* kAttribute = "Attribute";

void addNamedValue(const XmlElement& parent, const std::string& name, const std::string& value)
{
    const XmlElement attribute = addElement(parent, kAttribute);
    setAttribute(attribute, "name", name);
    setAttribute(attribute, "value", value);
}

/// Adds the fields with different names.
void addAssocNames(const XmlElement& parameter, const std::vector<AssocNameElem>& table)
{
    const XmlElement list = addElement(parameter, kListValue);
    for (const AssocNameElem& element : table) {
        if (element.name == element.originalName)
            continue;
        const XmlElement value = addElement(list, kStructuredValue);
        addNamedValue(value, "name", element.name);
        addNamedValue(value, "originalName", element.originalName);
        addNamedValue(value, "predicate", element.predicate);
    }
}

/// Adds the default of a property or a member of a structure, if it has one.
void addDefault(const XmlElement& element, const XmlElement& described)
{
    if (attributeOf(described, "isList") == "true") {
        addElement(element, kListValue);
        return;
    }
    std::string value;
    if (described->GetAttribute("defaultValue", value))
        setAttribute(element, "value", value);
}

void addStructure(const XmlElement& parameter, const XmlElement& structure)
{
    XmlElement value; // made for the first member: a structure without members has none
    forEachElement(structure, kAttribute, [&](const XmlElement& member) {
        if (!value)
            value = addElement(parameter, kStructuredValue);
        const XmlElement attribute = addElement(value, kAttribute);
        setAttribute(attribute, "name", attributeOf(member, "name"));
        addDefault(attribute, member);
    });
}

/// Adds the first that exists of: a set value, the table of names, a structure, the default.
void addParameter(const XmlElement& parent, const XmlElement& property, const ScoringModule& module,
                  const ScoringParameters& parameters)
{
    const std::string name = attributeOf(property, "name");
    const XmlElement parameter = addElement(parent, "Parameter");
    setAttribute(parameter, "name", name);
    const auto value = parameters.values.find(name);
    const auto structure = module.structures().find(attributeOf(property, "type"));
    if (value != parameters.values.end())
        setAttribute(parameter, "value", value->second);
    else if (name == kAssocNameTable)
        addAssocNames(parameter, parameters.assocNames);
    else if (structure != module.structures().end())
        addStructure(parameter, structure->second);
    else
        addDefault(parameter, property);
}

/// Adds the element that runs the module.
XmlElement addOperation(const XmlElement& execution, const ScoringModule& module)
{
    XmlElement operation = addElement(execution, "Operation");
    setAttribute(operation, "componentId", module.id());
    // The only operation depends on none, but the reader requires the attributes.
    setAttribute(operation, "dependencyIds", "");
    setAttribute(operation, "id", "1");
    setAttribute(operation, "inputIds", "");
    setAttribute(operation, "moduleId", module.providerTag() + "." + module.id());
    setAttribute(operation, "version", module.version());
    return operation;
}

} // namespace

XmlElement executionDocument(const ScoringModule& module, const ScoringParameters& parameters)
{
    auto execution = std::make_unique<SDOMXMLWrapper>();
    execution->CreateNew("Execution");
    const XmlElement input = addElement(addElement(execution, "ContainerInputs"), "ContainerInput");
    setAttribute(input, "id", HVScorExecXML::InputPMMLContainerID);
    const XmlElement operation = addOperation(execution, module);
    const XmlElement list = addElement(operation, "Parameters");
    forEachElement(module.properties(), "Property", [&](const XmlElement& property) {
        addParameter(list, property, module, parameters);
    });
    const XmlElement container = addElement(addElement(operation, "InputContainers"), "Container");
    setAttribute(container, "id", HVScorExecXML::InputPMMLContainerID);
    setAttribute(container, "name", HVScorExecXML::InputPMMLName);
    return execution;
}
