#pragma once

#include <cstdint>
#include <string>

#include "hvl/HVLFunction.h"

/// The sink of a job: where its records go. The last destination that was set holds.
///
/// Names are UTF-8, and paths are in the engine's form. A bare file name stands for a file in the
/// engine's public directory, whose rows the runner hands out through getOutputIterator.
///
/// A sink whose input cannot be generated is not created: it is the one builder that stops there,
/// because a job without its records would leave a wrong file behind.
class HVINTEG_EXPORT HVLWrite : public HVLFunction
{
public:
    explicit HVLWrite(JNIHvlProgram* program);
    HVLWrite(const HVLWrite& other);
    HVLWrite& operator=(const HVLWrite& other);
    ~HVLWrite() override;

    /// A data source that the engine keeps under a name; `append` adds to its records.
    void WriteHVDatasource(const std::string& name, bool append);
    /// An empty password leaves the file open to all.
    void WriteSAV(const std::string& path, const std::string& dataPassword);
    void WriteCSV(const std::string& path);
    /// `type` is the media type, as in "text/geojson". Resource id and key describe the map that
    /// the document belongs to, and are written only where both are given.
    void WriteGeoJSON(const std::string& path, const std::string& type);
    void WriteGeoJSON(const std::string& path, const std::string& type,
                      const std::string& resourceId, const std::string& key);
    void WriteHVBF(const std::string& path);

    /// Where the data model document of a file goes; named data sources ignore it.
    void SetDataModel(std::string path);

    bool GenerateHVL() override;

private:
    /// What kind of destination was chosen, with the numbers that callers know.
    enum class Destination : std::int32_t
    {
        None = 0,
        NamedSource = 2,
        Sav = 3,
        Csv = 4,
        GeoJson = 5,
        Hvbf = 6
    };

    void setDestination(Destination kind, const std::string& destination,
                        const std::string& qualifier);
    void putDestination(JNIJSONObject& configuration) const;
    void putFile(JNIJSONObject& configuration, const char* type) const;
    void putMetadata(JNIJSONObject& configuration) const;

    std::string _destination;
    Destination _kind = Destination::None;
    /// The mode of a named data source, the password of a SAV file, the media type of GeoJSON.
    std::string _qualifier;
    std::string _dataModelDestination;
    std::string _resourceId;
    std::string _metadataKey;
};
