#pragma once

#include <string>

#include "support/HvintegExport.h"

class HVStatTracer;

/// Access to the tracer. Callers need not test whether tracing is on: while it is off, nothing is
/// written. Write failures are not reported. One thread at a time.

/// The tracer of the process, created at first use and never destroyed. The first call must not run
/// on two threads at once.
HVINTEG_EXPORT HVStatTracer* HVTracer();

/// Writes a line to the diagnostic log.
HVINTEG_EXPORT void WriteLog(const std::string& line);

/// Sets a function that changes each job text before it is traced, for example to remove passwords;
/// null for none. Traces that are written already keep their text. Must not run while a job text is
/// traced.
HVINTEG_EXPORT void setJobTextFilter(std::string (*filter)(const std::string& jobText));

/// Writes a job text to the file label_name.hvl of the trace directory and replaces an earlier one.
HVINTEG_EXPORT void traceHVLFile(const std::string& text, const std::string& label,
                                 const std::string& name);
/// Writes a JSON document to the file label_name.json of the trace directory and replaces an
/// earlier one.
HVINTEG_EXPORT void traceJSONFile(const std::string& text, const std::string& label,
                                  const std::string& name);
/// Writes an XML document to the file label_name.xml of the trace directory and replaces an earlier
/// one.
HVINTEG_EXPORT void traceXMLFile(const std::string& text, const std::string& label,
                                 const std::string& name);
