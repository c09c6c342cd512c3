#pragma once

#include <string>

#include "hvl/HVLFunction.h"

class HVStatContainer;

/// Lets the engine write the data model of its input records to a container of the job.
///
///     HVLDataModelBuilder builder(&program);
///     builder.SetOutputContainer(container);
///     builder.AddPredFunction(&read);
class HVINTEG_EXPORT HVLDataModelBuilder : public HVLFunction
{
public:
    explicit HVLDataModelBuilder(JNIHvlProgram* program);
    HVLDataModelBuilder(const HVLDataModelBuilder& other);
    HVLDataModelBuilder& operator=(const HVLDataModelBuilder& other);
    ~HVLDataModelBuilder() override;

    /// Where the data model goes: the name that the job knows the container by, and its address in
    /// the engine's form.
    void SetOutputContainer(const std::string& name, const std::string& uri);
    /// The same of a container, which is asked at once and not kept.
    void SetOutputContainer(const HVStatContainer& container);
    /// Whether the engine brings the data model into its normal form first; it does not unless
    /// told.
    void SetNormalizeDataModel(bool isNormalized) { _isNormalized = isNormalized; }

    bool GenerateHVL() override;

private:
    std::string _containerName;
    std::string _containerUri;
    bool _isNormalized = false;
};
