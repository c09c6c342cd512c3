#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class SDOMXMLIterator;

/// An element of an XML document that is read or built; at first it belongs to no document.
/// Elements keep their document alive and may outlive the object that opened it. One thread at a
/// time per document. Texts are UTF-8.
///
/// Operations that find or create something return it through a pointer, and the caller deletes it.
/// If there is nothing, they return false and set the pointer to null.
class HOST_API SDOMXMLWrapper
{
public:
    /// An element that belongs to no document.
    SDOMXMLWrapper();
    ~SDOMXMLWrapper();
    SDOMXMLWrapper(const SDOMXMLWrapper&) = delete;
    SDOMXMLWrapper& operator=(const SDOMXMLWrapper&) = delete;

    /// Becomes the root element of a file; `name` is in the host's spelling. If the file cannot be
    /// read or parsed, returns false and belongs to no document.
    bool LoadFromFile(const std::string& name);
    /// Becomes the root element of a new document with this root name.
    bool CreateNew(const std::string& rootName);

    /// Finds the first element by a path of names separated by slashes. The path starts at this
    /// element if `fromHere` is true, otherwise at the root element.
    bool GetFirstElement(const std::string& path, SDOMXMLWrapper** element, bool fromHere) const;
    /// Finds all child elements of that name, of this element or otherwise of the root element.
    bool GetElementIterator(const std::string& name, SDOMXMLIterator** elements,
                            bool fromHere) const;
    /// Reads an attribute. If it is missing, returns false and leaves `value` unchanged.
    bool GetAttribute(const std::string& name, std::string& value) const;
    /// Sets an attribute and replaces an earlier value.
    bool SetAttribute(const std::string& name, const std::string& value);
    /// Appends a child element. `element` may be null.
    bool CreateElement(const std::string& name, SDOMXMLWrapper** element);
    /// Replaces `text` by the whole document; empty without a document.
    void Xml2String(std::string& text) const;

private:
    friend class SDOMXMLIterator;
    struct Impl;
    explicit SDOMXMLWrapper(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> _impl;
};

/// Iterates over child elements of one name, in order. They may be changed during the iteration,
/// but not removed.
class HOST_API SDOMXMLIterator
{
public:
    ~SDOMXMLIterator();
    SDOMXMLIterator(const SDOMXMLIterator&) = delete;
    SDOMXMLIterator& operator=(const SDOMXMLIterator&) = delete;

    /// Returns the next element, which the caller deletes. At the end returns false and sets the
    /// pointer to null.
    bool Next(SDOMXMLWrapper** element);

private:
    friend class SDOMXMLWrapper;
    struct Impl;
    explicit SDOMXMLIterator(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> _impl;
};
