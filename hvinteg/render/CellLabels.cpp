#include "render/CellLabels.h"

#include <algorithm>
#include <cstdlib>

namespace {
constexpr const char* kLineBreak = "\\n";

std::string labelTextOf(const JsonValue& value, const TextItems& texts)
{
    return value.isText() ? std::string(value.text()) : texts.cellTextString(value);
}
} // namespace

void CellLabels::read(const JsonValue& labels, const TextItems& texts)
{
    const JsonValue values = labels["values"];
    const JsonValue keys = labels["keys"];
    auto key = keys.begin();
    int position = 0;
    for (const JsonValue value : values) {
        int number = position++;
        if (key != keys.end()) {
            number = (*key).integer(number);
            ++key;
        }
        if (value)
            _labels[number] = labelTextOf(value, texts);
    }
}

std::optional<std::string> CellLabels::labelOf(double value) const
{
    // Written so that NaN also counts as out of range.
    if (!(value > -1.0 && value < static_cast<double>(_labels.size())))
        return std::nullopt;
    const auto found = _labels.find(static_cast<long>(value));
    return found == _labels.end() ? std::string() : found->second;
}

std::string CellLabels::labelsOf(const std::string& list) const
{
    std::string text;
    bool isFirst = true;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        const long number = std::strtol(list.substr(begin, end - begin).c_str(), nullptr, 10);
        begin = end + 1;
        const auto found = _labels.find(number);
        if (found == _labels.end())
            continue;
        text += (isFirst ? "" : kLineBreak) + found->second;
        isFirst = false;
    }
    return text;
}
