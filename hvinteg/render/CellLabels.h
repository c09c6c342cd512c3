#pragma once

#include <map>
#include <optional>
#include <string>

#include "bridge/JsonValue.h"
#include "render/TextItems.h"

/// Labels that table cells refer to by number.
class CellLabels
{
public:
    void read(const JsonValue& labels, const TextItems& texts);

    /// The label for a cell value: empty if the number has no label, no result if it is beyond the
    /// count of labels.
    std::optional<std::string> labelOf(double value) const;
    /// The labels for a list of numbers separated by commas, one per line in the host's notation.
    /// Numbers without a label are left out; text that is not a number counts as 0.
    std::string labelsOf(const std::string& list) const;

private:
    std::map<long, std::string> _labels;
};
