#pragma once

#include "office/Workbook.h"

#include <QString>

#include <functional>

/// Makes a workbook from a template.
namespace tessaro {

/// What a workbook is made of: its template, the name it should have, how many values it will hold.
struct WorkbookPlan {
    QString templateName;
    QString stem;
    int values;
};

/// Lets `write` fill a copy of the template in TempFolder, and gives the path of the closed file; an empty one where
/// the template is missing. Whatever goes wrong, no file is left. Throws office::Error and what `write` throws.
[[nodiscard]] QString MakeWorkbook(const WorkbookPlan& plan, const std::function<void(office::Workbook&)>& write);

} // namespace tessaro
