#pragma once

#include <optional>
#include <string>
#include <vector>

#include "CFMetaData.h"
#include "RowDataIterator.h"

/// Reads the combinations of key values from the rows of a join. Numbers are converted to text. The
/// rows are borrowed.
class KeyReader
{
public:
    KeyReader(EmbeddedHV::RowDataIterator& rows, const std::vector<std::string>& keys);

    /// Appends the rows that have all keys: all rows for a limit of -1, otherwise at most `maxRows`
    /// + 1, where the extra row shows that there are more. Returns false if reading the rows fails.
    bool read(int maxRows, std::vector<std::vector<std::string>>& result);

private:
    std::optional<std::vector<std::string>> presentRow();
    std::optional<std::string> valueOf(int field);

    EmbeddedHV::RowDataIterator& _rows;
    const CFMetaData _model;
    std::vector<int> _fields; ///< -1 for a missing field
};
