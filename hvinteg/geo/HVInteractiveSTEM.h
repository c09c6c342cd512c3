#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "SvrDMDataset.h"
#include "geo/HVInteractive.h"

class DialogCases;
class HVRawDataIterator;
class HVSimpleFile;
struct CoordinateSystem;
struct DialogChoice;
struct MapExport;
struct MapSource;
struct MatchSides;
struct MatchedValues;

/// What map dialogs ask: whether a source of geometry can be read, its geometry as GeoJSON, and how
/// well its keys match those of a dataset.
///
/// A source is a shape file, a zip archive with a shape file of the archive's name at its top, or a
/// layer of a map service. An archive is unpacked once, at the first request on its path; what it
/// was unpacked to is there until the object goes.
///
///     HVInteractiveSTEM maps;
///     std::string model;
///     if (maps.validateShapeSource("C:\\maps\\districts.zip", model))
///         maps.getShapeGeoJSON("", 0, "WGS_1984", 4326, "C:\\maps\\districts.zip", modelPath,
///                              geoJsonPath);
///
/// Paths, addresses and names of variables are in the host's encoding; names of coordinate systems,
/// names of a map's fields in its data model and the documents that come back are UTF-8.
/// Coordinate systems are given by name and by well-known id; the name counts where it is known.
class HVINTEG_EXPORT HVInteractiveSTEM : public HVInteractive
{
public:
    HVInteractiveSTEM();
    HVInteractiveSTEM(const HVInteractiveSTEM&) = delete;
    HVInteractiveSTEM& operator=(const HVInteractiveSTEM&) = delete;
    /// Removes what archives were unpacked to.
    ~HVInteractiveSTEM() override;

    /// Whether a source can be read, by its first record. `dataModel` receives its data model, XML;
    /// it stays as it was if there is no shape file, and is empty if the engine tells none. An
    /// archive that cannot be unpacked counts as one without a shape file.
    bool validateShapeSource(const std::string& path, std::string& dataModel);
    bool validateServiceLayer(const std::string& url, int layer, std::string& dataModel);
    /// Whether a map service answers. `layers` receives its layers, JSON, to be read with
    /// HVRunner::ParseMapServiceLayers; empty if the engine threw, which counts as an answer.
    bool validateMapService(const std::string& url, std::string& layers);

    /// Write the geometry and attributes of a source to a GeoJSON file, and their data model to
    /// another, in the target system. Without the name of a target there is no reprojection,
    /// whatever its id; the source "CARTESIAN" stands for plain coordinates without a system, which
    /// take no target. A failed request may leave a file that is not whole.
    bool getShapeGeoJSON(const std::string& fromName, int fromWkid, const std::string& toName,
                         int toWkid, const std::string& shapePath, const std::string& dataModelPath,
                         const std::string& geoJsonPath);
    bool getServiceGeoJSON(const std::string& fromName, int fromWkid, const std::string& toName,
                           int toWkid, const std::string& url, int layer,
                           const std::string& dataModelPath, const std::string& geoJsonPath);
    /// The same of the points that two or three variables of a dataset give: x, y, and a third one.
    /// With kNoDataset the data come from the file `dataPath`. The target may be known by its id
    /// alone here; one that is not known is none. False without a reason for another number of
    /// variables, a source system that is not known, and a variable that is not there or is text.
    bool getPointGeoJSON(const std::string& fromName, int fromWkid, const std::string& toName,
                         int toWkid, LocallyUniqueID dataset, const std::string& dataPath,
                         const std::vector<std::string>& coordinateFields,
                         const std::string& dataModelPath, const std::string& geoJsonPath);

    /// How well the keys of a map match those of a dataset, or of the file `dataPath` with
    /// kNoDataset. The two lists are of one length, and a key is compared with the one in its place
    /// on the other side. Counted and listed are combinations of key values, each once, and none
    /// with a missing value: `matchedCount` those on both sides, the two lists those on one side
    /// only. A list that has `maxRows` + 1 rows was cut there; -1 sets no limit.
    ///
    /// A request that fails half-way leaves what it found until then.
    bool matchShapeKeys(const std::string& shapePath, const std::vector<std::string>& mapKeys,
                        std::vector<std::vector<std::string>>& mapUnmatched,
                        LocallyUniqueID dataset, const std::string& dataPath,
                        const std::vector<std::string>& dataKeys,
                        std::vector<std::vector<std::string>>& dataUnmatched, int maxRows,
                        int& matchedCount);
    bool matchServiceKeys(const std::string& url, int layer,
                          const std::vector<std::string>& mapKeys,
                          std::vector<std::vector<std::string>>& mapUnmatched,
                          LocallyUniqueID dataset, const std::string& dataPath,
                          const std::vector<std::string>& dataKeys,
                          std::vector<std::vector<std::string>>& dataUnmatched, int maxRows,
                          int& matchedCount);

private:
    struct KeyMatching;

    std::string getShapeFilePath(const std::string& path);
    std::string unpackedShape(const std::string& path);
    std::string unpackedFolder(const std::string& path, const std::string& name);
    void cleanupTempSubDirs();
    MapSource serviceOf(const std::string& url, int layer) const;
    bool readDataModel(const MapSource& source, const char* operation, const char* message,
                       std::string& dataModel);
    /// By name or, where that is not known, by id. False leaves the system as it was.
    bool getCoordinatesInfo(const std::string& name, int wkid, CoordinateSystem& system);

    bool exportMap(const MapSource& source, const MapExport& order);
    bool exportPoints(const DialogChoice& data, const std::vector<std::string>& coordinateFields,
                      const MapExport& order);
    bool writePoints(HVRawDataIterator& iterator, const std::vector<std::string>& fields,
                     const CoordinateSystem* from, const CoordinateSystem& to,
                     const MapExport& order);
    /// Left, upper, right and lower limit of the points; empty if the job failed.
    std::vector<double> getGeoEnvelope(HVRawDataIterator& iterator, const std::string& xField,
                                       const std::string& yField);

    bool matchKeys(const MapSource& source, const char* tag, const KeyMatching& matching);
    bool runMatching(const MapSource& source, const char* tag, const KeyMatching& matching);
    bool copyMap(const MapSource& source, const char* tag, const HVSimpleFile& data,
                 const HVSimpleFile& model);
    bool getMatchedValues(const MatchSides& sides, const MatchedValues& wanted);

    /// Runs a job that reads the cases, from the first one on.
    bool runOn(HVRawDataIterator& iterator, const std::string& job);
    /// Null, with a reason, if a dataset or a data file cannot be opened.
    std::unique_ptr<DialogCases> openCases(const DialogChoice& data, const char* name);
    std::vector<std::string> toUtf8(const std::vector<std::string>& texts) const;

    /// From the path of an archive, as a caller gave it, to the folder that it was unpacked into.
    /// None until the first archive.
    std::unique_ptr<std::map<std::string, std::string>> _tempSubDirs;
};
