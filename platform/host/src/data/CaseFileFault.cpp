#include "data/CaseFileFault.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "data/HostDatabase.h"
#include "datafile/CsvFault.h"
#include "datafile/FaultIds.h"
#include "datafile/RaisedFault.h"
#include "datafile/SpaceFault.h"

namespace {

/// The damaged file in words; its name if it is one of several.
std::string damagedName(const std::string& path, const std::string& damaged)
{
    const bool isBelow = damaged.starts_with(path + "/");
    return isBelow ? damaged.substr(path.size() + 1) : "the file";
}

} // namespace

CaseFileError::CaseFileError(const std::string& path, std::string rest, std::string kind,
                             std::string id)
    : ErrorText(path + rest), _hasPath(!path.empty()), _rest(std::move(rest)),
      _kind(std::move(kind)), _id(std::move(id))
{
}

CaseFileError::~CaseFileError() = default;

std::string CaseFileError::textFor(const std::string& name) const
{
    return _hasPath ? name + _rest : _rest;
}

CaseFileError errorTextOf(const datafile::Fault& fault)
{
    // Steps of jobs have no meaning here.
    datafile::FaultParts parts = fault.parts();
    parts.step.clear();
    return {parts.file, datafile::sentenceOf(parts).substr(parts.file.size()), parts.kind,
            fault.id()};
}

CaseFileError errorTextOf(const std::string& path, const datafile::SealedFileError& error)
{
    return {path, std::string(": ") + error.what()};
}

CaseFileError errorTextOf(const std::string& path, const std::string& what,
                          const datafile::duck::QueryError& error, std::size_t columns)
{
    const std::string text = error.what();
    if (const auto fault = datafile::raisedFault(text))
        return errorTextOf(*fault);
    if (const auto line = datafile::csvLine(text))
        return errorTextOf(
            datafile::Fault(datafile::faults::kBadRecord, datafile::csvParts(path, *line, text)));
    if (const char* const full = datafile::spaceFaultIn(text))
        return {path, std::string(": ") + full};
    if (text.find("Out of Memory Error") != std::string::npos)
        return {path,
                ": " + what + ": " +
                    (columns > kWideDataset ? std::to_string(columns) + " columns need"
                                            : std::string("a text in it needs")) +
                    " more than the " + hostMemoryLimit() +
                    " of memory (memory_limit) that the host's database may take",
                CaseFileError::kOfHostMemory};
    if (text.find("No files found that match") != std::string::npos)
        return {path, ": the file is no longer there"};
    if (text.find("reached an invalid state") != std::string::npos)
        return {path,
                ": this is not a CSV file, or its lines end in two ways",
                {},
                datafile::faults::kNotOfItsKind};
    // The second text comes from internal errors of the database's reader.
    const auto damaged = datafile::between(text, "Failed to read file \"", "\"");
    if (damaged || text.starts_with("Invalid Error: "))
        return {path,
                ": " + what + ": " + damagedName(path, damaged.value_or(path)) + " is damaged"};
    return {path, ": " + what + ": " + text.substr(0, text.find('\n'))};
}

void failToRead(const std::string& path)
{
    throw CaseFileError(path,
                        ": the file cannot be read: " + std::generic_category().message(errno));
}

void failToCopy(const std::string& path, const std::string& form)
{
    const int error = errno;
    throw CaseFileError(
        path, ": no copy " + form + " can be made: " + std::generic_category().message(error),
        datafile::spaceFaultOf(error) ? CaseFileError::kNoRoomForCopy : "");
}
