#include "NodeReader.h"

#include "DataModelText.h"

std::string textOf(pugi::xml_node node)
{
    std::string text;
    for (const pugi::xml_node child : node.children())
        text += child.value();
    return unescapeText(text);
}

std::string NodeReader::required(pugi::xml_node node, const char* attribute) const
{
    if (!node.attribute(attribute))
        fail(std::string("<") + node.name() + "> has no attribute \"" + attribute + "\".", node);
    return textOr(node, attribute);
}

double NodeReader::requiredReal(pugi::xml_node node, const char* attribute) const
{
    const std::string text = required(node, attribute);
    if (const auto value = parseReal(text))
        return *value;
    failValue(node, node.attribute(attribute), "a number");
}

std::string NodeReader::textOr(pugi::xml_node node, const char* attribute)
{
    return unescapeText(node.attribute(attribute).value());
}

bool NodeReader::flagOr(pugi::xml_node node, const char* attribute, bool absent) const
{
    const pugi::xml_attribute given = node.attribute(attribute);
    if (!given)
        return absent;
    const std::string_view word = given.value();
    if (word != "true" && word != "false")
        failValue(node, given, "true or false");
    return word == "true";
}

void NodeReader::failValue(pugi::xml_node node, pugi::xml_attribute given,
                           const char* expected) const
{
    fail(std::string("the attribute \"") + given.name() + "\" of <" + node.name() + "> is \"" +
             given.value() + "\", not " + expected + ".",
         node);
}
