#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

/// A string table: the words for the keys that procedures name their output by. Any thread.
class HOST_API FacSTDictionary
{
public:
    /// The host's own table, in the host's language.
    FacSTDictionary();
    /// A table file, a JSON object of keys and words. Throws ErrorText for one that cannot be read.
    explicit FacSTDictionary(const std::string& file);
    ~FacSTDictionary();
    FacSTDictionary(const FacSTDictionary&) = delete;
    FacSTDictionary& operator=(const FacSTDictionary&) = delete;

    /// The words for a key, UTF-8; the key itself where the table has none.
    std::string LookUp(const std::string& key) const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
