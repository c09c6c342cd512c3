#pragma once

#include <duckdb.h>

#include <string>
#include <vector>

#include "CFField.h"
#include "ErrorMonitor.h"
#include "Obs.h"
#include "text/CodePage.h"

/// The values of one variable in a chunk of cases, as the host holds them: numbers on the host's
/// scale, texts in the host's encoding, filled up with blanks.
class CaseColumn
{
public:
    /// `width` is 0 for a number. The name is for messages, UTF-8.
    CaseColumn(CFField::StorageType storage, int width, std::string name,
               std::shared_ptr<CodePage> page);

    /// Takes the values over from the database. The monitor may be null.
    void load(duckdb_vector vector, std::size_t rows, ErrorMonitor* monitor);
    /// The value of the first case, each other one `units` further on. They last, as the database's
    /// vector may be read in place, until the vector is gone.
    const OBS* first() const { return _first; }
    std::size_t units() const { return _units; }

private:
    template <class T, class Convert>
    void loadNumbers(duckdb_vector vector, std::size_t rows, Convert convert);
    void loadReals(duckdb_vector vector, std::size_t rows);
    template <class IsKept, class Text>
    void tellRounded(duckdb_vector vector, std::size_t rows, IsKept isKept, Text text,
                     ErrorMonitor& monitor) const;
    void makeRoom(std::size_t rows);
    void loadTexts(duckdb_vector vector, std::size_t rows, ErrorMonitor* monitor);
    void put(std::size_t row, std::string_view text, ErrorMonitor* monitor);

    const OBS* _first = nullptr; ///< the value of the first row
    std::size_t _units;
    CFField::StorageType _storage;
    int _width;
    std::string _name;
    std::shared_ptr<CodePage> _page; ///< null if texts stay UTF-8
    std::string _converted;
    std::vector<OBS> _values;
};
