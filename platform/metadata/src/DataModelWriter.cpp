#include "DataModelWriter.h"

#include <pugixml.hpp>

#include "DataModelWords.h"
#include "FieldWriter.h"

namespace {

// Lets the XML library write directly to a string.
struct StringWriter final : pugi::xml_writer
{
    std::string text;
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
};

} // namespace

std::string writeDataModel(const CFMetaData& metaData)
{
    pugi::xml_document document;
    // No attributes, and no short form of an empty element: programs that extract the model from a
    // larger text search for the two exact tags.
    pugi::xml_node model = document.append_child(datamodel::kRoot);
    for (std::size_t i = 0; i < metaData.FieldCount(); ++i)
        writeField(model, datamodel::kField, *metaData.GetField(i));
    StringWriter writer;
    const unsigned endTags = model.first_child() ? 0 : pugi::format_no_empty_element_tags;
    document.save(writer, "  ", pugi::format_indent | pugi::format_no_declaration | endTags,
                  pugi::encoding_utf8);
    return std::move(writer.text);
}
