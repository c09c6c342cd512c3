#include "hvhost/show/ResultWords.h"

#include <algorithm>
#include <cstddef>

#include "FacSTDictionary.h"
#include "FormattedText.h"
#include "base/NumberText.h"

std::string word(const std::string& key)
{
    return FacSTDictionary().LookUp(key);
}

std::string sentence(const std::string& key, std::initializer_list<std::string> parts)
{
    const std::string pattern = word(key);
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const bool isPlace = pattern[at] == '^' && at + 1 < pattern.size() &&
                             pattern[at + 1] >= '1' && pattern[at + 1] <= '9';
        const auto part = isPlace ? static_cast<std::size_t>(pattern[at + 1] - '1') : parts.size();
        if (part < parts.size()) {
            text += parts.begin()[part];
            ++at;
        } else {
            text += pattern[at];
        }
    }
    return text;
}

std::string localNumber(double number, int digits)
{
    std::string text = base::roundedNumber(number, digits);
    std::replace(text.begin(), text.end(), '.', decimalSign());
    return text;
}

ResultTable inWords(ResultTable table)
{
    const FacSTDictionary strings;
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
        ResultTable::Column& column = table.columns[at];
        if (column.hasWords)
            for (ResultTable::Row& row : table.rows)
                if (row[at])
                    row[at] = strings.LookUp(*row[at]);
        if (!column.isField)
            column.name = strings.LookUp(column.name);
    }
    return table;
}
