#pragma once

#include <cstdint>
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
    InputTable(std::string name, const DescriptivesSettings& settings);

    /// The SQL that makes the table from the records of a SELECT.
    std::string creation(const std::string& select) const;
    /// Quoted, for FROM.
    const std::string& name() const { return _quotedName; }
    /// The column of a field of the settings.
    std::string column(const CFField& field) const;
    bool isWeighted() const { return _weight.has_value(); }
    /// SQL of a record's weight; 1 without one.
    static constexpr const char* kWeight = "w";

private:
    void add(const CFField& field);
    std::string source(const CFField& field) const;

    std::string _quotedName;
    Fields _fields;
    std::optional<std::string> _weight;
    bool _trimsBlanks;
};

} // namespace EmbeddedHV
