#include "DataModelReader.h"

#include <string_view>
#include <unordered_set>

#include <pugixml.hpp>

#include "DataModelWords.h"
#include "DocumentText.h"
#include "FieldReader.h"
#include "NodeReader.h"

namespace {

constexpr int kMaxDepth = 64;

// Parse document types and top-level text in order to refuse them. White space alone can be a
// label.
constexpr unsigned kParseOptions =
    pugi::parse_default | pugi::parse_doctype | pugi::parse_fragment | pugi::parse_ws_pcdata_single;

void parse(const DocumentText& text, pugi::xml_document& document)
{
    const std::string_view xml = text.text();
    const auto result =
        document.load_buffer(xml.data(), xml.size(), kParseOptions, pugi::encoding_utf8);
    if (!result)
        text.fail(std::string("not well-formed XML: ") + result.description() + ".", result.offset);
}

// The reader of a field is recursive, so check the depth first.
void checkDepth(const DocumentText& text, pugi::xml_document& document)
{
    // Nodes refer to their parents, so the walk needs no stack.
    struct DepthWalker final : pugi::xml_tree_walker
    {
        pugi::xml_node tooDeep;
        bool for_each(pugi::xml_node& node) override
        {
            if (depth() >= kMaxDepth)
                tooDeep = node;
            return !tooDeep;
        }
    } walker;
    document.traverse(walker);
    if (walker.tooDeep)
        text.fail("more than " + std::to_string(kMaxDepth) + " elements inside each other.",
                  walker.tooDeep);
}

// Refuses nodes that are not allowed at the top level; comments and instructions are.
void checkTopNode(const DocumentText& text, pugi::xml_node node)
{
    const pugi::xml_node_type type = node.type();
    if (type == pugi::node_doctype)
        text.fail("a document type declaration is not allowed.", node);
    if (type == pugi::node_pcdata || type == pugi::node_cdata)
        text.fail("there is text outside the <DataModel> element.", node);
    if (type == pugi::node_element && std::string_view(node.name()) != datamodel::kRoot)
        text.fail(std::string("the root element is <") + node.name() + ">, not <DataModel>.", node);
}

pugi::xml_node findModel(const DocumentText& text, const pugi::xml_document& document)
{
    pugi::xml_node model;
    for (const pugi::xml_node node : document.children()) {
        checkTopNode(text, node);
        if (node.type() != pugi::node_element)
            continue;
        if (model)
            text.fail("there is more than one root element.", node);
        model = node;
    }
    if (!model)
        text.fail("there is no <DataModel> element.", 0);
    const pugi::xml_attribute version = model.attribute(datamodel::kVersionAttribute);
    if (version && std::string_view(version.value()) != datamodel::kVersion)
        text.fail(std::string("version \"") + version.value() + "\" is not known.", model);
    return model;
}

} // namespace

void readDataModel(const std::string& xml, CFMetaData& metaData)
{
    const DocumentText text(xml);
    text.checkCharacters();
    pugi::xml_document document;
    parse(text, document);
    checkDepth(text, document);
    const NodeReader reader(text);
    std::unordered_set<std::string> names;
    for (const pugi::xml_node node : findModel(text, document).children(datamodel::kField)) {
        const CFField field = readField(reader, node);
        if (!names.insert(field.GetName()).second)
            reader.fail("the name \"" + field.GetName() + "\" is there twice.", node);
        metaData.AppendField(field);
    }
}
