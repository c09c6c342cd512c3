#pragma once

#include <memory>
#include <string>
#include <vector>

#include "UserCaseFile.h"
#include "data/TableCases.h"
#include "datafile/FieldNames.h"

/// The content of a data file, ready to be read.
struct CaseFileSource
{
    std::unique_ptr<TableCases> cases;
    long long caseCount = 0;
    datafile::Fields fields; ///< the columns as the file describes them
    std::vector<std::string> documents;
    std::string encoding;
};

/// Open a data file; `path` is in the operating system's spelling. They throw ErrorText,
/// datafile::Fault, SealedFileError and QueryError.
CaseFileSource openCsv(const UserCaseFileSpec& spec, const std::string& path);
CaseFileSource openParquet(const UserCaseFileSpec& spec, const std::string& path);

/// The width in the host's encoding of texts with up to that many UTF-8 bytes: 1 to kWidestText.
int hostWidth(std::size_t utf8Bytes);
