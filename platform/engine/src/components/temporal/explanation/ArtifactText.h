#pragma once

#include <string>

#include "steps/Settings.h"

namespace EmbeddedHV {

/// The text of a JSON object as it grows. A long list is written element by element, so that it
/// needs no tree in memory and the work can stop between elements.
class ArtifactText
{
public:
    void add(const char* key, const Json& value);
    /// Begins a list. Up to endList only elements can be added.
    void startList(const char* key);
    void addElement(const Json& element);
    void endList();
    /// The whole object.
    std::string finish();

private:
    void addKey(const char* key);

    std::string _text = "{";
    bool _isFirstElement = true;
};

} // namespace EmbeddedHV
