#include "workbook/XmlStream.h"

#include <new>

#include "workbook/WorkbookFault.h"

namespace {

std::string_view withoutPrefix(std::string_view name)
{
    return name.substr(name.find(':') + 1);
}

XmlStream& streamOf(void* self)
{
    return *static_cast<XmlStream*>(self);
}

} // namespace

std::string_view attributeOf(const char** attributes, std::string_view name)
{
    for (; *attributes != nullptr; attributes += 2)
        if (name == attributes[0])
            return attributes[1];
    return {};
}

XmlStream::XmlStream(XmlHandler& handler) : _handler(handler), _parser(XML_ParserCreate(nullptr))
{
    if (!_parser)
        throw std::bad_alloc();
    XML_SetUserData(_parser.get(), this);
    XML_SetElementHandler(_parser.get(), &XmlStream::onStart, &XmlStream::onEnd);
    XML_SetCharacterDataHandler(_parser.get(), &XmlStream::onText);
    XML_SetStartDoctypeDeclHandler(_parser.get(), &XmlStream::onDoctype);
}

void XmlStream::take(std::string_view block)
{
    const auto status = XML_Parse(_parser.get(), block.data(), static_cast<int>(block.size()),
                                  static_cast<int>(block.empty()));
    if (_failure)
        std::rethrow_exception(_failure);
    if (status != XML_STATUS_OK)
        throw WorkbookFault(std::string("the XML in the workbook is invalid: ") +
                            XML_ErrorString(XML_GetErrorCode(_parser.get())));
}

template <class Work>
void XmlStream::guarded(Work work) noexcept
{
    // The parser may call once more after it is stopped.
    if (_failure)
        return;
    try {
        work();
    } catch (...) {
        _failure = std::current_exception();
        XML_StopParser(_parser.get(), XML_FALSE);
    }
}

void XmlStream::onStart(void* self, const char* name, const char** attributes)
{
    XmlStream& stream = streamOf(self);
    stream.guarded([&] { stream._handler.startElement(withoutPrefix(name), attributes); });
}

void XmlStream::onEnd(void* self, const char* name)
{
    XmlStream& stream = streamOf(self);
    stream.guarded([&] { stream._handler.endElement(withoutPrefix(name)); });
}

void XmlStream::onText(void* self, const char* text, int size)
{
    XmlStream& stream = streamOf(self);
    stream.guarded([&] { stream._handler.takeText({text, static_cast<std::size_t>(size)}); });
}

void XmlStream::onDoctype(void* self, const char* /*name*/, const char* /*system*/,
                          const char* /*publicId*/, int /*hasSubset*/)
{
    XmlStream& stream = streamOf(self);
    stream.guarded([] { throw WorkbookFault("the XML in the workbook has a document type"); });
}
