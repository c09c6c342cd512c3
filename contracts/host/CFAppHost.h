#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class CFHostingCallback;

/// The host's application settings; one object per process. All texts are UTF-8.
///
/// update() reads the settings from the environment: the locale from LC_ALL, LC_MESSAGES or LANG;
/// the locale of dates and times from LC_ALL, LC_TIME or LANG; the temporary directory from
/// VEXA_TEMP; the thread limit from VEXA_THREADS or the number of processors. Values that a host
/// program sets take precedence and survive update().
///
/// If no temporary directory is set, the process creates its own in TMPDIR or the system's
/// directory, accessible to its owner only, so that processes never share scratch files. It is
/// created at first use and removed at exit. A host program that ends in another way calls
/// removeTempDirectory().
///
/// Any thread may call all operations. References to texts stay valid until the process ends.
class HOST_API CFAppHost
{
public:
    CFAppHost(const CFAppHost&) = delete;
    CFAppHost& operator=(const CFAppHost&) = delete;

    /// Reads the settings from the environment.
    static void update();
    /// The object of the process.
    static CFAppHost* getInstance();

    /// The locale of texts, for example "en_US", which is also the default.
    const std::string& getLocale() const;
    /// The locale of dates and times in texts.
    const std::string& getTimeLocale() const;
    /// The temporary directory in the host's spelling. It may lack a trailing separator.
    const std::string& getTempDirectory() const;
    /// The number of threads that a computation may use, at least 1.
    int getMaxCompThreads() const;
    /// The hosting callback for CFEntry::initialize. Owned by the host.
    CFHostingCallback* createCFHostingCalbck();

    /// Sets the locale of texts. An empty text restores the environment's.
    void setLocale(const std::string& locale);
    /// Sets the locale of dates and times. An empty text restores the environment's.
    void setTimeLocale(const std::string& locale);
    /// Sets the temporary directory, in the host's spelling. An empty text restores the
    /// environment's.
    void setTempDirectory(const std::string& directory);
    /// Sets the thread limit. A number below 1 restores the environment's.
    void setMaxCompThreads(int threads);

    /// Removes the process's own temporary directory and its content; does not remove a directory
    /// that was set. Returns false if something could not be removed. Call it at the end of a host
    /// program, when no job runs.
    static bool removeTempDirectory();

private:
    CFAppHost();
    ~CFAppHost();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
