#pragma once

#include <memory>
#include <string>

#include "datafile/ScratchFile.h"
#include "datafile/SealedFile.h"

namespace datafile {

/// Decrypts a sealed file into a file without a name. Throws SealedFileError and std::system_error.
std::shared_ptr<ScratchFile> openSealed(const std::string& path, const std::string& password,
                                        const std::string& scratchFolder,
                                        const SealedFileStep& step);

} // namespace datafile
