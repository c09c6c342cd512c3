#pragma once

#include <string>

#include "support/HvintegExport.h"

class HVStatTracer;

/// The way in to the tracer. Callers hand everything over without a test: while tracing is off
/// nothing is written.

/// The tracer of the process, made at first use and never destroyed. The first call comes from one
/// thread at a time.
HVINTEG_EXPORT HVStatTracer* HVTracer();

/// One line for the diagnostic log.
HVINTEG_EXPORT void WriteLog(const std::string& line);

/// Has each job text pass through a function before it is written, as one that takes passwords out;
/// null, as at the start, for none. Traces that are written already stay. Not while a job is
/// traced.
HVINTEG_EXPORT void setJobTextFilter(std::string (*filter)(const std::string& jobText));

/// Write a text to the file label_name.hvl, .json or .xml of the trace directory, in place of an
/// earlier one of that name.
HVINTEG_EXPORT void traceHVLFile(const std::string& text, const std::string& label,
                                 const std::string& name);
HVINTEG_EXPORT void traceJSONFile(const std::string& text, const std::string& label,
                                  const std::string& name);
HVINTEG_EXPORT void traceXMLFile(const std::string& text, const std::string& label,
                                 const std::string& name);
