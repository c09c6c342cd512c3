#pragma once

#include "render/TextItems.h"

/// A kind of text body: the key it stands under, and how it becomes a text and a string.
struct TextItems::Kind
{
    const char* key;
    Text (TextItems::*text)(const JsonValue& body, bool translate) const;
    std::string (TextItems::*string)(const JsonValue& body) const;
};
