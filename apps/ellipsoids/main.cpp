// kvcart-ellipsoids: prints the ellipsoid catalogue of a data folder.
//
//   kvcart-ellipsoids [DATA_FOLDER]
//
// Reads DATA_FOLDER/ellipsoid.tsf (default: the bundled data folder, found
// as kvcart finds it) and prints each ellipsoid with its derived minor axis
// and eccentricity.


#include <cstdio>
#include <string>
#include <vector>

#include "KvCartPaths.h"
#include "catalogue/KvEllipsoidList.h"

int main(int argc, char** argv) {
  if (argc > 2 || (argc == 2 && (std::string(argv[1]) == "-h" || std::string(argv[1]) == "--help"))) {
    std::fprintf(stderr, "usage: %s [DATA_FOLDER]\n", argv[0]);
    return 2;
  }
  std::vector<std::string> searched;
  const std::string folder = kvcart::FindDataFolder(argc == 2 ? argv[1] : "", &searched);
  if (folder.empty()) {
    std::fprintf(stderr, "kvcart-ellipsoids: cannot find ellipsoid.tsf; looked in:\n");
    for (const std::string& f : searched) std::fprintf(stderr, "  %s\n", f.c_str());
    return 1;
  }
  const std::string path = folder + "ellipsoid.tsf";

  CKvEllipsoidList list;
  const int status = list.ReadEllipsoids(path, false);
  if (status != 0) {
    std::fprintf(stderr, "kvcart-ellipsoids: %s is not a readable parameter file (status %d)\n",
                 path.c_str(), status);
    return 1;
  }
  list.GenerateCompleteList();

  std::printf("%-4s  %-44s %14s %15s %14s %15s\n", "Code", "Name", "a (m)", "1/f", "b (m)", "e");
  int count = 0;
  for (auto it = list.GetIteratorBegin(CKvEllipsoidList::eAllEllipsoids);
       it != list.GetIteratorEnd(CKvEllipsoidList::eAllEllipsoids); ++it, ++count) {
    const CKvEllipsoid& e = **it;
    std::printf("%-4s  %-44s %14.3f %15.12g %14.4f %15.13f\n", e.GetID().c_str(), e.GetName().c_str(), e.GetMajor(),
                e.GetInvFlatness(), e.GetMinor(), e.GetEccentricity());
  }
  std::printf("%d ellipsoids from %s\n", count, path.c_str());
  return 0;
}
