#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "SvrDMDataset.h"
#include "dialog/HVInteractive.h"

class DialogCases;
class HVRawDataIterator;
class HVSimpleFile;
struct CoordinateSystem;
struct DialogChoice;
struct MapExport;
struct MapSource;
struct MatchSides;
struct MatchedValues;

/// Requests of map dialogs: whether a source of geometry can be read, its geometry as GeoJSON, and
/// how well its keys match those of a dataset.
///
/// A source is a shape file, a zip archive with a shape file of the archive's name at its top
/// level, or a layer of a map service. The first request for an archive's path unpacks it; later
/// requests use that copy. The destructor removes it.
///
///     HVInteractiveSTEM maps;
///     std::string model;
///     if (maps.validateShapeSource("C:\\maps\\districts.zip", model) && !model.empty())
///         maps.getShapeGeoJSON("", 0, "WGS_1984", 4326, "C:\\maps\\districts.zip", modelPath,
///                              geoJsonPath);
///
/// Paths, addresses and names of variables are in the host's encoding. Names of coordinate systems,
/// names of a map's fields and the returned documents are UTF-8. A coordinate system is given by
/// name and by well-known id. The id is used only if the engine does not know the name.
class HVINTEG_EXPORT HVInteractiveSTEM : public HVInteractive
{
public:
    /// Creates the runner; see HVInteractive.
    HVInteractiveSTEM();
    HVInteractiveSTEM(const HVInteractiveSTEM&) = delete;
    HVInteractiveSTEM& operator=(const HVInteractiveSTEM&) = delete;
    /// Removes unpacked archives.
    ~HVInteractiveSTEM() override;

    /// Tests whether a shape file or an archive can be read, by its first record. `dataModel`
    /// receives its data model (XML). It is unchanged if there is no shape file or the archive
    /// cannot be unpacked, and empty if the engine returns none. If the engine throws, `dataModel`
    /// is empty and the result is true.
    bool validateShapeSource(const std::string& path, std::string& dataModel);
    /// Tests whether a layer of a map service can be read, by its first record. `dataModel`
    /// receives its data model (XML), or becomes empty if the engine returns none. If the engine
    /// throws, `dataModel` is empty and the result is true.
    bool validateServiceLayer(const std::string& url, int layer, std::string& dataModel);
    /// Tests whether a map service answers. `layers` receives its layers as JSON for
    /// HVRunner::ParseMapServiceLayers. If the engine throws, `layers` is empty and the result is
    /// true. Returns false for an empty address or an empty answer.
    bool validateMapService(const std::string& url, std::string& layers);

    /// Writes the geometry and attributes of a shape file or archive to a GeoJSON file, and their
    /// data model to another file, in the target system. An empty `toName` means no reprojection,
    /// whatever `toWkid` is. The source "CARTESIAN" means plain coordinates without a system; it
    /// allows no target. A failed request may leave an incomplete file.
    bool getShapeGeoJSON(const std::string& fromName, int fromWkid, const std::string& toName,
                         int toWkid, const std::string& shapePath, const std::string& dataModelPath,
                         const std::string& geoJsonPath);
    /// Writes the geometry and attributes of a layer of a map service to a GeoJSON file, and their
    /// data model to another file. Coordinate systems and failures are those of getShapeGeoJSON.
    bool getServiceGeoJSON(const std::string& fromName, int fromWkid, const std::string& toName,
                           int toWkid, const std::string& url, int layer,
                           const std::string& dataModelPath, const std::string& geoJsonPath);
    /// Writes points and the other variables of a dataset to a GeoJSON file, and their data model
    /// to another file. Two or three numeric variables give x, y and optionally a third coordinate.
    /// With kNoDataset the data come from the file `dataPath`. Unlike in getShapeGeoJSON, `toWkid`
    /// works without a name; an unknown target means no reprojection. Returns false
    /// without a reason for another number of variables, an unknown source system, and a variable
    /// that is missing or is a string.
    bool getPointGeoJSON(const std::string& fromName, int fromWkid, const std::string& toName,
                         int toWkid, LocallyUniqueID dataset, const std::string& dataPath,
                         const std::vector<std::string>& coordinateFields,
                         const std::string& dataModelPath, const std::string& geoJsonPath);

