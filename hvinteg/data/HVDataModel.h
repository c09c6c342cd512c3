#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFMetaData.h"
#include "VexaDataSource.h"
#include "support/HvintegExport.h"

/// Describes a data source of the host to the engine: one field for each variable, with the field
/// type, storage and role that its measurement level, print format and role mean, and with labels,
/// value labels and missing values. The text of the description is what a row iterator answers to
/// getDataModel.
///
/// There are two descriptions: the dictionary of the whole source, fixed at construction, and the
/// analysis, of the variables that were chosen last. Texts in them are UTF-8. Copies are
/// independent. One thread at a time; what the host's libraries throw passes.
class HVINTEG_EXPORT HVDataModel
{
public:
    /// The source is borrowed and must outlive the model and its copies. `addCaseCount` adds the
    /// field $casecount, the number of the case, behind the others. `weightRole` gives the weight
    /// variable the role of a frequency weight; `splitRole` gives split variables the role split,
    /// and all others the role input, if there are split variables.
    HVDataModel(const VEXA_DataSource& source, bool addCaseCount, bool weightRole, bool splitRole);
    HVDataModel(const HVDataModel& other);
    HVDataModel& operator=(const HVDataModel& other);
    virtual ~HVDataModel();

    /// Choose the variables of the analysis, by column or by name; what is not there is passed
    /// over. Names are in the host's encoding, or in UTF-8. `levels`, if not empty, has an entry
    /// for each of the given variables: its measurement level, a negative one for "as it has it".
    void UpdateAnalysMetadata(const std::vector<int>& variables);
    void UpdateAnalysMetadata(const std::vector<int>& variables,
                              const std::vector<MeasurementLevel>& levels);
    void UpdateAnalysMetadata(const std::vector<std::string>& names, bool fromUTF8);
    void UpdateAnalysMetadata(const std::vector<std::string>& names,
                              const std::vector<MeasurementLevel>& levels, bool fromUTF8);

    /// Those of the analysis if it has a field, else those of the dictionary.
    const CFMetaData& getMetaData() const;
    const std::string& getDataModel() const;
    /// The columns behind the analysis; -1 stands for $casecount.
    const std::vector<int>& getAnalysVars() const;
    const VEXA_DataSource& getDataSource() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
