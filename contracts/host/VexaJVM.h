#pragma once

#include <jni.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"
#include "VexaJVMError.h"

/// The Java virtual machine of the process. It is started at first use, once, and never stopped.
/// Any thread.
///
/// libjvm is loaded at run time from the first place that has it: JAVA_HOME, `java` on the path,
/// the system's default. The machine leaves signals to the host. The jars of the installation are
/// on its class path. VEXA_JVM_OPTIONS adds options, separated by blanks.
class HOST_API VexaJVM
{
public:
    VexaJVM(const VexaJVM&) = delete;
    VexaJVM& operator=(const VexaJVM&) = delete;

    /// The object of the process, even before the machine has started.
    static VexaJVM* GetInstance();

    /// Whether the machine has started.
    bool IsStarted() const;
    /// Waits while another thread starts the machine. Returns true if the machine has started; call
    /// AttachCurrentThread then.
    bool WaitForStartedJVM();
    /// Starts the machine and attaches the calling thread until it ends. Throws VexaJVMError if no
    /// machine is found (with each place tried), if a jar is missing (with its name), or if the
    /// machine fails to start (with its output). A failure of the machine itself is final.
    void StartJVMAndAttachThread(JNIEnv** env);
    /// Attaches the calling thread; does nothing if it is attached. Throws VexaJVMError.
    void AttachCurrentThread(JNIEnv** env);
    /// Detaches the calling thread if AttachCurrentThread of this object attached it and no other
    /// attachment of the thread is open. Otherwise does nothing.
    void DetachCurrentThread();

    /// The machine; null before it has started.
    JavaVM* GetJavaVM() const;
    /// Path of libjvm; empty before the start.
    const std::string& LibraryPath() const;
    /// The class path; empty before the start.
    const std::vector<std::string>& ClassPath() const;
    /// Adds an option for the start. Has no effect afterwards.
    void AddOption(const std::string& option);
    /// Sets a function that receives the machine's output instead of the standard streams. Set it
    /// before the start. Without it, the last output of the machine before it ends the process goes
    /// to standard error.
    void SetOutput(std::function<void(const std::string&)> output);

    /// Sets a function that is called when the machine ends the process by exit: while it starts,
    /// because an option or an agent makes it do so, or later, because Java code does. It gets the
    /// reason, on the thread that calls exit, and should end the process with the host's status. It
    /// must not throw. If it returns, or without it, the process aborts. Set it before the start.
    ///
    /// It is not called if the machine fails after the start, for example because its memory is
    /// damaged. Nothing can be saved then: the machine writes the reason and aborts.
    void SetEndHandler(std::function<void(const std::string&)> handler);

private:
    VexaJVM();
    ~VexaJVM();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
