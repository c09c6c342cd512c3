#pragma once

#include <string>

struct RecordFile;

/// How a field of texts becomes one of timestamps: the lambda says which texts, a line of job text
/// without its end. The field goes in unchanged, so the caller makes sure by isPlainName that it is
/// a name.
std::string GetToTimestampLambda(const std::string& timeField);

/// The job that converts the field on the way from what the line `reader` defines to a file.
std::string timeConversionJob(const std::string& reader, const std::string& timeField,
                              const RecordFile& output);
