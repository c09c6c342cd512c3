#pragma once

#include <jni.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

/// Receives the machine's output. A library must not write to the host's streams, so the text goes
/// to the receiver or is dropped. Output during the start is also kept, because it explains a
/// failed start. Without a receiver, the last text before the machine ends the process goes to
/// standard error, so that the reason is not lost.
///
/// The machine calls back without user data, so there is one object per process. It must outlive
/// the machine.
class JvmOutput
{
public:
    using Receiver = std::function<void(const std::string&)>;
    using EndHandler = std::function<void(const std::string&)>;

    /// Makes this object the target of the machine's hooks.
    void install();
    /// From now on, an exit of the thread that creates the machine ends the process with the
    /// reason. Call it once.
    static void watchExit();
    /// Call it before the start: the machine's threads read the receiver without a lock.
    void setReceiver(Receiver receiver) { _receiver = std::move(receiver); }
    /// Call it before the start.
    void setEndHandler(EndHandler handler) { _endHandler = std::move(handler); }
    void beginStart();
    /// The output since beginStart.
    std::string endStart();
    /// Receives output. Throws what an allocation or the receiver throws.
    void take(const std::string& text);
    /// Receives the last text before the process ends. If the receiver fails, writes it to standard
    /// error.
    void takeLast(const char* text) noexcept;
    /// Ends the process, because the machine or its code called exit: by the handler, or by abort.
    /// A status of 0 would look like success of the host.
    [[noreturn]] void endProcess(const std::string& reason) noexcept;

    /// The options that redirect the machine's output, exit and abort to this object.
    static std::vector<JavaVMOption> hooks();

private:
    Receiver _receiver;
    EndHandler _endHandler;
    std::mutex _mutex;
    bool _starting = false;
    std::string _startText;
    std::string _recent;
};
