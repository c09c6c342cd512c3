#pragma once

#include <string>

#include "hvl/TextJob.h"

class HVRawDataIterator;
class HVSimpleContainer;
struct RecordFile;

/// The lines that the jobs on temporal causal models are put together from. Each defines the names
/// that are told, and ends in a line end.

/// "readerConf": of an HVBF file, or of rows.
std::string GenerateReaderConf(const std::string& dataPath, const std::string& dataModelPath);
std::string readerLine(const RecordFile& file);
std::string readerLine(HVRawDataIterator& iterator);

/// "writerConf": to an HVBF file.
std::string writerLine(const RecordFile& file);

/// "rtsdpConf" and "rtsdpInConf": the step that gives prepared series their names and their points
/// of time back, from what the preparation left in the container.
std::string GenerateRtsdpConf(const std::string& containerPath);

/// A list of one container, under a name: one that the job writes, or the model, which is a file of
/// the caller's and is told as the host spells it.
std::string outputLine(const char* name, const HVSimpleContainer& container);
std::string modelLine(const char* name, const char* containerName, const std::string& modelPath);
