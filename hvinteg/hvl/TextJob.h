#pragma once

#include <string>

#include "bridge/JNIJSONObject.h"

class HVStatContainer;
class HVStatDataIterator;

/// Pieces of jobs that are written as plain text, without builders. Paths are UTF-8. JSON is made
/// on the Java side, on the thread of the JNIObjectManager; what fails there throws JNIException.

/// The address of a file: "file:///" and the path with slashes only.
std::string TransformPath(const std::string& path);

/// A text without its backslashes.
std::string removeBackslash(std::string text);

/// A JSON text whose slashes are not escaped. Java may escape the slashes of an address, and an
/// engine may take them literally. A text that needs an escape, as for a quote in a path, is
/// returned unchanged, so that no path can end its string.
std::string cleanedJson(const std::string& json);

/// Whether a text is a name of the job language and so needs no quotes: letters, digits, `_` and
/// anything above ASCII, no digit first, no reserved word.
bool isPlainName(const std::string& name);

/// How a component is told of a file: what the file is to it, and where it stands. With `isExport`
/// the component writes the file.
JNIJSONObject GetOutputContainerJson(const std::string& name, const std::string& uri,
                                     bool isExport);

/// A file that a component writes, or reads, as it stands in a job.
std::string exportedContainer(const HVStatContainer& container);
std::string importedContainer(const std::string& name, const std::string& path);

/// The configuration of a `read` that takes rows, and stops at none that is bad.
std::string iteratorReader(HVStatDataIterator& iterator);

/// A line that gives a value a name: "val name = value".
std::string definition(const std::string& name, const std::string& value);
