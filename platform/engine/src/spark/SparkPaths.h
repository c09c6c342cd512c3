#pragma once

#include <string>

namespace EmbeddedHV {

/// Whether a path is a URI of a storage that only the cluster reads, for example hdfs: or s3a:.
bool isOfCluster(const std::string& path);

/// The path as the cluster's URI. A path without a scheme is one of the file system that all
/// workers and this process share.
std::string clusterPath(const std::string& path);
/// The same for a statement that reads files. Characters of a pattern are escaped.
std::string clusterPattern(const std::string& path);

/// The name of the data model in an HVBF folder. Readers of Parquet folders skip names that begin
/// with an underscore.
inline constexpr const char* kModelName = "_datamodel";
/// The path of the data model.
std::string modelIn(const std::string& folder);

} // namespace EmbeddedHV
