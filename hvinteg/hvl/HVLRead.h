#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "hvl/HVLFunction.h"

class HVStatDataIterator;

/// The source of a job: where its records come from. The last source that was set holds.
///
/// Names are UTF-8. Paths and addresses go to the engine as they are given; NormalizeHvlPathU makes
/// the form that the engine takes.
class HVINTEG_EXPORT HVLRead : public HVLFunction
{
public:
    explicit HVLRead(JNIHvlProgram* program);
    HVLRead(const HVLRead& other);
    HVLRead& operator=(const HVLRead& other);
    ~HVLRead() override;

    /// A row iterator that is handed to the runner as well. The first form asks for the name now.
    void ReadIterator(HVStatDataIterator& iterator);
    void ReadIterator(const std::string& name);
    /// A data source that the engine knows by name.
    void ReadHVDatasource(const std::string& name);
    /// An empty password stands for a file without one.
    void ReadSAV(const std::string& path, const std::string& dataPassword);
    void ReadCSV(const std::string& path, bool hasHeader);
    void ReadShape(const std::string& path);
    /// One layer of a map service. Of a text, the number that it begins with counts, 0 without one.
    void ReadMapService(const std::string& address, int layer);
    void ReadMapService(const std::string& address, const std::string& layer);
    void ReadHVBF(const std::string& path);

    /// The data model document that goes with a file or map source; other sources ignore it.
    void SetDataModel(std::string path);
    /// How many records to read at most; 0 reads none.
    void SetMaxCaseCount(unsigned long long count);
    /// How many read errors to bear before the job fails.
    void SetErrorThreshold(unsigned long long count);

    bool GenerateHVL() override;

private:
    /// What kind of source was chosen, with the numbers that callers know.
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

    void setSource(Source kind, const std::string& source);
    void putSource(JNIJSONObject& configuration) const;
    void putFile(JNIJSONObject& configuration, const char* parserName) const;
    void putGeospatial(JNIJSONObject& configuration, const char* type) const;
    void putDataModel(JNIJSONObject& object) const;

    std::string _source;
    Source _kind = Source::None;
    std::string _password;
    std::int32_t _queryLayer = 0;
    std::string _dataModel;
    unsigned long long _maxRecords = noLimit;
    unsigned long long _errorThreshold = noLimit;
    bool _hasHeader = false;
};
