#pragma once

#include <set>
#include <string>

#include "ErrorMonitor.h"

/// Tells what becomes of single values of a dataset while its cases are read, and of integers that
/// the host's numbers cannot hold, once for each variable, what may be done about it.
class DatasetMonitor : public VexaErrorMonitor
{
public:
    /// `offersDirect`: whether the command can have the engine read the file.
    explicit DatasetMonitor(bool offersDirect)
        : VexaErrorMonitor(Reporter), _offersDirect(offersDirect)
    {
    }

    void Report(const std::string& text) override;

private:
    bool _offersDirect;
    std::set<std::string> _integers; ///< what was told of them: cases may be read more than once
};
