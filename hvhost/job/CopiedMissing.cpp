#include "hvhost/job/CopiedMissing.h"

InputOptions copiedReading(const InputOptions& input, const RecordOptions& records)
{
    InputOptions reading = input;
    if (input.userMissing.empty() && records.where.empty() && records.derivations.empty())
        reading.userMissing = "keep";
    return reading;
}

std::string missingIsLost(const std::string& file)
{
    return file + ": what it declares missing is written as system-missing; --user-missing exclude "
                  "or keep says what is wanted";
}
