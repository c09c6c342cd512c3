#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class CFHostingCallback;

/// The host's application settings, one object for the process. All texts are UTF-8.
///
/// update() reads the settings anew: the locale from LC_ALL, LC_MESSAGES or LANG, that of dates and
/// times from LC_ALL, LC_TIME or LANG, the temporary directory from VEXA_TEMP, the thread limit
/// from VEXA_THREADS or the number of processors. A host program may set them instead; what it sets
/// survives update(). An empty text, or a thread limit below 1, takes such a setting back.
///
/// Where nobody names a temporary directory, the process has one of its own, in TMPDIR or the
/// system's, for its owner alone: two processes never share scratch files. It is made at first use,
/// and goes when the process ends by exit; a host program that ends in another way calls
/// removeTempDirectory().
///
/// All operations may be called from any thread; references stay good for the process.
class HOST_API CFAppHost
{
public:
    CFAppHost(const CFAppHost&) = delete;
    CFAppHost& operator=(const CFAppHost&) = delete;

    /// Reads the settings anew; then the object that has them.
    static void update();
    static CFAppHost* getInstance();

    /// As in "en_US", which it is where none is set.
    const std::string& getLocale() const;
    /// The one that dates and times are written in where they are texts.
    const std::string& getTimeLocale() const;
    /// The host's temporary directory in the host's spelling; may lack a trailing separator.
    const std::string& getTempDirectory() const;
    /// How many threads a computation may use, 1 or more.
    int getMaxCompThreads() const;
    /// The hosting callback for CFEntry::initialize. The host keeps it.
    CFHostingCallback* createCFHostingCalbck();

    void setLocale(const std::string& locale);
    void setTimeLocale(const std::string& locale);
    void setTempDirectory(const std::string& directory);
    void setMaxCompThreads(int threads);

    /// Removes the process's own temporary directory with all that is in it; a named one stays.
    /// False if something could not be removed. For the end of a host program, when no job runs.
    static bool removeTempDirectory();

private:
    CFAppHost();
    ~CFAppHost();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
