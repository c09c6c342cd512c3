#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFMetaData.h"
#include "VexaDataSource.h"
#include "support/HvintegExport.h"

/// Describes a data source of the host to the engine. Each variable becomes a field: measurement
/// level, print format and role determine its type, storage and role; it keeps label, value labels
/// and missing values. A row iterator returns the text of the description from getDataModel.
///
/// The model has two descriptions: the dictionary of all variables, fixed at construction, and the
/// analysis, which holds the variables of the last update. Texts in both are UTF-8. Copies are
/// independent. One thread at a time. What the host's libraries throw is passed on.
class HVINTEG_EXPORT HVDataModel
{
public:
    /// Describes all variables of the source. The source is borrowed and must outlive the model and
    /// its copies. `addCaseCount` appends the field $casecount, the number of the case.
    /// `weightRole` gives the weight variable the role of a frequency weight. If the source has
    /// split variables, `splitRole` gives them the role split and all others the role input.
    HVDataModel(const VEXA_DataSource& source, bool addCaseCount, bool weightRole, bool splitRole);
    /// Copies both descriptions and borrows the same source.
    HVDataModel(const HVDataModel& other);
    /// Replaces both descriptions and the borrowed source.
    HVDataModel& operator=(const HVDataModel& other);
    virtual ~HVDataModel();

    /// Selects the variables of the analysis by column. Ignores columns that do not exist. If none
    /// is left, the analysis is empty.
    void UpdateAnalysMetadata(const std::vector<int>& variables);
    /// Selects the variables of the analysis by column and sets a measurement level for each; a
    /// negative level keeps the variable's own. An empty `levels` keeps all levels. Ignores columns
    /// that do not exist.
    void UpdateAnalysMetadata(const std::vector<int>& variables,
                              const std::vector<MeasurementLevel>& levels);
    /// Selects the variables of the analysis by name, in UTF-8 if `fromUTF8`, otherwise in the
    /// host's encoding. Ignores names that do not exist.
    void UpdateAnalysMetadata(const std::vector<std::string>& names, bool fromUTF8);
    /// Selects the variables of the analysis by name and sets a measurement level for each; a
    /// negative level keeps the variable's own. An empty `levels` keeps all levels. Names are in
    /// UTF-8 if `fromUTF8`, otherwise in the host's encoding; those that do not exist are ignored.
    void UpdateAnalysMetadata(const std::vector<std::string>& names,
                              const std::vector<MeasurementLevel>& levels, bool fromUTF8);

    /// The fields of the analysis if it has any, otherwise those of the dictionary. Valid until the
    /// next update.
    const CFMetaData& getMetaData() const;
    /// The description that getMetaData returns, as text (XML, UTF-8). Valid until the next update.
    const std::string& getDataModel() const;
    /// The columns of the analysis, in order; -1 is $casecount. Empty if there is no analysis.
    const std::vector<int>& getAnalysVars() const;
    /// The borrowed source.
    const VEXA_DataSource& getDataSource() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
