#include "DataModelReader.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_set>

#include <pugixml.hpp>

#include "DataModelText.h"
#include "DataModelWords.h"

namespace {

// Bounds that no honest document comes near: some hundred thousand fields fit.
constexpr std::size_t kMaxBytes = std::size_t{256} << 20U;
constexpr int kMaxDepth = 64;

// Document types are parsed only to be refused, top-level text only to be found. White space alone
// is a label as well.
constexpr unsigned kParseOptions =
    pugi::parse_default | pugi::parse_doctype | pugi::parse_fragment | pugi::parse_ws_pcdata_single;

/// Reads one document; keeps the text to tell lines from offsets.
class Reader
{
public:
    Reader(const std::string& xml, CFMetaData& metaData) : _xml(xml), _metaData(metaData) {}

    void read()
    {
        parse();
        checkDepth();
        for (const pugi::xml_node child : findModel().children(datamodel::kField))
            readField(child);
    }

private:
    void parse();
    void checkDepth();
    pugi::xml_node findModel();
    void readField(pugi::xml_node node);
    std::string requiredAttribute(pugi::xml_node node, const char* name) const;
    CFField::StorageType readStorage(pugi::xml_node node) const;
    template <typename Enumeration>
    Enumeration readWord(pugi::xml_node node, const char* attribute, Enumeration absent) const;
    [[noreturn]] void fail(const std::string& what, std::ptrdiff_t offset) const;
    [[noreturn]] void fail(const std::string& what, pugi::xml_node node) const
    {
        fail(what, node.offset_debug());
    }

    const std::string& _xml;
    CFMetaData& _metaData;
    pugi::xml_document _document;
    std::unordered_set<std::string> _names;
};

void Reader::fail(const std::string& what, std::ptrdiff_t offset) const
{
    const auto size = static_cast<std::ptrdiff_t>(_xml.size());
    const auto end = std::clamp(offset, std::ptrdiff_t{0}, size);
    const auto line = 1 + std::count(_xml.begin(), _xml.begin() + end, '\n');
    throw CFMetaDataError("Data model, line " + std::to_string(line) + ": " + what);
}

void Reader::parse()
{
    if (_xml.size() > kMaxBytes)
        fail("the document is larger than " + std::to_string(kMaxBytes) + " bytes.", 0);
    const auto result =
        _document.load_buffer(_xml.data(), _xml.size(), kParseOptions, pugi::encoding_utf8);
    if (!result)
        fail(std::string("not well-formed XML: ") + result.description() + ".", result.offset);
}

void Reader::checkDepth()
{
    // Nodes of a parsed tree point at their parents, so a walk needs no stack of its own.
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
    _document.traverse(walker);
    if (walker.tooDeep)
        fail("more than " + std::to_string(kMaxDepth) + " elements inside each other.",
             walker.tooDeep);
}

// The one root element. Nothing but comments and instructions may stand beside it.
pugi::xml_node Reader::findModel()
{
    pugi::xml_node model;
    for (const pugi::xml_node node : _document.children()) {
        const pugi::xml_node_type type = node.type();
        if (type == pugi::node_doctype)
            fail("a document type declaration is not allowed.", node);
        if (type == pugi::node_pcdata || type == pugi::node_cdata)
            fail("there is text outside the <DataModel> element.", node);
        if (type != pugi::node_element)
            continue;
        if (model)
            fail("there is more than one root element.", node);
        if (std::string_view(node.name()) != datamodel::kRoot)
            fail(std::string("the root element is <") + node.name() + ">, not <DataModel>.", node);
        model = node;
    }
    if (!model)
        fail("there is no <DataModel> element.", 0);
    const pugi::xml_attribute version = model.attribute(datamodel::kVersionAttribute);
    if (version && std::string_view(version.value()) != datamodel::kVersion)
        fail(std::string("version \"") + version.value() + "\" is not known.", model);
    return model;
}

// Text of an element that may have comments in it.
std::string textOf(pugi::xml_node node)
{
    std::string text;
    for (const pugi::xml_node child : node.children())
        text += child.value();
    return unescapeText(text);
}

CFField::FieldType defaultMeasure(CFField::StorageType storage)
{
    if (storage == CFField::Unknown)
        return CFField::Typeless;
    return storage == CFField::String ? CFField::Nominal : CFField::Continuous;
}

void Reader::readField(pugi::xml_node node)
{
    const std::string name = unescapeText(requiredAttribute(node, datamodel::kName));
    if (name.empty())
        fail("a field has an empty name.", node);
    if (!_names.insert(name).second)
        fail("the name \"" + name + "\" is there twice.", node);
    const CFField::StorageType storage = readStorage(node);
    CFField field(name, readWord(node, datamodel::kMeasure, defaultMeasure(storage)), storage,
                  readWord(node, datamodel::kRole, CFField::Input));
    if (const pugi::xml_node label = node.child(datamodel::kLabel))
        field.SetLabel(textOf(label));
    _metaData.AppendField(field);
}

std::string Reader::requiredAttribute(pugi::xml_node node, const char* name) const
{
    const pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute)
        fail(std::string("a field has no attribute \"") + name + "\".", node);
    return attribute.value();
}

CFField::StorageType Reader::readStorage(pugi::xml_node node) const
{
    if (requiredAttribute(node, datamodel::kStorage) == datamodel::kUnknownStorage)
        return CFField::Unknown;
    return readWord(node, datamodel::kStorage, CFField::Unknown);
}

template <typename Enumeration>
Enumeration Reader::readWord(pugi::xml_node node, const char* attribute, Enumeration absent) const
{
    const pugi::xml_attribute given = node.attribute(attribute);
    if (!given)
        return absent;
    // No enumeration has more values than this; a value without a word matches nothing.
    constexpr int kMaxValues = 8;
    for (int value = 0; value < kMaxValues; ++value) {
        const auto candidate = static_cast<Enumeration>(value);
        const char* word = WordOf(candidate);
        if (word && std::string_view(word) == given.value())
            return candidate;
    }
    fail(std::string("\"") + given.value() + "\" is not a " + attribute + ".", node);
}

} // namespace

void readDataModel(const std::string& xml, CFMetaData& metaData)
{
    Reader(xml, metaData).read();
}
