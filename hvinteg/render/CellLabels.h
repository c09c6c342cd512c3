#pragma once

#include <map>
#include <optional>
#include <string>

#include "bridge/JsonValue.h"
#include "render/TextItems.h"

/// The labels that cells of a table name by number.
class CellLabels
{
public:
    void read(const JsonValue& labels, const TextItems& texts);

    /// The label of a cell whose value is one: empty if that number has none; nothing for a value
    /// that is beyond the count of labels.
    std::optional<std::string> labelOf(double value) const;
    /// The labels of a list of numbers with commas between them, one a line as the host writes it
    /// in a text. Numbers without a label drop out, and what is no number counts as 0.
    std::string labelsOf(const std::string& list) const;

private:
    std::map<long, std::string> _labels;
};
