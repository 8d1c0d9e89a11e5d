// kvcart: converts coordinates between coordinate systems and describes
// them, with the library's bundled catalogue.
//
//   kvcart convert --from CS --to CS [--inverse] [--height | --ellipsoidal-height] [FILE...]
//   kvcart info CS [--json] [--exact-proj4]
//   kvcart list [--kind projected|geographic|local] [--match TEXT] [--no-header]
//   kvcart distance LON1 LAT1 LON2 LAT2 [--crs CS]
//   kvcart zone LON
//
// CS is a catalogue name ("UTM-32", any letter case when only one name
// matches), a WKT text, a proj string ("+proj=utm +zone=32 +datum=WGS84"), or
// @FILE of a .prj file.

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "KvCartConvert.h"
#include "KvCartCs.h"
#include "KvCartDescribe.h"
#include "KvCart.h"
#include "KvCartPaths.h"
#include "KvCartText.h"
#include "cart/KvCartSetup.h"
#include "catalogue/KvMapProjData.h"
#include "mapproj/KvMapProjection.h"

namespace {

int Fail(const std::string& message) {
  std::fprintf(stderr, "kvcart: %s\n", message.c_str());
  return 1;
}

using kvcart::Lower;

int List(const std::string& kind, const std::string& match, bool header) {
  const std::string key = Lower(match);
  if (header) std::printf("NAME\tBRANCH\tMETHOD\n");
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
    std::printf("%s\t%s\t%s\n", kvcart::ToUtf8(name).c_str(),
                kvcart::ToUtf8(record->GetBranchName()).c_str(),
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

// A finite number within [low, high], for longitudes and latitudes.
CLI::Validator Degrees(const char* what, double low, double high) {
  return CLI::Validator(
      [what, low, high](std::string& text) -> std::string {
        double value = 0;
        if (!CLI::detail::lexical_cast(text, value) || !std::isfinite(value) || value < low ||
            value > high)
          return std::string("a ") + what + " lies in " + kvcart::Number(low) + ".." +
                 kvcart::Number(high) + ", not " + text;
        return "";
      },
      std::string(what) + " in " + kvcart::Number(low) + ".." + kvcart::Number(high));
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"kvcart: coordinate conversion with the KvCart library", "kvcart"};
  // The program's own version, and the version of the library it loaded.
  char library[32] = "?";
  int versionStatus = 0;
  S_GETVERSIONSTRING(library, static_cast<int>(sizeof library) - 1, &versionStatus);
  app.set_version_flag("--version", std::string("kvcart ") + KVCART_VERSION_STRING +
                                        " (library " + library + ")");
  app.require_subcommand(1);
  app.footer(
      "CS is a catalogue name (UTM-32, LONG/LAT; any letter case when only one name\n"
      "matches), a WKT text, a proj string (+proj=...), or @FILE of a .prj file.\n"
      "Each subcommand's --help shows its options and examples; man kvcart has the rest.\n\n"
      "Examples:\n"
      "  kvcart convert --from UTM-32 --to LONG/LAT points.txt\n"
      "  kvcart info UTM-32");
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
  convertCmd->add_flag("-I,--inverse", convert.inverse, "Convert from --to to --from");
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
  convertCmd
      ->add_option("--skip-lines", convert.skipLines,
                   "Copy the first N lines of each input unchanged (a header)")
      ->check(CLI::NonNegativeNumber);
  convertCmd->add_option("files", convert.files, "Input files (default: standard input)");
  convertCmd->footer(
      "Lines hold x y (longitude latitude in degrees for a geographic system), separated\n"
      "by blanks, tabs or one comma, with a full stop as the decimal mark; text after\n"
      "the coordinates is copied.  Blank and # lines are copied, and so is a first line\n"
      "that does not start with a number (a CSV header).\n\n"
      "Examples:\n"
      "  kvcart convert --from UTM-32 --to LONG/LAT points.txt\n"
      "  echo '9 56' | kvcart convert --from LONG/LAT --to '+proj=utm +zone=32 +datum=WGS84'\n"
      "  kvcart convert --from @site.prj --to utm-33 --skip-lines 1 wells.csv > wells33.csv");

  std::string infoCs;
  bool json = false, exactProj4 = false;
  CLI::App* infoCmd = app.add_subcommand("info", "Describe a coordinate system");
  infoCmd->add_option("cs", infoCs, "Coordinate system")->required();
  infoCmd->add_flag("--json", json, "Write JSON (UTF-8)");
  infoCmd->add_flag("--exact-proj4", exactProj4,
                    "Print the proj4 text exactly as the library writes it");
  infoCmd->footer(
      "Examples:\n"
      "  kvcart info UTM-32\n"
      "  kvcart info --json @site.prj\n"
      "  kvcart info '+proj=lcc +lat_1=49 +lat_2=44 +lat_0=46.5 +lon_0=3 +x_0=700000 "
      "+y_0=6600000 +ellps=GRS80'");

  std::string kind, match;
  bool noHeader = false;
  CLI::App* listCmd = app.add_subcommand("list", "List the catalogue");
  listCmd->add_option("--kind", kind, "Only this kind")
      ->check(CLI::IsMember({"projected", "geographic", "local"}));
  listCmd->add_option("--match", match, "Only names containing this text (any letter case)");
  listCmd->add_flag("--no-header", noHeader, "Leave out the line of column names");
  listCmd->footer(
      "Columns, separated by tabs: NAME, BRANCH (the catalogue's group), METHOD.\n\n"
      "Examples:\n"
      "  kvcart list --match 'texas'\n"
      "  kvcart list --kind geographic --no-header | cut -f1");

  std::vector<double> points;
  std::string distanceCs = "LONG/LAT";
  CLI::App* distanceCmd =
      app.add_subcommand("distance", "Geodesic distance and azimuths between two points");
  distanceCmd->add_option("coordinates", points, "LON1 LAT1 LON2 LAT2 in degrees")
      ->required()
      ->expected(4)
      ->check(Degrees("coordinate", -180, 180));
  distanceCmd->add_option("--crs", distanceCs, "System whose ellipsoid is used");
  distanceCmd->footer(
      "Examples:\n"
      "  kvcart distance 9 56 10 57\n"
      "  kvcart distance -73.78 40.64 -0.45 51.47 --crs '+proj=longlat +ellps=intl'");

  double longitude = 0;
  CLI::App* zoneCmd = app.add_subcommand("zone", "The UTM zone of a longitude");
  zoneCmd->add_option("lon", longitude, "Longitude in degrees, -180 to 180")
      ->required()
      ->check(Degrees("longitude", -180, 180));
  zoneCmd->footer(
      "Longitude 180 belongs to zone 60.\n\n"
      "Examples:\n"
      "  kvcart zone 9.5\n"
      "  kvcart zone -73.8");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    // --help and --version end here with status 0; usage errors with 2.
    app.exit(e);
    return e.get_exit_code() == 0 ? 0 : 2;
  }

  if (distanceCmd->parsed() && (std::fabs(points[1]) > 90 || std::fabs(points[3]) > 90)) {
    std::fprintf(stderr, "kvcart: a latitude lies in -90..90, not %s\n",
                 kvcart::Number(std::fabs(points[1]) > 90 ? points[1] : points[3]).c_str());
    return 2;
  }
  if (zoneCmd->parsed()) {
    // The library names 180 as a sixty-first zone; the zones end at 60.
    std::printf("%s\n", CKvMapProjection::LongitudeToUTMZone(longitude < 180 ? longitude : 179.5));
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
    if (convert.inverse) std::swap(convert.from, convert.to);
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
      kvcart::Describe(cs, json, exactProj4);
  } else if (listCmd->parsed()) {
    status = List(kind, match, !noHeader);
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
