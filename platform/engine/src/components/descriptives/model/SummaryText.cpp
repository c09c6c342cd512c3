#include "components/descriptives/model/SummaryText.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "CFDatum.h"
#include "base/NumberText.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kSequenceLength = 7; // _xHHHH_
/// U+FFFE and U+FFFF in UTF-8, without the last byte.
constexpr std::string_view kNoCharacters = "\xEF\xBF";

struct StringWriter final : pugi::xml_writer
{
    std::string text;
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
};

bool isSequence(std::string_view text)
{
    return text.size() >= kSequenceLength && text.starts_with("_x") && text[6] == '_' &&
           std::all_of(text.begin() + 2, text.begin() + 6,
                       [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; });
}

std::string sequenceFor(unsigned code)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string sequence = "_x";
    for (unsigned shift : {12U, 8U, 4U, 0U})
        sequence += kDigits[(code >> shift) & 0xFU];
    return sequence + '_';
}

} // namespace

std::string xmlText(const std::string& text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view rest = std::string_view(text).substr(at);
        const auto byte = static_cast<unsigned char>(text[at]);
        if ((byte < 0x20 && byte != '\t' && byte != '\n') || isSequence(rest)) {
            result += sequenceFor(byte);
        } else if (rest.size() > 2 && rest.starts_with(kNoCharacters) &&
                   static_cast<unsigned char>(rest[2]) >= 0xBE) {
            result += sequenceFor(0xFF40U + static_cast<unsigned char>(rest[2]));
            at += 2;
        } else {
            result += text[at];
        }
    }
    return result;
}

std::string numberText(double value)
{
    return base::shortestNumber(value);
}

void addAttribute(pugi::xml_node& node, const char* name, const std::string& value)
{
    if (!value.empty())
        node.append_attribute(name).set_value(value.c_str());
}

void addAttribute(pugi::xml_node& node, const char* name, std::optional<double> value)
{
    if (value)
        addAttribute(node, name, numberText(*value));
}

std::string textOf(const pugi::xml_node& node)
{
    StringWriter writer;
    node.print(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
    return std::move(writer.text);
}

} // namespace EmbeddedHV
