#pragma once

#include <optional>
#include <string>
#include <vector>

#include "CFMetaData.h"
#include "RowDataIterator.h"

/// Reads the combinations of key values from the rows of a join: numbers as their text, texts as
/// they are. The rows are borrowed.
class KeyReader
{
public:
    KeyReader(EmbeddedHV::RowDataIterator& rows, const std::vector<std::string>& keys);

    /// Appends the rows that lack no key: all of them for a limit of -1, otherwise one more than
    /// the limit at most, which tells that there are more. False if the rows break off.
    bool read(int maxRows, std::vector<std::vector<std::string>>& result);

private:
    std::optional<std::vector<std::string>> presentRow();
    std::optional<std::string> valueOf(int field);

    EmbeddedHV::RowDataIterator& _rows;
    const CFMetaData _model;
    std::vector<int> _fields; ///< -1 for one that is not there
};
