#pragma once

#include <string>

#include "components/descriptives/model/FieldSummary.h"

namespace EmbeddedHV {

/// The text of "StatXML.xml", see docs/descriptives.md: the data model of the fields, with the
/// summaries inside the model, after the fields.
std::string statDocument(const DataSummary& summary);

/// The text of "StatXML.xml" for groups, which are added in the order of their numbers.
class GroupStatDocument
{
public:
    /// `countsLeftOut`: whether the records without a valid weight were counted.
    explicit GroupStatDocument(bool countsLeftOut) : _countsLeftOut(countsLeftOut) {}

    void add(const DataSummary& summary);
    std::string text() const { return "<StatXML>\n" + _groups + "</StatXML>\n"; }

private:
    bool _countsLeftOut;
    std::size_t _count = 0;
    std::string _groups;
};

} // namespace EmbeddedHV
