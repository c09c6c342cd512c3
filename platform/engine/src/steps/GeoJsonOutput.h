#pragma once

#include <fstream>
#include <string>

#include "steps/OutputFiles.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// What a GeoJSON document says of itself; both are empty if it says nothing.
struct GeoJsonMetadata
{
    std::string resourceId;
    std::string key;
};

/// Writes a GeoJSON document: a collection of features, one for each record, whose geometry is the
/// first geospatial field and whose properties are the other fields.
class GeoJsonOutput : public Output
{
public:
    /// Throws JobError if no field is geospatial. The context is borrowed.
    GeoJsonOutput(JobContext& context, const std::string& path, const std::string& modelPath,
                  GeoJsonMetadata metadata, Fields fields);

    std::string target() const override { return _files.destination(); }
    std::string statement(const std::string& select) override;
    bool takesRecords() const override { return true; }
    void take(duck::Chunk& chunk) override;
    void commit() override;

private:
    void begin();
    void flush();
    [[noreturn]] void refuse() const;

    JobContext& _context;
    OutputFiles _files;
    GeoJsonMetadata _metadata;
    Fields _fields;
    std::size_t _shapes; ///< the index of the field
    std::ofstream _stream;
    std::string _text; ///< yet to be written
    bool _isFirst = true;
};

} // namespace EmbeddedHV
