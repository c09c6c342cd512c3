#include "hvhost/input/KeptMissing.h"

#include <fstream>
#include <utility>

#include "CFMetaData.h"
#include "UserCaseFile.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/ReadableFile.h"
#include "hvl/HVLUpdateDataModel.h"
#include "support/HVSimpleFile.h"

namespace {

bool declares(const CFMissingValues& missing)
{
    return missing.IsValid() && (!missing.GetRange().IsEmpty() || !missing.GetValues().empty());
}

} // namespace

CFMissingValues possibleMissing(const CFField& field)
{
    const CFMissingValues& missing = field.GetMissingValues();
    std::vector<CFValue> values = missing.GetValues();
    if (field.GetStorage() == CFField::Integer)
        std::erase_if(values, [](const CFValue& value) { return value.GetDatum().IsReal(); });
    return {missing.GetRange(), std::move(values), missing.IsNullMissing(),
            missing.IsWhiteSpMissing()};
}

KeptMissing::KeptMissing(const CFMetaData& model)
{
    std::vector<CFField> fields;
    fields.reserve(model.FieldCount());
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        fields.push_back(*model.GetField(i));
    take(fields);
}

KeptMissing::KeptMissing(const UserInputCaseFile& file)
{
    const int columns = file.DataSource()->ColumnCount();
    std::vector<CFField> fields;
    fields.reserve(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column)
        fields.push_back(file.Field(column));
    take(fields);
}

KeptMissing::~KeptMissing() = default;

void KeptMissing::take(const std::vector<CFField>& fields)
{
    CFMetaData model;
    for (CFField field : fields) {
        if (declares(field.GetMissingValues()))
            _declared.push_back(field);
        field.SetMissingValues({});
        model.AppendField(field);
    }
    if (_declared.empty())
        return;
    _document = std::make_unique<HVSimpleFile>("fields.xml", false, true);
    _path = nativePath(_document->GetGenericPath());
    std::string xml;
    model.ExportXMLDoc(xml);
    std::ofstream file(_path, std::ios::binary);
    if (!(file << xml).flush())
        throw CommandFault(ExitStatus::JobFailed, _path + ": the data model cannot be written");
}

void KeptMissing::redeclare(HVLUpdateDataModel& update) const
{
    for (const CFField& field : _declared)
        update.Update(field.GetName(), possibleMissing(field));
}
