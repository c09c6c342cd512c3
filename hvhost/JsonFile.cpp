#include "JsonFile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>

#include "CommandFault.h"
#include "ReadableFile.h"
#include "Text.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string contentOf(const ReadableFile& source)
{
    std::ifstream file(source.path(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

/// As in ":3:17", in characters from 1.
std::string placeOf(std::string_view text, std::size_t byte)
{
    const std::string_view before = text.substr(0, std::min(byte, text.size()));
    const std::size_t lineStart = before.rfind('\n') + 1; // the one before the first line is npos
    return ":" + std::to_string(std::count(before.begin(), before.end(), '\n') + 1) + ":" +
           std::to_string(countCharacters(before.substr(lineStart)) + 1);
}

/// Where a text goes deeper than the reader of results does; npos if it nowhere does. The parser
/// copies what is inside of objects, one level calling the next, so it is not given such a text.
std::size_t placeTooDeep(std::string_view text)
{
    constexpr int kDeepest = 500;
    int depth = 0;
    bool isInText = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char byte = text[at];
        if (isInText && byte == '\\')
            ++at;
        else if (byte == '"')
            isInText = !isInText;
        else if (!isInText && (byte == '[' || byte == '{') && ++depth > kDeepest)
            return at;
        else if (!isInText && (byte == ']' || byte == '}'))
            --depth;
    }
    return text.npos;
}

/// The parser's words behind its own way of telling places.
std::string wordsOf(const std::string& what)
{
    for (const char* start : {"syntax error while parsing ", "] "})
        if (const std::size_t at = what.find(start); at != std::string::npos)
            return printable(what.substr(at + std::string_view(start).size()));
    return printable(what);
}

} // namespace

JsonFile::JsonFile(const std::string& file, const InterruptWatch& watch)
{
    const ReadableFile source(file, watch);
    name = source.name();
    text = contentOf(source);
    if (const std::size_t deep = placeTooDeep(text); deep != text.npos)
        throw CommandFault(ExitStatus::Input,
                           name + placeOf(text, deep) + ": it is nested deeper than 500 levels");
    try {
        json = nlohmann::ordered_json::parse(text);
    } catch (const nlohmann::json::parse_error& error) {
        const std::size_t last = error.byte > 0 ? error.byte - 1 : 0;
        throw CommandFault(ExitStatus::Input,
                           name + placeOf(text, last) + ": no JSON: " + wordsOf(error.what()));
    } catch (const nlohmann::json::exception& error) {
        throw CommandFault(ExitStatus::Input, name + ": no JSON: " + wordsOf(error.what()));
    }
}
