#include "workbook/XmlNames.h"

#include "workbook/WorkbookFault.h"

pugi::xml_document parsedXml(const std::string& text)
{
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(text.data(), text.size());
    if (!result)
        throw WorkbookFault(std::string("the XML in the workbook is invalid: ") +
                            result.description());
    return document;
}

std::string_view localName(const char* name)
{
    const std::string_view whole = name;
    return whole.substr(whole.find(':') + 1);
}

pugi::xml_node childNamed(const pugi::xml_node& parent, std::string_view name)
{
    for (const pugi::xml_node& child : parent)
        if (localName(child.name()) == name)
            return child;
    return {};
}

std::string attributeNamed(const pugi::xml_node& node, std::string_view name)
{
    for (const pugi::xml_attribute& attribute : node.attributes())
        if (localName(attribute.name()) == name)
            return attribute.value();
    return {};
}
