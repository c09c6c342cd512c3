#pragma once

#include "bridge/JsonValue.h"
#include "render/CellStore.h"

/// Reads formats and values of cells from a table object into a store.
///
/// Formats come first: one for a pattern of cells looks at the format that a cell has, and values
/// do not depend on formats.
class CellReader
{
public:
    /// The store is borrowed.
    explicit CellReader(CellStore& store) : _store(store) {}
    void readFormats(const JsonValue& formats);
    void readCells(const JsonValue& blocks);

    /// Whether a block has values side by side. Without any there is no table.
    static bool hasValues(const JsonValue& block);

private:
    /// What one entry of the formats gives to each cell that it speaks of.
    struct Entry
    {
        VEXA_Format format;
        bool isInfinite;
        std::uint32_t footnotes;
    };
    void readFormat(const JsonValue& json);
    void readCompact(const JsonValue& json);
    void readSparse(const JsonValue& json);
    static void apply(const Entry& entry, Cell& cell);
    static void applyToPattern(const Entry& entry, Cell& cell);

    CellStore& _store;
};
