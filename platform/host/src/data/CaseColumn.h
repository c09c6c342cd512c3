#pragma once

#include <duckdb.h>

#include <string>
#include <vector>

#include "CFField.h"
#include "ErrorMonitor.h"
#include "Obs.h"
#include "text/CodePage.h"

/// The values of one variable in a chunk of cases, in the host's form: numbers on the host's scale,
/// texts in the host's encoding, padded with blanks.
class CaseColumn
{
public:
    /// `width` is 0 for a number. `name` is for messages, UTF-8.
    CaseColumn(CFField::StorageType storage, int width, std::string name,
               std::shared_ptr<CodePage> page);

    /// Converts the values of the database's vector. The monitor may be null.
    void load(duckdb_vector vector, std::size_t rows, ErrorMonitor* monitor);
    /// The value of the first case; the next values follow at a distance of `units`. They may point
    /// into the database's vector and are valid as long as it.
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
