#pragma once

#include <cstdint>
#include <fstream>
#include <string>

#include "support/HvintegExport.h"

/// Writes job texts, data models and JSON documents to a trace directory, together with a plain
/// log.
///
/// Tracing is off unless the environment variable HV_STAT_DEBUG_DIR names a directory. Each process
/// creates its own directory in it: hvtrace_ and the first free number. HV_STAT_DEBUG_MAXCOUNT
/// replaces 1024 as the highest count of numbers to try; 0 traces into the root itself.
/// HV_STAT_DEBUG_PRINT with the value YES or 1 also sends log lines to the host's viewer. All three
/// are read at construction.
///
/// Failures are never reported: what cannot be written is lost, and the job continues. There is no
/// lock: one thread at a time.
class HVINTEG_EXPORT HVStatTracer
{
public:
    /// Creates the first trace directory if the environment asks for tracing.
    HVStatTracer();
    HVStatTracer(const HVStatTracer&) = delete;
    HVStatTracer& operator=(const HVStatTracer&) = delete;
    ~HVStatTracer();

    /// Moves to a new trace directory and opens a new log there. Returns whether tracing is on.
    bool newTraceDir();
    /// Writes a line to the log and, if configured, to the host's viewer. The text ends at its
    /// first NUL. Returns whether tracing is on.
    bool addLog(const std::string& line);
    /// Writes a file in the trace directory and replaces an earlier one. The text ends at its first
    /// NUL. An empty text removes the file. Returns whether tracing is on.
    bool write(const std::string& text, const std::string& fileName);
    /// Appends to a file in the trace directory. The text ends at its first NUL. Returns whether
    /// tracing is on.
    bool append(const std::string& text, const std::string& fileName);
    /// Builds a file name label_name.extension and omits the empty parts; "unname" replaces an
    /// empty label and name. With `unique`, adds a number before the extension if a file of the
    /// plain name exists.
    std::string newValidFileName(const std::string& extension, const std::string& label,
                                 const std::string& name, bool unique);

    /// Whether tracing is on.
    bool canTrace() const { return _tracing; }
    /// Whether the root directory exists and is not read-only.
    bool isTrace() const { return _rootUsable; }
    /// Whether log lines also go to the host's viewer.
    bool printLogToViewer() const { return _printToViewer; }
    /// The highest count of directory numbers to try.
    int maxTraceDirCount() const { return _maxDirCount; }
    /// The present trace directory, with host separators, or empty.
    std::string traceDir() const { return _dir; }
    /// The root directory, with a trailing separator, or empty.
    std::string traceRoot() const { return _root; }

private:
    /// Reads the environment and takes the first directory. Returns whether tracing is on.
    HVINTEG_HIDDEN bool init();
    HVINTEG_HIDDEN void openRoot(const std::string& directory);
    /// Returns false if all numbers are in use or the count is negative.
    HVINTEG_HIDDEN bool takeDirectory();
    HVINTEG_HIDDEN void writeFile(const std::string& text, const std::string& fileName,
                                  std::ios::openmode mode);

    bool _rootUsable = false;
    bool _printToViewer = false;
    bool _tracing = false; // true with a directory, even if its log failed to open
    std::int32_t _maxDirCount = 1024;
    std::string _root;
    std::string _dir;
    std::ofstream _log;
};
