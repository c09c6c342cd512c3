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

/// Shows a developer one named value as a line of the host's front end. Texts are in the host's
/// encoding. The system-missing number shows as "miss", a list without elements as "<none>". Any
/// thread.
///
///     HVStatDisplay::DisplayDV("weights", {0.5, 2});   // weights 0.5 2
namespace HVStatDisplay {

/// One value: the title, " = " and the value.
HVINTEG_EXPORT void DisplayB(TN_Character title, bool value);
HVINTEG_EXPORT void DisplayC(TN_Character title, CatVarEncValue value);
HVINTEG_EXPORT void DisplayD(TN_Character title, double value);
HVINTEG_EXPORT void DisplayI(TN_Character title, int value);
HVINTEG_EXPORT void DisplayS(TN_Character title, const std::string& value);
HVINTEG_EXPORT void DisplayT(TN_Character title, unsigned long value);

/// Lists: the title, and a blank and the value for each element. Texts stand in quotation marks.
HVINTEG_EXPORT void DisplayBV(TN_Character title, const std::vector<bool>& values);
HVINTEG_EXPORT void DisplayDV(TN_Character title, const std::vector<double>& values);
HVINTEG_EXPORT void DisplayNL(TN_Character title, const std::vector<double>& values);
HVINTEG_EXPORT void DisplayIV(TN_Character title, const std::vector<int>& values);
HVINTEG_EXPORT void DisplayVL(TN_Character title, const std::vector<int>& values);
HVINTEG_EXPORT void DisplaySL(TN_Character title, const std::vector<std::string>& values);
HVINTEG_EXPORT void DisplaySV(TN_Character title, const std::vector<std::string>& values);
HVINTEG_EXPORT void DisplayVNL(TN_Character title, const std::vector<VexaVarName>& names);
/// Pairs, as in "title (1,2) (3,4)".
HVINTEG_EXPORT void DisplayIIM(TN_Character title, const std::map<int, int>& values);
HVINTEG_EXPORT void DisplayVIM(TN_Character title, const std::map<int, int>& values);
/// Variables, each with whether it is categorical; one that the second list does not tell of is
/// continuous.
HVINTEG_EXPORT void DisplayVCL(TN_Character title, const std::vector<int>& variables,
                               const std::vector<bool>& categorical);

/// A value in a format, as DisplayS shows a text; nothing for a null.
HVINTEG_EXPORT void DisplayObs(TN_Character title, const OBS* value, const VEXA_Format& format);

/// Several lines: the title, then lines for each element.
HVINTEG_EXPORT void DisplayObsVec(TN_Character title, const std::vector<OBS*>& values,
                                  const VEXA_Format& format);
HVINTEG_EXPORT void DisplayObsVec(TN_Character title, const std::vector<const OBS*>& values,
                                  const VEXA_Format& format);
HVINTEG_EXPORT void DisplayObsVecMapD(TN_Character title, const ObsVecMap& values,
                                      const std::vector<VEXA_Format>& formats);
HVINTEG_EXPORT void DisplaySLDM(TN_Character title,
                                const std::map<std::vector<std::string>, double>& values);
HVINTEG_EXPORT void DisplaySVV(TN_Character title,
                               const std::vector<std::vector<std::string>>& values);
HVINTEG_EXPORT void
DisplayIntVecDVecMap(TN_Character title,
                     const std::map<std::vector<int>, std::vector<double>>& values);
HVINTEG_EXPORT void DisplayIntVecIntMap(TN_Character title,
                                        const std::map<std::vector<int>, int>& values);

/// A line as it is, on a channel of the front end.
HVINTEG_EXPORT void DisplayText(const long& channel, const std::string& line);

} // namespace HVStatDisplay
