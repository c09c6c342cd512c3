#pragma once

#include <jni.h>

#include <string>

namespace EngineTest {

/// The address of the cluster that the tests run on; empty: they run on the embedded engine. The
/// environment variable HV_TEST_ENGINE_URL gives it.
std::string clusterUrl();
/// Starts the Java virtual machine of the process, once. Aborts if that fails.
JNIEnv* clusterMachine();

} // namespace EngineTest
