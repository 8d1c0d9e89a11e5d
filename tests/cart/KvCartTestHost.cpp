// A host program for the fault tests: it sets the library up on a system and
// a user folder, does what its arguments say, and ends like any host, so
// that the library saves the user's files at exit.
//
//   kvcart_test_host SYSTEM_FOLDER USER_FOLDER COMMAND...
//
// USER_FOLDER "-" means no set-up at all (no user folder ever given).
// Commands, run in order:
//   nobody            drop to user and group 65534 first (root only)
//   fsize BYTES       limit the size of files written (SIGXFSZ ignored)
//   convert           resolve and convert through the flat interface
//   use NAME          resolve NAME and convert a point with it
//   add PREFIX COUNT  add COUNT transverse Mercator records PREFIX-1 ...
//   delete NAME       delete the record NAME
//   edit NAME SCALE   set the scale of the record NAME
//   ellipsoid CODE    add an ellipsoid
//   error             print the set-up's last error on stdout
//   ready FD          write one byte to FD (then the process ends)
//   wait FD           read one byte from FD before going on

#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "KvCart.h"
#include "catalogue/KvMapProjData.h"
#include "mapproj/KvMapProjection.h"

namespace {

int Fail(const char* what) {
  std::fprintf(stderr, "kvcart_test_host: %s\n", what);
  return 2;
}

void Use(const char* name) {
  void* handle = nullptr;
  int status = 0;
  C_KVMP_CREATE(name, &handle, &status);
  double x = 0, y = 0;
  C_KVMP_GEO2PROJ(handle, 9.5, 56.1, &x, &y);
  char text[256];
  C_KVMP_GETNAME(handle, text, 255, &status);
  C_KVMP_DESTROY(&handle, &status);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return Fail("usage: kvcart_test_host SYSTEM_FOLDER USER_FOLDER COMMAND...");
  const std::string user = argv[2];
  bool setUp = false;
  auto setUpOnce = [&] {
    if (setUp || user == "-") return;
    CARTSETUPLINUX(argv[1], user.c_str());
    setUp = true;
  };
  for (int i = 3; i < argc; ++i) {
    const std::string command = argv[i];
    auto next = [&]() -> const char* { return i + 1 < argc ? argv[++i] : ""; };
    if (command == "nobody") {
      if (setgid(65534) != 0 || setuid(65534) != 0) return Fail("cannot drop privileges");
      continue;
    }
    if (command == "fsize") {
      signal(SIGXFSZ, SIG_IGN);
      const rlim_t bytes = std::strtoull(next(), nullptr, 10);
      const struct rlimit limit = {bytes, bytes};
      if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return Fail("cannot limit the file size");
      continue;
    }
    setUpOnce();
    if (command == "convert") {
      Use("UTM-32");
      Use("NAD83 / Texas South Central");
      Use(" LONG/LAT ");
      char text[64];
      int status = 0;
      S_PROJECTIONSHORTNAME("UTM-33", text, 63, &status);
      (void)S_ISVALID("UTM-31");
    } else if (command == "use") {
      Use(next());
    } else if (command == "add") {
      const std::string prefix = next();
      const long count = std::strtol(next(), nullptr, 10);
      for (long n = 1; n <= count; ++n) {
        double values[] = {0.9996, 9.0 + n % 7, 0, 500000, 0};
        CKvMapProjection::AddMapProjection(CKvMapProjData::CreateProjection(
            CKvMapProjData::eTransverseMercator, prefix + "-" + std::to_string(n), "Test host", "WE", values));
      }
    } else if (command == "delete") {
      CKvMapProjection::DeleteMapProjection(CKvMapProjection::MapProjection(next()));
    } else if (command == "edit") {
      CKvMapProjData* record = CKvMapProjection::MapProjection(next());
      double values[] = {std::strtod(next(), nullptr), 9, 0, 500000, 0};
      if (record) record->SetParameters(values);
    } else if (command == "ellipsoid") {
      const std::string code = next();
      CKvMapProjection::AddEllipsoid(new CKvEllipsoid("Test " + code, code, 6378000, 300));
    } else if (command == "error") {
      char text[8192] = "";
      int status = 0;
      CARTGETLASTERROR(text, sizeof text - 1, &status);
      std::printf("%s\n", text);
    } else if (command == "ready" || command == "wait") {
      const int fd = std::atoi(next());
      char c = 'r';
      if ((command == "ready" ? write(fd, &c, 1) : read(fd, &c, 1)) != 1) return Fail("cannot signal");
    } else {
      return Fail(("unknown command " + command).c_str());
    }
  }
  std::fflush(stdout);
  return 0;
}
