#include "tcm/SeriesNames.h"

#include <algorithm>
#include <limits>

#include "CFMetaData.h"
#include "bridge/JNITargetMap.h"
#include "support/Conversions.h"
#include "support/ZipReader.h"
#include "tcm/ModelFile.h"

namespace {

constexpr const char* kMetricField = "metricField";

/// Whether two texts are the same value of a field: 07 and 7 are one integer and two texts.
bool areSame(CFField::StorageType storage, const std::string& label, const std::string& text)
{
    if (storage == CFField::String)
        return label == text;
    if (storage == CFField::Integer)
        return String2Integer(label) == String2Integer(text);
    return String2Double(label) == String2Double(text);
}

/// Whether areSame tells values of a field apart. It reads only the first number of a date, and no
/// integer beyond the limits of int.
bool isExact(CFField::StorageType storage, const std::string& text)
{
    if (storage != CFField::Integer)
        return storage == CFField::String || storage == CFField::Real;
    const int number = String2Integer(text);
    return number != std::numeric_limits<int>::min() && number != std::numeric_limits<int>::max();
}

/// Adds the code of the first value that matches. A value without a code does not match. Where the
/// comparison is too coarse, a value of the same text has precedence.
bool addCode(const CFField& field, CFField::StorageType storage, const std::string& text,
             std::vector<std::string>& codes)
{
    const std::vector<CFValue>& values = field.GetValues();
    const auto firstOf = [&](CFField::StorageType compared) {
        return std::find_if(values.begin(), values.end(), [&](const CFValue& value) {
            return value.GetDatum().IsInteger() && areSame(compared, value.GetLabel(), text);
        });
    };
    auto found = isExact(storage, text) ? values.end() : firstOf(CFField::String);
    if (found == values.end())
        found = firstOf(storage);
    if (found == values.end())
        return false;
    codes.push_back(std::to_string(found->GetDatum().GetInteger()));
    return true;
}

} // namespace

std::string BuildSeriesIDStr(const std::vector<std::string>& codes)
{
    std::string id;
    for (const std::string& code : codes)
        id += (&code == &codes.front() ? "" : "-") + code;
    return id;
}

bool EncodeSeriesName(const std::vector<std::string>& names,
                      const std::vector<std::string>& dimFields, const CFMetaData& metadata,
                      std::string& seriesId)
{
    if (names.size() != dimFields.size() + 1)
        return false;
    std::vector<std::string> codes;
    for (std::size_t i = 0; i < dimFields.size(); ++i) {
        const CFField* const field = metadata.GetField(dimFields[i]);
        const CFField* const base = field == nullptr ? nullptr : field->GetBaseField();
        if (base == nullptr || !addCode(*field, base->GetStorage(), names[i], codes))
            return false;
    }
    const CFField* const metrics = metadata.GetField(kMetricField);
    if (metrics == nullptr || !addCode(*metrics, CFField::String, names.back(), codes))
        return false;
    seriesId = BuildSeriesIDStr(codes);
    return true;
}

bool IsTargetSeries(const std::string& modelPath, const std::string& metricName,
                    const std::vector<std::string>& dimFields,
                    const std::vector<std::string>& dimValues, bool& isTarget)
{
    ZipReader model(modelPath);
    std::string network;
    if (!readEntry(model, kNetworkEntry, network))
        return false;
    std::vector<std::string> names = dimValues;
    names.push_back(metricName);
    CFMetaData metadata;
    std::string seriesId;
    if (!GetMetaData(modelPath, metadata) ||
        !EncodeSeriesName(names, dimFields, metadata, seriesId))
        return false;
    isTarget = JNITargetMap(network).IsTarget(seriesId);
    return true;
}
