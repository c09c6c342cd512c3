#pragma once

#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include <expat.h>

/// Receives a document in pieces. Names have no namespace prefix.
class XmlHandler
{
public:
    virtual ~XmlHandler() = default;
    /// `attributes` are names and values in turn, and a null at the end; see attributeOf.
    virtual void startElement(std::string_view name, const char** attributes) = 0;
    virtual void endElement(std::string_view name) = 0;
    virtual void takeText(std::string_view text) = 0;
};

/// The value of an attribute; empty if it is missing.
std::string_view attributeOf(const char** attributes, std::string_view name);

/// Parses an XML document that arrives in blocks. Refuses document types, so it neither reads other
/// files nor expands entities. Borrows the handler.
class XmlStream
{
public:
    explicit XmlStream(XmlHandler& handler);

    /// An empty block ends the document. Throws WorkbookFault for invalid XML. Exceptions of the
    /// handler pass.
    void take(std::string_view block);

private:
    template <class Work>
    void guarded(Work work) noexcept;
    static void onStart(void* self, const char* name, const char** attributes);
    static void onEnd(void* self, const char* name);
    static void onText(void* self, const char* text, int size);
    static void onDoctype(void* self, const char*, const char*, const char*, int);

    struct Freer
    {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    XmlHandler& _handler;
    std::unique_ptr<XML_ParserStruct, Freer> _parser;
    std::exception_ptr _failure; ///< of the handler; it must not pass through the parser
};
