#pragma once

#include <string>

struct RecordFile;

/// The lambda that converts a field of texts to timestamps, a line of job text without its end. The
/// field is inserted unchanged, so the caller checks with isPlainName that it is a name.
std::string GetToTimestampLambda(const std::string& timeField);

/// The job that copies the records of the line `reader` to a file and converts the field.
std::string timeConversionJob(const std::string& reader, const std::string& timeField,
                              const RecordFile& output);
