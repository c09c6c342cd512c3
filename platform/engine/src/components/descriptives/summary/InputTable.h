#pragma once

#include <memory>
#include <optional>
#include <string>

#include "components/descriptives/settings/DescriptivesSettings.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// A temporary table of the input columns that the component needs, because a source may be
/// readable only once. Values that a field declares missing, and infinite or not-a-number reals,
/// are missing in it. With a weight, records are left out whose weight is missing, not positive,
/// infinite or not a number. The records may be grouped.
class InputTable
{
public:
    /// `name` is the name of the new table.
    InputTable(const std::string& name, const DescriptivesSettings& settings);

    /// The SQL that creates the table from the records of a SELECT.
    std::string creation(const std::string& select) const;
    /// A table with the columns of only these fields, in which the columns have the same names. The
    /// cost of a statement grows with the number of columns in its table.
    InputTable part(const std::string& name) const;
    /// The SQL that creates `part` from this table, for these fields. Replaces an older table.
    std::string partCreation(const InputTable& part, const Fields& fields) const;
    /// A table with the records of one group only, which is not grouped itself.
    InputTable group(const std::string& name) const;
    /// The SQL that creates `group` from this table, with the records of the group with this
    /// number, in their order. Replaces an older table.
    std::string groupCreation(const InputTable& group, std::size_t number) const;
    /// The quoted name, for FROM.
    const std::string& name() const { return _quotedName; }
    /// The column of a field of the settings.
    std::string column(const CFField& field) const;
    /// The column of the values that the field declares missing; null for other values. Empty if
    /// the table has none: only categorical fields have one, and only if a document lists these
    /// values.
    std::optional<std::string> missingColumn(const CFField& field) const;
    bool isWeighted() const { return _weight.has_value(); }
    /// Whether there is a column with the number of each record's group, from 1.
    bool isGrouped() const { return _group.has_value(); }
    /// Whether records with an invalid weight are in the table, with a missing weight, so that they
    /// can be counted. The code that counts them deletes them.
    bool keepsLeftOut() const { return _forResults && isWeighted(); }
    /// SQL for the weight of a record; 1 if there is no weight.
    static constexpr const char* kWeight = "w";
    static constexpr const char* kGroup = "g";

private:
    /// Shared by the parts of a table.
    struct Columns
    {
        Fields fields;
        FieldIndex index;
    };
    static std::shared_ptr<const Columns> columnsOf(const DescriptivesSettings& settings);
    std::size_t place(const CFField& field) const;
    bool tellsMissing(const CFField& field) const;
    std::string source(const CFField& field) const;
    std::string rawName(const CFField& field) const;
    std::string copyCreation(const InputTable& copy, const Fields& fields) const;

    std::string _quotedName;
    std::shared_ptr<const Columns> _columns;
    std::optional<std::string> _weight;
    std::optional<std::string> _group;
    bool _trimsBlanks;
    bool _forResults;
    bool _forMissing;
};

} // namespace EmbeddedHV
