#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class SDOMXMLIterator;

/// An element of an XML document, read or under construction; at first one of no document. The
/// elements of a document keep it alive, so that they may outlive the one it was opened with. One
/// thread at a time for a document. Text is UTF-8.
///
/// Operations that find or make something give it through a pointer, and the caller deletes it;
/// they return false, and set the pointer to null, where there is nothing.
class HOST_API SDOMXMLWrapper
{
public:
    SDOMXMLWrapper();
    ~SDOMXMLWrapper();
    SDOMXMLWrapper(const SDOMXMLWrapper&) = delete;
    SDOMXMLWrapper& operator=(const SDOMXMLWrapper&) = delete;

    /// Becomes the root element of a file, in the host's spelling of its name. False, and an
    /// element of no document, for a file that cannot be read or is no XML.
    bool LoadFromFile(const std::string& name);
    /// Becomes the root element, of this name, of a new document.
    bool CreateNew(const std::string& rootName);

    /// The first element by a path of names with slashes between: from this element if `fromHere`,
    /// else from the root element.
    bool GetFirstElement(const std::string& path, SDOMXMLWrapper** element, bool fromHere) const;
    /// All elements of a name that stand in this element, or else in the root element.
    bool GetElementIterator(const std::string& name, SDOMXMLIterator** elements,
                            bool fromHere) const;
    /// False for an attribute that is not there; `value` is then as it was.
    bool GetAttribute(const std::string& name, std::string& value) const;
    /// Adds it, or gives it another value.
    bool SetAttribute(const std::string& name, const std::string& value);
    /// Adds an element behind those in this one. The caller may ask for none by a null pointer.
    bool CreateElement(const std::string& name, SDOMXMLWrapper** element);
    /// Replaces `text` with the document, whichever of its elements this is; empty without one.
    void Xml2String(std::string& text) const;

private:
    friend class SDOMXMLIterator;
    struct Impl;
    explicit SDOMXMLWrapper(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> _impl;
};

/// Elements of one name that stand in another one, in order. They may change while it goes over
/// them, but not go.
class HOST_API SDOMXMLIterator
{
public:
    ~SDOMXMLIterator();
    SDOMXMLIterator(const SDOMXMLIterator&) = delete;
    SDOMXMLIterator& operator=(const SDOMXMLIterator&) = delete;

    /// The next element, which the caller deletes; false, and null, at the end.
    bool Next(SDOMXMLWrapper** element);

private:
    friend class SDOMXMLWrapper;
    struct Impl;
    explicit SDOMXMLIterator(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> _impl;
};
