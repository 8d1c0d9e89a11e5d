// kvcart-ellipsoids: prints the ellipsoid catalogue of a data folder.
//
//   kvcart-ellipsoids [DATA_FOLDER]
//
// Reads DATA_FOLDER/ellipsoid.tsf (default: the installed data folder) and
// prints each ellipsoid with its derived minor axis and eccentricity.

#include <cstdio>
#include <string>

#include "catalogue/KvEllipsoidList.h"
#include "platform/tsf.h"

#ifndef KVCART_INSTALLED_DATA_DIR
#define KVCART_INSTALLED_DATA_DIR "/usr/local/share/KvCart/"
#endif

int main(int argc, char** argv) {
  if (argc > 2 || (argc == 2 && (std::string(argv[1]) == "-h" || std::string(argv[1]) == "--help"))) {
    std::fprintf(stderr, "usage: %s [DATA_FOLDER]\n", argv[0]);
    return 2;
  }
  std::string folder = argc == 2 ? argv[1] : KVCART_INSTALLED_DATA_DIR;
  if (!folder.empty() && folder.back() != '/') folder += '/';
  const std::string path = folder + "ellipsoid.tsf";

  CKvEllipsoidList list;
  if (list.ReadEllipsoids(path, false) != TSF_OK) {
    std::fprintf(stderr, "kvcart-ellipsoids: %s\n", tsfGetErrorMessageGlb());
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
