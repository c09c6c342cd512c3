#pragma once

#include <memory>
#include <string>

#include "DataFileNames.h"
#include "datafile/FieldNames.h"
#include "datafile/FileKind.h"
#include "datafile/ScratchFile.h"

namespace EmbeddedHV {

/// A file that a job has written, with everything needed to read it again.
struct WrittenFile
{
    std::string path;
    FileKind kind = FileKind::Csv;
    Fields fields;
    std::string password;
    std::shared_ptr<ScratchFile> content = {}; ///< if not null, has the content of the file
};

} // namespace EmbeddedHV
