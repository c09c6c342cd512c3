#pragma once

#include <string>

#include "HostExport.h"

/// Receives problems with single values while cases are read, for example bytes that are invalid in
/// an encoding. Reading continues. Called on the thread that reads the cases.
class HOST_API ErrorMonitor
{
public:
    virtual ~ErrorMonitor();
    /// Reports a problem: one sentence with the names of variable and value, UTF-8.
    virtual void Report(const std::string& text) = 0;
    /// The number of reports so far.
    virtual long long ErrorCount() const = 0;
};

/// Writes a line to the host's output as a warning.
HOST_API void Reporter(const std::string& text);

/// Counts reports and passes only the first few to a function. Finish, or otherwise the destructor,
/// reports the total number.
class HOST_API VexaErrorMonitor : public ErrorMonitor
{
public:
    /// `reporter` must outlive the monitor.
    explicit VexaErrorMonitor(void (*reporter)(const std::string& text));
    VexaErrorMonitor(const VexaErrorMonitor&) = delete;
    VexaErrorMonitor& operator=(const VexaErrorMonitor&) = delete;
    ~VexaErrorMonitor() override;

    void Report(const std::string& text) override;
    long long ErrorCount() const override { return _count; }
    /// Reports the total number. Does nothing if all reports were passed on, or if there were none
    /// since the last call.
    void Finish();

private:
    void (*_reporter)(const std::string& text);
    long long _count = 0;
    long long _told = 0; ///< reports that were passed on or included in a total
};
