#pragma once

#include <string>

#include "bridge/JNIJSONObject.h"

class HVStatContainer;
class HVStatDataIterator;

/// Parts of jobs that are written as plain text, without builders. Paths are UTF-8. JSON is created
/// in Java, on the thread of the JNIObjectManager; failures there throw JNIException.

/// Converts a path to an address: "file:///" and the path with slashes.
std::string TransformPath(const std::string& path);

/// Removes all backslashes.
std::string removeBackslash(std::string text);

/// Removes the escapes of slashes from a JSON text. Java may escape the slashes of an address, and
/// an engine may read the escapes literally. A text with other escapes, for example for a quote in
/// a path, is returned unchanged, so that no path can end its string.
std::string cleanedJson(const std::string& json);

/// Whether a text is a name of the job language that needs no quotes: letters, digits, `_` and
/// non-ASCII characters, no leading digit, not a reserved word.
bool isPlainName(const std::string& name);

/// Describes a file for a component: its name and address. With `isExport` the component writes it.
JNIJSONObject GetOutputContainerJson(const std::string& name, const std::string& uri,
                                     bool isExport);

/// Text of a container that a component writes (exported) or reads (imported).
std::string exportedContainer(const HVStatContainer& container);
std::string importedContainer(const std::string& name, const std::string& path);

/// Configuration of a `read` of rows that tolerates any number of invalid ones.
std::string iteratorReader(HVStatDataIterator& iterator);

/// A definition: "val name = value" and a line end.
std::string definition(const std::string& name, const std::string& value);
