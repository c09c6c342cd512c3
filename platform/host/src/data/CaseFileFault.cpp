#include "data/CaseFileFault.h"

#include <string_view>

#include "data/HostDatabase.h"
#include "datafile/CsvFault.h"
#include "datafile/RaisedFault.h"

ErrorText errorTextOf(const datafile::Fault& fault)
{
    // Steps of jobs have no meaning here.
    datafile::FaultParts parts = fault.parts();
    parts.step.clear();
    return ErrorText(datafile::sentenceOf(parts));
}

ErrorText errorTextOf(const std::string& path, const datafile::SealedFileError& error)
{
    return ErrorText(path + ": " + error.what());
}

ErrorText errorTextOf(const std::string& path, const std::string& what,
                      const datafile::duck::QueryError& error)
{
    const std::string text = error.what();
    if (const auto fault = datafile::raisedFault(text))
        return errorTextOf(*fault);
    if (const auto line = datafile::csvLine(text))
        return errorTextOf(datafile::Fault({}, datafile::csvParts(path, *line, text)));
    for (const std::string_view full :
         {"No space left on device", "File too large", "Disk quota exceeded"})
        if (text.find(full) != std::string::npos)
            return ErrorText(path + ": no space is left for the file");
    if (text.find("Out of Memory Error") != std::string::npos)
        return ErrorText(path + ": " + what + ": a text in it needs more than the " +
                         kHostMemoryLimit + " of memory that the host's database may take");
    if (text.find("No files found that match") != std::string::npos)
        return ErrorText(path + ": the file is no longer there");
    if (text.find("reached an invalid state") != std::string::npos)
        return ErrorText(path + ": this is not a CSV file, or its lines end in two ways");
    // The second text comes from internal errors of the database's reader.
    if (text.find("Failed to read file \"") != std::string::npos ||
        text.starts_with("Invalid Error: "))
        return ErrorText(path + ": " + what + ": the file is damaged");
    return ErrorText(path + ": " + what + ": " + text.substr(0, text.find('\n')));
}
