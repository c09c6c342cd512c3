#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFMetaData.h"
#include "support/HvintegExport.h"

class HVRawDataIterator;
class HVRunner;
class HVSimpleContainer;

/// Runs jobs that describe a data source: a data model of its fields with distinct values and
/// statistics, and the time interval of date fields.
///
///     HVDescriptive descriptive(runner, &cases);
///     CFMetaData model;
///     const std::vector<std::string> fields = {"age", "income"};
///     if (descriptive.BuildMetaData(&fields, model, 100, true)) ...
///
/// Each operation runs one job, shows its messages and ends its execution. Settings stay in force
/// for later jobs. They are Java objects: HVRunner::cleanJRef releases them, and the object must
/// not be used afterwards. Names are UTF-8. Uses the runner's thread. What Java or the engine
/// throws before the job runs is passed on.
class HVINTEG_EXPORT HVDescriptive
{
public:
    /// Describes the rows of an iterator, which each job reads from the first one. Runner and
    /// iterator are borrowed. A null iterator makes every job fail.
    HVDescriptive(HVRunner& runner, HVRawDataIterator* iterator);
    /// Describes the records that a piece of job text reads. The runner is borrowed.
    HVDescriptive(HVRunner& runner, std::string readText);
    HVDescriptive(const HVDescriptive&) = delete;
    HVDescriptive& operator=(const HVDescriptive&) = delete;
    ~HVDescriptive();

    /// Sets a text setting of the engine's component and replaces an earlier value.
    void SetDESetting(const std::string& key, const std::string& value);
    /// Sets a boolean setting.
    void SetDESetting(const std::string& key, const bool& value);
    /// Sets a text setting from a literal, which would otherwise convert to bool.
    void SetDESetting(const std::string& key, const char* value)
    {
        SetDESetting(key, std::string(value));
    }
    /// Sets the number of the engine's threads. Ignores numbers below 1.
    void SetNThreads(int threads);
    /// Makes all later jobs write a further container. The container's name tells the engine what
    /// to write. Borrowed.
    void AddOutputContainer(HVSimpleContainer& container);

    /// Describes the fields. With `useWeight`, a field with the role of a frequency weight is used
    /// as the weight and not described. At most `maxDistinctValues` values are listed per field.
    /// Returns false, and leaves `metadata` unchanged, if there are no fields, the job fails or it
    /// writes no data model. Throws std::out_of_range if the result contains no "<DataModel>".
    bool BuildMetaData(const std::vector<std::string>* fields, CFMetaData& metadata,
                       int maxDistinctValues, bool useWeight);
    /// Returns the data model of the input fields as XML and the interval of the date fields as
    /// JSON. One of the lists may be empty; its result is then empty. `standardDates` means that
    /// the date fields are dates, times or timestamps; otherwise they are numbers that together
    /// form a point in time. Returns whether the last result that was requested could be read: the
    /// interval, or without date fields the data model.
    bool UpdateDateModel(const std::vector<std::string>* inputFields,
                         const std::vector<std::string>* dateFields, bool standardDates,
                         std::string& timeInterval, std::string& dataModel, int maxDistinctValues);

    /// The complete "StatXML.xml" of the last job that wrote one. Valid until the next job.
    const std::string& GetStatXML() const;
    /// The text of the last job. Valid until the next job.
    const std::string& GetHVLJob() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
