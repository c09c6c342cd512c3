#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

/// A string table: translates the keys that procedures use for their output. Any thread.
class HOST_API FacSTDictionary
{
public:
    /// Loads the host's own table, in the host's language.
    FacSTDictionary();
    /// Loads a table file, a JSON object of keys and texts. Throws ErrorText if it cannot be read.
    explicit FacSTDictionary(const std::string& file);
    ~FacSTDictionary();
    FacSTDictionary(const FacSTDictionary&) = delete;
    FacSTDictionary& operator=(const FacSTDictionary&) = delete;

    /// The text for a key, UTF-8; the key itself if the table does not contain it.
    std::string LookUp(const std::string& key) const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
