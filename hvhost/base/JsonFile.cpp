#include "hvhost/base/JsonFile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>

#include "base/JsonDepth.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/base/Text.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string contentOf(const ReadableFile& source)
{
    std::ifstream file(source.path(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

/// For example ":3:17", in characters from 1.
std::string placeOf(std::string_view text, std::size_t byte)
{
    const std::string_view before = text.substr(0, std::min(byte, text.size()));
    const std::size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0, for the first line
    return ":" + std::to_string(std::count(before.begin(), before.end(), '\n') + 1) + ":" +
           std::to_string(countCharacters(before.substr(lineStart)) + 1);
}

/// The parser's message without its own position.
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
    // The limit of the reader of results.
    constexpr int kDeepestJson = 500;
    if (const std::size_t deep = base::placeTooDeep(text, kDeepestJson); deep != text.npos)
        throw CommandFault(ExitStatus::Input, name + placeOf(text, deep) +
                                                  ": it is nested deeper than " +
                                                  std::to_string(kDeepestJson) + " levels");
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
