// kvcart: converts coordinates between coordinate systems and describes
// them, with the library's bundled catalogue.
//
//   kvcart convert --from CS --to CS [--height | --ellipsoidal-height] [FILE...]
//   kvcart info CS [--json]
//   kvcart list [--kind projected|geographic|local] [--match TEXT]
//   kvcart distance LON1 LAT1 LON2 LAT2 [--crs CS]
//   kvcart zone LON
//
// CS is a catalogue name ("UTM-32"), a WKT text, or @FILE of a .prj file.

#include <CLI/CLI.hpp>
#include <cctype>
#include <cstdio>
#include <string>
#include <vector>

#include "KvCartConvert.h"
#include "KvCartCs.h"
#include "KvCartDescribe.h"
#include "KvCart.h"
#include "KvCartPaths.h"
#include "cart/KvCartSetup.h"
#include "catalogue/KvMapProjData.h"
#include "mapproj/KvMapProjection.h"

namespace {

int Fail(const std::string& message) {
  std::fprintf(stderr, "kvcart: %s\n", message.c_str());
  return 1;
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

int List(const std::string& kind, const std::string& match) {
  const std::string key = Lower(match);
  CKvMapProjectionList& list = CKvCartSetup::Instance().m_MapProjectionList;
  for (auto it = list.GetIteratorBegin(); it != list.GetIteratorEnd(); ++it) {
    CKvMapProjData* record = *it;
    const std::string name = record->GetName();
    const std::string recordKind =
        CKvMapProjection::IsLocal(name.c_str()) ? "local"
        : record->GetProjectionType() == CKvMapProjData::eGeographical ||
                record->GetProjectionType() == CKvMapProjData::eRotatedLongitudeLatitude
            ? "geographic"
            : "projected";
    if (!kind.empty() && kind != recordKind) continue;
    if (!key.empty() && Lower(name).find(key) == std::string::npos) continue;
    std::printf("%s\t%s\t%s\n", name.c_str(), record->GetBranchName().c_str(),
                record->GetProjectionTypeTitle().c_str());
  }
  return 0;
}

int Distance(const std::vector<double>& values, const std::string& cs) {
  CKvMapProjection object(cs);
  double distance = 0, azimuth1 = 0, azimuth2 = 0;
  if (!object.GetDistance(values[0], values[1], values[2], values[3], distance, azimuth1, azimuth2))
    return Fail("the coordinate system has no ellipsoid for geodesics");
  std::printf("distance         %.4f m\nazimuth at start %.9f\nazimuth at end   %.9f\n", distance,
              azimuth1, azimuth2);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"kvcart: coordinate conversion with the KvCart library"};
  // The program's own version, and the version of the library it loaded.
  char library[32] = "?";
  int versionStatus = 0;
  S_GETVERSIONSTRING(library, static_cast<int>(sizeof library) - 1, &versionStatus);
  app.set_version_flag("--version", std::string("kvcart ") + KVCART_VERSION_STRING +
                                        " (library " + library + ")");
  app.require_subcommand(1);
  std::string dataDir, userDir;
  app.add_option("--data-dir", dataDir,
                 "Folder of the bundled catalogue (default: found by itself)")
      ->envname("KVCART_DATA_DIR");
  app.add_option("--user-dir", userDir, "Folder of the user's custom catalogue files")
      ->envname("KVCART_USER_DIR");

  kvcart::SConvertSettings convert;
  CLI::App* convertCmd = app.add_subcommand("convert", "Convert points, one per line");
  convertCmd->add_option("--from", convert.from, "Source coordinate system")->required();
  convertCmd->add_option("--to", convert.to, "Target coordinate system")->required();
  convertCmd->add_flag("--height", convert.height,
                       "Lines hold x y h; h is kept as it is (heights above sea level, depths)");
  convertCmd->add_flag("--ellipsoidal-height", convert.ellipsoidalHeight,
                       "Lines hold x y h, and h is a height above the ellipsoid: it changes "
                       "with the datum shift between the two systems");
  convertCmd
      ->add_option("--precision", convert.precision,
                   "Decimals written (default 3 for metres, 9 for degrees)")
      ->check(CLI::Range(0, 17));
  convertCmd->add_flag("--strict", convert.strict, "Stop at the first line that cannot be read");
  convertCmd->add_option("files", convert.files, "Input files (default: standard input)");

  std::string infoCs;
  bool json = false;
  CLI::App* infoCmd = app.add_subcommand("info", "Describe a coordinate system");
  infoCmd->add_option("cs", infoCs, "Coordinate system")->required();
  infoCmd->add_flag("--json", json, "Write JSON");

  std::string kind, match;
  CLI::App* listCmd = app.add_subcommand("list", "List the catalogue");
  listCmd->add_option("--kind", kind, "Only this kind")
      ->check(CLI::IsMember({"projected", "geographic", "local"}));
  listCmd->add_option("--match", match, "Only names containing this text (any letter case)");

  std::vector<double> points;
  std::string distanceCs = "LONG/LAT";
  CLI::App* distanceCmd =
      app.add_subcommand("distance", "Geodesic distance and azimuths between two points");
  distanceCmd->add_option("coordinates", points, "LON1 LAT1 LON2 LAT2 in degrees")
      ->required()
      ->expected(4);
  distanceCmd->add_option("--crs", distanceCs, "System whose ellipsoid is used");

  double longitude = 0;
  CLI::App* zoneCmd = app.add_subcommand("zone", "The UTM zone of a longitude");
  zoneCmd->add_option("lon", longitude, "Longitude in degrees")->required();

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    // --help and --version end here with status 0; usage errors with 2.
    app.exit(e);
    return e.get_exit_code() == 0 ? 0 : 2;
  }

  if (zoneCmd->parsed()) {
    std::printf("%s\n", CKvMapProjection::LongitudeToUTMZone(longitude));
    return 0;
  }

  std::vector<std::string> searched;
  const std::string data = kvcart::FindDataFolder(dataDir, &searched);
  if (data.empty()) {
    std::string message = "cannot find the bundled catalogue (ellipsoid.tsf); looked in:";
    for (const std::string& folder : searched) message += "\n  " + folder;
    return Fail(message + "\nuse --data-dir or KVCART_DATA_DIR");
  }
  CKvCartSetup& setup = CKvCartSetup::Instance();
  setup.ReadData(data, kvcart::FindUserFolder(userDir));

  int status = 0;
  std::string error;
  if (convertCmd->parsed()) {
    convert.height = convert.height || convert.ellipsoidalHeight;
    if (!kvcart::ResolveCs(convert.from, convert.from, error) ||
        !kvcart::ResolveCs(convert.to, convert.to, error))
      status = Fail(error);
    else
      status = kvcart::RunConvert(convert);
  } else if (infoCmd->parsed()) {
    std::string cs;
    if (!kvcart::ResolveCs(infoCs, cs, error))
      status = Fail(error);
    else
      kvcart::Describe(cs, json);
  } else if (listCmd->parsed()) {
    status = List(kind, match);
  } else if (distanceCmd->parsed()) {
    std::string cs;
    status = kvcart::ResolveCs(distanceCs, cs, error) ? Distance(points, cs) : Fail(error);
  }
  // kvcart only reads the catalogues; looking records up counts as a change
  // to the library, which must not rewrite the user's files.
  setup.m_bMapProjectionListModified = false;
  setup.m_bEllipsoidListModified = false;
  return status;
}
