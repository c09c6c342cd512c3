#pragma once

#include <memory>
#include <string>
#include <vector>

#include "UserCaseFile.h"
#include "data/TableCases.h"
#include "datafile/FieldNames.h"

/// What a data file holds, ready to be read.
struct CaseFileSource
{
    std::unique_ptr<TableCases> cases;
    long long caseCount = 0;
    datafile::Fields fields; ///< the columns, as the file itself tells of them
    std::vector<std::string> documents;
    std::string encoding;
};

/// Open a file of either family; `path` is the operating system's. They throw ErrorText,
/// datafile::Fault, SealedFileError and QueryError.
CaseFileSource openCsv(const UserCaseFileSpec& spec, const std::string& path);
CaseFileSource openParquet(const UserCaseFileSpec& spec, const std::string& path);

/// The width that texts of up to so many bytes in UTF-8 take in the host's encoding; at least 1.
int hostWidth(std::size_t utf8Bytes);
