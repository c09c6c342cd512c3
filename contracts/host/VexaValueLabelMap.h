#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"
#include "Obs.h"

/// The labels of a variable's values, sorted by value. Copies share the labels until one of them
/// changes; each has its own iteration.
class HOST_API VEXA_ValueLabelMap
{
public:
    /// `width` is 0 for numbers, otherwise the number of bytes of a text, as in
    /// VEXA_Variable::GetType.
    explicit VEXA_ValueLabelMap(int width = 0);

    /// Sets the label of a number, in the host's encoding, and replaces an earlier one.
    void SetLabel(double value, std::string label);
    /// Sets the label of a text. Trailing blanks of the text are ignored.
    void SetLabel(const std::string& text, std::string label);

    /// Whether there are no labels.
    bool empty() const { return _data->entries.empty(); }
    /// The number of labels.
    std::size_t size() const { return _data->entries.size(); }
    /// The label of a number; null if it has none. Valid until this map changes.
    const char* GetLabel(double value) const;
    /// The label of a text; null if it has none. Trailing blanks of the text are ignored.
    const char* GetLabel(const std::string& text) const;

    /// Restarts the iteration.
    void Reset() { _next = 0; }
    /// Returns the next value and label. Returns false at the end. The pointers are valid until
    /// this map changes.
    bool GetNextPair(const OBS*& value, const char*& label);

private:
    /// One value, in as many units as the width takes, and its label.
    struct Entry
    {
        std::vector<OBS> value;
        std::string label;
    };
    /// Shared by copies until one changes. The entries are sorted by value.
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
