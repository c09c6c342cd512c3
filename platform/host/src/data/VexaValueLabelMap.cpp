#include "VexaValueLabelMap.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "data/CaseText.h"

VEXA_ValueLabelMap::VEXA_ValueLabelMap(int width) : _data(std::make_shared<Data>(Data{width, {}}))
{
}

bool VEXA_ValueLabelMap::isLess(const std::vector<OBS>& left, const std::vector<OBS>& right) const
{
    if (_data->width == 0) {
        // NaN sorts last, so that the order is total.
        const double a = left.front().number;
        const double b = right.front().number;
        return a < b || (std::isnan(b) && !std::isnan(a));
    }
    const int order =
        std::memcmp(left.data(), right.data(), std::min(left.size(), right.size()) * sizeof(OBS));
    return order < 0 || (order == 0 && left.size() < right.size());
}

const VEXA_ValueLabelMap::Entry* VEXA_ValueLabelMap::find(const std::vector<OBS>& value) const
{
    const auto place = std::lower_bound(
        _data->entries.begin(), _data->entries.end(), value,
        [&](const Entry& entry, const std::vector<OBS>& key) { return isLess(entry.value, key); });
    return place != _data->entries.end() && !isLess(value, place->value) ? &*place : nullptr;
}

void VEXA_ValueLabelMap::set(std::vector<OBS> value, std::string label)
{
    // Copy only when shared: a copy for each of many thousand labels would take minutes.
    if (_data.use_count() > 1)
        _data = std::make_shared<Data>(*_data);
    std::vector<Entry>& entries = _data->entries;
    const auto place = std::lower_bound(
        entries.begin(), entries.end(), value,
        [&](const Entry& entry, const std::vector<OBS>& key) { return isLess(entry.value, key); });
    if (place != entries.end() && !isLess(value, place->value))
        place->label = std::move(label);
    else
        entries.insert(place, {std::move(value), std::move(label)});
}

void VEXA_ValueLabelMap::SetLabel(double value, std::string label)
{
    OBS unit{};
    unit.number = value;
    set({unit}, std::move(label));
}

void VEXA_ValueLabelMap::SetLabel(const std::string& text, std::string label)
{
    set(unitsOfText(text, _data->width), std::move(label));
}

const char* VEXA_ValueLabelMap::GetLabel(double value) const
{
    OBS unit{};
    unit.number = value;
    const Entry* entry = _data->width == 0 ? find({unit}) : nullptr;
    return entry ? entry->label.c_str() : nullptr;
}

const char* VEXA_ValueLabelMap::GetLabel(const std::string& text) const
{
    const std::size_t length = trimmedLength(text);
    if (_data->width == 0 || length > unitsOfWidth(_data->width) * sizeof(OBS))
        return nullptr;
    const Entry* entry = find(unitsOfText(text, _data->width));
    return entry ? entry->label.c_str() : nullptr;
}

bool VEXA_ValueLabelMap::GetNextPair(const OBS*& value, const char*& label)
{
    if (_next >= _data->entries.size())
        return false;
    const Entry& entry = _data->entries[_next++];
    value = entry.value.data();
    label = entry.label.c_str();
    return true;
}
