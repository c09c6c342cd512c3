#pragma once

#include <chrono>
#include <mutex>
#include <string>

/// Shows how much of a job is done, on one line of standard error that is drawn over and goes away
/// at the end. Only on a terminal, unless told otherwise, and only for work over a second.
class ProgressLine
{
public:
    /// `mode` is auto, always or never.
    ProgressLine(const std::string& mode, std::string label);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// The part done, from 0 to 1. Any thread.
    void show(double fraction);
    /// Takes the line away.
    void clear();

private:
    std::mutex _mutex;
    bool _enabled;
    bool _always;
    bool _drawn = false;
    int _lastPercent = -1;
    std::string _label;
    std::chrono::steady_clock::time_point _start;
};
