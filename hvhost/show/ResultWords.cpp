#include "hvhost/show/ResultWords.h"

#include <algorithm>
#include <cstddef>

#include "FacSTDictionary.h"
#include "FormattedText.h"
#include "base/NumberText.h"
#include "hvhost/base/Text.h"

std::string word(const std::string& key)
{
    return FacSTDictionary().LookUp(key);
}

std::string sentence(const std::string& key, std::initializer_list<std::string> parts)
{
    return filled(word(key), parts);
}

std::string counted(double count, const std::string& one, const std::string& many)
{
    return sentence(count == 1 ? one : many, {base::shortestNumber(count)});
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
            column.name = strings.LookUp(column.key.empty() ? column.name : column.key);
    }
    return table;
}
