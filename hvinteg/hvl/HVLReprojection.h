#pragma once

#include <string>

#include "hvl/HVLFunction.h"

/// Moves shapes from one coordinate system to another. A system is told by its name, by its
/// well-known id, or by both; what is not told is the engine's to find.
class HVINTEG_EXPORT HVLReprojection : public HVLFunction
{
public:
    explicit HVLReprojection(JNIHvlProgram* program);
    HVLReprojection(const HVLReprojection& other);
    HVLReprojection& operator=(const HVLReprojection& other);
    ~HVLReprojection() override;

    /// The system that the shapes stand in.
    void SetOriCoorSystem(const std::string& csName);
    void SetOriCoorSystem(int wkid);
    /// The system that they are moved to.
    void SetDesCoorSystem(const std::string& csName);
    void SetDesCoorSystem(int wkid);
    /// The transformation between the datums of the two; it goes with a target system only.
    void SetTransMethodsName(const std::string& name);
    /// The one field to move; without it all geospatial fields are moved.
    void SetProjectionFieldName(const std::string& name);

    bool GenerateHVL() override;

private:
    // -1 where none was set.
    int _sourceWkid = -1;
    int _destinationWkid = -1;
    std::string _sourceName;
    std::string _destinationName;
    std::string _transformation;
    std::string _field;
};
