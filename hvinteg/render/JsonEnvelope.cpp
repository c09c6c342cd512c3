#include "render/JsonEnvelope.h"

void JsonEnvelope::add(std::size_t number, const std::string& json)
{
    if (json.empty())
        return;
    if (!_members.empty())
        _members += ',';
    _members += '"' + std::to_string(number) + "\":" + json;
}
