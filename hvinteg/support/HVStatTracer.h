#pragma once

#include <cstdint>
#include <fstream>
#include <string>

#include "support/HvintegExport.h"

/// Writes job texts, data models and JSON documents into a trace directory, beside a plain log.
///
/// It is off unless HV_STAT_DEBUG_DIR names a directory. Below that each process takes a directory
/// of its own, hvtrace_ and the first free number. HV_STAT_DEBUG_PRINT, at YES or 1, sends log
/// lines to the host's viewer as well, and HV_STAT_DEBUG_MAXCOUNT replaces the 1024 directories
/// that are tried at most; 0 traces into the root itself. All three are read at construction.
///
/// No failure is ever reported: what cannot be written is lost, and the job goes on. There is no
/// lock: one thread at a time.
class HVINTEG_EXPORT HVStatTracer
{
public:
    /// Takes the first directory if the environment asks for tracing.
    HVStatTracer();
    HVStatTracer(const HVStatTracer&) = delete;
    HVStatTracer& operator=(const HVStatTracer&) = delete;
    ~HVStatTracer();

    /// Moves to a new trace directory with a log of its own. Like the next three, it tells whether
    /// tracing is on.
    bool newTraceDir();
    bool addLog(const std::string& line);
    /// Writes a file of the trace directory anew, or goes on behind its end. The text counts up to
    /// its first NUL. An empty text given to write removes the file.
    bool write(const std::string& text, const std::string& fileName);
    bool append(const std::string& text, const std::string& fileName);
    /// A file name: label_name.extension without what is empty, "unname" if both are. With
    /// `unique` a number goes before the extension where the plain name is taken.
    std::string newValidFileName(const std::string& extension, const std::string& label,
                                 const std::string& name, bool unique);

    /// Whether tracing is on, and whether its root can be used at all.
    bool canTrace() const { return _tracing; }
    bool isTrace() const { return _rootUsable; }
    bool printLogToViewer() const { return _printToViewer; }
    int maxTraceDirCount() const { return _maxDirCount; }
    std::string traceDir() const { return _dir; }
    std::string traceRoot() const { return _root; }

private:
    /// Reads the environment and takes the first directory; whether tracing is on.
    bool init();
    void openRoot(const std::string& directory);
    /// False if all numbers are taken, or none may be tried.
    bool takeDirectory();
    void writeFile(const std::string& text, const std::string& fileName, std::ios::openmode mode);

    bool _rootUsable = false;
    bool _printToViewer = false;
    bool _tracing = false; // a directory was taken; its log may still have failed to open
    std::int32_t _maxDirCount = 1024;
    std::string _root;
    std::string _dir;
    std::ofstream _log;
};
