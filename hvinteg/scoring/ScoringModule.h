#pragma once

#include <map>
#include <string>

#include "scoring/XmlElement.h"

/// The description of the scoring module; empty if it cannot be read.
class ScoringModule
{
public:
    /// Reads the description from a file; `path` is in the host's spelling.
    explicit ScoringModule(const std::string& path);

    const std::string& id() const { return _id; }
    const std::string& providerTag() const { return _providerTag; }
    const std::string& version() const { return _version; }
    /// The component's element with the parameters as `Property` children; may be null.
    const XmlElement& properties() const { return _properties; }
    /// The elements of the structured types, by name.
    const std::map<std::string, XmlElement>& structures() const { return _structures; }

private:
    std::string _id;
    std::string _providerTag;
    std::string _version;
    std::map<std::string, XmlElement> _structures;
    XmlElement _properties;
};
