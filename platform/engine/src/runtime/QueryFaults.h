#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "JobError.h"

namespace EmbeddedHV {

/// A statement failed. what() is the backend's own message; the members say what it means.
class StatementFault : public std::runtime_error
{
public:
    /// What the parts leave to the caller.
    enum class About
    {
        Itself, ///< nothing: they are complete
        Steps,  ///< the steps of the statement
        Output  ///< the output of the statement
    };
    /// What is wrong with a CSV file.
    enum class Csv
    {
        Nothing,
        Record, ///< one record is unreadable
        Value,  ///< one value does not convert to the type of its field
        Form    ///< the whole file
    };

    StatementFault(const std::string& message, JobError error, About about)
        : std::runtime_error(message), _error(std::move(error)), _about(about)
    {
    }
    void setCsv(Csv csv, std::string file)
    {
        _csv = csv;
        _csvFile = std::move(file);
    }
    void setDamage(std::string file) { _damagedFile = std::move(file); }

    /// The id and the parts as far as the backend knows them.
    const JobError& error() const { return _error; }
    About about() const { return _about; }
    /// What is wrong with this CSV file. The backend does not always know which file is meant.
    Csv csv(const std::string& path) const
    {
        return _csvFile.empty() || path == _csvFile ? _csv : Csv::Nothing;
    }
    /// Whether this file may be damaged. The backend does not always know which file is.
    bool isDamaged(const std::string& path) const
    {
        return _damagedFile && (_damagedFile->empty() || *_damagedFile == path);
    }

private:
    JobError _error;
    About _about;
    Csv _csv = Csv::Nothing;
    std::string _csvFile;
    std::optional<std::string> _damagedFile; ///< empty text: any file
};

/// The fault of a statement as an error of a job. `steps` names the steps of the statement,
/// `target` its output, which may be a file.
JobError faultOf(const StatementFault& fault, const std::string& steps, const std::string& target,
                 bool targetIsFile = false);

} // namespace EmbeddedHV