    /// Compares the keys of a map with those of a dataset or, with kNoDataset, of the file
    /// `dataPath`. The i-th key of one list is compared with the i-th of the other. The result
    /// counts distinct combinations of key values and ignores those with a missing value.
    /// `matchedCount` counts the combinations on both sides; the two lists receive those on one
    /// side only. A list with `maxRows` + 1 rows was cut; -1 sets no limit. Returns false if there
    /// are fewer data keys than map keys.
    ///
    /// If the request fails, the results found so far remain.
    bool matchShapeKeys(const std::string& shapePath, const std::vector<std::string>& mapKeys,
                        std::vector<std::vector<std::string>>& mapUnmatched,
                        LocallyUniqueID dataset, const std::string& dataPath,
                        const std::vector<std::string>& dataKeys,
                        std::vector<std::vector<std::string>>& dataUnmatched, int maxRows,
                        int& matchedCount);
    /// Compares the keys of a layer of a map service with those of a dataset or file. Arguments,
    /// results and failures are those of matchShapeKeys.
    bool matchServiceKeys(const std::string& url, int layer,
                          const std::vector<std::string>& mapKeys,
                          std::vector<std::vector<std::string>>& mapUnmatched,
                          LocallyUniqueID dataset, const std::string& dataPath,
                          const std::vector<std::string>& dataKeys,
                          std::vector<std::vector<std::string>>& dataUnmatched, int maxRows,
                          int& matchedCount);

private:
    struct KeyMatching;

    HVINTEG_HIDDEN std::string getShapeFilePath(const std::string& path);
    HVINTEG_HIDDEN std::string unpackedShape(const std::string& path);
    HVINTEG_HIDDEN std::string unpackedFolder(const std::string& path, const std::string& name);
    HVINTEG_HIDDEN void cleanupTempSubDirs();
    HVINTEG_HIDDEN MapSource serviceOf(const std::string& url, int layer) const;
    HVINTEG_HIDDEN bool readDataModel(const MapSource& source, const char* operation,
                                      const char* message, std::string& dataModel);
    /// Looks up the name, then the id. Returns false, and leaves `system` unchanged, if both are
    /// unknown.
    HVINTEG_HIDDEN bool getCoordinatesInfo(const std::string& name, int wkid,
                                           CoordinateSystem& system);

    HVINTEG_HIDDEN bool exportMap(const MapSource& source, const MapExport& order);
    HVINTEG_HIDDEN bool exportPoints(const DialogChoice& data,
                                     const std::vector<std::string>& coordinateFields,
                                     const MapExport& order);
    HVINTEG_HIDDEN bool writePoints(HVRawDataIterator& iterator,
                                    const std::vector<std::string>& fields,
                                    const CoordinateSystem* from, const CoordinateSystem& to,
                                    const MapExport& order);
    /// Left, upper, right and lower limit of the points; empty if the job fails.
    HVINTEG_HIDDEN std::vector<double> getGeoEnvelope(HVRawDataIterator& iterator,
                                                      const std::string& xField,
                                                      const std::string& yField);

    HVINTEG_HIDDEN bool matchKeys(const MapSource& source, const char* tag,
                                  const KeyMatching& matching);
    HVINTEG_HIDDEN bool runMatching(const MapSource& source, const char* tag,
                                    const KeyMatching& matching);
    HVINTEG_HIDDEN bool copyMap(const MapSource& source, const char* tag, const HVSimpleFile& data,
                                const HVSimpleFile& model);
    HVINTEG_HIDDEN bool getMatchedValues(const MatchSides& sides, const MatchedValues& wanted);

    /// Runs a job that reads the cases from the first one.
    HVINTEG_HIDDEN bool runOn(HVRawDataIterator& iterator, const std::string& job);
    /// Returns null, and sets a reason, if the dataset or data file cannot be opened.
    HVINTEG_HIDDEN std::unique_ptr<DialogCases> openCases(const DialogChoice& data,
                                                          const char* name);
    HVINTEG_HIDDEN std::vector<std::string> toUtf8(const std::vector<std::string>& texts) const;

    /// Maps the path of an archive, as the caller gave it, to its unpacked folder. Null until the
    /// first archive.
    std::unique_ptr<std::map<std::string, std::string>> _tempSubDirs;
};
