#include "components/temporal/explanation/ArtifactText.h"

namespace EmbeddedHV {
namespace {

/// Names and texts can contain invalid UTF-8.
std::string artifactJson(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

void ArtifactText::addKey(const char* key)
{
    if (_text.size() > 1)
        _text += ", ";
    _text += artifactJson(key) + ": ";
}

void ArtifactText::add(const char* key, const Json& value)
{
    addKey(key);
    _text += artifactJson(value);
}

void ArtifactText::startList(const char* key)
{
    addKey(key);
    _text += "[";
    _isFirstElement = true;
}

void ArtifactText::addElement(const Json& element)
{
    _text += _isFirstElement ? "\n" : ",\n";
    _text += artifactJson(element);
    _isFirstElement = false;
}

void ArtifactText::endList()
{
    _text += "]";
}

std::string ArtifactText::finish()
{
    return std::move(_text) + "}";
}

} // namespace EmbeddedHV
