#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CFField.h"
#include "datafile/ScratchFile.h"

/// A column of a relation: its SQL, of one of the six canonical types, and that type.
struct RelationColumn
{
    std::string sql;
    CFField::StorageType storage = CFField::Real;
};

/// The source of cases in the host's database. Shared by all iterators that read it.
struct Relation
{
    std::string name; ///< for messages, UTF-8
    std::string from; ///< the FROM item
    std::vector<RelationColumn> columns;
    std::optional<long long> caseCount;             ///< when a file was opened
    std::shared_ptr<datafile::ScratchFile> scratch; ///< a nameless file that the FROM item reads
    std::shared_ptr<const void> table;              ///< a table that the FROM item reads
};
