#include "pmml/PmmlDocument.h"

#include "pmml/Literal.h"
#include "pmml/ModelFault.h"
#include "values/CellText.h"

namespace scoring {
namespace {

constexpr std::string_view kVersions = "4.";

/// A document type can declare entities, which can expand a few lines to gigabytes.
void refuseDocumentType(const pugi::xml_document& document)
{
    for (const pugi::xml_node node : document.children())
        if (node.type() == pugi::node_doctype)
            throw ModelFault("the model declares a document type");
}

} // namespace

PmmlDocument::PmmlDocument(std::istream& stream)
{
    // By default, pugixml drops document types and texts that consist of blanks.
    const pugi::xml_parse_result result =
        _document.load(stream, pugi::parse_default | pugi::parse_doctype | pugi::parse_ws_pcdata);
    if (!result)
        throw ModelFault(std::string("the model is not XML: ") + result.description() +
                         " at byte " + std::to_string(result.offset));
    refuseDocumentType(_document);
    if (localName(root()) != "PMML")
        throw ModelFault(std::string("the model is not PMML: its root element is <") +
                         root().name() + ">");
    const std::string version = required(root(), "version");
    if (!version.starts_with(kVersions))
        throw ModelFault("the model is PMML " + version + ", not PMML 4");
}

std::string_view localName(pugi::xml_node node)
{
    const std::string_view name = node.name();
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::vector<pugi::xml_node> elementsIn(pugi::xml_node node)
{
    std::vector<pugi::xml_node> elements;
    for (const pugi::xml_node child : node.children())
        if (child.type() == pugi::node_element && localName(child) != "Extension")
            elements.push_back(child);
    return elements;
}

std::vector<pugi::xml_node> elementsIn(pugi::xml_node node, std::string_view name)
{
    std::vector<pugi::xml_node> elements = elementsIn(node);
    std::erase_if(elements, [name](pugi::xml_node child) { return localName(child) != name; });
    return elements;
}

pugi::xml_node elementIn(pugi::xml_node node, std::string_view name)
{
    const std::vector<pugi::xml_node> elements = elementsIn(node, name);
    return elements.empty() ? pugi::xml_node() : elements.front();
}

std::string textOf(pugi::xml_node element)
{
    std::string text;
    for (const pugi::xml_node child : element.children())
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
    return text;
}

std::string required(pugi::xml_node node, const char* attribute)
{
    const pugi::xml_attribute given = node.attribute(attribute);
    if (!given)
        throw ModelFault(std::string("<") + node.name() + "> has no attribute \"" + attribute +
                         "\"");
    return given.value();
}

double requiredNumber(pugi::xml_node node, const char* attribute)
{
    const std::string text = required(node, attribute);
    const auto number = parseNumber(text);
    if (!number)
        throw ModelFault(std::string("the attribute \"") + attribute + "\" of <" + node.name() +
                         "> is \"" + text + "\", which is not a number");
    return *number;
}

Interval intervalOf(pugi::xml_node node)
{
    Interval interval;
    const std::string closure = required(node, "closure");
    interval.hasLeft = closure == "closedOpen" || closure == "closedClosed";
    interval.hasRight = closure == "openClosed" || closure == "closedClosed";
    if (!interval.hasLeft && !interval.hasRight && closure != "openOpen")
        throw ModelFault("an interval has the unknown closure \"" + closure + "\"");
    if (node.attribute("leftMargin"))
        interval.left = requiredNumber(node, "leftMargin");
    if (node.attribute("rightMargin"))
        interval.right = requiredNumber(node, "rightMargin");
    return interval;
}

} // namespace scoring
