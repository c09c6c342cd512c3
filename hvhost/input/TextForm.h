#pragma once

#include <string>
#include <vector>

#include "TextImport.h"
#include "hvhost/base/CommonOptions.h"
#include "hvhost/input/DataKind.h"
#include "hvhost/input/TextHead.h"

class InterruptWatch;
class ReadableFile;

/// The form of a text file from the options of a command and its first lines. Borrows the watch.
/// Throws CommandFault (Usage) for an invalid --type.
TextImport textImport(const InputOptions& options, DataKind kind, const TextHead& head,
                      const InterruptWatch& watch);

/// Converts a text file as ImportTextFile does. Returns what may be wrong, for the user. Throws
/// CommandFault (Input).
std::vector<TextDoubt> importText(const ReadableFile& file, const TextImport& form,
                                  const std::string& target, const std::string& kindOption);
