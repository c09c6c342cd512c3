#include "support/Tracing.h"

#include <memory>

#include "support/HVStatTracer.h"

namespace {

/// The next file of a label and name takes the place of the last one: a trace shows the latest
/// state.
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
    // Released on purpose: the log takes lines until the process is gone.
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
