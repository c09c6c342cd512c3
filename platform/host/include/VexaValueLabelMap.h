#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"
#include "Obs.h"

/// The labels of a variable's values, in ascending order of the values. Copies share what they hold
/// until one of them is changed, and each has its own place in the iteration.
class HOST_API VEXA_ValueLabelMap
{
public:
    /// `width` as in VEXA_Variable::GetType: 0 for numbers, else bytes of text.
    explicit VEXA_ValueLabelMap(int width = 0);

    /// Sets the label of a value, in the host's encoding; a value that has one gets the new one.
    void SetLabel(double value, std::string label);
    void SetLabel(const std::string& text, std::string label);

    bool empty() const { return _data->entries.empty(); }
    std::size_t size() const { return _data->entries.size(); }
    /// Null if the value has no label. Trailing blanks of a text do not count.
    const char* GetLabel(double value) const;
    const char* GetLabel(const std::string& text) const;

    /// Starts the iteration over; the next pair, or false at the end. What the two point to lasts
    /// as long as this map is not changed.
    void Reset() { _next = 0; }
    bool GetNextPair(const OBS*& value, const char*& label);

private:
    /// One value, in as many units as the width takes, and its label.
    struct Entry
    {
        std::vector<OBS> value;
        std::string label;
    };
    /// What copies of a map share until one of them changes; the entries are in order of their
    /// values.
    struct Data
    {
        int width = 0;
        std::vector<Entry> entries;
    };
    const Entry* find(const std::vector<OBS>& value) const;
    void set(std::vector<OBS> value, std::string label);
    bool isLess(const std::vector<OBS>& left, const std::vector<OBS>& right) const;

    std::shared_ptr<Data> _data;
    std::size_t _next = 0;
};
