#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbook/XmlStream.h"

class WorkbookPackage;

/// Appends the text of a cell. The form _x000D_ is the character with this code.
void appendCellText(std::string& target, std::string_view text);

/// The texts that cells refer to by number.
class SharedStrings : private XmlHandler
{
public:
    /// Reads all texts into memory. Throws WorkbookFault, also for more than 1 GiB of them.
    SharedStrings(const WorkbookPackage& package, const std::string& part);
    /// No texts.
    SharedStrings() = default;

    std::size_t count() const { return _ends.size(); }
    std::string_view text(std::size_t number) const
    {
        const std::size_t begin = number == 0 ? 0 : _ends[number - 1];
        return std::string_view(_texts).substr(begin, _ends[number] - begin);
    }

private:
    void startElement(std::string_view name, const char** attributes) override;
    void endElement(std::string_view name) override;
    void takeText(std::string_view text) override;

    std::string _texts;
    std::vector<std::size_t> _ends; ///< of each text
    std::string _current;
    bool _isInText = false;
    bool _isInPhonetic = false; ///< a reading aid, which is not a part of the text
};
