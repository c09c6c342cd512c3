#pragma once

#include <vector>

#include "CFField.h"
#include "NodeReader.h"

/// Reads the values of a field: lists of values, and missing values.
class ValueReader
{
public:
    /// The reader is borrowed. A datum without a kind in its element has the default kind of the
    /// storage.
    ValueReader(const NodeReader& reader, CFField::StorageType storage)
        : _reader(reader), _storage(storage)
    {
    }

    /// The values in an element; empty if the element is missing.
    std::vector<CFValue> readValues(pugi::xml_node list) const;
    /// The missing values; invalid if the element is missing.
    CFMissingValues readMissingValues(pugi::xml_node node) const;

private:
    CFDatum readDatum(pugi::xml_node node) const;
    CFRange readRange(pugi::xml_node node) const;

    const NodeReader& _reader;
    CFField::StorageType _storage;
};
