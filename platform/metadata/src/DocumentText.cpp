#include "DocumentText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "CFMetaData.h"
#include "DataModelText.h"
#include "DataModelWords.h"
#include "base/Utf8.h"

namespace {

// No valid document is near this limit: it allows several hundred thousand fields.
constexpr std::size_t kMaxBytes = std::size_t{256} << 20U;
constexpr std::string_view kReference = "&#";

// The position behind a comment or CDATA section that begins here, in which references have no
// meaning. Otherwise the same position.
std::size_t afterLiteral(std::string_view text, std::size_t at)
{
    constexpr std::pair<std::string_view, std::string_view> kLiterals[] = {{"<!--", "-->"},
                                                                           {"<![CDATA[", "]]>"}};
    for (const auto& [begin, end] : kLiterals)
        if (text.substr(at, begin.size()) == begin)
            return std::min(text.find(end, at + begin.size()), text.size());
    return at;
}

// The code of a character reference such as "#x41" or "#65"; an invalid one if it is too large.
char32_t referenceCode(std::string_view text)
{
    constexpr std::uint32_t kNone = 0xFFFFFFFF;
    const bool hexadecimal = text.starts_with("#x");
    text.remove_prefix(hexadecimal ? 2 : 1);
    std::uint32_t code = kNone;
    const char* last = text.data() + text.size();
    const auto result = std::from_chars(text.data(), last, code, hexadecimal ? 16 : 10);
    return result.ec == std::errc() && result.ptr == last ? code : kNone;
}

std::string codeName(char32_t code)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string digits;
    for (int shift = 12; shift >= 0; shift -= 4)
        digits += kDigits[(code >> static_cast<unsigned>(shift)) & 0xFU];
    return "U+" + digits;
}

} // namespace

DocumentText::DocumentText(const std::string& xml) : _text(xml)
{
    const std::string_view end = datamodel::kRootEnd;
    // Ignore bytes behind the model, for example the zero bytes of a buffer.
    if (const std::size_t found = _text.rfind(end); found != std::string_view::npos)
        _text = _text.substr(0, found + end.size());
    if (_text.size() > kMaxBytes)
        fail("the document is larger than " + std::to_string(kMaxBytes) + " bytes.", 0);
}

void DocumentText::fail(const std::string& what, std::ptrdiff_t offset) const
{
    const auto size = static_cast<std::ptrdiff_t>(_text.size());
    const auto end = std::clamp(offset, std::ptrdiff_t{0}, size);
    const auto line = 1 + std::count(_text.begin(), _text.begin() + end, '\n');
    throw CFMetaDataError("Data model, line " + std::to_string(line) + ": " + what);
}

void DocumentText::checkCharacters() const
{
    std::size_t literalEnd = 0;
    for (std::size_t at = 0; at < _text.size();) {
        const base::Character character = base::decodeCharacter(_text.substr(at));
        const auto offset = static_cast<std::ptrdiff_t>(at);
        if (base::isStrayByte(character.code))
            fail("there is a byte that is not UTF-8.", offset);
        if (!isXmlCharacter(character.code))
            fail("XML has no place for the character " + codeName(character.code) + ".", offset);
        if (at >= literalEnd && character.code == '<')
            literalEnd = afterLiteral(_text, at);
        at = at >= literalEnd && _text.substr(at, kReference.size()) == kReference
                 ? afterReference(at)
                 : at + character.length;
    }
}

// The position behind the character reference that begins here, which must represent a valid
// character.
std::size_t DocumentText::afterReference(std::size_t at) const
{
    const std::size_t end = _text.find(';', at);
    if (end == std::string_view::npos ||
        !isXmlCharacter(referenceCode(_text.substr(at + 1, end - at - 1))))
        fail("there is a reference to a character that XML has no place for.",
             static_cast<std::ptrdiff_t>(at));
    return end + 1;
}
