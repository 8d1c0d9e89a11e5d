#include "KvCartPaths.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "KvCart.h"

// Where the bundled catalogue lies relative to the programs' folder and to the
// library's folder, as installed (and, for the programs, in the build tree).
#ifndef KVCART_DATADIR_FROM_BINDIR
#define KVCART_DATADIR_FROM_BINDIR "../share/KvCart/"
#endif
#ifndef KVCART_DATADIR_FROM_LIBDIR
#define KVCART_DATADIR_FROM_LIBDIR "../share/KvCart/"
#endif

namespace kvcart {
namespace {

std::string WithSlash(std::string folder) {
  if (!folder.empty() && folder.back() != '/') folder += '/';
  return folder;
}

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool HoldsCatalogue(const std::string& folder) {
  return !folder.empty() && access((folder + "ellipsoid.tsf").c_str(), R_OK) == 0;
}

std::string Folder(const std::string& file) {
  const size_t slash = file.rfind('/');
  return slash == std::string::npos ? "" : file.substr(0, slash + 1);
}

// "/opt/kv/bin/../share/KvCart/" -> "/opt/kv/share/KvCart/".
std::string Normal(const std::string& folder) {
  return std::filesystem::path(folder).lexically_normal().string();
}

// <prefix>/share/KvCart/ for a program in <prefix>/bin.
std::string BesideProgram() {
  char path[4096];
  const ssize_t n = readlink("/proc/self/exe", path, sizeof path - 1);
  if (n <= 0) return "";
  const std::string folder = Folder(std::string(path, static_cast<size_t>(n)));
  return folder.empty() ? "" : Normal(folder + KVCART_DATADIR_FROM_BINDIR);
}

// <prefix>/share/KvCart/ for the libKvCart.so the program loaded from
// <prefix>/lib, wherever the program itself lies.
std::string BesideLibrary() {
  Dl_info info;
  if (!dladdr(reinterpret_cast<void*>(&S_GETVERSION), &info) || !info.dli_fname) return "";
  char path[4096];
  if (!realpath(info.dli_fname, path)) return "";
  const std::string folder = Folder(path);
  return folder.empty() ? "" : Normal(folder + KVCART_DATADIR_FROM_LIBDIR);
}

}  // namespace

std::string FindDataFolder(const std::string& override, std::vector<std::string>* searched) {
  std::vector<std::string> candidates;
  if (!override.empty()) {
    candidates.push_back(WithSlash(override));
  } else if (!Environment("KVCART_DATA_DIR").empty()) {
    candidates.push_back(WithSlash(Environment("KVCART_DATA_DIR")));
  } else {
    candidates = {BesideProgram(), BesideLibrary()};
  }
  for (const std::string& folder : candidates)
    if (HoldsCatalogue(folder)) return folder;
  if (searched) {
    searched->clear();
    for (const std::string& folder : candidates)
      if (!folder.empty()) searched->push_back(folder);
  }
  return "";
}

std::string FindUserFolder(const std::string& override) {
  if (!override.empty()) return WithSlash(override);
  if (!Environment("KVCART_USER_DIR").empty()) return WithSlash(Environment("KVCART_USER_DIR"));
  if (!Environment("XDG_CONFIG_HOME").empty())
    return WithSlash(Environment("XDG_CONFIG_HOME")) + "kvcart/";
  if (!Environment("HOME").empty()) return WithSlash(Environment("HOME")) + ".config/kvcart/";
  return "";
}

}  // namespace kvcart
