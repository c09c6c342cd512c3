#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFMetaData.h"
#include "support/HvintegExport.h"

class HVRawDataIterator;
class HVRunner;
class HVSimpleContainer;

/// Has the engine describe a data source: a data model of its fields, with their distinct values
/// and statistics, and the time interval that date fields keep.
///
///     HVDescriptive descriptive(runner, &cases);
///     CFMetaData model;
///     const std::vector<std::string> fields = {"age", "income"};
///     if (descriptive.BuildMetaData(&fields, model, 100, true)) ...
///
/// Each operation runs one job, shows its messages and ends its execution; settings stay from one
/// to the next, until HVRunner::cleanJRef releases them: the object is not used after that. Names
/// are UTF-8. The thread is the runner's. What Java or the engine throws before the job runs
/// passes.
class HVINTEG_EXPORT HVDescriptive
{
public:
    /// The input: rows, which are read from the first one on each time, or a piece of job text that
    /// reads something. Runner and iterator are borrowed. A null iterator leaves a job without
    /// input, which fails.
    HVDescriptive(HVRunner& runner, HVRawDataIterator* iterator);
    HVDescriptive(HVRunner& runner, std::string readText);
    HVDescriptive(const HVDescriptive&) = delete;
    HVDescriptive& operator=(const HVDescriptive&) = delete;
    ~HVDescriptive();

    /// Put a setting of the engine's component, in place of an earlier one of that key.
    void SetDESetting(const std::string& key, const std::string& value);
    void SetDESetting(const std::string& key, const bool& value);
    /// A literal would otherwise become true.
    void SetDESetting(const std::string& key, const char* value)
    {
        SetDESetting(key, std::string(value));
    }
    /// Without effect for a number that is not above 0.
    void SetNThreads(int threads);
    /// Has the jobs write a further container, behind those that the operations read: the engine
    /// tells by its name what it is to hold. The container is borrowed, for all jobs that follow.
    void AddOutputContainer(HVSimpleContainer& container);

    /// Describes the fields; a field that is the frequency weight of the rows weighs them instead,
    /// with `useWeight`. False without fields, or if the job failed or left no data model; then
    /// `metadata` is as it was. A result without a "<DataModel>" throws std::out_of_range.
    bool BuildMetaData(const std::vector<std::string>* fields, CFMetaData& metadata,
                       int maxDistinctValues, bool useWeight);
    /// The data model of the input fields as text, and the interval of the date fields as JSON.
    /// Either list may be empty, not both; its result is empty then. `standardDates` says that the
    /// date fields are dates, times or timestamps; otherwise they are numbers that make up a point
    /// of time together. The result is that of the last thing that was read.
    bool UpdateDateModel(const std::vector<std::string>* inputFields,
                         const std::vector<std::string>* dateFields, bool standardDates,
                         std::string& timeInterval, std::string& dataModel, int maxDistinctValues);

    /// The whole "StatXML.xml" of the last job, and its text.
    const std::string& GetStatXML() const;
    const std::string& GetHVLJob() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
