#pragma once

#include "render/TextItems.h"

/// A kind of text body: its key, and its conversions to a text and to a string.
struct TextItems::Kind
{
    const char* key;
    Text (TextItems::*text)(const JsonValue& body, bool translate) const;
    std::string (TextItems::*string)(const JsonValue& body) const;
};
