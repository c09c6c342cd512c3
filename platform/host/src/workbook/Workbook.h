#pragma once

#include <string>
#include <vector>

#include "workbook/CellFormats.h"
#include "workbook/SharedStrings.h"
#include "workbook/WorkbookPackage.h"

/// A workbook without its sheets: their names, the formats of cells and the texts that all share.
class Workbook
{
public:
    /// Throws WorkbookFault.
    explicit Workbook(const std::string& path);

    /// The part with a sheet. `wanted` is its name, else its number from 1; empty for the first one
    /// that is not hidden. Throws WorkbookFault that lists the sheets if there is no such sheet.
    const std::string& sheetPart(const std::string& wanted) const;
    const WorkbookPackage& package() const { return _package; }
    const std::vector<CellFormat>& formats() const { return _formats; }
    const SharedStrings& strings() const { return _strings; }
    /// Whether day 0 is 1 January 1904.
    bool is1904() const { return _is1904; }

private:
    struct Sheet
    {
        std::string name;
        std::string part;
        bool isHidden = false;
    };
    void readSheets(const std::string& part);

    WorkbookPackage _package;
    std::vector<Sheet> _sheets;
    std::vector<CellFormat> _formats;
    SharedStrings _strings;
    bool _is1904 = false;
};
