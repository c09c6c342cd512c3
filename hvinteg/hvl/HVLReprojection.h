#pragma once

#include <string>

#include "hvl/HVLFunction.h"

/// Converts shapes from one coordinate system to another. A system is given by name, by well-known
/// id or both. The engine determines what is not given.
class HVINTEG_EXPORT HVLReprojection : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLReprojection(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLReprojection(const HVLReprojection& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLReprojection& operator=(const HVLReprojection& other);
    ~HVLReprojection() override;

    /// Sets the system of the input by name.
    void SetOriCoorSystem(const std::string& csName);
    /// Sets the system of the input by well-known id; -1 for none.
    void SetOriCoorSystem(int wkid);
    /// Sets the target system by name.
    void SetDesCoorSystem(const std::string& csName);
    /// Sets the target system by well-known id; -1 for none.
    void SetDesCoorSystem(int wkid);
    /// Sets the transformation between the datums of both systems; ignored without a target system.
    void SetTransMethodsName(const std::string& name);
    /// Restricts the conversion to one field. By default all geospatial fields are converted.
    void SetProjectionFieldName(const std::string& name);

    /// Creates the input and this step; see HVLFunction::GenerateHVL.
    bool GenerateHVL() override;

private:
    // -1 if not set.
    int _sourceWkid = -1;
    int _destinationWkid = -1;
    std::string _sourceName;
    std::string _destinationName;
    std::string _transformation;
    std::string _field;
};
