#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "HostExport.h"
#include "Obs.h"
#include "VexaFormat.h"

/// Maps combinations of values, for example categories of several variables, to numbers. A value
/// type.
class HOST_API ObsVecMap
{
public:
    /// The units of one value: one for a number, as many as needed for a text.
    using Value = std::vector<OBS>;
    /// One value for each variable.
    using Key = std::vector<Value>;
    /// A key and the number that belongs to it.
    using Entry = std::pair<Key, double>;

    /// Sets the number of a combination and replaces an earlier one. Values are equal if their
    /// bytes are equal.
    void Set(Key key, double number);
    /// The number of a combination; null if it has none. Valid until the map changes.
    const double* Find(const Key& key) const;
    /// The number of combinations.
    std::size_t size() const { return _entries.size(); }

    /// The entries sorted by their keys, value by value: numbers by size, texts by their bytes.
    /// `formats` distinguishes them by index; a value without a format is a number.
    std::vector<Entry> Sort(const std::vector<VEXA_Format>& formats) const;

private:
    /// Orders keys by their bytes, because a unit may hold a number or a part of a text.
    struct ByBytes
    {
        bool operator()(const Key& left, const Key& right) const;
    };
    std::map<Key, double, ByBytes> _entries;
};
