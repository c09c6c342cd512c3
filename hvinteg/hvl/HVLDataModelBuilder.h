#pragma once

#include <string>

#include "hvl/HVLFunction.h"

class HVStatContainer;

/// Makes the engine write the data model of the input records to a container of the job.
///
///     HVLDataModelBuilder builder(&program);
///     builder.SetOutputContainer(container);
///     builder.AddPredFunction(&read);
class HVINTEG_EXPORT HVLDataModelBuilder : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLDataModelBuilder(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLDataModelBuilder(const HVLDataModelBuilder& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLDataModelBuilder& operator=(const HVLDataModelBuilder& other);
    ~HVLDataModelBuilder() override;

    /// Sets the container by its name in the job and its address in the engine's form.
    void SetOutputContainer(const std::string& name, const std::string& uri);
    /// Sets the container by its name and path, which are read now. The container is not kept.
    void SetOutputContainer(const HVStatContainer& container);
    /// Whether the engine normalises the data model first; false by default.
    void SetNormalizeDataModel(bool isNormalized) { _isNormalized = isNormalized; }

    /// Creates the input and this step; see HVLFunction::GenerateHVL.
    bool GenerateHVL() override;

private:
    std::string _containerName;
    std::string _containerUri;
    bool _isNormalized = false;
};
