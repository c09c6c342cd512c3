#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class CFHostingCallback;

/// The host's application settings, one object for the process. All texts are UTF-8.
///
/// update() reads the settings anew: the locale from LC_ALL, LC_MESSAGES or LANG, the temporary
/// directory from VEXA_TEMP, TMPDIR or the system's default, the thread limit from VEXA_THREADS or
/// the number of processors. A host program may set them instead; what it sets survives update().
class HOST_API CFAppHost
{
public:
    CFAppHost(const CFAppHost&) = delete;
    CFAppHost& operator=(const CFAppHost&) = delete;

    static void update();
    static CFAppHost* getInstance();

    /// As in "en_US".
    const std::string& getLocale() const;
    /// The host's temporary directory in the host's spelling; may lack a trailing separator.
    const std::string& getTempDirectory() const;
    /// How many threads a computation may use, 1 or more.
    int getMaxCompThreads() const;
    /// The hosting callback for CFEntry::initialize. The host keeps it.
    CFHostingCallback* createCFHostingCalbck();

    void setLocale(const std::string& locale);
    void setTempDirectory(const std::string& directory);
    void setMaxCompThreads(int threads);

private:
    CFAppHost();
    ~CFAppHost();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
