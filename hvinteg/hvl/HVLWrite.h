#pragma once

#include <cstdint>
#include <string>

#include "hvl/HVLFunction.h"

/// The destination of a job's records. The last destination that was set counts.
///
/// Names are UTF-8; paths are in the engine's form. A bare file name is a file in the engine's
/// public directory; the runner's getOutputIterator reads its rows.
///
/// The step is not created if its input cannot be created, because the job would leave a wrong
/// file.
class HVINTEG_EXPORT HVLWrite : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLWrite(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLWrite(const HVLWrite& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLWrite& operator=(const HVLWrite& other);
    ~HVLWrite() override;

    /// Writes a data source that the engine stores by name. `append` keeps its records.
    void WriteHVDatasource(const std::string& name, bool append);
    /// Writes a SAV file. An empty password means no encryption.
    void WriteSAV(const std::string& path, const std::string& dataPassword);
    /// Writes a CSV file.
    void WriteCSV(const std::string& path);
    /// Writes GeoJSON. `type` is the media type, for example "text/geojson".
    void WriteGeoJSON(const std::string& path, const std::string& type);
    /// Writes GeoJSON with resource id and key of the map that the document belongs to. They are
    /// written only if neither is empty. `type` is the media type.
    void WriteGeoJSON(const std::string& path, const std::string& type,
                      const std::string& resourceId, const std::string& key);
    /// Writes an HVBF file.
    void WriteHVBF(const std::string& path);

    /// Sets the path of a file's data model; named data sources ignore it.
    void SetDataModel(std::string path);

    /// Creates the input and this step. Returns false also without a destination, or if the input
    /// cannot be created.
    bool GenerateHVL() override;

private:
    /// Kinds of destinations. Callers know the numbers.
    enum class Destination : std::int32_t
    {
        None = 0,
        NamedSource = 2,
        Sav = 3,
        Csv = 4,
        GeoJson = 5,
        Hvbf = 6
    };

    HVINTEG_HIDDEN void setDestination(Destination kind, const std::string& destination,
                                       const std::string& qualifier);
    HVINTEG_HIDDEN void putDestination(JNIJSONObject& configuration) const;
    HVINTEG_HIDDEN void putFile(JNIJSONObject& configuration, const char* type) const;
    HVINTEG_HIDDEN void putMetadata(JNIJSONObject& configuration) const;

    std::string _destination;
    Destination _kind = Destination::None;
    /// Mode of a named data source, password of a SAV file or media type of GeoJSON.
    std::string _qualifier;
    std::string _dataModelDestination;
    std::string _resourceId;
    std::string _metadataKey;
};
