#include "datafile/FaultParts.h"

namespace datafile {
namespace {

std::string jobPlaceText(const FaultParts& parts)
{
    return (parts.step.empty() ? "" : "step " + parts.step + ", ") + "line " +
           std::to_string(parts.inJob.line) + ", column " + std::to_string(parts.inJob.column) +
           ": ";
}

std::string filePlaceText(const FaultParts& parts)
{
    std::string text = parts.file;
    for (const std::uint64_t number : {parts.inFile.line, parts.inFile.column})
        if (number > 0)
            text += ":" + std::to_string(number);
    return text + ": ";
}

std::string recordText(const FaultParts& parts)
{
    const std::string record = "record " + std::to_string(parts.record) + ": ";
    const std::string iterator = "the row iterator \"" + parts.iterator + "\"";
    return parts.field.empty() ? iterator + " failed at " + record
                               : "field \"" + parts.field + "\" of " + iterator + ", " + record;
}

} // namespace

std::string sentenceOf(const FaultParts& parts)
{
    if (parts.inJob.line > 0)
        return jobPlaceText(parts) + parts.what;
    std::string text = parts.step.empty() ? "" : parts.step + ": ";
    if (parts.group > 0)
        text += "group " + std::to_string(parts.group) + ": ";
    if (!parts.file.empty())
        text += filePlaceText(parts);
    else if (!parts.iterator.empty() && parts.record > 0)
        text += recordText(parts);
    else if (!parts.setting.empty())
        text += "the setting \"" + parts.setting + "\" ";
    return text + parts.what;
}

} // namespace datafile
