#include "SDOMXMLWrapper.h"

#include <utility>

#include <pugixml.hpp>

#include "FileServices.h"

namespace {

/// Shared by the elements of a document.
using Document = std::shared_ptr<pugi::xml_document>;

/// Writes to a string.
class TextWriter : public pugi::xml_writer
{
public:
    explicit TextWriter(std::string& text) : _text(text) {}
    void write(const void* data, std::size_t size) override
    {
        _text.append(static_cast<const char*>(data), size);
    }

private:
    std::string& _text;
};

} // namespace

/// An element and its document, which it keeps alive.
struct SDOMXMLWrapper::Impl
{
    Document document;
    pugi::xml_node node;

    pugi::xml_node start(bool fromHere) const
    {
        return fromHere || !document ? node : document->document_element();
    }
    /// Returns an element through `result`; false for none.
    bool give(pugi::xml_node element, SDOMXMLWrapper** result) const
    {
        *result = nullptr;
        if (element)
            *result = std::unique_ptr<SDOMXMLWrapper>(
                          new SDOMXMLWrapper(std::make_unique<Impl>(Impl{document, element})))
                          .release();
        return static_cast<bool>(element);
    }
};

/// The next element to return, and how to find the following ones.
struct SDOMXMLIterator::Impl
{
    SDOMXMLWrapper::Impl parent;
    std::string name;
    pugi::xml_node next;
};

SDOMXMLWrapper::SDOMXMLWrapper() : _impl(std::make_unique<Impl>()) {}

SDOMXMLWrapper::SDOMXMLWrapper(std::unique_ptr<Impl> impl) : _impl(std::move(impl)) {}

SDOMXMLWrapper::~SDOMXMLWrapper() = default;

bool SDOMXMLWrapper::LoadFromFile(const std::string& name)
{
    *_impl = {};
    std::string content;
    if (!FetchFile::fetch(name, content))
        return false;
    auto document = std::make_shared<pugi::xml_document>();
    if (!document->load_buffer(content.data(), content.size()))
        return false;
    _impl->node = document->document_element();
    _impl->document = std::move(document);
    return true;
}

bool SDOMXMLWrapper::CreateNew(const std::string& rootName)
{
    _impl->document = std::make_shared<pugi::xml_document>();
    _impl->node = _impl->document->append_child(rootName.c_str());
    return static_cast<bool>(_impl->node);
}

bool SDOMXMLWrapper::GetFirstElement(const std::string& path, SDOMXMLWrapper** element,
                                     bool fromHere) const
{
    return _impl->give(_impl->start(fromHere).first_element_by_path(path.c_str()), element);
}

bool SDOMXMLWrapper::GetElementIterator(const std::string& name, SDOMXMLIterator** elements,
                                        bool fromHere) const
{
    *elements = nullptr;
    const pugi::xml_node parent = _impl->start(fromHere);
    const pugi::xml_node first = parent.child(name.c_str());
    if (!first)
        return false;
    *elements = std::unique_ptr<SDOMXMLIterator>(
                    new SDOMXMLIterator(std::make_unique<SDOMXMLIterator::Impl>(
                        SDOMXMLIterator::Impl{{_impl->document, parent}, name, first})))
                    .release();
    return true;
}

bool SDOMXMLWrapper::GetAttribute(const std::string& name, std::string& value) const
{
    const pugi::xml_attribute given = _impl->node.attribute(name.c_str());
    if (given)
        value = given.value();
    return static_cast<bool>(given);
}

bool SDOMXMLWrapper::SetAttribute(const std::string& name, const std::string& value)
{
    pugi::xml_attribute attribute = _impl->node.attribute(name.c_str());
    if (!attribute)
        attribute = _impl->node.append_attribute(name.c_str());
    return attribute.set_value(value.c_str());
}

bool SDOMXMLWrapper::CreateElement(const std::string& name, SDOMXMLWrapper** element)
{
    const pugi::xml_node made = _impl->node.append_child(name.c_str());
    if (element == nullptr)
        return static_cast<bool>(made);
    return _impl->give(made, element);
}

void SDOMXMLWrapper::Xml2String(std::string& text) const
{
    text.clear();
    if (!_impl->document)
        return;
    TextWriter writer(text);
    _impl->document->save(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
}

SDOMXMLIterator::SDOMXMLIterator(std::unique_ptr<Impl> impl) : _impl(std::move(impl)) {}

SDOMXMLIterator::~SDOMXMLIterator() = default;

bool SDOMXMLIterator::Next(SDOMXMLWrapper** element)
{
    const pugi::xml_node found = _impl->next;
    _impl->next = found.next_sibling(_impl->name.c_str());
    return _impl->parent.give(found, element);
}
