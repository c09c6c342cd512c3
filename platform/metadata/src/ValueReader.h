#pragma once

#include <vector>

#include "CFField.h"
#include "NodeReader.h"

/// Reads the values of a field: lists of them, and those that are declared missing.
class ValueReader
{
public:
    /// The reader is borrowed for the life of the object. A datum whose element does not say its
    /// kind has the one that is usual for the storage.
    ValueReader(const NodeReader& reader, CFField::StorageType storage)
        : _reader(reader), _storage(storage)
    {
    }

    /// The values in an element; none if it is not there.
    std::vector<CFValue> readValues(pugi::xml_node list) const;
    /// A declaration that is not valid if the element is not there.
    CFMissingValues readMissingValues(pugi::xml_node node) const;

private:
    CFDatum readDatum(pugi::xml_node node) const;
    CFRange readRange(pugi::xml_node node) const;

    const NodeReader& _reader;
    CFField::StorageType _storage;
};
