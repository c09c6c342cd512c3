#pragma once

#include <string>
#include <string_view>

#include "DataFileNames.h"
#include "runtime/DataModel.h"
#include "runtime/RecordBatch.h"

namespace EmbeddedHV {

/// A text as a JSON string, in quotes.
std::string jsonText(std::string_view text);

/// Writes the records of a chunk as features of a GeoJSON document. Integer and real columns have
/// their own types; all other columns are texts.
class FeatureColumns
{
public:
    /// `shapes` is the index of the geometry field. Borrows all arguments.
    FeatureColumns(const RecordBatch& batch, const Fields& fields, std::size_t shapes);

    /// Appends a record to `out`. Returns false if the geometry's text is not a shape.
    bool append(std::size_t row, std::string& out) const;

private:
    /// A column of the chunk.
    struct Column
    {
        std::string key; ///< the name of the field, quoted, with a colon
        CFField::StorageType storage;
        bool isShape; ///< whether the field is geospatial
        BatchColumn values;
    };
    void appendValue(const Column& column, std::size_t row, std::string& out) const;

    std::vector<Column> _columns;
    std::size_t _shapes;
};

} // namespace EmbeddedHV
