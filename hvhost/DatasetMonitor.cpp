#include "DatasetMonitor.h"

void DatasetMonitor::Report(const std::string& text)
{
    if (text.find("the host's numbers cannot hold") == std::string::npos)
        VexaErrorMonitor::Report(text);
    else if (_integers.insert(text).second)
        VexaErrorMonitor::Report(
            text + (_offersDirect ? "; with --direct a job reads such integers as they are" : ""));
}
