#pragma once

#include <fstream>
#include <string>

#include "steps/OutputFiles.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// The metadata of a GeoJSON document. Empty members are not written.
struct GeoJsonMetadata
{
    std::string resourceId;
    std::string key;
};

/// Writes a GeoJSON document: a feature collection with a feature for each record. The geometry is
/// the first geospatial field; the properties are the other fields.
class GeoJsonOutput : public Output
{
public:
    /// Borrows the context. Throws JobError if no field is geospatial.
    GeoJsonOutput(JobContext& context, const std::string& path, const std::string& modelPath,
                  GeoJsonMetadata metadata, Fields fields);

    std::string target() const override { return _files.destination(); }
    bool writesFile() const override { return true; }
    std::string statement(const std::string& select) override;
    bool takesRecords() const override { return true; }
    bool hasLargeRecords() const override { return true; }
    void take(RecordBatch& batch) override;
    void commit() override;

private:
    void begin();
    void flush();
    [[noreturn]] void refuse() const;

    JobContext& _context;
    OutputFiles _files;
    GeoJsonMetadata _metadata;
    Fields _fields;
    std::size_t _shapes; ///< the index of the geometry field
    std::ofstream _stream;
    std::string _text; ///< not yet written to the file
    bool _isFirst = true;
};

} // namespace EmbeddedHV
