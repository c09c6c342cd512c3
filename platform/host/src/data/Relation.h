#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CFField.h"
#include "datafile/ScratchFile.h"

/// A column of a relation: its SQL, which gives one of the six canonical types, and that type.
struct RelationColumn
{
    std::string sql;
    CFField::StorageType storage = CFField::Real;
};

/// Where cases come from in the host's database. Held by every iterator that reads them.
struct Relation
{
    std::string name; ///< for messages, UTF-8
    std::string from; ///< the FROM item
    std::vector<RelationColumn> columns;
    std::optional<long long> caseCount;             ///< as a file had when it was opened
    std::shared_ptr<datafile::ScratchFile> scratch; ///< what the FROM item reads, if it has no name
    std::shared_ptr<const void> table;              ///< likewise, if it is a table of the database
};
