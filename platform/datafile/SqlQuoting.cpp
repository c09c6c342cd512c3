#include "datafile/SqlQuoting.h"

namespace datafile {
namespace {

std::string quoted(const std::string& text, char quote)
{
    std::string result(1, quote);
    for (const char c : text) {
        if (c == quote)
            result += quote;
        result += c;
    }
    return result + quote;
}

} // namespace

std::string quotedIdentifier(const std::string& name)
{
    return quoted(name, '"');
}

std::string quotedLiteral(const std::string& text)
{
    std::size_t zero = text.find('\0');
    if (zero == std::string::npos)
        return quoted(text, '\'');
    // SQL is passed as a C string, so a zero character must be computed in it.
    std::string result = "(";
    std::size_t begin = 0;
    for (; zero != std::string::npos; zero = text.find('\0', begin)) {
        result += quoted(text.substr(begin, zero - begin), '\'') + " || chr(0) || ";
        begin = zero + 1;
    }
    return result + quoted(text.substr(begin), '\'') + ")";
}

} // namespace datafile
