#include "InputParts.h"

std::vector<std::string> partsOf(std::string_view input, std::size_t most)
{
    std::vector<std::string> parts;
    for (std::size_t end = input.find(kPartMark);
         end != std::string_view::npos && parts.size() + 1 < most; end = input.find(kPartMark)) {
        parts.emplace_back(input.substr(0, end));
        input.remove_prefix(end + kPartMark.size());
    }
    parts.emplace_back(input);
    return parts;
}
