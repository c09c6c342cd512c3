#include "datafile/JsonDepth.h"

namespace datafile {

std::size_t placeTooDeep(std::string_view json, int deepest)
{
    int depth = 0;
    bool isInText = false;
    for (std::size_t at = 0; at < json.size(); ++at) {
        const char byte = json[at];
        if (isInText && byte == '\\')
            ++at;
        else if (byte == '"')
            isInText = !isInText;
        else if (!isInText && (byte == '[' || byte == '{') && ++depth > deepest)
            return at;
        else if (!isInText && (byte == ']' || byte == '}'))
            --depth;
    }
    return json.npos;
}

} // namespace datafile
