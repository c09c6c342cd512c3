#include "DataModelWriter.h"

#include <pugixml.hpp>

#include "DataModelText.h"
#include "DataModelWords.h"

namespace {

// Lets the XML library write straight into a string.
struct StringWriter final : pugi::xml_writer
{
    std::string text;
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
};

// A value without a word leaves its attribute out; the reader then takes the default.
void addWord(pugi::xml_node node, const char* attribute, const char* word)
{
    if (word)
        node.append_attribute(attribute) = word;
}

void addField(pugi::xml_node model, const CFField& field)
{
    pugi::xml_node node = model.append_child(datamodel::kField);
    node.append_attribute(datamodel::kName) = escapeText(field.GetName()).c_str();
    const char* storage = WordOf(field.GetStorage());
    node.append_attribute(datamodel::kStorage) = storage ? storage : datamodel::kUnknownStorage;
    addWord(node, datamodel::kMeasure, WordOf(field.GetType()));
    addWord(node, datamodel::kRole, WordOf(field.GetRole()));
    if (!field.GetLabel().empty())
        node.append_child(datamodel::kLabel).text() = escapeText(field.GetLabel()).c_str();
}

} // namespace

std::string writeDataModel(const CFMetaData& metaData)
{
    pugi::xml_document document;
    pugi::xml_node model = document.append_child(datamodel::kRoot);
    model.append_attribute(datamodel::kVersionAttribute) = datamodel::kVersion;
    for (std::size_t i = 0; i < metaData.FieldCount(); ++i)
        addField(model, *metaData.GetField(i));
    StringWriter writer;
    // A closing tag even for a model without fields: who cuts the model out of a larger text looks
    // for that tag.
    constexpr unsigned kFormat =
        pugi::format_indent | pugi::format_no_declaration | pugi::format_no_empty_element_tags;
    document.save(writer, "  ", kFormat, pugi::encoding_utf8);
    return std::move(writer.text);
}
