#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "CFMetaData.h"
#include "DataModelText.h"

namespace {

/// A rule that a document breaks is a finding.
void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// What was read is written so that it reads back to the same fields and is written the same.
void roundTrip(const CFMetaData& model)
{
    std::string xml;
    model.ExportXMLDoc(xml);
    const CFMetaData again(xml);
    require(again.FieldCount() == model.FieldCount());
    for (std::size_t i = 0; i < model.FieldCount(); ++i) {
        const CFField& field = *model.GetField(i);
        require(field == *again.GetField(i));
        require(again.GetFieldIndex(field.GetName()) == static_cast<int>(i));
    }
    std::string rewritten;
    again.ExportXMLDoc(rewritten);
    require(rewritten == xml);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    require(unescapeText(escapeText(text)) == text);
    // Any bytes may be the label of a field.
    CFMetaData labelled;
    CFField field("label", CFField::Nominal, CFField::String);
    field.SetLabel(text);
    field.SetValues({CFValue(CFDatum(text), text)});
    labelled.AppendField(field);
    roundTrip(labelled);
    try {
        const CFMetaData model(text);
        roundTrip(model);
    } catch (const CFMetaDataError&) { // what most texts come to
    }
    return 0;
}
