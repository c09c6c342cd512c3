#pragma once

#include <jni.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"

/// The Java virtual machine of the process: real, started at first use, once, and up to the end.
///
/// libjvm is loaded at run time from the first place that has it: JAVA_HOME, `java` on the path,
/// the system's default. The machine leaves signals to the host and has the jars of the
/// installation on its class path. Further options come from VEXA_JVM_OPTIONS, separated by blanks.
class HOST_API VexaJVM
{
public:
    VexaJVM(const VexaJVM&) = delete;
    VexaJVM& operator=(const VexaJVM&) = delete;

    /// The object of the process, whether a machine has started or not.
    static VexaJVM* GetInstance();

    bool IsStarted() const;
    /// Waits while another thread is starting the machine. True: one is up, attach to it.
    bool WaitForStartedJVM();
    /// The calling thread stays attached until it ends. Throws VexaJVMError if there is no machine
    /// to start, listing each place tried; if a jar is missing, naming it; and if the machine gives
    /// up while it starts, with what it printed. A failure of the machine itself is final.
    void StartJVMAndAttachThread(JNIEnv** env);
    /// Attaches the calling thread, or finds that it is attached. Throws VexaJVMError.
    void AttachCurrentThread(JNIEnv** env);
    /// Detaches the calling thread if AttachCurrentThread of this object attached it and no other
    /// attachment of the thread is open; does nothing otherwise.
    void DetachCurrentThread();

    /// The machine; null before it has started.
    JavaVM* GetJavaVM() const;
    /// Where libjvm was found, and the class path; empty before the start.
    const std::string& LibraryPath() const;
    const std::vector<std::string>& ClassPath() const;
    /// Adds an option for the start; has no effect afterwards.
    void AddOption(const std::string& option);
    /// Receives what the machine prints, instead of the standard streams; set before the start.
    /// Without a receiver the machine's last words before it ends the process go to standard error.
    void SetOutput(std::function<void(const std::string&)> output);

private:
    VexaJVM();
    ~VexaJVM();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
