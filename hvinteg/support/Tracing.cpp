#include "support/Tracing.h"

#include <memory>

#include "support/HVStatTracer.h"

namespace {

/// Replaces the last file of the same label and name: the trace shows the latest state.
void traceFile(const char* extension, const std::string& text, const std::string& label,
               const std::string& name)
{
    HVStatTracer* const tracer = HVTracer();
    tracer->write(text, tracer->newValidFileName(extension, label, name, false));
}

std::string (*jobTextFilter)(const std::string&) = nullptr;

} // namespace

HVStatTracer* HVTracer()
{
    // Never destroyed: the log accepts lines until the process ends.
    static HVStatTracer* const tracer = std::make_unique<HVStatTracer>().release();
    return tracer;
}

void WriteLog(const std::string& line)
{
    HVTracer()->addLog(line);
}

void setJobTextFilter(std::string (*filter)(const std::string& jobText))
{
    jobTextFilter = filter;
}

void traceHVLFile(const std::string& text, const std::string& label, const std::string& name)
{
    const bool isFiltered = jobTextFilter != nullptr && HVTracer()->canTrace();
    traceFile("hvl", isFiltered ? jobTextFilter(text) : text, label, name);
}

void traceJSONFile(const std::string& text, const std::string& label, const std::string& name)
{
    traceFile("json", text, label, name);
}

void traceXMLFile(const std::string& text, const std::string& label, const std::string& name)
{
    traceFile("xml", text, label, name);
}
