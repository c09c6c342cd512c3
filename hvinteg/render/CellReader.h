#pragma once

#include "bridge/JsonValue.h"
#include "render/CellStore.h"

/// Reads the values of cells from a table object into a store.
class CellReader
{
public:
    /// The store is borrowed.
    explicit CellReader(CellStore& store) : _store(store) {}
    void readCells(const JsonValue& blocks);

    /// Whether a block has an array of values. A table without such a block is invalid.
    static bool hasValues(const JsonValue& block);

private:
    void readCompact(const JsonValue& json);
    void readSparse(const JsonValue& json);

    CellStore& _store;
};
