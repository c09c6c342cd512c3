#pragma once

#include <map>
#include <string>
#include <vector>

#include "CatVarEncValue.h"
#include "Obs.h"
#include "ObsVecMap.h"
#include "TnFront.h"
#include "VexaFormat.h"
#include "VexaVarName.h"
#include "support/HvintegExport.h"

/// Functions that show a developer a named value as a line of the host's front end. Texts are in
/// the host's encoding. The system-missing number is shown as "miss", an empty list as "<none>".
/// Any thread.
///
///     HVStatDisplay::DisplayDV("weights", {0.5, 2});   // weights 0.5 2
namespace HVStatDisplay {

/// Shows the title, " = ", and "true" or "false".
HVINTEG_EXPORT void DisplayB(TN_Character title, bool value);
/// Shows the title, " = ", and the meaning of the code in words.
HVINTEG_EXPORT void DisplayC(TN_Character title, CatVarEncValue value);
/// Shows the title, " = ", and the number with up to six significant digits.
HVINTEG_EXPORT void DisplayD(TN_Character title, double value);
/// Shows the title, " = ", and the integer.
HVINTEG_EXPORT void DisplayI(TN_Character title, int value);
/// Shows the title, " = ", and the text.
HVINTEG_EXPORT void DisplayS(TN_Character title, const std::string& value);
/// Shows the title, " = ", and the count.
HVINTEG_EXPORT void DisplayT(TN_Character title, unsigned long value);

/// Shows the title, then a blank and "true" or "false" for each element.
HVINTEG_EXPORT void DisplayBV(TN_Character title, const std::vector<bool>& values);
/// Shows the title, then a blank and the number for each element.
HVINTEG_EXPORT void DisplayDV(TN_Character title, const std::vector<double>& values);
/// Shows the title, then a blank and the number for each element, as DisplayDV.
HVINTEG_EXPORT void DisplayNL(TN_Character title, const std::vector<double>& values);
/// Shows the title, then a blank and the integer for each element.
HVINTEG_EXPORT void DisplayIV(TN_Character title, const std::vector<int>& values);
/// Shows the title, then a blank and the integer for each element, as DisplayIV.
HVINTEG_EXPORT void DisplayVL(TN_Character title, const std::vector<int>& values);
/// Shows the title, then a blank and the text in quotation marks for each element.
HVINTEG_EXPORT void DisplaySL(TN_Character title, const std::vector<std::string>& values);
/// Shows the title, then a blank and the text in quotation marks for each element, as DisplaySL.
HVINTEG_EXPORT void DisplaySV(TN_Character title, const std::vector<std::string>& values);
/// Shows the title, then a blank and the name in quotation marks for each variable.
HVINTEG_EXPORT void DisplayVNL(TN_Character title, const std::vector<VexaVarName>& names);
/// Shows the title and the pairs, as in "title (1,2) (3,4)".
HVINTEG_EXPORT void DisplayIIM(TN_Character title, const std::map<int, int>& values);
/// Shows the title and the pairs, as in "title (1,2) (3,4)".
HVINTEG_EXPORT void DisplayVIM(TN_Character title, const std::map<int, int>& values);
/// Shows the title and the variables, each with "(cat)" for categorical or "(cont)" for continuous.
/// A variable without an entry in `categorical` is continuous.
HVINTEG_EXPORT void DisplayVCL(TN_Character title, const std::vector<int>& variables,
                               const std::vector<bool>& categorical);

/// Shows a value as text in the format, in the form of DisplayS. Shows nothing for a null value.
/// The value is borrowed.
HVINTEG_EXPORT void DisplayObs(TN_Character title, const OBS* value, const VEXA_Format& format);

/// Shows the title, then a line for each value, in the form of DisplayObs.
HVINTEG_EXPORT void DisplayObsVec(TN_Character title, const std::vector<OBS*>& values,
                                  const VEXA_Format& format);
/// Shows the title, then a line for each value, in the form of DisplayObs. For values that the
/// caller must not change.
HVINTEG_EXPORT void DisplayObsVec(TN_Character title, const std::vector<const OBS*>& values,
                                  const VEXA_Format& format);
/// Shows the title, then two lines for each entry: the key as a list of texts in the formats, and
/// the number. The entries are sorted by their keys.
HVINTEG_EXPORT void DisplayObsVecMapD(TN_Character title, const ObsVecMap& values,
                                      const std::vector<VEXA_Format>& formats);
/// Shows the title, then two lines for each entry: the key and the number.
HVINTEG_EXPORT void DisplaySLDM(TN_Character title,
                                const std::map<std::vector<std::string>, double>& values);
/// Shows the title, then a line "vec[i]" with the texts of each element.
HVINTEG_EXPORT void DisplaySVV(TN_Character title,
                               const std::vector<std::vector<std::string>>& values);
/// Shows the title, then two lines for each entry: the key and the numbers.
HVINTEG_EXPORT void
DisplayIntVecDVecMap(TN_Character title,
                     const std::map<std::vector<int>, std::vector<double>>& values);
/// Shows the title, then two lines for each entry: the key and the integer.
HVINTEG_EXPORT void DisplayIntVecIntMap(TN_Character title,
                                        const std::map<std::vector<int>, int>& values);

/// Shows a line unchanged, on a channel of the front end.
HVINTEG_EXPORT void DisplayText(const long& channel, const std::string& line);

} // namespace HVStatDisplay
