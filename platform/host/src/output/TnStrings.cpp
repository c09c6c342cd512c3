#include "TnStrings.h"

#include <utility>

#include "Translation.h"
#include "text/CodePage.h"

namespace {

TnContent plainContent(std::string text, std::string key = {}, std::string helpId = {})
{
    TnContent content;
    content.text = std::move(text);
    content.key = std::move(key);
    content.helpId = std::move(helpId);
    return content;
}

} // namespace

TnUTF8String::TnUTF8String(std::string text, bool stringTableKey)
    : _text(std::move(text)), _isTableKey(stringTableKey)
{
}

TnUTF8String::TnUTF8String(std::string key, std::string text, std::string helpId)
    : _key(std::move(key)), _text(std::move(text)), _helpId(std::move(helpId))
{
}

TnUTF8String::TnUTF8String(std::string key, const char* text)
    : TnUTF8String(std::move(key), std::string(text))
{
}

TnContent TnUTF8String::content() const
{
    if (_isTableKey)
        return plainContent(translate(_text), _text);
    const bool isOwnKey = !_key.empty() && _key == _text;
    return plainContent(isOwnKey ? translate(_text) : _text, _key, _helpId);
}

std::unique_ptr<TnCellText> TnUTF8String::clone() const
{
    return std::make_unique<TnUTF8String>(*this);
}

TnString::TnString(std::string text, bool stringTableKey)
    : _text(std::move(text)), _isTableKey(stringTableKey)
{
}

TnContent TnString::content() const
{
    std::string utf8 = hostToUtf8(_text);
    return _isTableKey ? plainContent(translate(utf8), utf8) : plainContent(std::move(utf8));
}

std::unique_ptr<TnCellText> TnString::clone() const
{
    return std::make_unique<TnString>(*this);
}
