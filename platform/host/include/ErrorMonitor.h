#pragma once

#include <string>

#include "HostExport.h"

/// Takes what goes wrong with single values while cases are read, such as a text that an encoding
/// cannot hold: the cases go on. On the thread that reads the cases.
class HOST_API ErrorMonitor
{
public:
    virtual ~ErrorMonitor();
    /// A sentence that names the variable and the value, UTF-8.
    virtual void Report(const std::string& text) = 0;
    /// How many reports there were.
    virtual long long ErrorCount() const = 0;
};

/// Puts a line into the host's output, as a warning.
HOST_API void Reporter(const std::string& text);

/// Counts, and hands the first few reports to a function; more would only bury them. Finish, or
/// else the destructor, tells how many there were in all.
class HOST_API VexaErrorMonitor : public ErrorMonitor
{
public:
    /// The function must live as long as the monitor.
    explicit VexaErrorMonitor(void (*reporter)(const std::string& text));
    VexaErrorMonitor(const VexaErrorMonitor&) = delete;
    VexaErrorMonitor& operator=(const VexaErrorMonitor&) = delete;
    ~VexaErrorMonitor() override;

    void Report(const std::string& text) override;
    long long ErrorCount() const override { return _count; }
    /// Nothing if all reports were handed on, or since the last call there were no more.
    void Finish();

private:
    void (*_reporter)(const std::string& text);
    long long _count = 0;
    long long _told = 0; ///< of all reports, so many are accounted for
};
