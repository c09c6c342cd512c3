#include "workbook/CellFormats.h"

#include <algorithm>
#include <map>

#include <pugixml.hpp>

#include "base/AsciiText.h"
#include "workbook/WorkbookFault.h"
#include "workbook/XmlNames.h"

namespace {

/// The formats that have a number and no code in the file.
CellFormat formatOfNumber(int number)
{
    const auto isIn = [number](int first, int last) { return number >= first && number <= last; };
    if (isIn(14, 17) || isIn(27, 31) || number == 36 || isIn(50, 54) || isIn(57, 58))
        return CellFormat::Date;
    if (isIn(18, 21) || isIn(32, 35) || number == 45 || number == 47 || isIn(55, 56))
        return CellFormat::Time;
    return number == 22 ? CellFormat::Timestamp : CellFormat::Number;
}

/// The letters of the first section of a code, in lower case, without texts. Empty for elapsed
/// times.
std::string lettersOf(std::string_view code)
{
    std::string letters;
    for (std::size_t at = 0; at < code.size() && code[at] != ';'; ++at) {
        const char character = code[at];
        if (character == '"')
            at = std::min(code.find('"', at + 1), code.size());
        else if (character == '\\' || character == '_' || character == '*')
            ++at;
        else if (character ==
                 '[') { // a color, a condition, a currency, a language or an elapsed time
            const std::size_t end = std::min(code.find(']', at), code.size());
            const std::string word =
                base::lowerCase(std::string(code.substr(at + 1, end - at - 1)));
            if (!word.empty() && word.find_first_not_of("hms") == std::string::npos)
                return {};
            at = end;
        } else
            letters += character;
    }
    return base::lowerCase(letters);
}

} // namespace

CellFormat formatOfCode(std::string_view code)
{
    const std::string letters = lettersOf(code);
    if (letters.find("general") != std::string::npos)
        return CellFormat::Number;
    const bool hasTime = letters.find_first_of("hs") != std::string::npos;
    // The letter m is a month, or minutes beside hours or seconds.
    const bool hasDate = letters.find_first_of("dy") != std::string::npos ||
                         (!hasTime && letters.find('m') != std::string::npos);
    if (hasDate)
        return hasTime ? CellFormat::Timestamp : CellFormat::Date;
    return hasTime ? CellFormat::Time : CellFormat::Number;
}

std::vector<CellFormat> cellFormats(const std::string& styles)
{
    std::vector<CellFormat> formats;
    if (styles.empty())
        return formats;
    const pugi::xml_document document = parsedXml(styles);
    const pugi::xml_node root = document.document_element();
    std::map<int, CellFormat> known;
    for (const pugi::xml_node& format : childNamed(root, "numFmts"))
        known[format.attribute("numFmtId").as_int()] =
            formatOfCode(format.attribute("formatCode").value());
    for (const pugi::xml_node& style : childNamed(root, "cellXfs")) {
        const int number = style.attribute("numFmtId").as_int();
        const auto own = known.find(number);
        formats.push_back(own == known.end() ? formatOfNumber(number) : own->second);
    }
    return formats;
}
