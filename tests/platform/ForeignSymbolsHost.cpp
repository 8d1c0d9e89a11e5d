// A host program that defines its own CString (with a Find that finds
// nothing) and its own tsfLoadFile (that loads nothing): the names of the
// library's platform pieces.  It is linked against libKvCart.so with all its
// symbols exported, the strongest form of the clash.  The library must keep
// using its own pieces: the catalogue still loads and WKT still parses.
//
//   ForeignSymbolsHost DATA_FOLDER/   exit status 0 when the library is unaffected

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "KvCart.h"

class CString {
 public:
  int Find(const char* text, int start) const;
};

int CString::Find(const char*, int) const { return -1; }

void* tsfLoadFile(const char*, int) { return nullptr; }

namespace {

int failures = 0;

void Check(bool ok, const char* what) {
  if (!ok) {
    std::fprintf(stderr, "ForeignSymbolsHost: %s\n", what);
    ++failures;
  }
}

const char kUtm32Wkt[] =
    "PROJCS[\"WGS 84 / UTM zone 32N\",GEOGCS[\"WGS 84\",DATUM[\"WGS_1984\","
    "SPHEROID[\"WGS 84\",6378137,298.257223563]],PRIMEM[\"Greenwich\",0],"
    "UNIT[\"degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    "PARAMETER[\"latitude_of_origin\",0],PARAMETER[\"central_meridian\",9],"
    "PARAMETER[\"scale_factor\",0.9996],PARAMETER[\"false_easting\",500000],"
    "PARAMETER[\"false_northing\",0],UNIT[\"metre\",1]]";

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: ForeignSymbolsHost DATA_FOLDER/\n");
    return 2;
  }
  // The host's own pieces answer as the host wrote them.
  Check(CString().Find("x", 0) == -1 && tsfLoadFile(argv[1], 1) == nullptr, "host pieces");

  CARTSETUPLINUX(argv[1], "/nonexistent-kvcart-user-folder/");
  void* handle = nullptr;
  int status = -1;
  char name[64] = "";
  // A record of the bundled files (the UTM zones are built in).
  const char kFromFile[] = "NAD27 / Texas South Central";
  C_KVMP_CREATE(kFromFile, &handle, &status);
  C_KVMP_GETNAME(handle, name, static_cast<int>(sizeof name) - 1, &status);
  Check(std::strcmp(name, kFromFile) == 0, "the catalogue files did not load");
  C_KVMP_DESTROY(&handle, &status);

  Check(S_ISVALID(kUtm32Wkt) == 1, "the WKT does not parse");
  C_KVMP_CREATE(kUtm32Wkt, &handle, &status);
  double x = 0, y = 0;
  C_KVMP_GEO2PROJ(handle, 9, 56, &x, &y);
  // echo 9 56 | cs2cs +proj=longlat +datum=WGS84 +to +proj=utm +zone=32 +datum=WGS84 -f %.3f
  // gives 500000.000 6206079.587.
  Check(std::fabs(x - 500000.0) < 1e-3 && std::fabs(y - 6206079.587) < 1e-3,
        "the WKT does not convert");
  C_KVMP_DESTROY(&handle, &status);
  // Ends without the library's write of the user's files at exit, which is
  // not what this host is about.
  std::fflush(nullptr);
  std::_Exit(failures == 0 ? 0 : 1);
}
