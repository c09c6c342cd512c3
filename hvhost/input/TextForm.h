#pragma once

#include <string>

#include "TextImport.h"
#include "UserCaseFile.h"
#include "hvhost/base/CommonOptions.h"
#include "hvhost/input/DataKind.h"

class InterruptWatch;
class ReadableFile;

/// The form of a text file from the options of a command. Borrows the watch. Throws CommandFault
/// (Usage) for an invalid --type.
TextImport textImport(const InputOptions& options, DataKind kind, const CsvForm& form,
                      const InterruptWatch& watch);

/// Converts a text file as ImportTextFile does. Throws CommandFault (Input).
void importText(const ReadableFile& file, const TextImport& form, const std::string& target,
                const std::string& kindOption);
