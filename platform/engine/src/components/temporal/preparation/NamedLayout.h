#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/temporal/preparation/NamedSeries.h"

namespace EmbeddedHV {

/// How the columns of prepared or scored records become fields with names.
struct NamedLayout
{
    static constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

    /// The records of one combination of dimension values.
    struct Combination
    {
        std::vector<int> codes;
        std::vector<std::size_t> columns; ///< of the values, by `valueFields`; kNoColumn for none
    };

    Fields fields; ///< of the output
    std::size_t indexColumn = 0;
    std::optional<std::size_t> flagColumn;
    bool hasFlag = false;       ///< in the output
    bool hasDimensions = false; ///< likewise: each combination has records of its own
    std::vector<std::string> valueFields;
    std::vector<Combination> combinations; ///< one without dimensions
};

/// `fields` are those of the records. Throws JobError if they are not series of the preparation, or
/// if two fields of the output would have one name.
NamedLayout namedLayout(const Fields& fields, const NamedSeries& known, bool exportsFlag,
                        const std::string& component);

} // namespace EmbeddedHV
