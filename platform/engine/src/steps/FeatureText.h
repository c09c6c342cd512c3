#pragma once

#include <string>
#include <string_view>

#include "DataFileNames.h"
#include "datafile/Duck.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// A text as JSON has it, with its quotes.
std::string jsonText(std::string_view text);

/// The records of a chunk as features of a GeoJSON document. Integer and real columns are of their
/// own types, all others are texts.
class FeatureColumns
{
public:
    /// `shapes` is the index of the field that is the geometry. All are borrowed.
    FeatureColumns(duck::Chunk& chunk, const Fields& fields, std::size_t shapes);

    /// False if the geometry's text is no shape.
    bool append(std::size_t row, std::string& out) const;

private:
    /// A column of the chunk that is being written.
    struct Column
    {
        std::string key; ///< the field's name, quoted, with its colon
        CFField::StorageType storage;
        bool isShape; ///< of a geospatial field
        void* data;
        std::uint64_t* validity;
    };
    void appendValue(const Column& column, std::size_t row, std::string& out) const;

    std::vector<Column> _columns;
    std::size_t _shapes;
};

} // namespace EmbeddedHV
