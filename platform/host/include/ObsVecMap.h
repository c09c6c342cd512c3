#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "HostExport.h"
#include "Obs.h"
#include "VexaFormat.h"

/// Numbers by combinations of values, such as the categories of some variables. A plain value.
class HOST_API ObsVecMap
{
public:
    /// The units of one value: one for a number, as many as it takes for a text.
    using Value = std::vector<OBS>;
    /// One value of each variable.
    using Key = std::vector<Value>;
    using Entry = std::pair<Key, double>;

    /// Sets the number of a combination; one that has a number gets the new one. Values are equal
    /// if their bytes are.
    void Set(Key key, double number);
    /// Null if the combination has no number. Lasts until the map is changed.
    const double* Find(const Key& key) const;
    std::size_t size() const { return _entries.size(); }

    /// The entries in the order of their keys, value by value: numbers by size, texts by their
    /// bytes. The formats tell which is which; a value without one is a number.
    std::vector<Entry> Sort(const std::vector<VEXA_Format>& formats) const;

private:
    /// Orders keys by their bytes, since a unit may hold a number or a piece of a text.
    struct ByBytes
    {
        bool operator()(const Key& left, const Key& right) const;
    };
    std::map<Key, double, ByBytes> _entries;
};
