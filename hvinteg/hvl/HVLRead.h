#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "hvl/HVLFunction.h"

class HVStatDataIterator;

/// The source of a job's records. The last source that was set counts.
///
/// Names are UTF-8. Paths and addresses are passed to the engine unchanged; NormalizeHvlPathU
/// converts a host path to the engine's form.
class HVINTEG_EXPORT HVLRead : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLRead(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLRead(const HVLRead& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLRead& operator=(const HVLRead& other);
    ~HVLRead() override;

    /// Reads a row iterator, which the caller also passes to the runner. Its name is read now; the
    /// iterator is not kept.
    void ReadIterator(HVStatDataIterator& iterator);
    /// Reads the row iterator of this name.
    void ReadIterator(const std::string& name);
    /// Reads a data source that the engine knows by name.
    void ReadHVDatasource(const std::string& name);
    /// Reads a SAV file. An empty password means that the file has none.
    void ReadSAV(const std::string& path, const std::string& dataPassword);
    /// Reads a CSV file. `hasHeader`: its first line holds the names.
    void ReadCSV(const std::string& path, bool hasHeader);
    /// Reads a shape file.
    void ReadShape(const std::string& path);
    /// Reads one layer of a map service.
    void ReadMapService(const std::string& address, int layer);
    /// Reads one layer of a map service, with the number of the layer as text; see String2Integer.
    void ReadMapService(const std::string& address, const std::string& layer);
    /// Reads an HVBF file.
    void ReadHVBF(const std::string& path);

    /// Sets the path of the data model of a file or map; other sources ignore it.
    void SetDataModel(std::string path);
    /// Sets the highest number of records to read; 0 reads none.
    void SetMaxCaseCount(unsigned long long count);
    /// Sets the number of read errors that are tolerated.
    void SetErrorThreshold(unsigned long long count);

    /// Creates this step. Returns false without a program or a source.
    bool GenerateHVL() override;

private:
    /// Kinds of sources. Callers know the numbers.
    enum class Source : std::int32_t
    {
        None = 0,
        Iterator = 1,
        NamedSource = 2,
        Sav = 3,
        Csv = 4,
        Shape = 5,
        MapService = 6,
        Hvbf = 7
    };

    static constexpr unsigned long long noLimit = std::numeric_limits<unsigned long long>::max();

    HVINTEG_HIDDEN void setSource(Source kind, const std::string& source);
    HVINTEG_HIDDEN void putSource(JNIJSONObject& configuration) const;
    HVINTEG_HIDDEN void putFile(JNIJSONObject& configuration, const char* parserName) const;
    HVINTEG_HIDDEN void putGeospatial(JNIJSONObject& configuration, const char* type) const;
    HVINTEG_HIDDEN void putDataModel(JNIJSONObject& object) const;

    std::string _source;
    Source _kind = Source::None;
    std::string _password;
    std::int32_t _queryLayer = 0;
    std::string _dataModel;
    unsigned long long _maxRecords = noLimit;
    unsigned long long _errorThreshold = noLimit;
    bool _hasHeader = false;
};
