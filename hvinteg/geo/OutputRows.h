#pragma once

#include <string>
#include <utility>

#include "RowDataIterator.h"
#include "bridge/JNIObjectManager.h"
#include "runner/HVRunner.h"

/// The rows of a file that the last job wrote, for one scope; they go before the execution, to
/// which they belong.
class OutputRows
{
public:
    OutputRows(HVRunner& runner, const std::string& fileName)
        : _rows(runner.getOutputIterator(fileName))
    {
    }
    ~OutputRows()
    {
        try {
            dispose();
        } catch (...) { // NOLINT(bugprone-empty-catch): what came before is on its way already
        }
    }
    OutputRows(const OutputRows&) = delete;
    OutputRows& operator=(const OutputRows&) = delete;

    /// Null if the job left no such file.
    EmbeddedHV::RowDataIterator* get() const { return _rows; }
    /// Lets the rows go now, and lets pass what the engine throws at that.
    void dispose()
    {
        if (auto* const rows = std::exchange(_rows, nullptr))
            rows->dispose(JNIObjectManager::getManager()->getEnv());
    }

private:
    EmbeddedHV::RowDataIterator* _rows;
};
