#pragma once

#include <string>

#include "components/descriptives/DescriptivesSettings.h"

namespace EmbeddedHV {

/// The columns of the input that the component needs, kept in a temporary table since a source may
/// give its records only once. Values that a field declares missing, and real numbers that are
/// infinite or none, are missing there. With a weight, records are left out whose weight is
/// missing, 0 or below, infinite or not a number.
class InputTable
{
public:
    /// `name` is that of the table to be made.
    InputTable(const std::string& name, const DescriptivesSettings& settings);

    /// The SQL that makes the table from the records of a SELECT.
    std::string creation(const std::string& select) const;
    /// Quoted, for FROM.
    const std::string& name() const { return _quotedName; }
    /// The column of a field of the settings.
    std::string column(const CFField& field) const;
    /// The column of the values that the field declares missing, where the table has one: that of
    /// a categorical field, if a document tells of them. Null for any other value.
    std::optional<std::string> missingColumn(const CFField& field) const;
    bool isWeighted() const { return _weight.has_value(); }
    /// Whether records whose weight does not count are in the table, with a missing weight, for
    /// their number to be told. Who has counted them deletes them.
    bool keepsLeftOut() const { return _forResults && isWeighted(); }
    /// SQL of a record's weight; 1 without one.
    static constexpr const char* kWeight = "w";

private:
    void add(const CFField& field);
    std::size_t place(const CFField& field) const;
    bool tellsMissing(const CFField& field) const;
    std::string source(const CFField& field) const;
    std::string rawName(const CFField& field) const;

    std::string _quotedName;
    Fields _fields;
    std::optional<std::string> _weight;
    bool _trimsBlanks;
    bool _forResults;
    bool _forMissing;
};

} // namespace EmbeddedHV
