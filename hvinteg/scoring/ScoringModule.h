#pragma once

#include <map>
#include <string>

#include "scoring/XmlElement.h"

/// What the scoring module says of itself in its description. Without one, all is empty.
class ScoringModule
{
public:
    /// Reads a file in the host's spelling of its name.
    explicit ScoringModule(const std::string& path);

    const std::string& id() const { return _id; }
    const std::string& providerTag() const { return _providerTag; }
    const std::string& version() const { return _version; }
    /// The element of the component whose `Property` children are the parameters; may be null.
    const XmlElement& properties() const { return _properties; }
    /// The elements of the structured types, by their names.
    const std::map<std::string, XmlElement>& structures() const { return _structures; }

private:
    std::string _id;
    std::string _providerTag;
    std::string _version;
    std::map<std::string, XmlElement> _structures;
    XmlElement _properties;
};
