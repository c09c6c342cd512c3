#pragma once

#include <memory>
#include <string>

#include "SDOMXMLWrapper.h"

/// Wraps the host's XML functions, which return results as owning pointers. A null pointer is a
/// missing element.

using XmlElement = std::unique_ptr<SDOMXMLWrapper>;

inline XmlElement findElement(const XmlElement& parent, const std::string& path)
{
    SDOMXMLWrapper* found = nullptr;
    if (parent)
        parent->GetFirstElement(path, &found, true);
    return XmlElement(found);
}

inline XmlElement addElement(const XmlElement& parent, const std::string& name)
{
    SDOMXMLWrapper* added = nullptr;
    if (parent)
        parent->CreateElement(name, &added);
    return XmlElement(added);
}

inline void setAttribute(const XmlElement& element, const std::string& name,
                         const std::string& value)
{
    if (element)
        element->SetAttribute(name, value);
}

/// Empty if the element or the attribute is missing.
inline std::string attributeOf(const XmlElement& element, const std::string& name)
{
    std::string value;
    if (element)
        element->GetAttribute(name, value);
    return value;
}

/// Calls `visit` with each child element of that name, in order.
template <typename Visit>
void forEachElement(const XmlElement& parent, const std::string& name, Visit visit)
{
    SDOMXMLIterator* found = nullptr;
    if (!parent || !parent->GetElementIterator(name, &found, true))
        return;
    const std::unique_ptr<SDOMXMLIterator> elements(found);
    SDOMXMLWrapper* next = nullptr;
    while (elements->Next(&next))
        visit(XmlElement(next));
}
