#pragma once

#include "MetadataExport.h"

/// Functions that the metadata library calls in its host.
class METADATA_API CFHostingCallback
{
public:
    virtual ~CFHostingCallback() = default;
    /// The host's locale, for example "en_US". The host owns the text, which stays valid until
    /// the process ends. Any thread.
    virtual const char* locale() const = 0;
};

/// Initialises the library. Call initialize once per process, before anything else.
class METADATA_API CFEntry
{
public:
    /// Sets the callback. It is borrowed and must live until the process ends.
    static void initialize(CFHostingCallback* callback);
    /// The callback; null before initialize.
    static CFHostingCallback* callback();
    /// The number of calls of initialize.
    static int initializations();
};
