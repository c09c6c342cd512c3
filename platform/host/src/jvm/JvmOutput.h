#pragma once

#include <jni.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

/// Takes what the machine prints. A library has no business on the host's streams, so the text goes
/// to the receiver, or nowhere. What is printed during the start is kept as well, since it tells
/// why a start failed. Where there is no receiver, the last text before the machine ends the
/// process goes to standard error, since nobody could learn the reason otherwise.
///
/// The machine calls back without any data of ours, so there is one object for the process; it must
/// outlive the machine.
class JvmOutput
{
public:
    using Receiver = std::function<void(const std::string&)>;

    /// Makes this the object that the machine's hooks reach.
    void install();
    /// Set before the start: the machine's threads read it without a lock.
    void setReceiver(Receiver receiver) { _receiver = std::move(receiver); }
    void beginStart();
    /// What was printed since beginStart.
    std::string endStart();
    /// Throws what an allocation or the receiver throws.
    void take(const std::string& text);
    /// The text is the last one: the process ends. If the receiver does not get it, standard error
    /// does.
    void takeLast(const char* text) noexcept;

    /// The options that lead the machine's output, its exit and its abortion here.
    static std::vector<JavaVMOption> hooks();

private:
    Receiver _receiver;
    std::mutex _mutex;
    bool _starting = false;
    std::string _startText;
    std::string _recent;
};
