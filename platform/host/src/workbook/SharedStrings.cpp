#include "workbook/SharedStrings.h"

#include <charconv>

#include "base/Utf8.h"
#include "workbook/WorkbookFault.h"
#include "workbook/WorkbookPackage.h"

namespace {

constexpr std::size_t kMostText = std::size_t{1} << 30;
constexpr std::size_t kEscape = 7; ///< bytes of _x000D_

/// The character of a text that begins with an escape; 0 if it does not.
unsigned escapedCode(std::string_view text)
{
    if (text.size() < kEscape || text[1] != 'x' || text[kEscape - 1] != '_')
        return 0;
    unsigned code = 0;
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + kEscape - 1, code, 16);
    return error == std::errc() && end == text.data() + kEscape - 1 ? code : 0;
}

} // namespace

void appendCellText(std::string& target, std::string_view text)
{
    for (std::size_t at; (at = text.find('_')) != std::string_view::npos;) {
        target += text.substr(0, at);
        text.remove_prefix(at);
        // Only ASCII characters need this form.
        const unsigned code = escapedCode(text);
        const bool isEscape = code > 0 && code < 0x80;
        target += isEscape ? static_cast<char>(code) : '_';
        text.remove_prefix(isEscape ? kEscape : 1);
    }
    target += text;
}

SharedStrings::SharedStrings(const WorkbookPackage& package, const std::string& part)
{
    XmlStream stream(*this);
    package.read(part, [&](std::string_view block) { stream.take(block); });
}

void SharedStrings::startElement(std::string_view name, const char** /*attributes*/)
{
    if (name == "rPh")
        _isInPhonetic = true;
    _isInText = name == "t" && !_isInPhonetic;
}

void SharedStrings::endElement(std::string_view name)
{
    _isInText = false;
    if (name == "rPh")
        _isInPhonetic = false;
    if (name != "si")
        return;
    appendCellText(_texts, _current);
    _current.clear();
    if (_texts.size() > kMostText)
        throw WorkbookFault("the texts of the workbook are larger than 1 GiB");
    _ends.push_back(_texts.size());
}

void SharedStrings::takeText(std::string_view text)
{
    if (_isInText)
        _current += text;
}
