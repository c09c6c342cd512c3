#pragma once

#include "MetadataExport.h"

/// What the metadata library asks of its host.
class METADATA_API CFHostingCallback
{
public:
    virtual ~CFHostingCallback() = default;
    /// The host's locale, as in "en_US".
    virtual const char* locale() const = 0;
};

/// The library's entry: initialize once a process, before anything else.
class METADATA_API CFEntry
{
public:
    /// The callback is borrowed and must live as long as the process.
    static void initialize(CFHostingCallback* callback);
    /// Null before initialize.
    static CFHostingCallback* callback();
    /// How often initialize was called.
    static int initializations();
};
