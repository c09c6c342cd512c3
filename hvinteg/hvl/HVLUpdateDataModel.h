#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "CFField.h"
#include "hvl/HVLFunction.h"

/// Changes the description of fields in the data model. The values of the records are unchanged.
///
/// Each Update sets one property of a field. It replaces an earlier value of the same property and
/// keeps the others. The output order of the fields is by the bytes of their names. Names and texts
/// are UTF-8.
///
///     HVLUpdateDataModel update(&program);
///     update.Update("zip", std::string("Postal code"));
///     update.Update("zip", CFField::Nominal);
///     update.AddPredFunction(&read);
class HVINTEG_EXPORT HVLUpdateDataModel : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLUpdateDataModel(JNIHvlProgram* program);
    /// Shares the properties set so far: later updates of those fields affect both objects. Updates
    /// of further fields affect one object.
    HVLUpdateDataModel(const HVLUpdateDataModel& other);
    /// Shares those of `other` instead.
    HVLUpdateDataModel& operator=(const HVLUpdateDataModel& other);
    ~HVLUpdateDataModel() override;

    /// Sets the label, which output shows instead of the name.
    void Update(const std::string& field, const std::string& label);
    /// Sets the measurement level. A value that has no word in the job language adds only the
    /// field's name.
    void Update(const std::string& field, CFField::FieldType type);
    /// Sets the storage. A value that has no word in the job language adds only the field's name.
    void Update(const std::string& field, CFField::StorageType storage);
    /// Sets the role. A value that has no word in the job language adds only the field's name.
    void Update(const std::string& field, CFField::RoleType role);
    /// Sets labels of values. An empty list is ignored.
    void Update(const std::string& field, const std::vector<CFValue>& valueLabels);
    /// Sets missing values. Ignored if they are invalid or contain neither a range nor values.
    /// Limits that are not numbers are left out.
    void Update(const std::string& field, const CFMissingValues& missingValues);
    /// Makes the field geospatial, with the kind of its shapes. `coordinates` is the count of
    /// numbers per point; it is left out unless above 0. A type that has no word in the job
    /// language adds only the field's name.
    void Update(const std::string& field, CFGeo::Type type, int coordinates);
    /// Makes the field geospatial, with the kind of its shapes and their coordinate system. `wkid`
    /// is the system's well-known id; id, name and kind are left out unless it is above 0. An empty
    /// `wkt` (well-known text) is left out. Type and coordinates are those of the first overload.
    void Update(const std::string& field, CFGeo::Type type, int coordinates, int wkid,
                const std::string& csname, bool isProjected, const std::string& wkt);
    /// Makes the field geospatial, with the kind of its shapes, their coordinate system, and two
    /// opposite corners of the rectangle that contains them, in the units of the system. The other
    /// arguments are those of the overloads without corners.
    void Update(const std::string& field, CFGeo::Type type, int coordinates, int wkid,
                const std::string& csname, bool isProjected, const std::string& wkt,
                double leftUpperX, double leftUpperY, double rightLowerX, double rightLowerY);

    /// Number of fields with updates.
    int SizeOfUpdate() const { return static_cast<int>(_fields.size()); }
    /// Sets a mark for callers. It does not affect the job.
    void FieldSensitive(bool isFieldSensitive) { _isFieldSensitive = isFieldSensitive; }
    /// The mark of FieldSensitive; false by default.
    bool IsFieldSensitive() const { return _isFieldSensitive; }

    /// Creates the input and this step; see HVLFunction::GenerateHVL.
    bool GenerateHVL() override;

private:
    HVINTEG_HIDDEN JNIJSONObject& entryOf(const std::string& field);
    HVINTEG_HIDDEN void updateWord(const std::string& field, const char* key, const char* word);
    HVINTEG_HIDDEN void updateGeo(const std::string& field, const CFGeo& geo);

    bool _isFieldSensitive = false;
    /// Shared by copies. The Java objects live until cleanJRef.
    std::map<std::string, std::shared_ptr<JNIJSONObject>> _fields;
};
