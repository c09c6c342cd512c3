#pragma once

#include <jni.h>

#include <cstdint>
#include <string>
#include <vector>

#include "spark/SparkDialect.h"

namespace EmbeddedHV {

class EHVAppSetting;

/// What the backend "spark" is told about its cluster.
struct SparkSettings
{
    JavaVM* machine = nullptr;
    std::string clientFolder; ///< with the jars of the client
    std::string url;
    std::string scratch; ///< a folder of the cluster, without a slash at its end; empty: none
    std::int64_t uploadBytes = 0;
    std::int64_t collectBytes = 0;
    RealSums sums = RealSums::Exact;
    std::vector<std::string> options; ///< names and values in turn
};

/// Reads and checks the properties. Throws Exception if one is missing or wrong, or if the client
/// of the cluster is not installed. Connects to nothing.
SparkSettings sparkSettings(JNIEnv* env, const EHVAppSetting& settings);

/// The folder of the client's jars in the installation.
std::string clientFolderOf(const EHVAppSetting& settings);

} // namespace EmbeddedHV
