#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "CFField.h"
#include "hvl/HVLFunction.h"

/// Changes what the data model says of fields, on the way of the records through a job; the values
/// themselves stay as they are.
///
/// Each Update names a field and says one thing of it. A further one for the same field adds to
/// what was said, and replaces it where both are of one kind. The fields stand in the order of the
/// bytes of their names. Names and texts are UTF-8.
///
///     HVLUpdateDataModel update(&program);
///     update.Update("zip", std::string("Postal code"));
///     update.Update("zip", CFField::Nominal);
///     update.AddPredFunction(&read);
class HVINTEG_EXPORT HVLUpdateDataModel : public HVLFunction
{
public:
    explicit HVLUpdateDataModel(JNIHvlProgram* program);
    /// A copy shares what was said of the fields so far: a later Update of such a field shows in
    /// both, that of another field in one of them.
    HVLUpdateDataModel(const HVLUpdateDataModel& other);
    HVLUpdateDataModel& operator=(const HVLUpdateDataModel& other);
    ~HVLUpdateDataModel() override;

    /// The label that output shows in place of the name.
    void Update(const std::string& field, const std::string& label);
    /// A value of these three that has no word leaves the field with its name alone.
    void Update(const std::string& field, CFField::FieldType type);
    void Update(const std::string& field, CFField::StorageType storage);
    void Update(const std::string& field, CFField::RoleType role);
    /// Labels of values; an empty list says nothing.
    void Update(const std::string& field, const std::vector<CFValue>& valueLabels);
    /// Values that count as missing. One that is not valid, or has neither range nor values, says
    /// nothing. Limits that are not numbers are left out.
    void Update(const std::string& field, const CFMissingValues& missingValues);
    /// Makes the field geospatial: the kind of its shapes, how many numbers make a point (left out
    /// unless above 0), the well-known id of the coordinate system (left out unless above 0, with
    /// its name and kind), its well-known text (left out if empty), and two opposite corners of the
    /// rectangle that the shapes lie in. A type that has no word leaves the field as it was.
    void Update(const std::string& field, CFGeo::Type type, int coordinates);
    void Update(const std::string& field, CFGeo::Type type, int coordinates, int wkid,
                const std::string& csname, bool isProjected, const std::string& wkt);
    void Update(const std::string& field, CFGeo::Type type, int coordinates, int wkid,
                const std::string& csname, bool isProjected, const std::string& wkt,
                double leftUpperX, double leftUpperY, double rightLowerX, double rightLowerY);

    /// How many fields something was said of.
    int SizeOfUpdate() const { return static_cast<int>(_fields.size()); }
    /// A mark that callers set and ask for; the job does not depend on it.
    void FieldSensitive(bool isFieldSensitive) { _isFieldSensitive = isFieldSensitive; }
    bool IsFieldSensitive() const { return _isFieldSensitive; }

    bool GenerateHVL() override;

private:
    JNIJSONObject& entryOf(const std::string& field);
    void updateWord(const std::string& field, const char* key, const char* word);
    void updateGeo(const std::string& field, const CFGeo& geo);

    bool _isFieldSensitive = false;
    /// Shared by copies. The Java objects last until `cleanJRef`.
    std::map<std::string, std::shared_ptr<JNIJSONObject>> _fields;
};
