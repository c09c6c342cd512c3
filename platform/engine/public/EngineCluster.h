#pragma once

#include <jni.h>

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

class EHVAppSetting;

/// The folder of the client of Spark clusters, which is an optional part of the installation; empty
/// if it is not installed. Any thread.
ENGINE_API std::string clusterClient(const EHVAppSetting& settings);

/// Connects to the server of the settings and returns its version, for example 4.2.0. `env` is the
/// environment of the calling thread. Throws Exception, with cause and remedy, if a setting is
/// wrong, the client is not installed or the server does not answer. Any thread.
ENGINE_API std::string clusterVersion(JNIEnv* env, const EHVAppSetting& settings);

} // namespace EmbeddedHV
