#pragma once

#include <string>

#include "hvl/TextJob.h"

class HVRawDataIterator;
class HVSimpleContainer;
struct RecordFile;

/// The lines of jobs on temporal causal models. Each function defines the names in its comment. A
/// line ends with a line end.

/// "readerConf": of an HVBF file, or of rows.
std::string GenerateReaderConf(const std::string& dataPath, const std::string& dataModelPath);
std::string readerLine(const RecordFile& file);
std::string readerLine(HVRawDataIterator& iterator);

/// "writerConf": to an HVBF file.
std::string writerLine(const RecordFile& file);

/// "rtsdpConf" and "rtsdpInConf": the step that restores the names and points of time of prepared
/// series, from the container that the preparation wrote.
std::string GenerateRtsdpConf(const std::string& containerPath);

/// Defines a list of one container: one that the job writes, or the model file, in the host's
/// spelling of its path.
std::string outputLine(const char* name, const HVSimpleContainer& container);
std::string modelLine(const char* name, const char* containerName, const std::string& modelPath);
